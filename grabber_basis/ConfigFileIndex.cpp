#include "grabber_basis/ConfigFileIndex.h"

#include "grabber_basis/TextLines.h"

#include <algorithm>

namespace {

constexpr std::size_t mostLines = 1U << 18;

std::string_view textBeforeEqualsSign(std::string_view text) { return text.substr(0, text.find('=')); }

bool isKeyLine(std::string_view line, std::string_view key) {
    return line.size() > key.size() && line[key.size()] == '=' && line.substr(0, key.size()) == key;
}

} // namespace

ConfigFileIndex::ConfigFileIndex(std::FILE* file) {
    readLines(file);
    indexKeys();
}

void ConfigFileIndex::readLines(std::FILE* file) {
    kavo::text::LineReader reader(file);
    while (mLineEnds.size() < mostLines && reader.next()) {
        mText.append(reader.line());
        mLineEnds.push_back(mText.size());
    }
}

bool ConfigFileIndex::standsBefore(const KeyLine& left, const KeyLine& right) {
    const int order = left.key.compare(right.key);
    return order < 0 || (order == 0 && left.line < right.line);
}

void ConfigFileIndex::indexKeys() {
    for (std::size_t line = 0; line < mLineEnds.size(); ++line) {
        mKeyLines.push_back({textBeforeEqualsSign(lineAt(line)), line});
    }
    std::sort(mKeyLines.begin(), mKeyLines.end(), standsBefore);
}

std::string_view ConfigFileIndex::lineAt(std::size_t line) const {
    const std::size_t begin = line == 0 ? 0 : mLineEnds[line - 1];
    return std::string_view(mText).substr(begin, mLineEnds[line] - begin);
}

std::size_t ConfigFileIndex::findFirst(std::string_view text) const {
    std::size_t line = 0;
    while (line < mLineEnds.size() && !kavo::text::contains(lineAt(line), text)) {
        ++line;
    }
    return line;
}

std::size_t ConfigFileIndex::findSection(std::string_view section) {
    const auto known = mSectionLines.find(section);
    return known != mSectionLines.end() ? known->second
                                        : mSectionLines.emplace(section, findFirst(section)).first->second;
}

std::optional<std::string_view> ConfigFileIndex::findLineContaining(std::string_view text) const {
    const std::size_t line = findFirst(text);
    return line < mLineEnds.size() ? std::optional(lineAt(line)) : std::nullopt;
}

std::optional<std::string_view> ConfigFileIndex::findKeyLine(std::string_view section, std::string_view key) {
    const KeyLine wanted{textBeforeEqualsSign(key), findSection(section) + 1};
    auto candidate = std::lower_bound(mKeyLines.begin(), mKeyLines.end(), wanted, standsBefore);
    for (; candidate != mKeyLines.end() && candidate->key == wanted.key; ++candidate) {
        if (isKeyLine(lineAt(candidate->line), key)) {
            return lineAt(candidate->line);
        }
    }
    return std::nullopt;
}
