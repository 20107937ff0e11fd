#include "simulator/program/COptions.h"

#include <gtest/gtest.h>

namespace {

TEST(COptions, WithoutArgumentsAPrinterThatBehavesIsOnItsUsualPort) {
    const COptions objOptions({"varden-printer-simulator"});
    EXPECT_EQ(objOptions.m_strError, QString());
    EXPECT_FALSE(objOptions.m_bHelp);
    EXPECT_EQ(objOptions.m_objHost, QHostAddress("127.0.0.1"));
    EXPECT_EQ(objOptions.m_iPort, 8000);
    EXPECT_FALSE(objOptions.m_bSerial);
    EXPECT_EQ(objOptions.m_strAlias, "");
    EXPECT_EQ(objOptions.m_strUsbProgram, QStringList());
    EXPECT_EQ(objOptions.m_strStatus, "00");
}

TEST(COptions, WithoutArgumentsNothingIsToGoWrong) {
    const CFaultSettings objFaults = COptions({"varden-printer-simulator"}).m_objFaults;
    EXPECT_EQ(objFaults.Describe(), "none");
    EXPECT_FALSE(objFaults.m_bSilent);
    EXPECT_EQ(objFaults.m_iDelay.count(), 0);
    EXPECT_EQ(objFaults.m_iPieces, 0U);
    EXPECT_EQ(objFaults.m_iCut, std::nullopt);
    EXPECT_FALSE(objFaults.m_bJunk);
    EXPECT_FALSE(objFaults.m_bJunkBefore);
    EXPECT_EQ(objFaults.m_iCloseAfter, std::nullopt);
}

TEST(COptions, PiecesComeTenMillisecondsApartUnlessSaidOtherwise) {
    const COptions objOptions({"varden-printer-simulator", "--pieces", "3"});
    EXPECT_EQ(objOptions.m_objFaults.m_iPieces, 3U);
    EXPECT_EQ(objOptions.m_objFaults.m_iGap.count(), 10);
}

}  // namespace
