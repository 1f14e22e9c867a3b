#pragma once

#include "grabber_basis/Fg_ConfigFileParser.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>

namespace kavo::test {

/// A folder for configuration files, and a parser over a text that a test gives.
class ConfigFileTestBase : public testing::Test {
  protected:
    static constexpr char notFound[] = "not found";

    Fg_ConfigFileParser& parserOf(std::string_view content) {
        const std::string path = mFolder.makeFile("read.mcf", content);
        mReader = std::make_unique<Fg_ConfigFileParser>(nullptr, path.c_str(), true);
        return *mReader;
    }

    /// The value of a quoted entry, or notFound.
    static std::string textFromLine(Fg_ConfigFileParser& parser, const char* key) {
        char value[Fg_ConfigFileParser::valueBytes] = {};
        return parser.parseKeyFromLine(key, value) == 0 ? value : notFound;
    }

    static std::string textInSection(Fg_ConfigFileParser& parser, const char* section, const char* key) {
        char value[Fg_ConfigFileParser::valueBytes] = {};
        return parser.parseKey(section, key, value) == 0 ? value : notFound;
    }

    TemporaryFolder mFolder;

  private:
    std::unique_ptr<Fg_ConfigFileParser> mReader;
};

} // namespace kavo::test
