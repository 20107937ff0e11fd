#include "tests/ui/CModalAnswer.h"
#include "tests/ui/CPrinterFixture.h"

#include <QTest>

#include <ostream>
#include <utility>
#include <vector>

namespace {

/// A list and the position to choose in it, or a field and the number to type into it.
using Entry = std::pair<QString, int>;

struct Function {
    const char* m_strButton;
    std::vector<Entry> m_iEntries;  ///< chosen and typed before; all else stays as it was
    std::vector<std::string> m_strCommands;
    bool m_bAwaitsAnswer = true;

    friend std::ostream& operator<<(std::ostream& p_objStream, const Function& p_objFunction) {
        return p_objStream << p_objFunction.m_strButton;
    }
};

// clang-format off
/// Each button as it is after the start.
const std::vector<Function> Functions{
    {"btnHeadCheck", {}, {"{HD001,A|}"}},
    {"btnRamClear", {}, {"{Z4;0|}"}},
    {"btnThresholdCalib", {}, {"{WT;1000,1|}"}},
    {"btnReflect", {}, {"{Z6;0|}"}, false},
    {"btnTrans", {}, {"{Z6;1|}"}, false},
    {"btnPaperEnd", {}, {"{Z6;01|}", "{Z6;11|}"}, false},
    {"btnTestPrint", {}, {"{Z3;007600730105700010000|}"}},
    {"btnDiagPrint", {}, {"{Z10|}"}},
    {"btnGetStatus", {}, {"{WS|}"}},
};

/// One after the other in one window: what was chosen before stays chosen.
const std::vector<Function> Choices{
    {"btnRamClear", {{"cmbDestination", 0}}, {"{Z4;0|}"}},
    {"btnRamClear", {{"cmbDestination", 1}}, {"{Z4;00|}"}},
    {"btnRamClear", {{"cmbDestination", 2}}, {"{Z4;01|}"}},
    {"btnRamClear", {{"cmbDestination", 3}}, {"{Z4;02|}"}},
    {"btnRamClear", {{"cmbDestination", 4}}, {"{Z4;03|}"}},
    {"btnRamClear", {{"cmbRamClear", 1}}, {"{Z4;1|}"}},
    {"btnRamClear", {{"cmbRamClear", 0}}, {"{Z4;03|}"}},
    {"btnThresholdCalib", {{"cmbThresholdCalib", 1}}, {"{WT;1000,2|}"}},
    {"btnTestPrint", {{"SeLabelLen", 100}}, {"{Z3;001000070105700010000|}"}},
    {"btnTestPrint", {{"SeLabelLen", 9999}}, {"{Z3;099999969105700010000|}"}},
    {"btnTestPrint", {{"SeIssueCount", 5000}}, {"{Z3;099999969105750000000|}"}},
    {"btnTestPrint", {{"cmbPrintSpeed", 1}}, {"{Z3;099999969105750001000|}"}},
    {"btnTestPrint", {{"cmbSensor", 1}}, {"{Z3;099999969105750001100|}"}},
    {"btnTestPrint", {{"cmbSensor", 2}}, {"{Z3;099999969105750001200|}"}},
    {"btnTestPrint", {{"cmbType", 1}}, {"{Z3;099999969105750001210|}"}},
    {"btnTestPrint", {{"cmbType", 2}}, {"{Z3;099999969105750001220|}"}},
    {"btnTestPrint", {{"cmbPrtType", 1}}, {"{Z3;099999969105750001221|}"}},
    {"btnTestPrint", {{"cmbPattern", 1}}, {"{Z3;199999969105750001221|}"}},
    {"btnTestPrint", {{"cmbPattern", 2}}, {"{Z3;299999969105750001221|}"}},
    {"btnTestPrint", {{"cmbPattern", 3}}, {"{Z3;399999969105750001221|}"}},
    {"btnTestPrint", {{"cmbPattern", 4}}, {"{Z3;499999969105750001221|}"}},
    {"btnTestPrint", {{"cmbPattern", 5}}, {"{Z3;699999969105750001221|}"}},
    {"btnDiagPrint", {{"cmbDiagPrint", 1}}, {"{Z11|}"}},
};
// clang-format on

class FmMainMaintenanceTest : public CPrinterFixture {
protected:
    explicit FmMainMaintenanceTest(Pace p_iPace = Pace::Real)
        : CPrinterFixture(p_iPace) {}

