#include "grabber_basis/TextLines.h"

#include <algorithm>

namespace kavo::text {
namespace {

std::string_view skip(std::string_view text, std::string_view separators) {
    return text.substr(std::min(text.find_first_not_of(separators), text.size()));
}

std::string_view firstPiece(std::string_view text, std::string_view separators) {
    return text.substr(0, text.find_first_of(separators));
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

std::string_view secondPiece(std::string_view line, std::string_view separators) {
    const std::string_view text = skip(line, separators);
    const std::string_view behindFirst = text.substr(firstPiece(text, separators).size());
    return firstPiece(skip(behindFirst, separators), separators);
}

} // namespace kavo::text
