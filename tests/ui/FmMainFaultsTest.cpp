#include "tests/ui/CPrinterFixture.h"

#include <QCoreApplication>
#include <QTest>

#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace {

enum class Box : std::uint8_t { None, TimeOut, SendError };

struct Fault {
    const char* m_strName;
    QStringList m_strOptions;  ///< of the printer
    const char* m_strButton;   ///< what is pressed
    std::size_t m_iSent;       ///< how many of the button's commands go out
    Box m_iBox;                ///< what is shown

    friend std::ostream& operator<<(std::ostream& p_objStream, const Fault& p_objFault) {
        return p_objStream << p_objFault.m_strName;
    }
};

// clang-format off
const std::vector<Fault> Faults{
    {"ReadSilent", {"--silent"}, "btnRead", 1, Box::TimeOut},
    {"ReadLate", {"--delay", "400"}, "btnRead", 3, Box::None},
    {"ReadInPieces", {"--pieces", "1"}, "btnRead", 3, Box::None},
    {"ReadCutShort", {"--cut", "26"}, "btnRead", 1, Box::TimeOut},
    {"ReadJunk", {"--junk"}, "btnRead", 1, Box::TimeOut},
    {"ReadJunkBefore", {"--junk-before"}, "btnRead", 3, Box::None},
    {"ReadClosedAfterOne", {"--close-after", "1"}, "btnRead", 1, Box::SendError},
    {"ReadClosedAfterTwo", {"--close-after", "2"}, "btnRead", 2, Box::SendError},
    {"ReadLateInPiecesBehindJunk", {"--delay", "200", "--pieces", "4", "--junk-before"}, "btnRead", 3, Box::None},
    {"ReadInPiecesCutShort", {"--pieces", "1", "--cut", "12"}, "btnRead", 1, Box::TimeOut},
    {"ReadSilentThenClosed", {"--silent", "--close-after", "1"}, "btnRead", 1, Box::TimeOut},
    {"SetSilent", {"--silent"}, "btnSet", 1, Box::TimeOut},
    {"SetLate", {"--delay", "700"}, "btnSet", 2, Box::None},
    {"SetInPieces", {"--pieces", "1"}, "btnSet", 2, Box::None},
    {"SetCutShort", {"--cut", "12"}, "btnSet", 1, Box::TimeOut},
    {"SetJunk", {"--junk"}, "btnSet", 2, Box::None},
    {"SetJunkBefore", {"--junk-before"}, "btnSet", 2, Box::None},
    {"SetJunkBeforeInPieces", {"--junk-before", "--pieces", "2"}, "btnSet", 2, Box::None},
    {"SetClosedAfterTwo", {"--close-after", "2"}, "btnSet", 2, Box::None},
    {"SetSilentThenClosed", {"--silent", "--close-after", "1"}, "btnSet", 1, Box::TimeOut},
    {"LanReadSilent", {"--silent"}, "btnLanRead", 1, Box::TimeOut},
    {"LanReadLate", {"--delay", "700"}, "btnLanRead", 1, Box::None},
    {"LanReadInPieces", {"--pieces", "1"}, "btnLanRead", 1, Box::None},
    {"LanReadCutShort", {"--cut", "26"}, "btnLanRead", 1, Box::TimeOut},
    {"LanReadClosedAfterOne", {"--close-after", "1"}, "btnLanRead", 1, Box::None},
    {"LanReadSilentThenClosed", {"--silent", "--close-after", "1"}, "btnLanRead", 1, Box::TimeOut},
    {"LanSetSilent", {"--silent"}, "btnLanSet", 1, Box::TimeOut},
    {"LanSetLate", {"--delay", "300"}, "btnLanSet", 5, Box::None},
    {"LanSetInPieces", {"--pieces", "1"}, "btnLanSet", 5, Box::None},
    {"LanSetCutShort", {"--cut", "12"}, "btnLanSet", 1, Box::TimeOut},
    {"LanSetClosedAfterFive", {"--close-after", "5"}, "btnLanSet", 5, Box::None},
    {"LanSetSilentThenClosed", {"--silent", "--close-after", "1"}, "btnLanSet", 1, Box::TimeOut},
};
// clang-format on

class FmMainFaultsTest : public CPrinterFixture, public ::testing::WithParamInterface<Fault> {
protected:
    static std::vector<std::string> Commands(const Fault& p_objFault) {
        static const std::map<std::string, std::vector<std::string>> strCommandsOf{
            {"btnRead", {"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"}},
            {"btnSet", {DefaultParameters, DefaultAdjustments}},
            {"btnLanRead", {"{Z5;3|}"}},
            {"btnLanSet", LanSetCommands()},
        };
        std::vector<std::string> strCommands = strCommandsOf.at(p_objFault.m_strButton);
        strCommands.resize(p_objFault.m_iSent);
        return strCommands;
    }

