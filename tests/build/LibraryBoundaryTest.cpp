#include "tests/build/BuiltLibrary.h"

#include <algorithm>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace orbelline::tests {

namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

const std::set<std::string> exportedFunctions{
    "Fg_AcquireEx",
    "Fg_AllocShading",
    "Fg_FreeGrabber",
    "Fg_FreeShading",
    "Fg_getAppletId",
    "Fg_getEventMask",
    "Fg_getEventName",
    "Fg_getLastErrorNumber",
    "Fg_getLastPicNumberBlockingEx",
    "Fg_getLastPicNumberEx",
    "Fg_getNrOfParameter",
    "Fg_getParameterId",
    "Fg_getParameterIdByName",
    "Fg_getParameterInfo",
    "Fg_getParameterInfoXML",
    "Fg_getParameterName",
    "Fg_getParameterWithType",
    "Fg_getStatusEx",
    "Fg_loadConfig",
    "Fg_saveConfig",
    "Fg_setParameterWithType",
    "Fg_stopAcquireEx",
    "Info",
    "Shad_FreeAccess",
    "Shad_GetAccess",
    "Shad_GetMaxLine",
    "Shad_SetFixedPatternNoiseLine",
    "Shad_SetMultValueLine",
    "Shad_SetSubValueLine",
    "Shad_WriteActLine",
    "Std_entry",
};

const std::set<std::string> hostFunctions{
    "KavoRegisterRead",       "KavoRegisterWrite",    "QelGetEvent",        "QelGetNrOfRegister",
    "QelGetRegisterBitRange", "QelGetRegisterByName", "QelGetRegisterName", "QelLoadDesignFromBuffer",
    "QelLoadQelFileWithType", "QelUnloadQelFile",
};

bool startsWith(const std::string& text, const std::string& start) { return text.rfind(start, 0) == 0; }

/// Names that a sanitizer or the coverage counters put into every object.
bool isInstrumentation(const std::string& name) {
    const std::set<std::string> starts{"__asan_", "__ubsan_", "__tsan_", "__sanitizer_", "__gcov_"};
    return std::any_of(starts.begin(), starts.end(),
                       [&name](const std::string& start) { return startsWith(name, start); });
}

std::vector<std::string> plainNames(const std::vector<DynamicName>& names) {
    std::vector<std::string> plain;
    for (const DynamicName& entry : names) {
        if (!isInstrumentation(entry.name)) {
            plain.push_back(entry.name);
        }
    }
    return plain;
}

} // namespace

TEST(LibraryBoundary, OffersExactlyTheEntryPoints) {
    EXPECT_EQ(exportedFunctions.size(), 31U);
    EXPECT_THAT(plainNames(offeredNames()), UnorderedElementsAreArray(exportedFunctions));
}

TEST(LibraryBoundary, BindsItsOwnEntryPointsInside) {
    std::vector<std::string> boundOutside;
    for (const std::string& line : linesWith(readelf("--relocs"), " R_")) {
        for (const std::string& word : words(line)) {
            if (exportedFunctions.count(word) > 0) {
                boundOutside.push_back(line);
            }
        }
    }
    EXPECT_THAT(boundOutside, IsEmpty());
}

TEST(LibraryBoundary, NeedsTheDesignRuntimeAndRegisterAccessBySoname) {
    EXPECT_THAT(neededLibraries(), Contains("libqelrt.so"));
    EXPECT_THAT(neededLibraries(), Contains("libkavoiolibrt.so"));
}

TEST(LibraryBoundary, NeedsNoLibraryBesideTheHostAndTheLanguage) {
    const std::set<std::string> languages{"libstdc++.so.6", "libgcc_s.so.1", "libm.so.6",
                                          "libc.so.6",      "ld-linux.so.2", "ld-linux-x86-64.so.2",
                                          "libasan.so.8",   "libubsan.so.1", "libtsan.so.2"};
    for (const std::string& library : neededLibraries()) {
        const bool isHost = library == "libqelrt.so" || library == "libkavoiolibrt.so";
        EXPECT_TRUE(isHost || languages.count(library) > 0) << library << " is needed";
    }
}

// AddressSanitizer stands in for functions of the language's libraries, without their versions.
#if !defined(ORBELLINE_SANITIZED)
TEST(LibraryBoundary, AsksTheHostForItsDeclaredFunctionsOnly) {
    for (const DynamicName& entry : neededNames()) {
        if (entry.version.empty() && !isInstrumentation(entry.name)) {
            EXPECT_EQ(hostFunctions.count(entry.name), 1U) << entry.name << " is no function of the host";
        }
    }
}
#endif

TEST(LibraryBoundary, CarriesNoSearchPath) {
    const std::vector<std::string> entries = readelf("--dynamic");
    EXPECT_THAT(linesWith(entries, "(RPATH)"), IsEmpty());
    EXPECT_THAT(linesWith(entries, "(RUNPATH)"), IsEmpty());
}

} // namespace orbelline::tests
