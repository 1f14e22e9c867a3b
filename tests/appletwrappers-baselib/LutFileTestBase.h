#pragma once

#include "appletwrappers-baselib/Fg_LutFileParser.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace kavo::test {

/// A folder for lookup-table files, and records as tests need them.
class LutFileTestBase : public testing::Test {
  protected:
    static LookupTable_s tableOf(const std::vector<std::uint32_t>& values) {
        LookupTable_s table;
        table.lut = std::make_unique<std::uint32_t[]>(values.size());
        std::copy(values.begin(), values.end(), table.lut.get());
        table.id = 3;
        table.nrOfElements = static_cast<std::uint32_t>(values.size());
        return table;
    }

    static KneeLookupTable_s kneesOf(const std::vector<double>& values) {
        KneeLookupTable_s table;
        table.value = std::make_unique<double[]>(values.size());
        std::copy(values.begin(), values.end(), table.value.get());
        table.nrOfElements = static_cast<std::uint32_t>(values.size());
        return table;
    }

    static std::vector<std::uint32_t> valuesOf(const LookupTable_s& table) {
        return {table.lut.get(), table.lut.get() + table.nrOfElements};
    }

    static std::vector<double> valuesOf(const KneeLookupTable_s& table) {
        return {table.value.get(), table.value.get() + table.nrOfElements};
    }

    std::string fileOf(std::string_view content) const { return mFolder.makeFile("read.lut", content); }
    std::string saved() const { return fileContent(mPath); }

    TemporaryFolder mFolder;
    std::string mPath = mFolder.path("saved.lut");
    Fg_LutFileParser mParser;
};

} // namespace kavo::test
