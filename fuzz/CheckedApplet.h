#pragma once

#include "fuzz/AppletValues.h"
#include "fuzz/CallLine.h"
#include "fuzz/ParameterKinds.h"
#include "grabber_basis/parameterInfo.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace kavo::fuzz {

/// A value on its way into a parameter, in the bytes of its kind.
struct GivenValue {
    std::uint32_t word = 0;
    double real = 0;
    FieldParameterInt_s entry{};
    std::string text;
    bool isNull = false;
};

/// Files that calls name; paths that lead nowhere are among them.
constexpr unsigned configurationFileCount = 6;
constexpr unsigned tableFileCount = 8;
constexpr unsigned missingTableFile = 5;
constexpr unsigned folderTableFile = 6;
constexpr unsigned writtenTableFile = 7;
/// Null where a call passes no path.
const char* configurationFile(unsigned number);
const std::string& tableFile(unsigned number);
/// The first of the configuration files can be written; what they hold, where that is known for sure.
using SavedValues = std::array<std::optional<AppletValues>, 2>;

/// What a caller knows of one applet: each call is made with what the applet promises about it, and ends the
/// program when a promise is broken.
class CheckedApplet {
  public:
    enum class Role { master, slave };

    /// Takes over an applet that works.
    CheckedApplet(Fg_Struct* handle, Role role);

    Fg_Struct* handle() const { return mHandle; }
    const AppletValues& values() const { return mValues; }

    /// \param maybeFault  a host call may fail during the call
    void set(int id, unsigned dmaIndex, int type, const GivenValue& value, bool maybeFault);
    void get(int id, unsigned dmaIndex, int type, std::uint32_t index, bool isNull, bool maybeFault);
    void describe(const char* name, unsigned dmaIndex);
    void save(unsigned file, SavedValues& saved, bool maybeFault);
    void load(unsigned file, const SavedValues& saved, bool maybeFault);

    /// The settings are what the calls so far have made of them.
    void requireKnownValues();
    /// Somebody else has written to the board.
    void expectBoardChanges();
    /// The record that describes a parameter of a port, or null.
    const RegisterInfo* record(int id, unsigned port) const;

  private:
    static constexpr std::size_t portCount = 2;

    void take(const RegisterInfo& described, unsigned port);
    int write(int id, unsigned dmaIndex, int type, const GivenValue& value, const AccessibleParameter* known);
    void judgeSet(const AccessibleParameter& parameter, unsigned port, const GivenValue& value, int code,
                  bool maybeFault);
    void judgeWord(const RegisterInfo& record, const GivenValue& value, int code) const;
    void takeSetValue(const AccessibleParameter& parameter, unsigned port, const GivenValue& value);
    void requireReadBack(const AccessibleParameter& parameter, unsigned port, const GivenValue& value);
    void requireTrueLimits() const;
    std::size_t bytesOf(const AccessibleParameter& parameter, unsigned port) const;

    Fg_Struct* mHandle;
    Role mRole;
    AppletValues mValues;
    std::array<std::vector<const RegisterInfo*>, portCount> mRecords;
    std::vector<std::pair<const RegisterInfo*, unsigned>> mLimitedWords; ///< each with its port
    /// The board and the applet's own values can contradict each other: a caller has written past the applet,
    /// or a host call has failed in the middle of a load.
    bool mIsTorn = false;
};

} // namespace kavo::fuzz
