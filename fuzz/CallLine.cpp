#include "fuzz/CallLine.h"

#include "applet/StandardParameterTable.h"

#include <algorithm>
#include <cstdlib>

namespace kavo::fuzz {

namespace {

std::int64_t numberIn(std::string_view word) { return std::strtoll(std::string(word).c_str(), nullptr, 0); }

} // namespace

std::string_view CallLine::takeWord() {
    mRest.remove_prefix(std::min(mRest.find_first_not_of(' '), mRest.size()));
    const std::string_view word = mRest.substr(0, mRest.find(' '));
    mRest.remove_prefix(word.size());
    return word;
}

std::int64_t CallLine::takeNumber() { return numberIn(takeWord()); }

int CallLine::takeIntegerOr(int missing) {
    const std::string_view word = takeWord();
    return word.empty() ? missing : static_cast<int>(static_cast<std::uint32_t>(numberIn(word)));
}

int CallLine::takeParameterId() {
    const std::string_view word = takeWord();
    const auto& all = catalogue::standardParameters;
    if (word.substr(0, 1) == "p") {
        return all[static_cast<std::uint32_t>(numberIn(word.substr(1))) % all.size()].id;
    }
    const auto* found = std::find_if(
        all.begin(), all.end(), [&](const StandardParameter& parameter) { return parameter.name == word; });
    return found != all.end() ? found->id : static_cast<int>(static_cast<std::uint32_t>(numberIn(word)));
}

} // namespace kavo::fuzz
