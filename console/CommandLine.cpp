#include "console/CommandLine.h"

#include "console/Arguments.h"
#include "console/Command.h"
#include "console/NameSuggestion.h"
#include "console/Session.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>

namespace orbctl {

namespace {

/// Declares a command's arguments to CLI11.
class DeclaredArguments : public Arguments {
  public:
    explicit DeclaredArguments(CLI::App& app) : mApp(app) {}

    void flag(const std::string& names, bool& target, const std::string& help) override {
        mApp.add_flag(names, target, help);
    }
    void text(const std::string& names, std::string& target, const std::string& help) override {
        markPositional(mApp.add_option(names, target, help));
    }
    void requiredText(const std::string& names, std::string& target, const std::string& help) override {
        CLI::Option* const option = mApp.add_option(names, target, help)->required();
        markPositional(option);
    }
    void texts(const std::string& names, std::vector<std::string>& target, unsigned least,
               const std::string& help) override {
        CLI::Option* option = mApp.add_option(names, target, help);
        if (least > 0)
            option->required()->expected(static_cast<int>(least), CLI::detail::expected_max_vector_size);
        if (option->nonpositional())
            option->allow_extra_args(false);
        else
            option->type_name(" ");
    }
    void rest(const std::string& name, std::vector<std::string>& target, const std::string& help) override {
        mApp.prefix_command();
        mApp.fallthrough(false);
        mApp.footer(name + ": " + help);
        mApp.final_callback([this_app = &mApp, &target] { target = this_app->remaining(); });
    }
    void choice(const std::string& names, std::string& target, const std::vector<std::string>& choices,
                const std::string& help) override {
        mApp.add_option(names, target, help)->check(CLI::IsMember(choices))->capture_default_str();
    }
    void number(const std::string& names, unsigned& target, unsigned least, unsigned most,
                const std::string& help) override {
        mApp.add_option(names, target, help)->check(CLI::Range(least, most))->capture_default_str();
    }
    void decimal(const std::string& names, double& target, const std::string& help) override {
        mApp.add_option(names, target, help)->check(CLI::PositiveNumber)->capture_default_str();
    }

  private:
    static void markPositional(CLI::Option* option) {
        if (!option->nonpositional())
            option->type_name(" ");
    }

    CLI::App& mApp;
};

/// The commands as CLI11 knows them, for one line of words.
class ParsedLine {
  public:
    ParsedLine() : mApp("Controls a frame-grabber board through its applet library.", "orbctl") {
        mApp.fallthrough();
        mApp.require_subcommand(1);
        mApp.set_help_flag("-h,--help", "Print this help and exit");
        for (const CommandEntry& entry : allCommands())
            add(entry);
    }

    CLI::App& app() { return mApp; }
    std::string helpText() const { return mApp.help(); }

    void parse(std::vector<std::string> words) {
        std::reverse(words.begin(), words.end());
        mApp.parse(std::move(words));
    }

    Command& chosen() const {
        const CLI::App* deepest = &mApp;
        while (!deepest->get_subcommands().empty())
            deepest = deepest->get_subcommands().front();
        return *mCommands.at(deepest);
    }

  private:
    void add(const CommandEntry& entry) {
        CLI::App* parent = &mApp;
        std::string name = entry.name;
        const std::size_t space = name.find(' ');
        if (space != std::string::npos) {
            parent = mApp.get_subcommand(name.substr(0, space));
            name.erase(0, space + 1);
        }
        CLI::App* const command = parent->add_subcommand(name, entry.summary);
        if (parent != &mApp)
            parent->require_subcommand(0, 1);
        const auto made = mCommands.emplace(command, entry.make()).first;
        DeclaredArguments arguments(*command);
        made->second->declareArguments(arguments);
    }

    CLI::App mApp;
    std::map<const CLI::App*, std::unique_ptr<Command>> mCommands;
};

void declareGlobalOptions(CLI::App& app, GlobalOptions& options) {
    app.set_version_flag("--version", "orbctl " ORBELLINE_VERSION, "Print the version and exit");
    app.add_option(
           "--runtime", options.runtime,
           "Runtime library (default: the one built beside this program, or the loader's libgrabcore5.so)")
        ->envname("ORBELLINE_RUNTIME");
    app.add_option(
           "--applet", options.applet,
           "Applet library (default: the one built beside this program, or the loader's libOrbelline.so)")
        ->envname("ORBELLINE_APPLET");
    app.add_option("--scene", options.scene, "File with cameras and inputs for a board in software")
        ->envname(sceneVariable);
    app.add_option("--board", options.board, "Board number")->capture_default_str();
    app.add_flag("--slave", options.slave, "Share a board that another program opened; sets no defaults");
    app.add_option(
           "--set", options.settings,
           "NAME=VALUE set when the board is opened, on both ports; 0:NAME=VALUE or 1:NAME=VALUE on one; "
           "may be given again")
        ->allow_extra_args(false);
}

std::vector<std::string> topLevelNames() {
    std::vector<std::string> names;
    for (const CommandEntry& entry : allCommands())
        if (entry.name.find(' ') == std::string::npos)
            names.push_back(entry.name);
    return names;
}

/// A misspelled command is the likeliest reason for a line that names none.
std::string explanation(const CLI::App& app, const CLI::ParseError& error) {
    if (!app.get_subcommands().empty())
        return error.what();
    for (const std::string& word : app.remaining())
        if (!word.empty() && word.front() != '-')
            return "there is no command " + word + didYouMean(word, topLevelNames());
    return error.get_name() == "RequiredError" ? "a command is missing" : error.what();
}

std::string helpHint(const CLI::App& app) {
    const auto commands = app.get_subcommands();
    return "Try orbctl " + (commands.empty() ? "" : commands.front()->get_name() + " ") + "--help";
}

/// Answers what CLI11 threw: a wish for help or a line that cannot be understood.
ExitStatus answer(const CLI::App& app, const CLI::ParseError& error, std::ostream& output,
                  std::ostream& messages) {
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
        app.exit(error, output, messages);
        return ExitStatus::done;
    }
    messages << "orbctl: " << explanation(app, error) << '\n' << helpHint(app) << '\n';
    return ExitStatus::usage;
}

ExitStatus runChosen(const ParsedLine& line, Session& session) {
    const auto failed = [&](const char* reason) {
        session.output().flush();
        session.messages() << session.messageTerminal().error("orbctl: ") << reason << '\n';
    };
    try {
        return line.chosen().run(session);
    } catch (const Failure& failure) {
        failed(failure.what());
        return failure.status();
    } catch (const std::exception& failure) {
        failed(failure.what());
        return ExitStatus::refused;
    }
}

} // namespace

ExitStatus runProgram(const std::vector<std::string>& words, Streams streams) {
    ParsedLine line;
    GlobalOptions options;
    declareGlobalOptions(line.app(), options);
    try {
        line.parse(words);
    } catch (const CLI::ParseError& error) {
        return answer(line.app(), error, streams.output, streams.messages);
    }
    Session session(options, streams);
    const ExitStatus status = runChosen(line, session);
    if (session.output().flush())
        return status;
    session.messages() << "orbctl: standard output cannot be written\n";
    return ExitStatus::notFound;
}

ExitStatus runCommand(const std::vector<std::string>& words, Session& session) {
    ParsedLine line;
    try {
        line.parse(words);
    } catch (const CLI::ParseError& error) {
        return answer(line.app(), error, session.output(), session.messages());
    }
    return runChosen(line, session);
}

} // namespace orbctl
