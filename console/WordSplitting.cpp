#include "console/WordSplitting.h"

#include "console/Failure.h"

namespace orbctl {

namespace {

bool isSpace(char character) { return character == ' ' || character == '\t' || character == '\r'; }

/// Reads one word, quoted parts included, and removes it from the line.
std::string takeWord(std::string_view& line) {
    std::string word;
    while (!line.empty() && !isSpace(line.front())) {
        const char first = line.front();
        line.remove_prefix(1);
        if (first != '"' && first != '\'') {
            word += first;
            continue;
        }
        const std::size_t closing = line.find(first);
        if (closing == std::string_view::npos)
            throw Failure(ExitStatus::usage, "a quote is not closed");
        word += line.substr(0, closing);
        line.remove_prefix(closing + 1);
    }
    return word;
}

} // namespace

std::vector<std::string> wordsOf(std::string_view line) {
    std::vector<std::string> words;
    while (true) {
        while (!line.empty() && isSpace(line.front()))
            line.remove_prefix(1);
        if (line.empty() || line.front() == '#')
            return words;
        words.push_back(takeWord(line));
    }
}

} // namespace orbctl
