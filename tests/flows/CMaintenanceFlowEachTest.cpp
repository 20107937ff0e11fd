#include "tests/flows/CMaintenanceFlowFixture.h"

#include "model/CConversionError.h"
#include "protocol/MAnswer.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;
using Told = std::vector<bool>;
using Flow = CMaintenanceFlow;

constexpr std::int16_t Serial = CInterface::SerialInterface;
constexpr std::int16_t Lan = CInterface::LanInterface;
constexpr std::int16_t Usb = CInterface::UsbInterface;
constexpr std::int64_t Step = CFakeEventLoop::StepMilliseconds;
constexpr std::int64_t PauseMilliseconds = 1000;
constexpr std::int64_t ReplyMilliseconds = 5000;

using CMaintenanceFlowTest = CMaintenanceFlowFixture;

void PrintTest(Flow& p_objFlow, const MCommand::TestPrintFields& p_objFields) {
    p_objFlow.TestPrint([&] { return p_objFields; });
}

// What all functions have in common.

/// How a function goes on behind its command.
enum class Course : std::uint8_t {
    Reply,      ///< waits for the answer
    HeadCheck,  ///< the same, then pauses with the buttons enabled
    Sensor,     ///< waits for no answer, pauses with the buttons disabled
};

struct FunctionCase {
    const char* m_strName;
    void (*m_fnRun)(Flow& p_objFlow);
    Texts m_strCommands;
    Course m_iCourse;
};

// clang-format off
const FunctionCase Functions[] = {
    {"GetStatus", [](Flow& p_objFlow) { p_objFlow.GetStatus(); }, {"{WS|}"}, Course::Reply},
    {"HeadCheck", [](Flow& p_objFlow) { p_objFlow.HeadCheck(); }, {"{HD001,A|}"}, Course::HeadCheck},
    {"RamClear", [](Flow& p_objFlow) { p_objFlow.RamClear(0, 3); }, {"{Z4;02|}"}, Course::Reply},
    {"ThresholdCalib", [](Flow& p_objFlow) { p_objFlow.ThresholdCalib(0); }, {"{WT;1000,1|}"}, Course::Reply},
    {"Reflect", [](Flow& p_objFlow) { p_objFlow.SensorAdjustReflect(); }, {"{Z6;0|}"}, Course::Sensor},
    {"Trans", [](Flow& p_objFlow) { p_objFlow.SensorAdjustTrans(); }, {"{Z6;1|}"}, Course::Sensor},
    {"PaperEnd", [](Flow& p_objFlow) { p_objFlow.SensorAdjustPaperEnd(); }, {"{Z6;01|}", "{Z6;11|}"}, Course::Sensor},
    {"TestPrint", [](Flow& p_objFlow) { PrintTest(p_objFlow, {0, 760, 1, 0, 0, 0, 0}); }, {"{Z3;007600730105700010000|}"}, Course::Reply},
    {"DiagPrint", [](Flow& p_objFlow) { p_objFlow.DiagPrint(1); }, {"{Z11|}"}, Course::Reply},
};
// clang-format on

class CMaintenanceFlowEachTest : public CMaintenanceFlowTest,
                                 public ::testing::WithParamInterface<FunctionCase> {
protected:
    void Run() { GetParam().m_fnRun(m_objFlow); }

    /// Runs it and gives the milliseconds it took.
    std::int64_t RunTimed() {
        const std::int64_t iBefore = m_objClock.Elapsed();
        Run();
        return m_objClock.Elapsed() - iBefore;
    }

    [[nodiscard]] static bool Is(Course p_iCourse) { return GetParam().m_iCourse == p_iCourse; }
    [[nodiscard]] static std::size_t Count() { return GetParam().m_strCommands.size(); }
};

