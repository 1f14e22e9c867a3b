#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/ConfigurationFile.h"
#include "console/ErrorText.h"
#include "console/Json.h"
#include "console/NumberText.h"
#include "console/ParameterAccess.h"
#include "console/ParameterJson.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/TextTable.h"
#include "console/ValueText.h"

#include <algorithm>
#include <cstdint>

namespace orbctl {

namespace {

constexpr const char* tableName = "FG_LUT_VALUE";
constexpr const char* completeMessage = "Every parameter has its default\n";
constexpr const char* tableTypeName = "FG_LUT_TYPE";

/// A setting of the applet with the value that it starts with and the one that it has.
struct SettingState {
    const ParameterState* start = nullptr;
    const ParameterState* now = nullptr;

    const Parameter& parameter() const { return now->parameter; }
    bool isMoved() const { return isChanged(*start, *now); }
};

class DefaultsCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        mPort.declare(arguments);
        arguments.flag("--changed", mChangedOnly, "only parameters that have another value now");
        arguments.flag("--apply", mApply, "set every parameter to its default");
        arguments.flag("--json", mJson, "write JSON");
    }

    ExitStatus run(Session& session) override {
        session.keepStartValues();
        const ParameterSnapshot& start = session.startValues();
        if (mApply)
            return apply(session, start);
        const ParameterSnapshot now(session.applet());
        const std::vector<SettingState> states = settings(session, start, now);
        mJson ? printJson(session, states) : print(session, states);
        return ExitStatus::done;
    }

  private:
    /// What the applet saves in a configuration, and the lookup table that comes of it. Nothing else is a
    /// setting: writing the other parameters sends a trigger, clears a counter or saves a file.
    std::vector<SettingState> settings(Session& session, const ParameterSnapshot& start,
                                       const ParameterSnapshot& now) const {
        const ConfigurationFile saved = savedConfiguration(session.applet());
        std::vector<SettingState> states;
        for (const unsigned port : mPort.ports()) {
            std::vector<std::string> names = saved.keys(port);
            names.emplace_back(tableName);
            for (const std::string& name : names) {
                const SettingState state{start.find(port, name), now.find(port, name)};
                if (state.start != nullptr && state.now != nullptr)
                    states.push_back(state);
            }
        }
        return states;
    }

    std::vector<SettingState> movedSettings(Session& session, const ParameterSnapshot& start,
                                            const ParameterSnapshot& now) const {
        std::vector<SettingState> states = settings(session, start, now);
        const auto end = std::remove_if(states.begin(), states.end(),
                                        [](const SettingState& state) { return !state.isMoved(); });
        states.erase(end, states.end());
        return states;
    }

    /// Goes through what differs until nothing does: a value may have to wait for another one that limits it.
    ExitStatus apply(Session& session, const ParameterSnapshot& start) const {
        const ParameterSnapshot before(session.applet());
        std::vector<std::string> refusals;
        for (std::size_t left = SIZE_MAX;;) {
            const ParameterSnapshot now(session.applet());
            const std::vector<SettingState> moved = movedSettings(session, start, now);
            if (moved.empty())
                refusals.clear();
            if (moved.empty() || moved.size() >= left)
                break;
            left = moved.size();
            refusals = written(session, start, moved);
        }
        return report(session, before, start, refusals);
    }

    /// Writes the defaults. \return what was refused
    static std::vector<std::string> written(Session& session, const ParameterSnapshot& start,
                                            const std::vector<SettingState>& moved) {
        std::vector<std::string> refusals;
        for (const SettingState& state : moved) {
            const unsigned port = state.parameter().port;
            // The table follows from its type and the values of the processor: writing the type fills it.
            const ParameterState* const target =
                state.parameter().isField() ? start.find(port, tableTypeName) : state.start;
            if (target == nullptr || !target->reading.isGood())
                continue;
            const int code = writeParameter(session.applet(), target->parameter, target->reading.value);
            if (code != 0)
                refusals.push_back(portPrefix(port) +
                                   refusedWrite(target->parameter, target->reading.value, code));
        }
        return refusals;
    }

    ExitStatus report(Session& session, const ParameterSnapshot& before, const ParameterSnapshot& start,
                      const std::vector<std::string>& refusals) const {
        const ParameterSnapshot after(session.applet());
        for (const SettingState& state : movedSettings(session, before, after))
            session.output() << portPrefix(state.parameter().port) << changeText(*state.start, *state.now)
                             << '\n';
        for (const std::string& refusal : refusals)
            session.messages() << "orbctl: " << refusal << '\n';
        const bool isComplete = movedSettings(session, start, after).empty();
        session.messages() << (isComplete ? completeMessage
                                          : "Not every parameter could be given its default\n");
        return isComplete ? ExitStatus::done : ExitStatus::refused;
    }

    void print(Session& session, const std::vector<SettingState>& states) const {
        const bool isAnyMoved = std::any_of(states.begin(), states.end(),
                                            [](const SettingState& state) { return state.isMoved(); });
        if (mChangedOnly && !isAnyMoved) {
            session.messages() << completeMessage;
            return;
        }
        TextTable table;
        table.addRow({"Port", "Parameter", "Default", "Now"});
        for (const SettingState& state : states)
            if (state.isMoved() || !mChangedOnly)
                table.addRow({textOf(std::uint64_t{state.parameter().port}), state.parameter().name,
                              startText(state), nowText(state)});
        table.print(session.output());
    }

    static std::string startText(const SettingState& state) {
        return state.parameter().isField() ? "..."
                                           : textWithUnit(state.start->parameter, state.start->reading);
    }

    /// Nothing where the parameter has its default.
    static std::string nowText(const SettingState& state) {
        if (!state.isMoved())
            return "";
        if (state.parameter().isField())
            return textOf(std::uint64_t{changedElements(*state.start, *state.now)}) + " elements differ";
        return textWithUnit(state.parameter(), state.now->reading);
    }

    void printJson(Session& session, const std::vector<SettingState>& states) const {
        JsonWriter json;
        json.beginArray();
        for (const SettingState& state : states)
            if (state.isMoved() || !mChangedOnly)
                add(json, state);
        session.output() << json.endArray().text();
    }

    static void add(JsonWriter& json, const SettingState& state) {
        json.beginObject();
        writeIdentity(json, state.parameter());
        json.member("changed", state.isMoved());
        if (state.parameter().isField()) {
            json.member("changedElements", std::uint64_t{changedElements(*state.start, *state.now)});
        } else {
            json.name("default").beginObject();
            writeReading(json, state.start->parameter, state.start->reading);
            json.endObject().name("now").beginObject();
            writeReading(json, state.parameter(), state.now->reading);
            json.endObject();
        }
        json.endObject();
    }

    PortChoice mPort{"both"};
    bool mChangedOnly = false;
    bool mApply = false;
    bool mJson = false;
};

} // namespace

std::unique_ptr<Command> makeDefaultsCommand() { return std::make_unique<DefaultsCommand>(); }

} // namespace orbctl
