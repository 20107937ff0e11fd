#include "protocol/MStatus.h"

#include <gtest/gtest.h>

#include <set>

namespace {

struct ExpectedStatus {
    const char* m_strCode;
    const char* m_strText;
};

// clang-format off
const ExpectedStatus ExpectedStatuses[] = {
    {"00", "ON LINE"},
    {"01", "Head Open (ON LINE)"},
    {"02", "On Running"},
    {"04", "PAUSE"},
    {"05", "Peel off waiting"},
    {"06", "Command Error"},
    {"07", "Rs232c Error"},
    {"11", "Paper JAM"},
    {"12", "Cutter Error"},
    {"13", "Paper Error"},
    {"14", "NO RIBBON"},
    {"15", "Head Open Error"},
    {"17", "Thermal head Error"},
    {"18", "Thermal head Temp Error"},
    {"21", "Ribbon Error"},
    {"22", "Thermistor Connector omission"},
    {"30", "The stacked form is full."},
    {"31", "Stacker Power OFF"},
    {"41", "ON LINE"},
    {"50", "Flash Memory Write Error"},
    {"51", "Flash Memory Format Error"},
    {"54", "Flash Memory Empty"},
    {"55", "  Save Mode"},
};
// clang-format on

constexpr const char* TextBefore = "text before";

}  // namespace

TEST(MStatus, GivesEveryCodeItsTextAndCountsItAsReceived) {
    for (const ExpectedStatus& objExpected : ExpectedStatuses) {
        SCOPED_TRACE(objExpected.m_strCode);
        std::string strText = TextBefore;
        bool bReceived = false;

        EXPECT_TRUE(MStatus::StatusText(objExpected.m_strCode, strText, bReceived));

        EXPECT_EQ(strText, objExpected.m_strText);
        EXPECT_TRUE(bReceived);
    }
}

TEST(MStatus, CountsFortyAsReceivedAndLeavesTheText) {
    for (const std::string& strBefore : {std::string(), std::string(TextBefore)}) {
        std::string strText = strBefore;
        bool bReceived = false;

        EXPECT_TRUE(MStatus::StatusText("40", strText, bReceived));

        EXPECT_EQ(strText, strBefore);
        EXPECT_TRUE(bReceived);
    }
}

TEST(MStatus, LeavesTextAndFlagForEveryOtherTwoDigitCode) {
    std::set<std::string> objKnown{"40"};
    for (const ExpectedStatus& objExpected : ExpectedStatuses) {
        objKnown.insert(objExpected.m_strCode);
    }
    ASSERT_EQ(objKnown.size(), 24U);

    int iUnknown = 0;
    for (char cTens = '0'; cTens <= '9'; ++cTens) {
        for (char cOnes = '0'; cOnes <= '9'; ++cOnes) {
            const std::string strCode{cTens, cOnes};
            if (objKnown.contains(strCode)) {
                continue;
            }
            SCOPED_TRACE(strCode);
            ++iUnknown;
            for (const bool bBefore : {false, true}) {
                std::string strText = TextBefore;
                bool bReceived = bBefore;
                EXPECT_TRUE(MStatus::StatusText(strCode, strText, bReceived));
                EXPECT_EQ(strText, TextBefore);
                EXPECT_EQ(bReceived, bBefore);
            }
        }
    }
    EXPECT_EQ(iUnknown, 76);
}

TEST(MStatus, KnowsNoCodeThatIsNotTwoDigits) {
    for (const char* strCode : {"", "0", "000", " 0", "0 ", "4", "AA", "ON", "\x01\x02"}) {
        SCOPED_TRACE(strCode);
        std::string strText = TextBefore;
        bool bReceived = false;

        EXPECT_TRUE(MStatus::StatusText(strCode, strText, bReceived));

        EXPECT_EQ(strText, TextBefore);
        EXPECT_FALSE(bReceived);
    }
}

TEST(MStatus, TakesEveryCodeForAnErrorButThoseOfAPrinterThatIsAtWorkOrWaits) {
    const std::set<std::string> strFine{"00", "01", "02", "04", "05", "40", "41", "55"};
    for (int i = 0; i < 100; ++i) {
        const std::string strCode{static_cast<char>('0' + i / 10), static_cast<char>('0' + i % 10)};
        EXPECT_EQ(MStatus::IsError(strCode), !strFine.contains(strCode)) << strCode;
    }
    for (const char* const strNoCode : {"", "0", "000", "0 ", " 0", "AB"}) {
        EXPECT_TRUE(MStatus::IsError(strNoCode)) << strNoCode;
    }
}
