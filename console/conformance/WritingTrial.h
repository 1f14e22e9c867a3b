#pragma once

#include "console/conformance/CheckContext.h"
#include "console/conformance/TrialValues.h"
#include "console/Parameter.h"

#include <functional>
#include <string>

namespace orbctl {

/// The writes to one parameter that are tried at one time, and what has to hold after each.
class WritingTrial {
  public:
    /// \param occasion  what was set before ("with FG_WIDTH = 640"); empty for the board as it was found
    WritingTrial(const CheckContext& context, Parameter parameter, std::string occasion);

    const Parameter& parameter() const { return mParameter; }
    const CheckContext& context() const { return mContext; }
    CheckReport& report() const { return mContext.report; }
    const CheckSubject& subject() const { return mSubject; }
    const Reading& former() const { return mFormer; }
    int write(const ParameterValue& value) const;
    /// The detail of a check, with the occasion behind it.
    std::string detail(const std::string& text) const;

    /// What the settings have when nothing is being tried.
    const BoardState& base() const { return mBase; }

    /// Tells a check as skipped where another parameter stands against a value that would be taken else.
    bool isStoodAgainst(const std::string& what, const std::string& text, int code) const;
    /// Writes a value that has to be taken, and reads it back.
    /// \return whether it was taken
    bool accepts(const TrialValue& trial);
    /// Makes a write that has to be refused.
    /// \param valueText  what is written
    void refuses(const std::string& what, const std::string& valueText, int code,
                 const std::function<int()>& write);
    void refuses(const TrialValue& trial);
    /// Writes a value to a parameter that is described as read-only.
    void refusesAsReadOnly(const ParameterValue& value, int code);
    /// The writes that every parameter refuses: from nothing, and to a port that is not there.
    void refusesBadCalls();
    /// Writes the value that it has, with every type code.
    void acceptsEveryType();
    /// Writes the former value again, and puts everything else back too.
    void putBack();
    /// Checks that nothing has changed since the beginning, and puts back what has.
    void keepsEverything(const std::string& valueText);

  private:
    void keepsValue(const std::string& valueText, const BoardState& now);
    void acceptsType(int type);

    const CheckContext& mContext;
    Parameter mParameter;
    CheckSubject mSubject;
    std::string mOccasion;
    Reading mFormer;
    BoardState mBase;
};

/// A parameter that is described as read-only refuses to be written, or remembers what is written where the
/// applet is known for that.
void checkReadOnly(WritingTrial& trial);
void checkTextWriting(WritingTrial& trial);
void checkElementWriting(WritingTrial& trial);

} // namespace orbctl