    /// Presses the button and waits for its commands; those that have come since the last time.
    std::vector<std::string> Press(const Function& p_objFunction) {
        for (const auto& [strControl, iValue] : p_objFunction.m_iEntries) {
            if (strControl.startsWith("cmb")) {
                m_objWindow.Choose(strControl, iValue);
            } else {
                m_objWindow.Type(strControl, QString::number(iValue));
            }
        }
        m_objWindow.Click(p_objFunction.m_strButton);
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
        EXPECT_TRUE(
            m_objPrinter.WaitForCommands(m_iSeen + p_objFunction.m_strCommands.size(), PatienceMs));
        std::vector<std::string> strSent = Sent();
        strSent.erase(strSent.begin(), strSent.begin() + static_cast<std::ptrdiff_t>(m_iSeen));
        m_iSeen += strSent.size();
        return strSent;
    }

    void ExpectEveryFunctionToWork(const QStringList& p_strOptions) {
        StartPrinter(p_strOptions);
        ConnectToPrinter();
        for (const Function& objFunction : Functions) {
            EXPECT_EQ(Press(objFunction), objFunction.m_strCommands) << objFunction;
        }
        EXPECT_EQ(Shown("lblHeadCheck"), "ON LINE");
        EXPECT_EQ(Shown("lblStatus"), "ON LINE");
        EXPECT_EQ(m_objBoxes.BeepCount(), 0);
    }

    std::size_t m_iSeen = 0;
};

TEST_F(FmMainMaintenanceTest, EachButtonSendsItsCommands) {
    ExpectEveryFunctionToWork({});
}

TEST_F(FmMainMaintenanceTest, EachListAndFieldHasItsPlaceInTheCommand) {
    StartPrinter();
    ConnectToPrinter();
    for (const Function& objFunction : Choices) {
        EXPECT_EQ(Press(objFunction), objFunction.m_strCommands) << objFunction;
    }
}

TEST_F(FmMainMaintenanceTest, LateAnswersAreAwaited) {
    ExpectEveryFunctionToWork({"--delay", "300"});
}

TEST_F(FmMainMaintenanceTest, AnswersInPiecesAreTaken) {
    ExpectEveryFunctionToWork({"--pieces", "1"});
}

TEST_F(FmMainMaintenanceTest, AHeadCheckTakesOneAnswerAndTheNextIsAStatus) {
    StartPrinter({"--status", "14"});
    ConnectToPrinter();
    m_objWindow.Click("btnHeadCheck");
    const QString strResult = Shown("lblHeadCheck");
    EXPECT_NE(strResult, "");
    EXPECT_EQ(Shown("lblStatus"), "");
    m_objWindow.Click("btnGetStatus");
    EXPECT_EQ(Shown("lblStatus"), strResult);
    EXPECT_EQ(Shown("lblHeadCheck"), strResult);
    EXPECT_EQ(Sent(), (std::vector<std::string>{"{HD001,A|}", "{WS|}"}));
}

TEST_F(FmMainMaintenanceTest, SensorAdjustmentsHoldTheButtonsForASecond) {
    StartPrinter();
    ConnectToPrinter();
    for (const char* strButton : {"btnReflect", "btnTrans", "btnPaperEnd"}) {
        QStringList strDisabled;
        QTimer::singleShot(700, [&] { strDisabled = m_objWindow.DisabledButtons(); });
        QElapsedTimer objTime;
        objTime.start();
        m_objWindow.Click(strButton);
        EXPECT_GE(objTime.elapsed(), 950) << strButton;
        EXPECT_EQ(strDisabled, CMainWindow::ActionButtons()) << strButton;
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    }
}

TEST_F(FmMainMaintenanceTest, SensorAdjustmentsAwaitNoAnswer) {
    StartPrinter({"--silent"});
    ConnectToPrinter();
    for (const Function& objFunction : Functions) {
        if (!objFunction.m_bAwaitsAnswer) {
            QElapsedTimer objTime;
            objTime.start();
            EXPECT_EQ(Press(objFunction), objFunction.m_strCommands) << objFunction;
            EXPECT_LT(objTime.elapsed(), 4000) << objFunction;
        }
    }
}

TEST_F(FmMainMaintenanceTest, ReadAfterARamClearShowsTheDefaults) {
    StartPrinter();
    TeachPrinter();
    ConnectToPrinter();
    const auto strDefaults = m_objWindow.ShownFields();
    m_objWindow.Click("btnRead");
    MTaughtPrinter::ExpectPage(m_objWindow);
    m_objWindow.Click("btnRamClear");
    m_objWindow.Click("btnRead");
    EXPECT_EQ(m_objWindow.ShownFields(), strDefaults);
}

TEST_F(FmMainMaintenanceTest, ReadAfterClearingTheCountersShowsTheSameSettings) {
    StartPrinter();
    TeachPrinter();
    ConnectToPrinter();
    m_objWindow.Choose("cmbRamClear", 1);
    m_objWindow.Click("btnRamClear");
    m_objWindow.Click("btnRead");
    MTaughtPrinter::ExpectPage(m_objWindow);
}

/// The functions that await an answer, one after the other, and the five seconds pass quickly.
class FmMainMaintenanceTimeOutTest : public FmMainMaintenanceTest {
protected:
    FmMainMaintenanceTimeOutTest()
        : FmMainMaintenanceTest(Pace::Hasty) {}

