#include "platform/usb/MDeviceId.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

std::string Text(const std::string& p_strAnswer) {
    return MDeviceId::Text(std::vector<std::uint8_t>(p_strAnswer.begin(), p_strAnswer.end()));
}

/// A length in front of a text, high byte first.
std::string WithLength(std::size_t p_iLength, const std::string& p_strText) {
    return std::string{static_cast<char>(p_iLength / 256), static_cast<char>(p_iLength % 256)} +
           p_strText;
}

const std::string Short = "MFG:Varden;MDL:X1;";

TEST(MDeviceIdTest, TheLengthIsBigEndianAndCountsItself) {
    EXPECT_EQ(Text(WithLength(Short.size() + 2, Short)), Short);
    const std::string strLong = "MFG:Varden;DES:" + std::string(300, 'x') + ";";
    EXPECT_EQ(Text(WithLength(strLong.size() + 2, strLong)), strLong);
}

TEST(MDeviceIdTest, WhatLiesBehindTheCountedTextIsNotPartOfIt) {
    EXPECT_EQ(Text(WithLength(Short.size() + 2, Short + "garbage")), Short);
    EXPECT_EQ(Text(WithLength(Short.size() + 2, Short) + "\0\0garbage"s), Short);
}

TEST(MDeviceIdTest, ALengthThatLeavesItsOwnBytesOutLosesNothing) {
    EXPECT_EQ(Text(WithLength(Short.size(), Short)), Short);
}

TEST(MDeviceIdTest, AnAbsurdLengthLosesNothing) {
    for (const std::size_t iLength : {0U, 1U, 2U, 3U, 7U, 1000U, 0x1400U, 0xFFFFU}) {
        SCOPED_TRACE(iLength);
        EXPECT_EQ(Text(WithLength(iLength, Short)), Short);
    }
}

TEST(MDeviceIdTest, ATextWithoutALengthIsTakenAsItIs) {
    EXPECT_EQ(Text(Short), Short);
}

TEST(MDeviceIdTest, AZeroEndsTheText) {
    EXPECT_EQ(Text(WithLength(Short.size() + 2, "MFG:Varden\0;MDL:X1;"s)), "MFG:Varden");
}

TEST(MDeviceIdTest, NothingIsNoText) {
    EXPECT_EQ(Text(""), "");
    EXPECT_EQ(Text(WithLength(2, "")), "");
    EXPECT_EQ(Text("\0\0\0\0"s), "");
    EXPECT_EQ(Text("\x01"), "\x01");
}

using Makers = std::vector<std::string>;

struct MakerCase {
    std::string m_strText;
    Makers m_strMakers;

    friend std::ostream& operator<<(std::ostream& p_objStream, const MakerCase& p_objCase) {
        return p_objStream << p_objCase.m_strText;
    }
};

class MDeviceIdMakerTest : public ::testing::TestWithParam<MakerCase> {};

TEST_P(MDeviceIdMakerTest, FindsTheMakers) {
    EXPECT_EQ(MDeviceId::Makers(GetParam().m_strText), GetParam().m_strMakers);
}

INSTANTIATE_TEST_SUITE_P(
    , MDeviceIdMakerTest,
    ::testing::Values(
        MakerCase{"MFG:Varden;MDL:X1;", {"Varden"}}, MakerCase{"MANUFACTURER:Varden;", {"Varden"}},
        MakerCase{"mfg:Varden;", {"Varden"}}, MakerCase{"Manufacturer:varden", {"varden"}},
        MakerCase{"CLS:PRINTER;MDL:X1;MFG:Varden", {"Varden"}},
        MakerCase{" MFG : Varden \r\n;", {"Varden"}}, MakerCase{";;MFG:Varden;;", {"Varden"}},
        MakerCase{"no pair;MFG:Varden;", {"Varden"}},
        MakerCase{"MFG:Acme:Varden;", {"Acme:Varden"}},
        MakerCase{"MFG:Acme;MANUFACTURER:Varden;", {"Acme", "Varden"}},
        MakerCase{"manufacturer:Varden;MDL:X1;mfg:Acme", {"Varden", "Acme"}},
        MakerCase{"MFG:;", {""}}, MakerCase{"MFG", {}}, MakerCase{"MDL:Varden;", {}},
        MakerCase{"XMFG:Varden;", {}}, MakerCase{"", {}}, MakerCase{";", {}}, MakerCase{":", {}}));

TEST(MDeviceIdTest, TheMakersNameIsComparedWholeAndWhateverTheCase) {
    EXPECT_TRUE(MDeviceId::IsMaker("MFG:Varden;", "Varden"));
    EXPECT_TRUE(MDeviceId::IsMaker("MFG:VARDEN;", "Varden"));
    EXPECT_FALSE(MDeviceId::IsMaker("MFG:Varden Inc;", "Varden"));
    EXPECT_FALSE(MDeviceId::IsMaker("MFG:Varde;", "Varden"));
    EXPECT_FALSE(MDeviceId::IsMaker("MFG:;", "Varden"));
    EXPECT_FALSE(MDeviceId::IsMaker("", "Varden"));
    EXPECT_FALSE(MDeviceId::IsMaker("MDL:Varden;", ""));
}

TEST(MDeviceIdTest, OfTwoMakersEitherMayBeTheOne) {
    EXPECT_TRUE(MDeviceId::IsMaker("MFG:Acme;MANUFACTURER:VARDEN;", "Varden"));
    EXPECT_TRUE(MDeviceId::IsMaker("MFG:varden;MANUFACTURER:Acme;", "Varden"));
    EXPECT_TRUE(MDeviceId::IsMaker("MANUFACTURER:Varden;MDL:X1;MFG:Acme", "Varden"));
    EXPECT_TRUE(MDeviceId::IsMaker("MFG:;MANUFACTURER:Varden;", "Varden"));
    EXPECT_FALSE(MDeviceId::IsMaker("MFG:Acme;MANUFACTURER:Hadley;MDL:Varden;", "Varden"));
}

}  // namespace
