#include "simulator/design/DesignImage.h"

#include "tests/simulator/OpenDesign.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <random>

namespace simulator {
namespace {

using tests::committedImage;
using tests::LoadedImage;

std::string refusal(const std::string& text) {
    std::string reason;
    return DesignImage::decode(text.data(), text.size(), &reason) ? std::string() : reason;
}

DesignImage smallDesign() {
    DesignImage image;
    image.applet = "Small";
    image.type = 7;
    image.registers = {{"Control", 8, false}, {"Status", 64, true}, {"Table", 14, false}};
    image.parameters = {{"ParameterOfControl", 1, 0, 0}, {"ParameterOfTable", 3, 4, 12}};
    image.events = {"First", "Second"};
    return image;
}

std::string sealed(const std::string& lines) { return DesignImage::seal(lines); }
const std::string head = "orbelline-design 1\napplet Small\ntype 7\n";

TEST(DesignImageTest, CommittedImageHoldsTheWholeDesign) {
    const std::string text = committedImage();
    const auto image = DesignImage::decode(text.data(), text.size());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->applet, "Orbelline");
    EXPECT_EQ(image->type, 3652);
    EXPECT_EQ(image->parameters.size(), 178u);
    EXPECT_EQ(image->registers.size(), 182u);
    EXPECT_EQ(image->events.size(), 32u);
}

TEST(DesignImageTest, EncodedDesignReadsBackTheSame) {
    const std::string text = smallDesign().encode();
    const auto image = DesignImage::decode(text.data(), text.size());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->encode(), text);
    EXPECT_EQ(image->registers[1].bits, 64u);
    EXPECT_TRUE(image->registers[1].isStatus);
    EXPECT_EQ(image->parameters[1].elements, 4u);
    EXPECT_EQ(image->events[1], "Second");
}

TEST(DesignImageTest, EveryTruncationIsRefused) {
    const std::string text = smallDesign().encode();
    for (std::size_t size = 0; size < text.size(); ++size) {
        EXPECT_FALSE(DesignImage::decode(text.data(), size)) << size;
    }
}

TEST(DesignImageTest, EveryFlippedBitIsRefused) {
    const std::string text = smallDesign().encode();
    for (std::size_t bit = 0; bit < text.size() * 8; ++bit) {
        std::string damaged = text;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
        EXPECT_FALSE(DesignImage::decode(damaged.data(), damaged.size())) << bit;
    }
}

TEST(DesignImageTest, GarbageOfAnySizeIsRefused) {
    std::mt19937 random(1);
    for (std::size_t size : {1u, 2u, 17u, 4096u, 100000u}) {
        std::string garbage(size, '\0');
        for (char& byte : garbage) {
            byte = static_cast<char>(random());
        }
        EXPECT_FALSE(DesignImage::decode(garbage.data(), garbage.size()));
        const std::string sealedGarbage = sealed(garbage);
        EXPECT_FALSE(DesignImage::decode(sealedGarbage.data(), sealedGarbage.size()));
    }
    EXPECT_FALSE(DesignImage::decode(nullptr, 0));
    EXPECT_FALSE(DesignImage::decode(nullptr, 12));
    const std::string tooLarge((std::size_t{1} << 24) + 1, '\n');
    EXPECT_FALSE(DesignImage::decode(tooLarge.data(), tooLarge.size()));
}

TEST(DesignImageTest, ContradictionsAreRefusedInWords) {
    const std::pair<const char*, const char*> mistakes[] = {
        {"register 2 8 control A\n", "line 4: registers are numbered from 1 without a gap"},
        {"register 1 0 control A\n", "line 4: a register has 1 to 64 bits"},
        {"register 1 65 control A\n", "line 4: a register has 1 to 64 bits"},
        {"register 1 8 nothing A\n", "line 4: a register is a control or a status"},
        {"register 1 8 control \n", "line 4: the last word is no name"},
        {"register 1 8 control A B\n", "line 4: unknown kind of line, or a wrong number of words"},
        {"parameter 1 A\n", "line 4: no such register"},
        {"register 1 8 control A\nparameter 1 B\nparameter 1 B\n",
         "line 6: a second parameter of the same name"},
        {"register 1 8 control A\ntable 16 5 1 B\n",
         "line 5: the register is too narrow for an element and its index"},
        {"register 1 8 control A\ntable 0 5 1 B\n", "line 5: no such register, or no such table"},
        {"type 8\n", "line 4: a second type number, or none"},
        {"applet Other\n", "line 4: a second applet name"},
        {"event A\x01\n", "line 4: the last word is no name"},
        {"what 1\n", "line 4: unknown kind of line, or a wrong number of words"},
    };
    for (const auto& mistake : mistakes) {
        EXPECT_EQ(refusal(sealed(head + mistake.first)), mistake.second);
    }
    EXPECT_EQ(refusal(sealed("orbelline-design 1\napplet A\n")), "the head of the image is incomplete");
    EXPECT_EQ(refusal(sealed("orbelline-design 2\napplet A\ntype 1\n")),
              "line 1: not the first line of a design image that this version reads");
}

