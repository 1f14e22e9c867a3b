#pragma once

#include <string>

namespace orbctl {

/// A new folder for files that nobody keeps, removed with all that is in it.
class ScratchFolder {
  public:
    /// \throws Failure  (notFound)
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& path() const { return mPath; }

  private:
    std::string mPath;
};

} // namespace orbctl
