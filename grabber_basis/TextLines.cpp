#include "grabber_basis/TextLines.h"

namespace kavo::text {
namespace {

/// Takes what is in the set, or what is not, off the front of a text.
std::string_view takeWhile(std::string_view& text, const CharacterSet& set, bool inSet) {
    std::size_t length = 0;
    while (length < text.size() && set.has(text[length]) == inSet) {
        ++length;
    }
    const std::string_view taken = text.substr(0, length);
    text.remove_prefix(length);
    return taken;
}

} // namespace

LineReader::LineReader(std::FILE* file) : mFile(file), mBuffer{} {
    if (mFile != nullptr) {
        std::rewind(mFile);
    }
}

bool LineReader::next() {
    if (mFile == nullptr || std::fgets(mBuffer, sizeof mBuffer, mFile) == nullptr) {
        return false;
    }
    mLine = mBuffer;
    return true;
}

bool contains(std::string_view line, std::string_view part) {
    return line.find(part) != std::string_view::npos;
}

std::string_view secondPiece(std::string_view line, const CharacterSet& separators) {
    takeWhile(line, separators, true);
    takeWhile(line, separators, false);
    takeWhile(line, separators, true);
    return takeWhile(line, separators, false);
}

} // namespace kavo::text
