#pragma once

#include <map>
#include <string>
#include <vector>

namespace orbctl::test {

/// How a program ended and what it wrote.
struct ProgramResult {
    int status = -1;      ///< exit status; 128 + signal where a signal ended it
    std::string output;   ///< standard output
    std::string messages; ///< standard error
};

/// A program to be run as a process of its own, in an environment that is the test's plus what is given here.
class Program {
  public:
    explicit Program(std::string file) : mFile(std::move(file)) {}

    Program& environment(const std::string& name, const std::string& value);
    Program& input(const std::string& text);
    /// Sends SIGINT after a time.
    Program& interruptAfter(int milliseconds);
    /// Standard output goes into this file instead.
    Program& outputInto(const std::string& file);

    ProgramResult run(const std::vector<std::string>& words) const;
    /// With standard output and standard error on one terminal; all that it shows is the output.
    ProgramResult runOnTerminal(const std::vector<std::string>& words) const;

  private:
    [[noreturn]] void execute(const std::vector<std::string>& words) const;
    void interrupt(int process) const;

    std::string mFile;
    std::map<std::string, std::string> mEnvironment;
    std::string mInput;
    std::string mOutputFile;
    int mInterruptAfter = 0;
};

/// orbctl over the board in software.
Program console();
/// A run of orbctl with these words.
ProgramResult orbctl(const std::vector<std::string>& words);

/// What a Python expression on a JSON document, called "data", prints.
std::string evaluated(const std::string& json, const std::string& expression);

} // namespace orbctl::test
