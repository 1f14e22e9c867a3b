#include "tests/console/ProgramRun.h"

#include "tests/support/TemporaryFolder.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <pty.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace orbctl::test {

namespace {

using kavo::test::fileContent;
using kavo::test::TemporaryFolder;

int statusOf(int process) {
    int status = 0;
    if (waitpid(process, &status, 0) != process)
        throw std::runtime_error("the program cannot be waited for");
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void redirect(int descriptor, const std::string& file, int flags) {
    const int opened = open(file.c_str(), flags, 0600);
    if (opened < 0 || dup2(opened, descriptor) < 0)
        _exit(126);
    close(opened);
}

std::string readAll(int descriptor) {
    std::string text;
    char buffer[4096];
    ssize_t count = 0;
    while ((count = read(descriptor, buffer, sizeof buffer)) > 0)
        text.append(buffer, static_cast<std::size_t>(count));
    return text;
}

} // namespace

Program& Program::environment(const std::string& name, const std::string& value) {
    mEnvironment[name] = value;
    return *this;
}

Program& Program::input(const std::string& text) {
    mInput = text;
    return *this;
}

Program& Program::interruptAfter(int milliseconds) {
    mInterruptAfter = milliseconds;
    return *this;
}

Program& Program::outputInto(const std::string& file) {
    mOutputFile = file;
    return *this;
}

void Program::execute(const std::vector<std::string>& words) const {
    for (const auto& [name, value] : mEnvironment)
        setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> arguments{const_cast<char*>(mFile.c_str())};
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execv(mFile.c_str(), arguments.data());
    _exit(127);
}

void Program::interrupt(int process) const {
    if (mInterruptAfter == 0)
        return;
    std::this_thread::sleep_for(std::chrono::milliseconds(mInterruptAfter));
    kill(process, SIGINT);
}

ProgramResult Program::run(const std::vector<std::string>& words) const {
    const TemporaryFolder folder;
    const std::string input = folder.makeFile("input", mInput);
    const std::string output = mOutputFile.empty() ? folder.path("output") : mOutputFile;
    const std::string messages = folder.path("messages");
    const int process = fork();
    if (process == 0) {
        redirect(STDIN_FILENO, input, O_RDONLY);
        redirect(STDOUT_FILENO, output, O_WRONLY | O_CREAT);
        redirect(STDERR_FILENO, messages, O_WRONLY | O_CREAT);
        execute(words);
    }
    interrupt(process);
    const int status = statusOf(process);
    return {status, mOutputFile.empty() ? fileContent(output) : "", fileContent(messages)};
}

ProgramResult Program::runOnTerminal(const std::vector<std::string>& words) const {
    int terminal = -1;
    const winsize size{24, 80, 0, 0};
    const int process = forkpty(&terminal, nullptr, nullptr, &size);
    if (process == 0)
        execute(words);
    const std::string shown = readAll(terminal);
    close(terminal);
    return {statusOf(process), shown, ""};
}

Program console() {
    return Program(ORBELLINE_ORBCTL)
        .environment("ORBELLINE_RUNTIME", ORBELLINE_RUNTIME_FILE)
        .environment("ORBELLINE_APPLET", ORBELLINE_APPLET_FILE)
        .environment("NO_COLOR", "");
}

ProgramResult orbctl(const std::vector<std::string>& words) { return console().run(words); }

std::string evaluated(const std::string& json, const std::string& expression) {
    const TemporaryFolder folder;
    const std::string program = "import json,sys;data=json.load(open(sys.argv[1]));print(" + expression + ")";
    const ProgramResult result =
        Program(ORBELLINE_PYTHON_FILE).run({"-c", program, folder.makeFile("output.json", json)});
    return result.status == 0 ? result.output : result.messages;
}

} // namespace orbctl::test
