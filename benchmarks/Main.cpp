#include "benchmarks/RatioReporter.h"

#include <cstring>

namespace {

/// Takes "--markdown=FILE" out of the words; empty without one.
std::string takeMarkdownFile(int& count, char** words) {
    static const std::string option = "--markdown=";
    std::string file;
    int kept = 0;
    for (int index = 0; index < count; ++index) {
        if (std::strncmp(words[index], option.c_str(), option.size()) == 0) {
            file = words[index] + option.size();
        } else {
            words[kept++] = words[index];
        }
    }
    count = kept;
    return file;
}

} // namespace

int main(int count, char** words) {
    RatioReporter reporter(takeMarkdownFile(count, words));
    benchmark::Initialize(&count, words);
    if (benchmark::ReportUnrecognizedArguments(count, words)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