    void ExpectEveryFunctionToTimeOut(const QStringList& p_strOptions) {
        StartPrinter(p_strOptions);
        ConnectToPrinter();
        m_objBoxes.WhileShown([this](const auto&) {
            EXPECT_EQ(m_objWindow.DisabledButtons(), CMainWindow::ActionButtons());
        });
        int iAwaiting = 0;
        for (const Function& objFunction : Functions) {
            if (objFunction.m_bAwaitsAnswer) {
                ExpectTimeOutBox();
                EXPECT_EQ(Press(objFunction), objFunction.m_strCommands) << objFunction;
                m_objBoxes.Verify();
                EXPECT_EQ(m_objBoxes.BeepCount(), ++iAwaiting);
            }
        }
        EXPECT_EQ(iAwaiting, 6);
        EXPECT_EQ(Shown("lblHeadCheck"), "");
        EXPECT_EQ(Shown("lblStatus"), "");
    }
};

TEST_F(FmMainMaintenanceTimeOutTest, ASilentPrinterTimesOutEachFunctionThatWaits) {
    ExpectEveryFunctionToTimeOut({"--silent"});
}

TEST_F(FmMainMaintenanceTimeOutTest, AnAnswerCutShortTimesOutEachFunctionThatWaits) {
    ExpectEveryFunctionToTimeOut({"--cut", "5"});
}

class FmMainMaintenanceClosingTest : public FmMainMaintenanceTest,
                                     public ::testing::WithParamInterface<Function> {};

TEST_P(FmMainMaintenanceClosingTest, TheNextCommandFailsAndTheButtonsComeBack) {
    const Function& objFunction = GetParam();
    StartPrinter({"--close-after", "1"});
    ConnectToPrinter();
    m_objWindow.Click(objFunction.m_strButton);
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    ASSERT_TRUE(m_objPrinter.WaitForCommands(1, PatienceMs));
    EXPECT_EQ(Sent().front(), objFunction.m_strCommands.front());
    QTest::qWait(100);  // what the printer has done to the connection arrives

    const std::vector<std::string> strBefore = Sent();
    if (objFunction.m_bAwaitsAnswer) {
        ExpectSendErrorBox();
    }
    m_objWindow.Click(objFunction.m_strButton);
    m_objBoxes.Verify();
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    EXPECT_EQ(Sent(), strBefore);
}

INSTANTIATE_TEST_SUITE_P(Buttons, FmMainMaintenanceClosingTest, ::testing::ValuesIn(Functions),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strButton; });

}  // namespace
