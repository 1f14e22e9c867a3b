#include "templates/PropertiesFile.h"

#include "templates/Guards.h"

namespace kavo::templates::platform {

void PropertiesFile::set(const std::string& key, const std::string& value) {
    const RecursiveMutexGuard guard(&mMutex);
    const auto [property, isNew] = mProperties.insert_or_assign(key, value);
    mIsUnchanged = false;
    mHasReplacedValues = mHasReplacedValues || !isNew;
}

std::string PropertiesFile::get(const std::string& key, const std::string& fallback) const {
    const RecursiveMutexGuard guard(&mMutex);
    const auto property = mProperties.find(key);
    return property == mProperties.end() ? fallback : property->second;
}

std::map<std::string, std::string> PropertiesFile::all() const {
    const RecursiveMutexGuard guard(&mMutex);
    return mProperties;
}

bool PropertiesFile::isUnchanged() const {
    const RecursiveMutexGuard guard(&mMutex);
    return mIsUnchanged;
}

bool PropertiesFile::hasReplacedValues() const {
    const RecursiveMutexGuard guard(&mMutex);
    return mHasReplacedValues;
}

} // namespace kavo::templates::platform
