#include "model/MChoiceLists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

struct ExpectedList {
    const char* m_strName;
    std::vector<std::string_view> m_strEntries;
};

// clang-format off
const ExpectedList ExpectedLists[] = {
    {"cmbFontCode", {"PC-850", "PC-852", "PC-857", "PC-8", "PC-851", "PC-855", "PC-1250", "PC-1251", "PC-1252", "PC-1253", "PC-1254", "PC-1257", "LATIN9", "Arabic", "PC-866", "UTF-8"}},
    {"cmbZeroCode", {"NO SLASH", "WITH SLASH"}},
    {"cmbSpeed", {"2400bps", "4800bps", "9600bps", "19200bps", "38400bps", "115200bps"}},
    {"cmbDataLeg", {"7bits", "8bits"}},
    {"cmbStopBit", {"1bit", "2bits"}},
    {"cmbParity", {"NONE", "EVEN", "ODD"}},
    {"cmbControl", {"XON/XOFF", "READY/BUSY(DTR)", "XON+READY AUTO", "XON/XOFF AUTO", "READY/BUSY(RTS)"}},
    {"cmbFowardWait", {"OFF", "ON"}},
    {"cmbCode", {"AUTO", "ESC,LF,NUL", "{,|,}", "MANUAL"}},
    {"cmbPeelOffStatus", {"OFF", "ON"}},
    {"cmbFeedKey", {"FEED", "PRINT"}},
    {"cmbKanji", {"TYPE1", "TYPE2"}},
    {"cmbAutoHdChk", {"OFF", "ON"}},
    {"cmbAckBusy", {"TYPE1", "TYPE2"}},
    {"cmbWebPrinter", {"OFF", "ON"}},
    {"cmbInputPrime", {"OFF", "ON"}},
    {"cmbRibbonNearEnd", {"OFF", "30m", "70m"}},
    {"cmbExIoMode", {"TYPE1", "TYPE2"}},
    {"cmbPlugPlay", {"OFF", "ON"}},
    {"cmbLblRbnEnd", {"TYPE1", "TYPE2"}},
    {"cmbPrePeelOff", {"OFF", "ON"}},
    {"cmbBackSpeed", {"STD", "LOW"}},
    {"cmbMaxiCodeSpec", {"TYPE1", "TYPE2"}},
    {"cmbKbIF", {"OFF", "KB60(1)", "KB60(2)", "KB80"}},
    {"cmbPeelOffTrq", {"R0", "R1", "R2", "R3"}},
    {"cmbDiagPrint", {"DIRECT", "TRANSFR"}},
    {"cmbPattern", {"FEED", "SLANT LINE(1DOT)", "SLANT LINE(3DOT)", "CHARACTERS", "BARCODE", "FACTORY TEST"}},
    {"cmbPrintSpeed", {"2\"/sec", "4\"/sec"}},
    {"cmbSensor", {"NONE", "REFLECT.", "TRANS."}},
    {"cmbType", {"NO CUT", "WITH CUT", "PEEL OFF"}},
    {"cmbPrtType", {"DIRECT", "TRANSFR"}},
    {"cmbThresholdCalib", {"REFLECT.", "TRANS."}},
    {"cmbRamClear", {"PARAMETER", "MANTE.CNT"}},
    {"cmbDestination", {"", "JA", "CN", "QP", "QQ"}},
    {"cmbPort", {"OFF", "ON"}},
    {"cmbDhcp", {"OFF", "ON"}},
};
// clang-format on

}  // namespace

TEST(MChoiceLists, HoldsEveryListWithItsEntriesInOrder) {
    const std::vector<MChoiceLists::List>& objLists = MChoiceLists::All();
    ASSERT_EQ(objLists.size(), std::size(ExpectedLists));

    for (std::size_t i = 0; i < objLists.size(); ++i) {
        SCOPED_TRACE(ExpectedLists[i].m_strName);
        EXPECT_EQ(objLists[i].m_strName, ExpectedLists[i].m_strName);
        EXPECT_THAT(objLists[i].m_strEntries,
                    ::testing::ElementsAreArray(ExpectedLists[i].m_strEntries));
    }
}

TEST(MChoiceLists, StartsEveryListAtItsFirstEntryButTheDestination) {
    for (const MChoiceLists::List& objList : MChoiceLists::All()) {
        SCOPED_TRACE(objList.m_strName);
        EXPECT_EQ(objList.m_iStartPosition, objList.m_strName == "cmbDestination" ? -1 : 0);
    }
}

TEST(MChoiceLists, HasOffAheadOfTheValuesOfRibbonNearEndAndKeyboard) {
    int iFound = 0;
    for (const MChoiceLists::List& objList : MChoiceLists::All()) {
        if (objList.m_strName == "cmbRibbonNearEnd" || objList.m_strName == "cmbKbIF") {
            ++iFound;
            EXPECT_EQ(objList.m_strEntries.front(), "OFF") << objList.m_strName;
            EXPECT_GT(objList.m_strEntries.size(), 2U) << objList.m_strName;
        }
    }
    EXPECT_EQ(iFound, 2);
}
