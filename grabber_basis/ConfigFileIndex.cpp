#include "grabber_basis/ConfigFileIndex.h"

#include "grabber_basis/TextLines.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace {

constexpr std::size_t mostLines = 1U << 18;

std::size_t hashOf(std::string_view text) { return std::hash<std::string_view>()(text); }

bool isKeyLine(std::string_view line, std::string_view key) {
    return line.size() > key.size() && line[key.size()] == '=' && line.substr(0, key.size()) == key;
}

} // namespace

ConfigFileIndex::ConfigFileIndex(std::FILE* file) {
    readLines(file);
    indexKeys();
}

void ConfigFileIndex::readLines(std::FILE* file) {
    if (file != nullptr) {
        // What was written in vain before says nothing about reading.
        std::clearerr(file);
    }
    kavo::text::LineReader reader(file);
    while (mLineEnds.size() < mostLines && reader.next()) {
        mText.append(reader.line());
        mLineEnds.push_back(mText.size());
    }
    if (file != nullptr && std::ferror(file) != 0) {
        // Settings are taken from the whole file or not at all.
        mText.clear();
        mLineEnds.clear();
    }
}

void ConfigFileIndex::indexKeys() {
    std::size_t shelves = 1;
    while (shelves < mLineEnds.size()) {
        shelves *= 2;
    }
    mShelves.assign(shelves + 1, 0);
    std::vector<std::pair<std::size_t, std::size_t>> shelvedLines;
    shelvedLines.reserve(mLineEnds.size());
    for (std::size_t line = 0; line < mLineEnds.size(); ++line) {
        const std::string_view text = lineAt(line);
        const std::size_t length = text.find('=');
        if (length != std::string_view::npos) {
            const std::size_t shelf = hashOf(text.substr(0, length)) % shelves;
            shelvedLines.emplace_back(shelf, line);
            ++mShelves[shelf];
        }
    }
    // From the counts to the ends; each line put in its place, the last first, moves its end to the beginning.
    std::partial_sum(mShelves.begin(), mShelves.end(), mShelves.begin());
    mKeyLines.resize(shelvedLines.size());
    for (auto entry = shelvedLines.rbegin(); entry != shelvedLines.rend(); ++entry) {
        mKeyLines[--mShelves[entry->first]] = entry->second;
    }
}

std::string_view ConfigFileIndex::lineAt(std::size_t line) const {
    const std::size_t begin = line == 0 ? 0 : mLineEnds[line - 1];
    return std::string_view(mText).substr(begin, mLineEnds[line] - begin);
}

std::size_t ConfigFileIndex::findFirst(std::string_view text) const {
    std::size_t at = 0;
    while (!text.empty() && (at = mText.find(text, at)) != std::string::npos) {
        const auto end = std::upper_bound(mLineEnds.begin(), mLineEnds.end(), at);
        if (at + text.size() <= *end) {
            return static_cast<std::size_t>(end - mLineEnds.begin());
        }
        ++at;
    }
    return text.empty() ? 0 : mLineEnds.size();
}

std::size_t ConfigFileIndex::findSection(std::string_view section) {
    // The section of the lookup before, mostly.
    const auto known = std::find_if(mSectionLines.rbegin(), mSectionLines.rend(),
                                    [&](const auto& entry) { return entry.first == section; });
    if (known != mSectionLines.rend()) {
        return known->second;
    }
    return mSectionLines.emplace_back(section, findFirst(section)).second;
}

std::optional<std::string_view> ConfigFileIndex::findLineContaining(std::string_view text) const {
    const std::size_t line = findFirst(text);
    return line < mLineEnds.size() ? std::optional(lineAt(line)) : std::nullopt;
}

std::optional<std::string_view> ConfigFileIndex::findKeyLine(std::string_view section, std::string_view key) {
    const std::size_t shelf = hashOf(key.substr(0, key.find('='))) % (mShelves.size() - 1);
    const auto begin = mKeyLines.begin() + static_cast<std::ptrdiff_t>(mShelves[shelf]);
    const auto end = mKeyLines.begin() + static_cast<std::ptrdiff_t>(mShelves[shelf + 1]);
    const auto behindSection = std::upper_bound(begin, end, findSection(section));
    const auto found =
        std::find_if(behindSection, end, [&](std::size_t line) { return isKeyLine(lineAt(line), key); });
    return found != end ? std::optional(lineAt(*found)) : std::nullopt;
}
