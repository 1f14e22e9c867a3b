#include "console/conformance/CheckReport.h"

#include "console/ErrorText.h"

namespace orbctl {

bool CheckReport::expect(const CheckSubject& subject, const std::string& what, const std::string& detail,
                         bool holds, const std::string& expected, const std::string& got) {
    ++mMade;
    mFailed += holds ? 0 : 1;
    mListener({subject, what, detail, holds ? CheckOutcome::held : CheckOutcome::failed, expected, got});
    return holds;
}

bool CheckReport::expectText(const CheckSubject& subject, const std::string& what, const std::string& detail,
                             const std::string& expected, const std::string& got) {
    return expect(subject, what, detail, expected == got, expected, got);
}

bool CheckReport::expectCode(const CheckSubject& subject, const std::string& what, const std::string& detail,
                             int expected, int got) {
    return expect(subject, what, detail, expected == got, withCode(expected), withCode(got));
}

void CheckReport::skip(const CheckSubject& subject, const std::string& what, const std::string& reason) {
    ++mSkipped;
    mListener({subject, what, "", CheckOutcome::skipped, reason, ""});
}

} // namespace orbctl
