#include "console/ConfigurationFile.h"
#include "console/conformance/FunctionChecks.h"
#include "console/conformance/TrialValues.h"
#include "console/NumberText.h"
#include "console/ValueText.h"
#include "console/WholeFile.h"
#include "platform/ErrorCodes.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace orbctl {

namespace error = kavo::error;

namespace {

constexpr const char* saving = "Fg_saveConfig";
constexpr const char* loading = "Fg_loadConfig";

std::string contentOf(const std::string& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string withAnotherType(const std::string& content) {
    const std::size_t type = content.find("Typ=");
    const std::size_t end = content.find('\n', type);
    return content.substr(0, type) + "Typ=\"no such applet\"" + content.substr(end);
}

class ConfigurationTrial {
  public:
    explicit ConfigurationTrial(const CheckContext& context)
        : mContext(context), mFile(context.folder + "/saved.mcf"), mBase(context.state(TableDepth::all)) {}

    void run() {
        checkSaving();
        checkLoadingBack();
        checkMovedSettings();
        checkStrangeFiles();
    }

  private:
    CheckReport& report() const { return mContext.report; }
    int save(const char* file) const {
        return mContext.functions().saveConfiguration(mContext.handle(), file);
    }
    int load(const char* file) const {
        return mContext.functions().loadConfiguration(mContext.handle(), file);
    }

    void checkSaving() const {
        const CheckSubject subject{std::nullopt, saving};
        report().expectCode(subject, "saves the configuration", "", error::ok, save(mFile.c_str()));
        report().expectCode(subject, "leaves no error when it saves", "", error::ok, mContext.lastError());
        for (const std::string& bad :
             {mContext.folder + "/saved.txt", mContext.folder + "/absent/saved.mcf"}) {
            report().expectCode(subject, "refuses a file that it cannot make", bad, error::fileAccessFailed,
                                save(bad.c_str()));
            report().expectCode(subject, "keeps the code of a refused file as last error", bad,
                                error::fileAccessFailed, mContext.lastError());
            report().expect(subject, "makes no file of another name", bad, !std::filesystem::exists(bad),
                            "none", "a file");
        }
        report().expectCode(subject, "refuses to save into nothing", "", error::fileAccessFailed,
                            save(nullptr));
    }

    void checkLoadingBack() {
        const CheckSubject subject{std::nullopt, loading};
        report().expectCode(subject, "loads what was saved", "", error::ok, load(mFile.c_str()));
        report().expectCode(subject, "leaves no error when it loads", "", error::ok, mContext.lastError());
        const BoardState now = mContext.state();
        for (const BoardState::Entry& entry : mBase.entries())
            if (const BoardState::Entry* const after = now.find(entry.parameter.port, entry.parameter.name))
                keepsSaved(entry, *after);
        restore(mContext.applet, mContext.settings, mBase);
    }

    /// Tables are not saved; loading may compute them anew.
    void keepsSaved(const BoardState::Entry& before, const BoardState::Entry& after) const {
        const Parameter& parameter = before.parameter;
        if (!before.isSetting || parameter.isField() || !before.readings.front().isGood())
            return;
        const Reading& reading = after.readings.front();
        report().expect(subjectOf(parameter), "stays as it is when what was just saved is loaded", "",
                        reading.isGood() &&
                            isSameValue(parameter, before.readings.front().value, reading.value),
                        readableText(parameter, before.readings.front()), readableText(parameter, reading));
    }

    /// Every saved setting gets another value before the file is loaded.
    void checkMovedSettings() {
        const ConfigurationFile saved(mFile);
        for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port)
            for (const std::string& key : saved.keys(port))
                if (const BoardState::Entry* const entry = mBase.find(port, key))
                    checkMoved(*entry);
    }

    void checkMoved(const BoardState::Entry& entry) {
        const Parameter& parameter = entry.parameter;
        const Reading& former = entry.readings.front();
        const bool isPlain = isNumber(parameter) || parameter.kind == ValueKind::enumeration;
        if (!isPlain || !parameter.isWritable() || !former.isGood() || !move(parameter, former.value))
            return;
        const int code = load(mFile.c_str());
        report().expectCode(subjectOf(parameter), "lets a saved configuration be loaded", "", error::ok,
                            code);
        const Reading after = readParameter(mContext.applet, parameter);
        report().expect(subjectOf(parameter), "comes back with a saved configuration", "",
                        after.isGood() && isSameValue(parameter, former.value, after.value),
                        readableText(parameter, former), readableText(parameter, after));
    }

    /// \return whether the parameter has another value now
    bool move(const Parameter& parameter, const ParameterValue& former) const {
        const unsigned step = mContext.rules.rule(parameter.name).step;
        for (const TrialValue& legal : legalValues(parameter, step))
            if (!isSameValue(parameter, former, legal.value) &&
                writeParameter(mContext.applet, parameter, legal.value) == error::ok)
                return true;
        return false;
    }

    void checkStrangeFiles() {
        restore(mContext.applet, mContext.settings, mBase);
        mBase = mContext.state(TableDepth::all);
        refuses("a file that is not there", mContext.folder + "/absent.mcf", error::fileNotFound);
        const std::string named = mContext.folder + "/saved.txt";
        writeWholeFile(named, contentOf(mFile));
        refuses("a file that bears another name", named, error::configurationLoadFailed);
        const std::string other = mContext.folder + "/other.mcf";
        writeWholeFile(other, withAnotherType(contentOf(mFile)));
        refuses("a file of another applet", other, error::configurationLoadFailed);
        const std::string empty = mContext.folder + "/empty.mcf";
        writeWholeFile(empty, "");
        refuses("a file that holds nothing", empty, error::configurationLoadFailed);
        report().expectCode({std::nullopt, loading}, "refuses to load from nothing", "", error::fileNotFound,
                            load(nullptr));
    }

    void refuses(const std::string& what, const std::string& file, int code) {
        const CheckSubject subject{std::nullopt, loading};
        report().expectCode(subject, "refuses " + what, file, code, load(file.c_str()));
        report().expectCode(subject, "keeps a failed load as last error", file,
                            error::configurationLoadFailed, mContext.lastError());
        const std::string difference = differenceBetween(mBase, mContext.state(TableDepth::all), nullptr);
        report().expect(subject, "changes nothing when it refuses a file", file, difference.empty(),
                        "no change", difference);
        if (!difference.empty())
            restore(mContext.applet, mContext.settings, mBase);
    }

    const CheckContext& mContext;
    std::string mFile;
    BoardState mBase;
};

} // namespace

void checkConfigurations(const CheckContext& context) { ConfigurationTrial(context).run(); }

} // namespace orbctl
