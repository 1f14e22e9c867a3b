#include "grabber_basis/TextFile.h"

#include <utility>

namespace kavo::text {
namespace {

OwnedFile openFile(const char* path, const char* mode) {
    return OwnedFile(path == nullptr ? nullptr : std::fopen(path, mode));
}

} // namespace

bool TextFile::canBeRead(const char* path) { return openFile(path, "re") != nullptr; }

bool TextFile::open(const char* path, const char* mode) {
    OwnedFile opened = openFile(path, mode);
    if (mCurrent != nullptr) {
        mReplaced.push_back(std::move(mCurrent));
    }
    mCurrent = std::move(opened);
    mHasWriteFailed = false;
    return mCurrent != nullptr;
}

void TextFile::write(std::string_view text) {
    std::FILE* const file = stream();
    const bool isWritten = file != nullptr && std::fwrite(text.data(), 1, text.size(), file) == text.size() &&
                           std::fflush(file) == 0;
    mHasWriteFailed = mHasWriteFailed || !isWritten;
}

} // namespace kavo::text
