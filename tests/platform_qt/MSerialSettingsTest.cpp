#include "platform/qt/MSerialSettings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using MSerialSettings::Parity;
using MSerialSettings::Parse;
using MSerialSettings::Values;

TEST(MSerialSettingsTest, ReadsTheDefault) {
    EXPECT_EQ(Parse("9600,E,8,1"), (Values{9600, Parity::Even, 8, 1}));
}

TEST(MSerialSettingsTest, ReadsEverySpeed) {
    for (const int iSpeed : std::vector<int>{2400, 4800, 9600, 19200, 38400, 115200}) {
        EXPECT_EQ(Parse(std::to_string(iSpeed) + ",N,8,1"), (Values{iSpeed, Parity::None, 8, 1}));
    }
}

TEST(MSerialSettingsTest, ReadsTheOtherThree) {
    EXPECT_EQ(Parse("115200,O,7,2"), (Values{115200, Parity::Odd, 7, 2}));
    EXPECT_EQ(Parse("2400,N,8,2"), (Values{2400, Parity::None, 8, 2}));
    EXPECT_EQ(Parse("2400,E,7,1"), (Values{2400, Parity::Even, 7, 1}));
}

class MSerialSettingsWrongTest : public ::testing::TestWithParam<std::string> {};

TEST_P(MSerialSettingsWrongTest, IsNothing) {
    EXPECT_EQ(Parse(GetParam()), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    , MSerialSettingsWrongTest,
    ::testing::Values("", ",", ",,,", "9600", "9600,E", "9600,E,8", "9600,E,8,", "9600,E,8,1,",
                      "9600,E,8,1,1", "9600,E,8,11", "9600,E,8,0", "9600,E,8,3", "9600,E,8,1.5",
                      "9600,E,6,1", "9600,E,9,1", "9600,E,,1", "9600,M,8,1", "9600,e,8,1",
                      "9600,EE,8,1", "9600,,8,1", "9601,E,8,1", "300,E,8,1", "09600,E,8,1",
                      "-9600,E,8,1", " 9600,E,8,1", "9600, E,8,1", "9600,E,8,1 ", "9600;E;8;1",
                      "abc,E,8,1", std::string("9600,E,8,1\0", 11)));

}  // namespace
