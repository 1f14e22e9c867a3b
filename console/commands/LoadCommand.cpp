#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/ConfigurationComparison.h"
#include "console/ErrorText.h"
#include "console/NumberText.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/ValueText.h"
#include "platform/ErrorCodes.h"

#include <algorithm>

namespace orbctl {

namespace {

std::string counted(std::size_t count, const std::string& what) {
    return textOf(std::uint64_t{count}) + " " + what + (count == 1 ? "" : "s");
}

/// A load that has been done: what the board had before and has after it.
class Loading {
  public:
    Loading(const AppletHandle& applet, const std::string& file)
        : mFile(file), mContent(file), mReference(savedConfiguration(applet)), mBefore(applet),
          mCode(applet.functions().loadConfiguration(applet.handle(), file.c_str())), mAfter(applet),
          mKeys(compared(mContent, mReference, mAfter)), mChanges(changesBetween(mBefore, mAfter)) {}

    void printChanges(std::ostream& output) const {
        for (const ParameterChange& change : mChanges)
            output << portPrefix(change.after->parameter.port) << changeText(*change.before, *change.after)
                   << roundingOf(*change.after) << '\n';
    }

    void printRefusals(std::ostream& messages) const {
        if (!hasBegun())
            return;
        for (const ComparedKey& key : mKeys)
            if (key.agreement == Agreement::different)
                messages << "orbctl: " << portPrefix(key.state->parameter.port) << refusal(key) << '\n';
        for (const UnknownKey& key : unknownKeys(mContent, mReference))
            messages << portPrefix(key.port) << "the applet has no " << key.key << "; it was passed over\n";
    }

    bool isComplete() const { return mCode == kavo::error::ok && refusals() == 0; }

    /// \throws Failure where the file as a whole was not loaded
    void requireLoaded() const {
        if (mCode == kavo::error::ok)
            return;
        const std::string obstacle = obstacleTo(mContent, mReference);
        const std::string reason = obstacle.empty() ? "the applet refused a value" : obstacle;
        throw Failure(ExitStatus::refused,
                      mFile + (hasBegun() ? " was not loaded to its end: " : " was not loaded: ") + reason +
                          " (" + textOf(std::int64_t{mCode}) + ")");
    }

    std::string summary() const {
        const std::size_t refused = refusals();
        return mFile + " is loaded: " + counted(mChanges.size(), "parameter") + " changed" +
               (refused == 0 ? "" : ", " + counted(refused, "value") + " refused");
    }

    /// Whether parameters may tell what is not in effect: a missing key ends a load that has read values and
    /// has not applied them.
    bool leavesDoubt() const { return mCode != kavo::error::ok && hasBegun(); }

  private:
    /// A header that does not fit is seen before anything is read.
    bool hasBegun() const { return mCode == kavo::error::ok || !mChanges.empty(); }

    std::size_t refusals() const {
        return static_cast<std::size_t>(std::count_if(mKeys.begin(), mKeys.end(), [](const ComparedKey& key) {
            return key.agreement == Agreement::different;
        }));
    }

    /// What the file has where the board took the nearest value that it can have.
    std::string roundingOf(const ParameterState& state) const {
        for (const ComparedKey& key : mKeys)
            if (key.state == &state && key.agreement == Agreement::rounded)
                return ", the nearest to " + key.text;
        return "";
    }

    std::string refusal(const ComparedKey& key) const {
        const Parameter& parameter = key.state->parameter;
        const std::string contradiction = contradictionOf(parameter, key.value);
        const ParameterState* const before = mBefore.find(parameter.port, parameter.name);
        const bool isKept = before != nullptr && !isChanged(*before, *key.state);
        return parameter.name + ": " +
               (contradiction.empty() ? plainText(parameter, key.value) + " was not taken" : contradiction) +
               (isKept ? "; it keeps " : "; it has ") + textWithUnit(parameter, key.state->reading);
    }

    std::string mFile;
    ConfigurationFile mContent;
    ConfigurationFile mReference;
    ParameterSnapshot mBefore;
    int mCode;
    ParameterSnapshot mAfter;
    std::vector<ComparedKey> mKeys;
    std::vector<ParameterChange> mChanges;
};

class LoadCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.requiredText("FILE", mFile, "the configuration file");
    }

    ExitStatus run(Session& session) override {
        const Loading loading(session.applet(), mFile);
        loading.printChanges(session.output());
        loading.printRefusals(session.messages());
        if (loading.leavesDoubt())
            session.messages()
                << "Some of the values may be remembered without being in effect: set them, or "
                   "load a whole file\n";
        loading.requireLoaded();
        session.messages() << loading.summary() << '\n';
        return loading.isComplete() ? ExitStatus::done : ExitStatus::refused;
    }

  private:
    std::string mFile;
};

} // namespace

std::unique_ptr<Command> makeLoadCommand() { return std::make_unique<LoadCommand>(); }

} // namespace orbctl
