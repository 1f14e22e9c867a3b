#pragma once

#include <memory>
#include <string>

namespace orbctl {

/// A shared library of the host, closed when the last copy goes.
class HostLibrary {
  public:
    HostLibrary() = default;

    /// \param file  a path, or a name without a slash that the loader looks for
    /// \param role  what the library is, for the message ("runtime")
    /// \throws Failure (notFound) with the loader's reason
    static HostLibrary open(const std::string& file, const std::string& role);
    /// A library that somebody else keeps open.
    static HostLibrary borrow(void* handle, const std::string& file);

    /// Address of a symbol, or null.
    void* symbol(const char* name) const;
    const std::string& file() const { return mFile; }
    bool isOpen() const { return mHandle != nullptr; }

  private:
    std::shared_ptr<void> mHandle;
    std::string mFile;
};

} // namespace orbctl
