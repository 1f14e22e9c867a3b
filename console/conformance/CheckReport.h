#pragma once

#include <functional>
#include <optional>
#include <string>

namespace orbctl {

/// What a check is about: a parameter on a port, or a function of the applet.
struct CheckSubject {
    std::optional<unsigned> port;
    std::string name;
};

enum class CheckOutcome { held, failed, skipped };

/// One check and how it ended.
struct CheckResult {
    CheckSubject subject;
    std::string what;   ///< "accepts its maximum"; the same text for every parameter
    std::string detail; ///< "4096"; empty where there is nothing to add
    CheckOutcome outcome = CheckOutcome::held;
    std::string expected; ///< in words; of a skipped check why it was skipped
    std::string got;
};

/// Takes the results of the checks, one after another.
class CheckReport {
  public:
    using Listener = std::function<void(const CheckResult&)>;

    /// \param listener  told of each result as it comes
    explicit CheckReport(Listener listener) : mListener(std::move(listener)) {}

    /// \return whether it holds, as all below
    bool expect(const CheckSubject& subject, const std::string& what, const std::string& detail, bool holds,
                const std::string& expected, const std::string& got);
    bool expectText(const CheckSubject& subject, const std::string& what, const std::string& detail,
                    const std::string& expected, const std::string& got);
    /// \param expected  an error code, or 0
    bool expectCode(const CheckSubject& subject, const std::string& what, const std::string& detail,
                    int expected, int got);
    void skip(const CheckSubject& subject, const std::string& what, const std::string& reason);

    /// Checks that were made; skipped ones are not among them.
    unsigned made() const { return mMade; }
    unsigned failed() const { return mFailed; }
    unsigned skipped() const { return mSkipped; }

  private:
    Listener mListener;
    unsigned mMade = 0;
    unsigned mFailed = 0;
    unsigned mSkipped = 0;
};

} // namespace orbctl
