#include "templates/TemporaryFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <sys/sysinfo.h>
#include <unistd.h>

namespace {

constexpr std::string_view alphabet = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
constexpr std::int64_t nameCount = 56800235584; // 62 to the power of 6
constexpr int suffixLength = 5;

class TemporaryFilesTest : public testing::Test {
  protected:
    std::string makeTemplate() const { return mFolder.path("coef-XXXXXX.tiff"); }

    static int create(std::string& name) { return kavo::templates::mkstemps(name.data(), suffixLength); }

    static std::string sixCharacters(const std::string& name) { return name.substr(name.size() - 11, 6); }

    static std::int64_t numberOf(const std::string& name) {
        std::int64_t number = 0;
        const std::string characters = sixCharacters(name);
        for (auto digit = characters.rbegin(); digit != characters.rend(); ++digit) {
            number = number * 62 + static_cast<std::int64_t>(alphabet.find(*digit));
        }
        return number;
    }

    std::string nameOf(std::int64_t number) const {
        std::string name = makeTemplate();
        for (std::size_t i = 0; i < 6; ++i) {
            name[name.size() - 11 + i] = alphabet[static_cast<std::size_t>(number % 62)];
            number /= 62;
        }
        return name;
    }

    /// Creates a file, closes it and gives the number in its name.
    std::int64_t createAndGiveNumber() const {
        std::string name = makeTemplate();
        const int descriptor = create(name);
        EXPECT_GE(descriptor, 0);
        close(descriptor);
        return numberOf(name);
    }

    static std::int64_t uptime() {
        struct sysinfo system {};
        sysinfo(&system);
        return system.uptime;
    }

    bool folderIsEmpty() const { return std::filesystem::is_empty(mFolder.path("")); }

    kavo::test::TemporaryFolder mFolder;
};

TEST_F(TemporaryFilesTest, ReplacesTheSixCharactersByLettersAndDigits) {
    std::string name = makeTemplate();
    const int descriptor = create(name);
    ASSERT_GE(descriptor, 0);
    close(descriptor);
    EXPECT_EQ(name.size(), makeTemplate().size());
    EXPECT_EQ(name.substr(name.size() - 5), ".tiff");
    EXPECT_EQ(sixCharacters(name).find_first_not_of(alphabet), std::string::npos);
    EXPECT_TRUE(std::filesystem::exists(name));
}

TEST_F(TemporaryFilesTest, OnlyTheOwnerMayReadAndWrite) {
    const mode_t oldMask = umask(0);
    std::string name = makeTemplate();
    const int descriptor = create(name);
    umask(oldMask);
    struct stat status {};
    ASSERT_EQ(fstat(descriptor, &status), 0);
    close(descriptor);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    EXPECT_EQ(status.st_size, 0);
}

TEST_F(TemporaryFilesTest, DescriptorReadsAndWrites) {
    std::string name = makeTemplate();
    const int descriptor = create(name);
    char character = 'a';
    EXPECT_EQ(write(descriptor, &character, 1), 1);
    EXPECT_EQ(pread(descriptor, &character, 1, 0), 1);
    close(descriptor);
}

TEST_F(TemporaryFilesTest, WorksWithoutASuffix) {
    std::string name = mFolder.path("coef-XXXXXX");
    const int descriptor = kavo::templates::mkstemps(name.data(), 0);
    EXPECT_GE(descriptor, 0);
    close(descriptor);
    EXPECT_TRUE(std::filesystem::exists(name));
}

TEST_F(TemporaryFilesTest, RefusesATemplateWithOtherCharactersAndCreatesNothing) {
    for (const char* text : {"coef-XXXXXx.tiff", "coef-aXXXXX.tiff", "XXXXXX-coef.tiff", "XXXXX.tiff"}) {
        std::string name = mFolder.path(text);
        const std::string before = name;
        EXPECT_EQ(create(name), -1) << text;
        EXPECT_EQ(name, before);
    }
    EXPECT_TRUE(folderIsEmpty());
}

TEST_F(TemporaryFilesTest, RefusesATemplateShorterThanSuffixAndSixCharacters) {
    std::string tooShort = "XXXXX.tiff";
    EXPECT_EQ(create(tooShort), -1);
    std::string empty;
    EXPECT_EQ(kavo::templates::mkstemps(empty.data(), 0), -1);
    std::string negativeSuffix = makeTemplate();
    EXPECT_EQ(kavo::templates::mkstemps(negativeSuffix.data(), -5), -1);
    EXPECT_TRUE(folderIsEmpty());
}

TEST_F(TemporaryFilesTest, LeavesErrnoAloneForAnUnusableTemplate) {
    errno = 0;
    std::string wrong = mFolder.path("coef-abcdef.tiff");
    create(wrong);
    std::string tooShort = "X";
    create(tooShort);
    EXPECT_EQ(errno, 0);
}

TEST_F(TemporaryFilesTest, EachNameIsTheUptimeBehindTheOneBefore) {
    const std::int64_t first = createAndGiveNumber();
    const std::int64_t uptimeBefore = uptime();
    const std::int64_t second = createAndGiveNumber();
    const std::int64_t step = (second - first + nameCount) % nameCount;
    EXPECT_GE(step, uptimeBefore);
    EXPECT_LE(step, uptime());
}

TEST_F(TemporaryFilesTest, TakesTheName7777BehindOneThatExists) {
    const std::int64_t first = createAndGiveNumber();
    const std::int64_t uptimeBefore = uptime();
    for (std::int64_t seconds = uptimeBefore; seconds < uptimeBefore + 5; ++seconds) {
        mFolder.makeFile(std::filesystem::path(nameOf(first + seconds)).filename().string(), "kept");
    }
    const std::int64_t second = createAndGiveNumber();
    const std::int64_t step = (second - first + nameCount) % nameCount - 7777;
    EXPECT_GE(step, uptimeBefore);
    EXPECT_LE(step, uptime());
    EXPECT_EQ(kavo::test::fileContent(nameOf(first + uptimeBefore)), "kept");
}

TEST_F(TemporaryFilesTest, EmptiesTheTemplateWhenNoNameCanBeCreated) {
    std::string name = mFolder.path("missing-folder/coef-XXXXXX.tiff");
    EXPECT_EQ(create(name), -1);
    EXPECT_EQ(name[0], '\0');
}

TEST_F(TemporaryFilesTest, GivesUpAfter238328Names) {
    const std::int64_t first = createAndGiveNumber();
    const std::int64_t uptimeBefore = uptime();
    std::string name = mFolder.path("missing-folder/coef-XXXXXX.tiff");
    EXPECT_EQ(create(name), -1);
    const std::int64_t second = createAndGiveNumber();
    // Both calls begin with a step of the uptime, and each name that failed adds its own.
    const std::int64_t step = (second - first + nameCount) % nameCount - 238328LL * 7777;
    EXPECT_GE(step, 2 * uptimeBefore);
    EXPECT_LE(step, 2 * uptime());
}

} // namespace
