#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace kavo::test {

/// Sets an environment variable, or removes it, until the end of the scope.
class ScopedEnvironment {
  public:
    /// \param value  null removes the variable
    ScopedEnvironment(std::string name, const char* value) : mName(std::move(name)) {
        if (const char* previous = std::getenv(mName.c_str()); previous != nullptr) {
            mPrevious = previous;
        }
        assign(value);
    }
    ~ScopedEnvironment() { assign(mPrevious ? mPrevious->c_str() : nullptr); }
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

  private:
    void assign(const char* value) const {
        if (value != nullptr) {
            setenv(mName.c_str(), value, 1);
        } else {
            unsetenv(mName.c_str());
        }
    }

    std::string mName;
    std::optional<std::string> mPrevious;
};

} // namespace kavo::test
