#include "grabber_basis/TextLines.h"

#include <algorithm>

namespace kavo::text {

LineReader::LineReader(std::FILE* file) : mFile(file) {
    if (mFile != nullptr) {
        // Unlike rewind, this keeps the mark of an error that was met before.
        std::fseek(mFile, 0, SEEK_SET);
    }
}

void LineReader::readAhead() {
    char* const end = std::copy(mUnread.begin(), mUnread.end(), mBuffer.begin());
    const auto room = static_cast<std::size_t>(mBuffer.end() - end);
    mUnread = {mBuffer.data(), mUnread.size() + std::fread(end, 1, room, mFile)};
}

bool LineReader::next() {
    if (mFile != nullptr && mUnread.size() < longestLine && std::feof(mFile) == 0 &&
        std::ferror(mFile) == 0) {
        readAhead();
    }
    const std::string_view longest = mUnread.substr(0, longestLine);
    const std::size_t lineEnd = longest.find('\n');
    const std::string_view whole =
        longest.substr(0, lineEnd == std::string_view::npos ? lineEnd : lineEnd + 1);
    mLine = whole.substr(0, whole.find('\0'));
    mUnread.remove_prefix(whole.size());
    return !whole.empty();
}

bool contains(std::string_view line, std::string_view part) {
    return line.find(part) != std::string_view::npos;
}

std::string_view secondPiece(std::string_view line, const CharacterSet& separators) {
    const auto separates = [&](char character) { return separators.has(character); };
    const auto first = std::find_if_not(line.begin(), line.end(), separates);
    const auto between = std::find_if(first, line.end(), separates);
    const auto second = std::find_if_not(between, line.end(), separates);
    const auto end = std::find_if(second, line.end(), separates);
    return line.substr(static_cast<std::size_t>(second - line.begin()),
                       static_cast<std::size_t>(end - second));
}

} // namespace kavo::text
