#include "templates/PropertiesFile.h"

#include <gtest/gtest.h>
#include <thread>

namespace {

using kavo::templates::platform::PropertiesFile;

TEST(PropertiesFileTest, StartsUnchangedAndWithoutReplacedValues) {
    const PropertiesFile properties;
    EXPECT_TRUE(properties.isUnchanged());
    EXPECT_FALSE(properties.hasReplacedValues());
}

TEST(PropertiesFileTest, UnknownPropertyGivesTheFallback) {
    const PropertiesFile properties;
    EXPECT_EQ(properties.get("missing"), "");
    EXPECT_EQ(properties.get("missing", "instead"), "instead");
}

TEST(PropertiesFileTest, KeepsWhatWasSetLast) {
    PropertiesFile properties;
    properties.set("key", "first");
    EXPECT_FALSE(properties.isUnchanged());
    EXPECT_FALSE(properties.hasReplacedValues());
    properties.set("key", "second");
    EXPECT_EQ(properties.get("key"), "second");
    EXPECT_TRUE(properties.hasReplacedValues());
    properties.set("another", "third");
    EXPECT_TRUE(properties.hasReplacedValues()) << "once replaced, for ever";
}

TEST(PropertiesFileTest, TakesPropertiesFromSeveralThreads) {
    PropertiesFile properties;
    const auto setMany = [&](const std::string& prefix) {
        for (int i = 0; i < 500; ++i) {
            properties.set(prefix + std::to_string(i), prefix);
        }
    };
    std::thread other(setMany, "other");
    setMany("own");
    other.join();
    EXPECT_EQ(properties.get("own499"), "own");
    EXPECT_EQ(properties.get("other499"), "other");
}

} // namespace