INSTANTIATE_TEST_SUITE_P(, CMaintenanceFlowEachTest, ::testing::ValuesIn(Functions),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST_P(CMaintenanceFlowEachTest, HoldsTheButtonsAndSaysNothing) {
    ConnectQuietly();
    m_objSocket.m_fnSent = [this, fnSent = m_objSocket.m_fnSent](const std::string& p_strCommand) {
        EXPECT_EQ(m_objView.m_bEnabled, Told{false});
        fnSent(p_strCommand);
    };
    Run();
    ExpectButtonsHeldToTheEnd();
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
    EXPECT_EQ(m_objView.m_bEnabled, (Told{false, true}));
}

TEST_P(CMaintenanceFlowEachTest, TakesItsTimeOverTheLan) {
    ConnectQuietly();
    m_objPrinter.m_iDelay = 300;
    const auto iSends = static_cast<std::int64_t>(Count()) * Step;
    const std::int64_t iExpected = Is(Course::Reply) ? m_objPrinter.m_iDelay
                                   : Is(Course::HeadCheck)
                                       ? m_objPrinter.m_iDelay + PauseMilliseconds
                                       : iSends + PauseMilliseconds;
    EXPECT_EQ(RunTimed(), iExpected);
}

TEST_P(CMaintenanceFlowEachTest, ASilentPrinterIsTheTimeOutOnceUnlessNobodyWaits) {
    ConnectQuietly();
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    const bool bWaits = !Is(Course::Sensor);
    if (bWaits) {
        ExpectTimeOut();
    }
    const std::int64_t iTook = RunTimed();
    EXPECT_EQ(iTook > ReplyMilliseconds, bWaits);
    EXPECT_EQ(m_objMessageBox.BeepCount(), bWaits ? 1 : 0);
    EXPECT_EQ(m_objSocket.m_strSent, GetParam().m_strCommands);
    ExpectButtonsHeldToTheEnd();
}

TEST_P(CMaintenanceFlowEachTest, ALinkThatIsNotOpenIsOneBoxUnlessItIsASensorAdjustment) {
    if (!Is(Course::Sensor)) {
        ExpectSendError();
    }
    Run();
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
    ExpectButtonsHeldToTheEnd();
}

TEST_P(CMaintenanceFlowEachTest, ASendThatDoesNotEndIsOneBoxUnlessItIsASensorAdjustment) {
    ConnectQuietly();
    m_objSocket.m_bCompletesSends = false;
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    if (!Is(Course::Sensor)) {
        ExpectSendError();
    }
    Run();
    EXPECT_EQ(m_objSocket.m_strSent, Texts{GetParam().m_strCommands.front()});
    EXPECT_FALSE(m_objSocket.IsConnected());
    ExpectButtonsHeldToTheEnd();
}

TEST_P(CMaintenanceFlowEachTest, ThePrintersClosingEndsInTheTimeOutUnlessNobodyWaits) {
    ConnectQuietly();
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objEventLoop.After(100, [this] { m_objSocket.PeerCloses(); });
    if (!Is(Course::Sensor)) {
        ExpectTimeOut();
    }
    Run();
    ExpectButtonsHeldToTheEnd();
}

TEST_P(CMaintenanceFlowEachTest, AnAnswerCutShortIsTheTimeOutUnlessNobodyWaits) {
    ConnectQuietly();
    m_objPrinter.m_fnAnswer = [](const std::string&) { return MWire::Status("00").substr(0, 12); };
    if (!Is(Course::Sensor)) {
        ExpectTimeOut();
    }
    Run();
    EXPECT_TRUE(m_objView.m_strHeadChecks.empty() || m_objView.m_strHeadChecks == Texts{""});
    ExpectButtonsHeldToTheEnd();
}

TEST_P(CMaintenanceFlowEachTest, AnyAnswerWillDo) {
    for (const std::string& strAnswer :
         Texts{"~junk", MWire::Status("06"), MWire::Status("03"), "{xx"}) {
        SCOPED_TRACE(strAnswer);
        ConnectQuietly();
        m_objPrinter.m_fnAnswer = [&](const std::string&) { return strAnswer; };
        Run();
        ExpectButtonsHeldToTheEnd();
    }
}

TEST_P(CMaintenanceFlowEachTest, AnInterfaceWithoutALinkSendsNothingAndSaysNothing) {
    ConnectQuietly();
    // The serial port is there and not open, the others are not there.
    for (const std::int16_t iInterface : std::vector<std::int16_t>{Serial, Usb, 7, -1}) {
        SCOPED_TRACE(iInterface);
        m_objView.m_bEnabled.clear();
        m_objInterface.SetActiveInterface(iInterface);
        Run();
        ExpectButtonsEnabled();
    }
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
    EXPECT_TRUE(m_objPort.m_strWrites.empty());
}

TEST_P(CMaintenanceFlowEachTest, AViewThatFailsInAnAnswerEndsItQuietly) {
    ConnectQuietly();
    m_objView.m_fnShowStatus = [](const std::string& p_strText) {
        if (!p_strText.empty()) {
            throw std::runtime_error("no label");
        }
    };
    m_objPrinter.m_fnAnswer = [](const std::string&) {
        return MWire::Status("00") + MWire::Status("00");
    };
    Run();
    ExpectButtonsHeldToTheEnd();
}

TEST_P(CMaintenanceFlowEachTest, AViewThatFailsAtOnceEndsItQuietly) {
    ConnectQuietly();
    m_objView.m_fnShowStatus = [](const std::string&) { throw std::runtime_error("no label"); };
    Run();
    EXPECT_TRUE(m_objView.AreControlsEnabled());
    EXPECT_FALSE(m_objBusy.IsBusy());
}

TEST_P(CMaintenanceFlowEachTest, StatusesThatNobodyAskedForAreShown) {
    ConnectQuietly();
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 2,
                           [this] { m_objSocket.Arrive(MWire::Status("02")); });
    m_objPrinter.m_iDelay = 500;
    m_objPrinter.m_fnAnswer = [](const std::string&) { return MWire::Status("04"); };
    Run();
    Texts strShown = m_objView.m_strStatuses;
    strShown.insert(strShown.end(), m_objView.m_strHeadChecks.begin(),
                    m_objView.m_strHeadChecks.end());
    EXPECT_NE(std::find(strShown.begin(), strShown.end(), "On Running"), strShown.end());
    ExpectButtonsEnabled();
}

