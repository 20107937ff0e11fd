#include "tests/ui/recorder/CSettingsTexts.h"
#include "tests/ui/recorder/MRecording.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>
#include <string>

namespace {

class FmMainRecordingTest : public ::testing::TestWithParam<std::string> {};

std::string Recorded(const std::string& p_strName) {
    std::ifstream objFile(VARDEN_RECORDING_FOLDER "/" + p_strName + ".txt", std::ios::binary);
    EXPECT_TRUE(objFile) << "no recording of " << p_strName;
    return {std::istreambuf_iterator<char>(objFile), {}};
}

TEST_P(FmMainRecordingTest, TheWindowDoesWhatWasRecorded) {
    CStage objStage;
    const std::string strNow = MRecording::Make(objStage, GetParam());
    const CSettingsTexts objTexts(Recorded(MRecording::SettingsName));
    const std::string strDifference =
        MRecording::Difference(objTexts.Long(Recorded(GetParam())), strNow);
    EXPECT_TRUE(strDifference.empty()) << strDifference;
    EXPECT_EQ(strNow.find("\nFAILED"), std::string::npos);
}

INSTANTIATE_TEST_SUITE_P(, FmMainRecordingTest, ::testing::ValuesIn(MRecording::Names()),
                         [](const auto& p_objInfo) { return p_objInfo.param; });

}  // namespace
