#pragma once

#include <cstdio>
#include <memory>
#include <string_view>
#include <vector>

namespace kavo::text {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OwnedFile = std::unique_ptr<std::FILE, FileCloser>;

/// The open file of a parser. Opening another one replaces it: streams handed out before stay usable, they
/// are closed together with this object.
class TextFile {
  public:
    static bool canBeRead(const char* path);

    /// Opens a file with an fopen mode. After a failure no file is open.
    bool open(const char* path, const char* mode);
    /// The open stream, or null.
    std::FILE* stream() const { return mCurrent.get(); }

    /// Writes and flushes. Without an open file nothing is written, which counts as a failure.
    void write(std::string_view text);
    /// Whether any write to the file that is open now has failed.
    bool hasWriteFailed() const { return mHasWriteFailed; }
    /// Whether reading the file that is open now has met an error.
    bool hasReadFailed() const { return stream() != nullptr && std::ferror(stream()) != 0; }

  private:
    OwnedFile mCurrent;
    std::vector<OwnedFile> mReplaced;
    bool mHasWriteFailed = false;
};

} // namespace kavo::text