    void ExpectBoxOf(const Fault& p_objFault) {
        switch (p_objFault.m_iBox) {
        case Box::TimeOut:
            ExpectTimeOutBox();
            break;
        case Box::SendError:
            ExpectSendErrorBox();
            break;
        case Box::None:
            break;
        }
    }
};

TEST_P(FmMainFaultsTest, ShowsSendsAndLeavesWhatItMust) {
    const Fault& objFault = GetParam();
    StartPrinter(objFault.m_strOptions);
    TeachPrinter();
    ConnectToPrinter();
    const auto strBefore = m_objWindow.ShownFields();
    ExpectBoxOf(objFault);
    const bool bHoldsButtons = std::string(objFault.m_strButton) != "btnLanSet";
    m_objBoxes.WhileShown([&](const auto&) {
        EXPECT_EQ(m_objWindow.DisabledButtons(),
                  bHoldsButtons ? CMainWindow::ActionButtons() : QStringList());
    });
    m_objWindow.Click(objFault.m_strButton);
    m_objBoxes.Verify();
    EXPECT_EQ(m_objBoxes.BeepCount(), objFault.m_iBox == Box::TimeOut ? 1 : 0);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    EXPECT_TRUE(CSimulatorProcess::WaitUntil([&] { return Sent().size() >= objFault.m_iSent; },
                                             PatienceMs));
    EXPECT_EQ(Sent(), Commands(objFault));
    if (Commands(objFault).back() == "{Z5;4|}") {
        MTaughtPrinter::ExpectPage(m_objWindow);
    } else if (Commands(objFault).back() == "{Z5;3|}" && objFault.m_iBox == Box::None) {
        auto strExpected = strBefore;
        strExpected["SeIpAddress4"] = "78";
        strExpected["txtDhcpName"] = QString(16, ' ');  // a name of blanks, as it came
        EXPECT_EQ(m_objWindow.ShownFields(), strExpected);
    } else {
        EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    }
}

INSTANTIATE_TEST_SUITE_P(Printer, FmMainFaultsTest, ::testing::ValuesIn(Faults),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

class FmMainFaultClosingTest : public CPrinterFixture,
                               public ::testing::WithParamInterface<const char*> {};

TEST_P(FmMainFaultClosingTest, AConnectionThatEndsBehindTheFirstAnswerIsASendError) {
    StartPrinter({"--close-after", "1", "--delay", "100"});
    ConnectToPrinter();
    const auto strBefore = m_objWindow.ShownFields();
    // The window looks away until both have come, the answer and the end of the connection.
    QTimer::singleShot(30, [] { QTest::qSleep(400); });
    ExpectSendErrorBox();
    m_objWindow.Click(GetParam());
    m_objBoxes.Verify();
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    EXPECT_EQ(Sent().size(), 1U);
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    EXPECT_EQ(Shown("lblStatus"), "ON LINE");
}

INSTANTIATE_TEST_SUITE_P(Buttons, FmMainFaultClosingTest, ::testing::Values("btnSet", "btnLanSet"),
                         [](const auto& p_objInfo) { return std::string(p_objInfo.param); });

using FmMainFaultTest = CPrinterFixture;

TEST_F(FmMainFaultTest, AReadThatFailsLaterKeepsTheGroupsThatCame) {
    StartPrinter({"--close-after", "1"});
    TeachPrinter();
    ConnectToPrinter();
    ExpectSendErrorBox();
    m_objWindow.Click("btnRead");
    const CItemManager& objItems = m_objWindow.Form().ItemManager();
    EXPECT_EQ(objItems.m_objFeedAdjustment->GetValueString(), "123");
    EXPECT_EQ(objItems.m_objThresholdAdjustment_R->GetValueString(), "10");
    EXPECT_EQ(Shown("SeFeedAdj"), "0.0");
}

TEST_F(FmMainFaultTest, AnAnswerAfterTheTimeOutChangesNothingOnThePage) {
    StartPrinter({"--delay", "5300"});
    TeachPrinter();
    ConnectToPrinter();
    const auto strBefore = m_objWindow.ShownFields();
    ExpectTimeOutBox();
    m_objWindow.Click("btnRead");
    ASSERT_TRUE(m_objPrinter.WaitForLine("< {0", PatienceMs));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

}  // namespace