TEST(DesignImageTest, CommentsAndEmptyLinesAreAllowed) {
    EXPECT_EQ(refusal(sealed(head + "# words\n\nevent A\n")), "");
}

TEST(DesignImageTest, RepeatedAndManyEventsAreAllowed) {
    DesignImage image = smallDesign();
    image.events.assign(70, "Repeated");
    const std::string text = image.encode();
    const LoadedImage loaded(text);
    ASSERT_NE(loaded.get(), nullptr);
    EXPECT_STREQ(QelGetEvent(loaded.get(), 69)->name, "Repeated");
    EXPECT_EQ(QelGetEvent(loaded.get(), 69)->id, 69u);
    EXPECT_EQ(QelGetEvent(loaded.get(), 70), nullptr);
}

TEST(DesignImageTest, SealReplacesAnOldSeal) {
    const std::string once = sealed(head);
    EXPECT_EQ(sealed(once), once);
    EXPECT_EQ(refusal(sealed("orbelline-design 1\napplet Small\ntype 7")), "");
}

TEST(DesignRuntimeTest, AnswersAboutRegisters) {
    const LoadedImage loaded(smallDesign().encode());
    ASSERT_NE(loaded.get(), nullptr);
    EXPECT_EQ(QelGetNrOfRegister(loaded.get()), 3);
    EXPECT_STREQ(QelGetRegisterName(loaded.get(), 1), "Control");
    EXPECT_EQ(QelGetRegisterName(loaded.get(), 0), nullptr);
    EXPECT_EQ(QelGetRegisterName(loaded.get(), 4), nullptr);
    EXPECT_EQ(QelGetRegisterByName(loaded.get(), "Status"), 2);
    EXPECT_LE(QelGetRegisterByName(loaded.get(), "status"), 0);
    EXPECT_LE(QelGetRegisterByName(loaded.get(), nullptr), 0);
    EXPECT_EQ(QelGetRegisterBitRange(loaded.get(), 2), 64);
}

TEST(DesignRuntimeTest, RepeatedRegisterNamesGiveTheFirst) {
    DesignImage image = smallDesign();
    image.registers.push_back({"Control", 3, false});
    const LoadedImage loaded(image.encode());
    EXPECT_STREQ(QelGetRegisterName(loaded.get(), 4), "Control");
    EXPECT_EQ(QelGetRegisterByName(loaded.get(), "Control"), 1);
}

TEST(DesignRuntimeTest, UnknownDesignsAnswerNothing) {
    int notADesign = 0;
    for (fpga_design* design :
         {static_cast<fpga_design*>(nullptr), reinterpret_cast<fpga_design*>(&notADesign)}) {
        EXPECT_EQ(QelGetNrOfRegister(design), 0);
        EXPECT_EQ(QelGetRegisterName(design, 1), nullptr);
        EXPECT_EQ(QelGetRegisterByName(design, "Control"), 0);
        EXPECT_EQ(QelGetRegisterBitRange(design, 1), 0);
        EXPECT_EQ(QelGetEvent(design, 0), nullptr);
        EXPECT_LT(QelUnloadQelFile(design), 0);
    }
    EXPECT_EQ(QelLoadDesignFromBuffer(nullptr, 0, 1), nullptr);
}

class DesignFileTest : public testing::Test {
  protected:
    void SetUp() override { std::ofstream(mFile, std::ios::binary) << smallDesign().encode(); }

    const kavo::test::TemporaryFolder mFolder;
    const std::string mFile = mFolder.path("some.qel");
};

TEST_F(DesignFileTest, LoadsOnlyTheRightType) {
    fpga_design* design = QelLoadQelFileWithType(mFile.c_str(), 7, 1);
    EXPECT_NE(design, nullptr);
    EXPECT_EQ(QelUnloadQelFile(design), 0);
    EXPECT_EQ(QelLoadQelFileWithType(mFile.c_str(), 3652, 1), nullptr);
}

TEST_F(DesignFileTest, MissingFileGivesNothing) {
    EXPECT_EQ(QelLoadQelFileWithType((mFile + ".missing").c_str(), 7, 1), nullptr);
    EXPECT_EQ(QelLoadQelFileWithType(nullptr, 7, 1), nullptr);
    EXPECT_EQ(QelLoadQelFileWithType(testing::TempDir().c_str(), 7, 1), nullptr) << "a folder is no file";
}

} // namespace
} // namespace simulator
