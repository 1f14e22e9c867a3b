#pragma once

#include "console/Parameter.h"

#include <set>
#include <string>
#include <vector>

namespace orbctl {

class AppletHandle;

/// How much of a table is looked at: every element, or some all over it.
enum class TableDepth { some, all };

/// The described standard parameters of one port, as they are described at the moment.
std::vector<Parameter> describedParameters(const AppletHandle& applet, unsigned port);
/// Whether a parameter is none of those that an applet may show beside the standard ones.
bool isStandardParameter(const Parameter& parameter);

/// The names of the parameters, port by port, that keep what is written to them.
class SettingNames {
  public:
    /// What can be written, and what the applet saves in a configuration.
    explicit SettingNames(const AppletHandle& applet);

    bool contains(const Parameter& parameter) const;

  private:
    std::vector<std::set<std::string>> mNames;
};

/// What a board has been set to: how each parameter is described, and what each setting has.
class BoardState {
  public:
    struct Entry {
        Parameter parameter;
        bool isSetting = false;
        std::vector<Reading> readings; ///< of a setting; one for each element that is looked at
    };

    BoardState() = default;
    BoardState(const AppletHandle& applet, const SettingNames& settings, TableDepth depth = TableDepth::some);

    const std::vector<Entry>& entries() const { return mEntries; }
    TableDepth depth() const { return mDepth; }
    const Entry* find(unsigned port, const std::string& name) const;

  private:
    TableDepth mDepth = TableDepth::some;
    std::vector<Entry> mEntries;
};

/// Where an element stands that a state of this depth has looked at.
std::uint32_t elementAt(const Parameter& field, TableDepth depth, std::uint32_t index);

bool hasSameValue(const BoardState::Entry& first, const BoardState::Entry& second);
/// Whether limits, access or entries are the same.
bool hasSameDescription(const Parameter& first, const Parameter& second);

/// The first thing that two states tell differently: "port 1: FG_WIDTH is 640, was 1024"; empty where
/// nothing.
/// \param except  an entry that is left out; may be null
std::string differenceBetween(const BoardState& before, const BoardState& after, const Parameter* except);

/// Gives every setting that differs its former value again; of tables, the elements that were looked at.
void restore(const AppletHandle& applet, const SettingNames& settings, const BoardState& former);

} // namespace orbctl
