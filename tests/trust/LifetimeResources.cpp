#include "tests/trust/LifetimeResources.h"

#include "tests/support/AllocationFaults.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>

namespace {

/// The heap may give a block in a piece that is a little larger than before. A word for each of a thousand lives
/// is more than this.
constexpr long heapTolerance = 4000;

std::multiset<std::string> openDescriptors() {
    std::multiset<std::string> targets;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code goneMeanwhile;
        const auto target = std::filesystem::read_symlink(entry.path(), goneMeanwhile);
        // The folder itself is open while it is read.
        if (!goneMeanwhile && target.string().find("/fd") == std::string::npos) {
            targets.insert(target);
        }
    }
    return targets;
}

std::set<std::string> mappedLibraries() {
    std::set<std::string> libraries;
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        const std::size_t path = line.find('/');
        if (path != std::string::npos && line.find(".so", path) != std::string::npos) {
            libraries.insert(line.substr(path));
        }
    }
    return libraries;
}

std::multiset<std::string> filesOfTheAppletsKind() {
    std::multiset<std::string> names;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/tmp", ignored)) {
        const std::string name = entry.path().filename();
        if (name.rfind("coef-", 0) == 0) {
            names.insert(name);
        }
    }
    return names;
}

/// Those of now that were not there before, once those of other processes had time to go.
std::multiset<std::string> filesLeftBehind(const std::multiset<std::string>& before) {
    std::multiset<std::string> left;
    for (int attempt = 0; attempt < 50; ++attempt) {
        left = filesOfTheAppletsKind();
        for (const std::string& known : before) {
            left.erase(known);
        }
        if (left.empty()) {
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    return left;
}

} // namespace

LifetimeResources LifetimeResources::now() {
    LifetimeResources resources;
    resources.descriptors = openDescriptors();
    resources.libraries = mappedLibraries();
    resources.temporaryFiles = filesOfTheAppletsKind();
    const kavo::test::LiveMemory memory = kavo::test::liveMemory();
    resources.blocks = memory.blocks;
    resources.bytes = memory.bytes;
    return resources;
}

LifetimeBalance::~LifetimeBalance() {
    const kavo::test::LiveMemory memory = kavo::test::liveMemory();
    // What the record itself has taken came before its own count.
    EXPECT_EQ(memory.blocks, mBefore.blocks);
    EXPECT_LT(memory.bytes - mBefore.bytes, heapTolerance);
    EXPECT_EQ(openDescriptors(), mBefore.descriptors);
    EXPECT_EQ(mappedLibraries(), mBefore.libraries);
    EXPECT_EQ(filesLeftBehind(mBefore.temporaryFiles), std::multiset<std::string>());
}
