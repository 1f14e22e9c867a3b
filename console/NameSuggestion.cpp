#include "console/NameSuggestion.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace orbctl {

namespace {

/// Letters and digits in one case, so that "output format" and "OUTPUT_FORMAT" compare equal.
std::string comparable(const std::string& name) {
    std::string letters;
    for (const char character : name)
        if (std::isalnum(static_cast<unsigned char>(character)) != 0)
            letters += static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
    return letters;
}

std::string withoutPrefix(const std::string& name) {
    const std::size_t underscore = name.find('_');
    return underscore == std::string::npos ? name : name.substr(underscore + 1);
}

/// Insertions, removals and replacements of single characters between two texts.
std::size_t distance(const std::string& first, const std::string& second) {
    std::vector<std::size_t> row(second.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t line = 0; line < first.size(); ++line) {
        std::size_t diagonal = row[0];
        row[0] = line + 1;
        for (std::size_t column = 0; column < second.size(); ++column) {
            const std::size_t replaced = diagonal + (first[line] == second[column] ? 0 : 1);
            diagonal = row[column + 1];
            row[column + 1] = std::min({replaced, row[column] + 1, diagonal + 1});
        }
    }
    return row.back();
}

} // namespace

std::string closestName(const std::string& misspelled, const std::vector<std::string>& names) {
    const std::string wanted = comparable(misspelled);
    std::string closest;
    std::size_t least = std::max<std::size_t>(2, wanted.size() / 3) + 1;
    for (const std::string& name : names) {
        const std::size_t steps =
            std::min(distance(wanted, comparable(name)), distance(wanted, comparable(withoutPrefix(name))));
        if (steps < least) {
            least = steps;
            closest = name;
        }
    }
    return closest;
}

std::string didYouMean(const std::string& misspelled, const std::vector<std::string>& names) {
    const std::string closest = closestName(misspelled, names);
    return closest.empty() ? "" : "; did you mean " + closest + "?";
}

} // namespace orbctl
