#pragma once

#include "console/conformance/CheckContext.h"
#include "console/Parameter.h"

#include <map>
#include <string>
#include <vector>

namespace orbctl {

/// Every name that an applet lists, by its index.
std::vector<std::string> listedNames(const CheckContext& context);

/// Name, id and index lead to each other, and the description is consistent in itself.
class IdentityChecks {
  public:
    explicit IdentityChecks(const CheckContext& context);
    void run(const Parameter& parameter) const;

  private:
    void checkName(const Parameter& parameter) const;
    void checkIndex(const Parameter& parameter) const;
    void checkOtherPorts(const Parameter& parameter) const;
    void checkLimits(const Parameter& parameter) const;
    void checkEntries(const Parameter& parameter) const;
    void checkEntry(const Parameter& parameter, const EnumerationEntry& entry) const;

    const CheckContext& mContext;
    std::map<std::string, int> mIndices;
    std::vector<std::vector<Parameter>> mPorts;
};

/// A parameter can be read with every type code, what is read is among its values, and nothing else in the
/// caller's memory changes.
void checkReading(const CheckContext& context, const Parameter& parameter);

/// A parameter takes what its description lets it have and refuses everything else; a refusal changes
/// nothing. The parameter has its former value at the end.
void checkWriting(const CheckContext& context, const Parameter& parameter);

/// A parameter that is described as one that may change during an acquisition can be written in one, and any
/// other is written or refused as a whole.
void checkWhileAcquiring(const CheckContext& context, const std::vector<Parameter>& parameters,
                         unsigned port);

} // namespace orbctl
