// How a caller gets the XML description: the size, then the text.

#include "appletwrappers-baselib/ParameterInfoBuilderXML.h"
#include "platform/ErrorCodes.h"
#include "tests/appletwrappers-baselib/BareWrapper.h"

#include <gtest/gtest.h>

namespace error = kavo::error;

namespace {

constexpr int port = 2;

class XmlBuffer : public testing::Test {
  protected:
    XmlBuffer() { wrapper.parameterInfo().addGroupInfo(port, nullptr, "G"); }
    std::string document() { return ParameterInfoBuilderXML(wrapper.parameterInfo(), wrapper, port).build(); }

    kavo::test::BareWrapper wrapper;
};

} // namespace

TEST_F(XmlBuffer, ANullBufferAsksForTheSize) {
    unsigned size = 0;
    wrapper.setError(-99);
    EXPECT_EQ(wrapper.Fg_getParameterInfoXML(nullptr, port, nullptr, &size), 0);
    EXPECT_EQ(size, document().size() + 1);
    EXPECT_EQ(wrapper.Fg_getLastErrorNumber(), 0);
    size = 5;
    EXPECT_EQ(wrapper.Fg_getParameterInfoXML(nullptr, port, nullptr, &size), 0);
    EXPECT_EQ(size, document().size() + 1);
}

TEST_F(XmlBuffer, ABufferOfExactlyTheSizeIsFilledAndNothingBehindIt) {
    const std::string text = document();
    std::vector<char> buffer(text.size() + 2, '#');
    auto size = static_cast<unsigned>(text.size() + 1);
    EXPECT_EQ(wrapper.Fg_getParameterInfoXML(nullptr, port, buffer.data(), &size), 0);
    EXPECT_EQ(std::string(buffer.data()), text);
    EXPECT_EQ(buffer.back(), '#');
    EXPECT_EQ(size, text.size() + 1);
}

TEST_F(XmlBuffer, ALargerBufferGetsTheSizeThatWasUsed) {
    const std::string text = document();
    std::vector<char> buffer(text.size() + 100, '#');
    auto size = static_cast<unsigned>(buffer.size());
    EXPECT_EQ(wrapper.Fg_getParameterInfoXML(nullptr, port, buffer.data(), &size), 0);
    EXPECT_EQ(size, text.size() + 1);
}

TEST_F(XmlBuffer, ABufferOneByteShortIsLeftAlone) {
    const std::string text = document();
    for (const unsigned bytes : {static_cast<unsigned>(text.size()), 1U, 0U}) {
        std::vector<char> buffer(text.size() + 1, '#');
        unsigned size = bytes;
        wrapper.setError(0);
        EXPECT_EQ(wrapper.Fg_getParameterInfoXML(nullptr, port, buffer.data(), &size), error::bufferTooSmall);
        EXPECT_EQ(wrapper.Fg_getLastErrorNumber(), error::bufferTooSmall);
        EXPECT_EQ(size, bytes);
        EXPECT_EQ(buffer, std::vector<char>(text.size() + 1, '#'));
    }
}

TEST_F(XmlBuffer, APortWithoutDescriptionIsRefusedBehindTheSize) {
    char buffer[4];
    for (const int nowhere : {-1, 0, 3, 4, 2147483647}) {
        unsigned size = 4;
        EXPECT_EQ(wrapper.Fg_getParameterInfoXML(nullptr, nowhere, buffer, &size), error::noDescription);
        EXPECT_EQ(wrapper.Fg_getLastErrorNumber(), error::noDescription);
        EXPECT_EQ(size, 4U);
        size = 0;
        EXPECT_EQ(wrapper.Fg_getParameterInfoXML(nullptr, nowhere, nullptr, &size), error::noDescription);
        EXPECT_EQ(wrapper.Fg_getParameterInfoXML(nullptr, nowhere, buffer, &size), error::bufferTooSmall);
    }
}

TEST_F(XmlBuffer, ANullSizeIsRefused) {
    EXPECT_EQ(wrapper.Fg_getParameterInfoXML(nullptr, port, nullptr, nullptr), error::invalidParameter);
}
