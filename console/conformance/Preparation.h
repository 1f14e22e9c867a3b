#pragma once

#include "console/conformance/CheckContext.h"
#include "console/Parameter.h"

#include <functional>
#include <vector>

namespace orbctl {

/// Makes a write as often as the applet says that it is still busy, for a second at most.
/// \return 0 or the error code
int patiently(const std::function<int()>& write);

/// While one lives, the other parameters of a port are such that a parameter takes all that it describes.
class Preparation {
  public:
    Preparation(const CheckContext& context, const Parameter& parameter);
    ~Preparation();
    Preparation(const Preparation&) = delete;
    Preparation& operator=(const Preparation&) = delete;

    bool isComplete() const { return mIsComplete; }

  private:
    struct Former {
        Parameter parameter;
        ParameterValue value;
    };

    void fulfil(const Parameter& parameter, const Need& need);

    const CheckContext& mContext;
    std::vector<Former> mFormer;
    bool mIsComplete = true;
};

} // namespace orbctl