TEST_P(CMaintenanceFlowEachTest, ChangingTheInterfaceOnTheWayEndsItSanely) {
    for (const std::int16_t iInterface : std::vector<std::int16_t>{Serial, Usb, 7}) {
        SCOPED_TRACE(iInterface);
        m_objInterface.SetActiveInterface(Lan);
        ConnectQuietly();
        m_objSocket.m_strSent.clear();
        m_objEventLoop.AtNextYield([&] { m_objInterface.SetActiveInterface(iInterface); });
        Run();
        EXPECT_EQ(m_objSocket.m_strSent, Texts{GetParam().m_strCommands.front()});
        ExpectButtonsEnabled();
    }
}

TEST_P(CMaintenanceFlowEachTest, OverMidnightClosingEndsIt) {
    ConnectQuietly();
    m_objClock.SetTimeOfDay(86399.5);
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objEventLoop.After(600'000, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_EQ(RunTimed(), 600'000);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_P(CMaintenanceFlowEachTest, DoesNothingOnceTheProgramCloses) {
    ConnectQuietly();
    m_objEventLoop.RequestClose();
    EXPECT_EQ(RunTimed(), 0);
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
}

/// How the printer is when the program closes.
enum class Closing : std::uint8_t { Answering, Silent, TakesNothing };

class CMaintenanceFlowClosingTest : public CMaintenanceFlowEachTest {
protected:
    /// One run with doubles of its own, closing in yield p_iYield of it; counted from 1, 0 for
    /// never. Gives the number of yields it had.
    static std::int64_t RunClosing(std::int16_t p_iInterface, Closing p_iClosing,
                                   std::int64_t p_iYield) {
        CMaintenanceFlowClosingTest objTest;
        objTest.RunAs(p_iInterface, p_iClosing, p_iYield);
        return objTest.m_iYields;
    }

private:
    // A fixture used as the bundle of doubles that it is.
    void TestBody() override {}

    void RunAs(std::int16_t p_iInterface, Closing p_iClosing, std::int64_t p_iYield) {
        ASSERT_TRUE(m_objLanLink.Open());
        ASSERT_TRUE(m_objComLink.Open());
        m_objLinks.SetLink(Usb, m_objUsbLink);
        m_objInterface.SetActiveInterface(p_iInterface);
        m_objSocket.m_bCompletesSends = p_iClosing != Closing::TakesNothing;
        m_objPort.m_bRaisesSendEvents = false;  // they yield by themselves
        if (p_iClosing != Closing::Answering) {
            m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
        }
        const std::int64_t iBegin = m_objEventLoop.Yields();
        std::size_t iSent = 0;
        if (p_iYield > 0) {
            m_objEventLoop.AtYield(iBegin + p_iYield, [&] {
                m_objEventLoop.RequestClose();
                iSent = Sent();
            });
        }
        Run();
        m_iYields = m_objEventLoop.Yields() - iBegin;
        if (p_iYield > 0) {
            EXPECT_EQ(m_iYields, p_iYield);
            EXPECT_EQ(Sent(), iSent);
            EXPECT_TRUE(m_objMessageBox.Shown().empty());
            EXPECT_FALSE(m_objBusy.IsBusy());
        }
    }

    /// How much has gone out over any link.
    [[nodiscard]] std::size_t Sent() const {
        return m_objSocket.m_strSent.size() + m_objPort.m_strWrites.size() +
               m_objUsbLink.m_strSent.size();
    }

    std::int64_t m_iYields = 0;
};

INSTANTIATE_TEST_SUITE_P(, CMaintenanceFlowClosingTest, ::testing::ValuesIn(Functions),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST_P(CMaintenanceFlowClosingTest, InAnyYieldEndsItThereWithoutABox) {
    for (const std::int16_t iInterface : std::vector<std::int16_t>{Serial, Lan, Usb}) {
        SCOPED_TRACE(iInterface);
        const std::int64_t iYields = RunClosing(iInterface, Closing::Answering, 0);
        for (std::int64_t iYield = 1; iYield <= iYields; ++iYield) {
            SCOPED_TRACE(iYield);
            RunClosing(iInterface, Closing::Answering, iYield);
            ASSERT_FALSE(HasFailure());
        }
    }
}

TEST_P(CMaintenanceFlowClosingTest, WhileThePrinterIsSilentEndsItThereWithoutABox) {
    const std::int64_t iLast = Is(Course::Sensor) ? 100 : 500;
    for (std::int64_t iYield = 1; iYield <= iLast; iYield += 7) {
        SCOPED_TRACE(iYield);
        RunClosing(Lan, Closing::Silent, iYield);
        ASSERT_FALSE(HasFailure());
    }
}

TEST_P(CMaintenanceFlowClosingTest, WhileTheNetworkTakesNothingEndsItThereWithoutABox) {
    for (std::int64_t iYield = 1; iYield <= 200; iYield += 7) {
        SCOPED_TRACE(iYield);
        RunClosing(Lan, Closing::TakesNothing, iYield);
        ASSERT_FALSE(HasFailure());
    }
}

// Pressed while LAN SET runs, which leaves the buttons enabled.

TEST_P(CMaintenanceFlowEachTest, PressedWhereverLanSetIsItRunsToItsEndAndLanSetGoesOn) {
    ConnectQuietly();
    const std::int64_t iBegin = m_objEventLoop.Yields();
    m_objReadWriteFlow.LanSet();
    const std::int64_t iYields = m_objEventLoop.Yields() - iBegin;
    ASSERT_GT(iYields, 5);
    const Texts strAll = m_objSocket.m_strSent;
    ASSERT_EQ(strAll.size(), 5U);
    for (std::int64_t iYield = 1; iYield <= iYields; ++iYield) {
        SCOPED_TRACE(iYield);
        m_objSocket.m_strSent.clear();
        m_objView.m_bEnabled.clear();
        Texts strExpected = strAll;
        m_objEventLoop.AtYield(m_objEventLoop.Yields() + iYield, [&] {
            const auto iBefore = static_cast<std::ptrdiff_t>(m_objSocket.m_strSent.size());
            strExpected.insert(strExpected.begin() + iBefore, GetParam().m_strCommands.begin(),
                               GetParam().m_strCommands.end());
            Run();
            EXPECT_EQ(m_objSocket.m_strSent.size(), static_cast<std::size_t>(iBefore) + Count());
        });
        m_objReadWriteFlow.LanSet();
        ASSERT_EQ(m_objSocket.m_strSent, strExpected);
        ExpectButtonsEnabled();
        m_objEventLoop.Idle(2000);
    }
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_P(CMaintenanceFlowEachTest, PressedWhileLanSetWaitsInVainLanSetWaitsItsFiveSecondsAnew) {
    ConnectQuietly();
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    std::int64_t iEnd = 0;
    if (!Is(Course::Sensor)) {
        ExpectTimeOut();
    }
    ExpectTimeOut();
    m_objEventLoop.After(4900, [&] {
        Run();
        iEnd = m_objClock.Elapsed();
    });
    m_objReadWriteFlow.LanSet();
    EXPECT_EQ(m_objSocket.m_strSent.size(), 1 + Count());
    EXPECT_EQ(m_objClock.Elapsed() - iEnd, ReplyMilliseconds + Step);
    ExpectButtonsEnabled();
}

// The sensor adjustments.

class CMaintenanceFlowSensorTest : public CMaintenanceFlowEachTest {};

INSTANTIATE_TEST_SUITE_P(, CMaintenanceFlowSensorTest,
                         ::testing::Values(Functions[4], Functions[5], Functions[6]),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST_P(CMaintenanceFlowSensorTest, HoldsTheButtonsForItsSecondWheneverTheAnswerComes) {
    for (const std::int64_t iDelay : std::vector<std::int64_t>{10, 20, 500, 990, 3000}) {
        SCOPED_TRACE(iDelay);
        ConnectQuietly();
        m_objPrinter.m_iDelay = iDelay;
        m_objEventLoop.After(PauseMilliseconds,
                             [this] { EXPECT_EQ(m_objView.m_bEnabled, Told{false}); });
        EXPECT_EQ(RunTimed(), static_cast<std::int64_t>(Count()) * Step + PauseMilliseconds);
        EXPECT_EQ(m_objView.m_bEnabled, (Told{false, true}));
        m_objEventLoop.Idle(5000);
    }
}

TEST_P(CMaintenanceFlowSensorTest, ShowsTheAnswersThatComeMeanwhile) {
    ConnectQuietly();
    m_objPrinter.m_iDelay = 100;
    Run();
    EXPECT_EQ(m_objView.m_strStatuses, Texts(Count(), "ON LINE"));
}

TEST_P(CMaintenanceFlowSensorTest, SettingsThatNobodyAskedForDoNotCutItsSecondShort) {
    OpenComQuietly();
    m_objPort.m_bRaisesSendEvents = false;
    m_objRouter.SetAnswerSelector(MAnswer::Lan);
    m_objPort.m_fnAnswer = [](const std::string&) { return MWire::Settings(3); };
    std::int64_t iBytes = 0;
    for (const std::string& strCommand : GetParam().m_strCommands) {
        iBytes += static_cast<std::int64_t>(strCommand.size());
    }
    EXPECT_EQ(RunTimed(), iBytes * Step + PauseMilliseconds);
    EXPECT_EQ(m_objView.m_bEnabled, (Told{false, true}));
}

}  // namespace
