// What a wrapper inherits: shading, event look-ups over the design's own names, field caches, temporary
// files.

#include "platform/ErrorCodes.h"
#include "tests/appletwrappers-baselib/BareWrapper.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace error = kavo::error;
using kavo::test::BareWrapper;

namespace {

class BaseOperations : public testing::Test {
  protected:
    void loadEvents(std::vector<std::string> events) {
        wrapper.initHandles(nullptr, kavo::test::loadSmallDesign(std::move(events)));
        ASSERT_NE(wrapper.designHandle(), nullptr);
    }
    static std::vector<std::string> numbered(int count) {
        std::vector<std::string> events;
        for (int index = 0; index < count; ++index) {
            events.push_back("event" + std::to_string(index));
        }
        return events;
    }

    BareWrapper wrapper;
};

} // namespace

TEST_F(BaseOperations, NoShadingIsSupported) {
    EXPECT_EQ(wrapper.Fg_AllocShading(1, 2), nullptr);
    EXPECT_EQ(wrapper.Fg_FreeShading(nullptr), error::notSupported);
    EXPECT_EQ(wrapper.Shad_SetSubValueLine(nullptr, 1, 2, 1.0F), error::notSupported);
    EXPECT_EQ(wrapper.Shad_SetMultValueLine(nullptr, 1, 2, 1.0F), error::notSupported);
    EXPECT_EQ(wrapper.Shad_SetFixedPatternNoiseLine(nullptr, 1, 2, 3), error::notSupported);
    EXPECT_EQ(wrapper.Shad_GetMaxLine(nullptr), error::notSupported);
    EXPECT_EQ(wrapper.Shad_GetAccess(nullptr), error::notSupported);
    EXPECT_EQ(wrapper.Shad_FreeAccess(nullptr), error::notSupported);
    EXPECT_EQ(wrapper.Shad_WriteActLine(nullptr, 1), error::notSupported);
}

TEST_F(BaseOperations, AnEventsMaskIsItsPlaceInTheDesign) {
    loadEvents({"zero", "one", "two"});
    EXPECT_EQ(wrapper.FgQxWrapper::Fg_getEventMask("zero"), 1U);
    EXPECT_EQ(wrapper.FgQxWrapper::Fg_getEventMask("two"), 4U);
    EXPECT_STREQ(wrapper.FgQxWrapper::Fg_getEventName(2), "one");
}

TEST_F(BaseOperations, UnknownEventsHaveNoMaskAndNoName) {
    loadEvents({"zero", "one"});
    for (const char* name : {static_cast<const char*>(nullptr), "", "Zero", "zer", "zeroo"}) {
        EXPECT_EQ(wrapper.Fg_getEventMask(name), 0U);
    }
    for (const std::uint64_t mask : {0ULL, 3ULL, 4ULL, ~0ULL, 1ULL << 63}) {
        EXPECT_EQ(wrapper.Fg_getEventName(mask), nullptr) << mask;
    }
}

TEST_F(BaseOperations, SixtyFourEventsAreFoundAndNoMore) {
    loadEvents(numbered(66));
    EXPECT_EQ(wrapper.Fg_getEventMask("event63"), 1ULL << 63);
    EXPECT_STREQ(wrapper.Fg_getEventName(1ULL << 63), "event63");
    EXPECT_EQ(wrapper.Fg_getEventMask("event64"), 0U);
    EXPECT_EQ(wrapper.Fg_getEventName(0), nullptr);
}

TEST_F(BaseOperations, TheFirstOfTwoEventsOfOneNameCounts) {
    loadEvents({"a", "b", "a"});
    EXPECT_EQ(wrapper.Fg_getEventMask("a"), 1U);
    EXPECT_STREQ(wrapper.Fg_getEventName(4), "a");
}

TEST_F(BaseOperations, EventsLeaveTheLastErrorAlone) {
    wrapper.setError(-99);
    EXPECT_EQ(wrapper.Fg_getEventMask("zero"), 0U);
    EXPECT_EQ(wrapper.Fg_getLastErrorNumber(), -99);
}

TEST_F(BaseOperations, FieldCachesCopyTheElementOfTheRecord) {
    std::uint32_t words[3] = {1, 2, 3};
    const FieldParameterInt_s newWord{4294967295U, 1};
    FgQxWrapper::setFieldCache(words, &newWord);
    EXPECT_EQ(words[0], 1U);
    EXPECT_EQ(words[1], 4294967295U);
    EXPECT_EQ(words[2], 3U);
    FieldParameterInt_s readWord{0, 2};
    FgQxWrapper::getFieldCache(words, &readWord);
    EXPECT_EQ(readWord.value, 3U);
    EXPECT_EQ(readWord.index, 2U);

    double reals[2] = {0.5, 1.5};
    const FieldParameterDouble_s newReal{-2.25, 0};
    FgQxWrapper::setFieldCache(reals, &newReal);
    EXPECT_EQ(reals[0], -2.25);
    FieldParameterDouble_s readReal{0, 1};
    FgQxWrapper::getFieldCache(reals, &readReal);
    EXPECT_EQ(readReal.value, 1.5);
}

TEST_F(BaseOperations, ANullRecordDoesNothing) {
    std::uint32_t word = 7;
    double real = 7;
    FgQxWrapper::setFieldCache(&word, static_cast<const FieldParameterInt_s*>(nullptr));
    FgQxWrapper::getFieldCache(&word, static_cast<FieldParameterInt_s*>(nullptr));
    FgQxWrapper::setFieldCache(&real, static_cast<const FieldParameterDouble_s*>(nullptr));
    FgQxWrapper::getFieldCache(&real, static_cast<FieldParameterDouble_s*>(nullptr));
    EXPECT_EQ(word, 7U);
    EXPECT_EQ(real, 7.0);
}

TEST_F(BaseOperations, TemporaryFilesExistUntilTheyAreDeleted) {
    char* first = FgQxWrapper::createTempFile();
    char* second = FgQxWrapper::createTempFile();
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    const std::string path = first;
    EXPECT_STRNE(first, second);
    EXPECT_EQ(path.substr(0, 10), "/tmp/coef-");
    EXPECT_EQ(path.substr(16), ".tiff");
    EXPECT_EQ(std::filesystem::file_size(path), 0U);
    FgQxWrapper::deleteTempFile(first);
    FgQxWrapper::deleteTempFile(second);
    EXPECT_FALSE(std::filesystem::exists(path));
    FgQxWrapper::deleteTempFile(nullptr);
}

TEST_F(BaseOperations, TheLastErrorIsWhatWasStored) {
    EXPECT_EQ(wrapper.setError(-5), -5);
    EXPECT_EQ(wrapper.Fg_getLastErrorNumber(), -5);
    EXPECT_EQ(wrapper.fgError().getErrorNumberBuffer(), -5);
}

TEST_F(BaseOperations, OnlyPortsOfTheRegistryHaveDescriptions) {
    RegisterInfo* group = wrapper.parameterInfo().addGroupInfo(3, nullptr, "G");
    EXPECT_EQ(wrapper.Fg_getParameterInfo(3), group);
    for (const int port : {-1, 0, 4, 2147483647, -2147483647}) {
        EXPECT_EQ(wrapper.Fg_getParameterInfo(port), nullptr) << port;
    }
}
