#include "console/CommandLine.h"
#include "console/Session.h"

#include <exception>
#include <iostream>
#include <unistd.h>

int main(int count, char** words) {
    const orbctl::Streams streams{std::cout, std::cerr, orbctl::Terminal::of(STDOUT_FILENO),
                                  orbctl::Terminal::of(STDERR_FILENO)};
    try {
        return static_cast<int>(orbctl::runProgram({words + 1, words + count}, streams));
    } catch (const std::exception& failure) {
        std::cerr << "orbctl: " << failure.what() << '\n';
        return static_cast<int>(orbctl::ExitStatus::refused);
    }
}
