#pragma once

#include "templates/Locks.h"

#include <map>
#include <string>

namespace kavo::templates::platform {

/// Named properties in memory, for any number of threads.
class PropertiesFile {
  public:
    /// Sets a property, new or known.
    void set(const std::string& key, const std::string& value);
    /// The value of a property; the fallback for an unknown one.
    std::string get(const std::string& key, const std::string& fallback = {}) const;

    /// All properties, in the order of their keys.
    std::map<std::string, std::string> all() const;

    /// True until set is called the first time.
    bool isUnchanged() const;
    /// True as soon as a property was replaced by another value.
    bool hasReplacedValues() const;

  private:
    std::map<std::string, std::string> mProperties;
    bool mIsUnchanged = true;
    bool mHasReplacedValues = false;
    mutable RecursiveMutex mMutex;
};

} // namespace kavo::templates::platform
