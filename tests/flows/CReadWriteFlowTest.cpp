#include "model/CConversionError.h"
#include "tests/flows/CReadWriteFlowFixture.h"
#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;
using Told = std::vector<bool>;

const Texts ReadCommands{"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"};
const Texts SetCommands = MGolden::SetCommands();
const Texts LanReadCommands{"{Z5;3|}"};
const Texts LanSetCommands = MGolden::LanSetCommands();

struct FlowCase {
    const char* m_strName;
    void (CReadWriteFlow::*m_fnRun)();
    Texts m_strCommands;
    bool m_bHoldsButtons;
    std::vector<std::int16_t> m_iGroups;  // read on the way
};

void PrintTo(const FlowCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

// clang-format off
const FlowCase Flows[] = {
    {"Read", &CReadWriteFlow::Read, ReadCommands, true, {0, 1, 4}},
    {"Set", &CReadWriteFlow::Set, SetCommands, true, {}},
    {"LanRead", &CReadWriteFlow::LanRead, LanReadCommands, true, {3}},
    {"LanSet", &CReadWriteFlow::LanSet, LanSetCommands, false, {}},
};
// clang-format on

class CReadWriteFlowTest : public CReadWriteFlowFixture {
protected:
    void ExpectTimeOut() {
        m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    }

    void ExpectSendError() {
        m_objMessageBox.Expect("'LAN' Send Error !!", MessageIcon::Exclamation);
    }

    /// Enabled at the end, and from the first "disabled" to the last word never before.
    void ExpectButtonsHeldToTheEnd() {
        ASSERT_GE(m_objView.m_bEnabled.size(), 2U);
        EXPECT_EQ(std::count(m_objView.m_bEnabled.begin(), m_objView.m_bEnabled.end(), true), 1);
        EXPECT_TRUE(m_objView.m_bEnabled.back());
        EXPECT_FALSE(m_objSession.Busy().IsBusy());
    }

    void ExpectButtonsNeverDisabled() {
        EXPECT_EQ(std::count(m_objView.m_bEnabled.begin(), m_objView.m_bEnabled.end(), false), 0);
        EXPECT_FALSE(m_objSession.Busy().IsBusy());
    }

    [[nodiscard]] bool IsGroupRead(std::int16_t p_iGroup) const {
        return MWire::StoredFields(m_objItemManager, p_iGroup) == MWire::Fields(p_iGroup);
    }
};

class CReadWriteFlowEachTest : public CReadWriteFlowTest,
                               public ::testing::WithParamInterface<FlowCase> {
protected:
    void Run() { (m_objFlow.*GetParam().m_fnRun)(); }

    void ExpectButtonsAsTheFlowHoldsThem() {
        if (GetParam().m_bHoldsButtons) {
            ExpectButtonsHeldToTheEnd();
        } else {
            ExpectButtonsNeverDisabled();
        }
    }

    /// Runs the flow, which sends p_iCommands commands, refreshes no page and shows the box that is
    /// expected.
    void ExpectToEndBehind(std::size_t p_iCommands) {
        Run();
        EXPECT_EQ(m_objSocket.m_strSent, FirstCommands(p_iCommands));
        ExpectButtonsAsTheFlowHoldsThem();
        EXPECT_EQ(m_objParameterPage.m_iRefreshes + m_objLanPage.m_iRefreshes, 0);
        m_objMessageBox.Verify();
    }

    /// The commands up to and with number p_iCount.
    [[nodiscard]] static Texts FirstCommands(std::size_t p_iCount) {
        const Texts& strAll = GetParam().m_strCommands;
        return {strAll.begin(), strAll.begin() + static_cast<std::ptrdiff_t>(p_iCount)};
    }
};

INSTANTIATE_TEST_SUITE_P(, CReadWriteFlowEachTest, ::testing::ValuesIn(Flows),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST_P(CReadWriteFlowEachTest, SendsExactlyItsCommandsAndSaysNothing) {
    ConnectQuietly();
    Run();
    EXPECT_EQ(m_objSocket.m_strSent, GetParam().m_strCommands);
    for (const std::int16_t iGroup : GetParam().m_iGroups) {
        EXPECT_TRUE(IsGroupRead(iGroup)) << iGroup;
    }
    ExpectButtonsAsTheFlowHoldsThem();
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_P(CReadWriteFlowEachTest, ASilenceAtAnyCommandEndsItThereWithOneBox) {
    for (std::size_t iLast = 1; iLast <= GetParam().m_strCommands.size(); ++iLast) {
        SCOPED_TRACE(iLast);
        ConnectQuietly();
        m_objSocket.m_strSent.clear();
        m_objPrinter.m_fnAnswer = [&](const std::string& p_strCommand) {
            return m_objSocket.m_strSent.size() < iLast ? CScriptedPrinter::Behave(p_strCommand)
                                                        : std::nullopt;
        };
        ExpectTimeOut();
        ExpectToEndBehind(iLast);
    }
}

TEST_P(CReadWriteFlowEachTest, AnAnswerCutShortAtAnyCommandEndsItThereWithOneBox) {
    for (std::size_t iLast = 1; iLast <= GetParam().m_strCommands.size(); ++iLast) {
        SCOPED_TRACE(iLast);
        ConnectQuietly();
        m_objSocket.m_strSent.clear();
        m_objPrinter.m_fnAnswer = [&](const std::string& p_strCommand) {
            auto strAnswer = CScriptedPrinter::Behave(p_strCommand);
            if (m_objSocket.m_strSent.size() == iLast) {
                strAnswer->pop_back();
            }
            return strAnswer;
        };
        ExpectTimeOut();
        ExpectToEndBehind(iLast);
    }
}

TEST_P(CReadWriteFlowEachTest, AnswersAreAwaitedForFiveSeconds) {
    ConnectQuietly();
    m_objPrinter.m_iDelay = 4900;
    Run();
    EXPECT_EQ(m_objSocket.m_strSent, GetParam().m_strCommands);
    ExpectButtonsAsTheFlowHoldsThem();
    m_objView.m_bEnabled.clear();
    m_objSocket.m_strSent.clear();
    m_objPrinter.m_iDelay = 5100;
    ExpectTimeOut();
    Run();
    EXPECT_EQ(m_objSocket.m_strSent, FirstCommands(1));
    ExpectButtonsAsTheFlowHoldsThem();
}

TEST_P(CReadWriteFlowEachTest, ASendThatFailsAtAnyCommandEndsItThereWithOneBox) {
    for (std::size_t iLast = 1; iLast <= GetParam().m_strCommands.size(); ++iLast) {
        SCOPED_TRACE(iLast);
        m_objSocket.m_bCompletesSends = true;
        ConnectQuietly();
        m_objSocket.m_strSent.clear();
        m_objPrinter.m_fnAnswer = [&](const std::string& p_strCommand) {
            m_objSocket.m_bCompletesSends = m_objSocket.m_strSent.size() + 1 < iLast;
            return CScriptedPrinter::Behave(p_strCommand);
        };
        m_objSocket.m_bCompletesSends = iLast > 1;
        ExpectSendError();
        ExpectToEndBehind(iLast);
    }
}

TEST_P(CReadWriteFlowEachTest, ALinkThatIsNotOpenIsOneBoxAtOnce) {
    ExpectSendError();
    Run();
    EXPECT_EQ(m_objClock.Elapsed(), 0);
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
    ExpectButtonsAsTheFlowHoldsThem();
}

TEST_P(CReadWriteFlowEachTest, APrinterThatClosesBehindItsFirstAnswerIsOneBox) {
    ConnectQuietly();
    const auto fnArrive = m_objSocket.m_fnSent;
    m_objSocket.m_fnSent = [this, fnArrive](const std::string& p_strCommand) {
        fnArrive(p_strCommand);
        m_objEventLoop.After(m_objPrinter.m_iDelay, [this] { m_objSocket.PeerCloses(); });
    };
    if (GetParam().m_strCommands.size() > 1) {
        ExpectSendError();
    }
    Run();
    EXPECT_EQ(m_objSocket.m_strSent, FirstCommands(1));
    ExpectButtonsAsTheFlowHoldsThem();
}

TEST_P(CReadWriteFlowEachTest, AnInterfaceWithoutALinkSendsNothingAndSaysNothing) {
    ConnectQuietly();
    for (const std::int16_t iInterface : std::vector<std::int16_t>{0, 7}) {
        SCOPED_TRACE(iInterface);
        m_objView.m_bEnabled.clear();
        m_objInterface.SetActiveInterface(iInterface);
        Run();
        ExpectButtonsAsTheFlowHoldsThem();
    }
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
}

TEST_P(CReadWriteFlowEachTest, WithoutAPrinterOnUsbItSaysSoOnceAndSendsNothing) {
    ConnectQuietly();
    m_objInterface.SetActiveInterface(CInterface::UsbInterface);
    m_objMessageBox.Expect("USB Device not ready !!", MessageIcon::Exclamation);
    Run();
    ExpectButtonsAsTheFlowHoldsThem();
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
}

TEST_P(CReadWriteFlowEachTest, ClosingInAnyYieldEndsItThereWithoutABox) {
    ConnectQuietly();
    const std::int64_t iBegin = m_objEventLoop.Yields();
    Run();
    const std::int64_t iYields = m_objEventLoop.Yields() - iBegin;
    ASSERT_GT(iYields, 2);
    for (std::int64_t iYield = 1; iYield < iYields; ++iYield) {
        SCOPED_TRACE(iYield);
        CFakeClock objClock;
        CFakeEventLoop objLoop(objClock);
        CFakeTcpClient objSocket(objLoop);
        const CScriptedPrinter objPrinter(objLoop, objSocket);
        CFakeSettingsPage objPage;
        CPrinterSession objSession(
            m_objItemManager, m_objInterface, m_objEvents,
            {objLoop, objClock, objSocket, m_objSerialPort, m_objUsbLibrary});
        CReadWriteFlow objFlow(m_objItemManager, objSession, m_objMessageBox, objPage, objPage);
        ASSERT_TRUE(objSession.Links().OpenLink(CInterface::LanInterface));
        const std::int64_t iClosing = objLoop.Yields() + iYield;
        std::size_t iSent = 0;
        objLoop.AtYield(iClosing, [&] {
            objLoop.RequestClose();
            iSent = objSocket.m_strSent.size();
        });
        (objFlow.*GetParam().m_fnRun)();
        ASSERT_EQ(objLoop.Yields(), iClosing);
        ASSERT_EQ(objSocket.m_strSent.size(), iSent);
        ASSERT_EQ(objPage.m_iRefreshes, 0);
    }
}

TEST_P(CReadWriteFlowEachTest, DoesNothingOnceTheProgramCloses) {
    ConnectQuietly();
    m_objEventLoop.RequestClose();
    Run();
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
    EXPECT_EQ(m_objParameterPage.m_iRefreshes + m_objLanPage.m_iRefreshes, 0);
}

TEST_P(CReadWriteFlowEachTest, AViewThatFailsInAnAnswerEndsItQuietly) {
    ConnectQuietly();
    m_objView.m_fnShowStatus = [](const std::string&) { throw std::runtime_error("no label"); };
    m_objPrinter.m_fnAnswer = [](const std::string&) { return MWire::Status("00"); };
    Run();
    EXPECT_EQ(m_objSocket.m_strSent, FirstCommands(1));
    ExpectButtonsAsTheFlowHoldsThem();
}

TEST_P(CReadWriteFlowEachTest, StatusesThatNobodyAskedForDoNotDisturbIt) {
    ConnectQuietly();
    m_objPrinter.m_fnAnswer = [](const std::string& p_strCommand) {
        return MWire::Status("02") + *CScriptedPrinter::Behave(p_strCommand);
    };
    Run();
    EXPECT_EQ(m_objSocket.m_strSent, GetParam().m_strCommands);
    EXPECT_EQ(m_objView.m_strStatuses.front(), "On Running");
    ExpectButtonsAsTheFlowHoldsThem();
}

TEST_P(CReadWriteFlowEachTest, ChangingTheInterfaceOnTheWayEndsItQuietlyWithoutAnotherCommand) {
    ConnectQuietly();
    m_objEventLoop.AtNextYield(
        [this] { m_objInterface.SetActiveInterface(CInterface::SerialInterface); });
    Run();
    EXPECT_EQ(m_objSocket.m_strSent, FirstCommands(1));
    ExpectButtonsAsTheFlowHoldsThem();
}

// READ.

TEST_F(CReadWriteFlowTest, ReadPausesASecondAfterEachGroup) {
    ConnectQuietly();
    m_objParameterPage.m_fnRefresh = [this] {
        EXPECT_EQ(m_objClock.Elapsed() - m_objSocket.m_iSentTimes.back(),
                  m_objPrinter.m_iDelay + 1000);
        EXPECT_FALSE(m_objView.AreControlsEnabled());
        return true;
    };
    m_objFlow.Read();
    const auto& iTimes = m_objSocket.m_iSentTimes;
    ASSERT_EQ(iTimes.size(), 3U);
    EXPECT_EQ(iTimes[1] - iTimes[0], m_objPrinter.m_iDelay + 1000);
    EXPECT_EQ(iTimes[2] - iTimes[1], m_objPrinter.m_iDelay + 1000);
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 1);
    EXPECT_EQ(m_objParameterPage.m_iStores, 0);
    EXPECT_EQ(m_objLanPage.m_iRefreshes, 0);
}

TEST_F(CReadWriteFlowTest, ReadDisablesTheButtonsBeforeItSends) {
    ConnectQuietly();
    m_objSocket.m_fnSent = [this](const std::string&) {
        EXPECT_FALSE(m_objView.AreControlsEnabled());
        m_objEventLoop.RequestClose();
    };
    m_objFlow.Read();
    EXPECT_EQ(m_objSocket.m_strSent.size(), 1U);
}

TEST_F(CReadWriteFlowTest, ReadThatFailsAtGroup1KeepsGroup0AndThePage) {
    ConnectQuietly();
    m_objPrinter.m_fnAnswer = [](const std::string& p_strCommand) {
        return p_strCommand == "{Z5;1|}" ? std::nullopt : CScriptedPrinter::Behave(p_strCommand);
    };
    ExpectTimeOut();
    m_objFlow.Read();
    EXPECT_EQ(m_objSocket.m_strSent, (Texts{"{Z5;0|}", "{Z5;1|}"}));
    EXPECT_TRUE(IsGroupRead(0));
    EXPECT_FALSE(IsGroupRead(1));
    EXPECT_FALSE(IsGroupRead(4));
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 0);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 1);
    ExpectButtonsHeldToTheEnd();
}

TEST_F(CReadWriteFlowTest, ReadReportsAPageThatDoesNotRefresh) {
    ConnectQuietly();
    m_objParameterPage.m_fnRefresh = [] { return false; };
    m_objMessageBox.Expect("Error RefreshParameterSettingItem");
    m_objMessageBox.WhileShown(
        [this](const auto& /*p_objBox*/) { EXPECT_FALSE(m_objView.AreControlsEnabled()); });
    m_objFlow.Read();
    EXPECT_TRUE(IsGroupRead(4));
    ExpectButtonsHeldToTheEnd();
}

TEST_F(CReadWriteFlowTest, ReadReportsAPageThatThrowsAndTheItemsKeepWhatCame) {
    const std::vector<std::function<bool()>> fnFailures{
        []() -> bool { throw CConversionError("--5"); },
        []() -> bool { throw std::out_of_range("list code 9"); },
    };
    for (const auto& fnFail : fnFailures) {
        ConnectQuietly();
        m_objParameterPage.m_fnRefresh = fnFail;
        m_objMessageBox.Expect("Error RefreshParameterSettingItem");
        m_objMessageBox.WhileShown(
            [this](const auto& /*p_objBox*/) { EXPECT_FALSE(m_objView.AreControlsEnabled()); });
        m_objFlow.Read();
        m_objMessageBox.Verify();
        for (const std::int16_t iGroup : std::vector<std::int16_t>{0, 1, 4}) {
            EXPECT_TRUE(IsGroupRead(iGroup));
        }
        ExpectButtonsHeldToTheEnd();
    }
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 2);
}

TEST_F(CReadWriteFlowTest, ReadIsNotContentWithAStatus) {
    ConnectQuietly();
    m_objPrinter.m_fnAnswer = [](const std::string&) { return MWire::Status("06"); };
    ExpectTimeOut();
    m_objFlow.Read();
    EXPECT_EQ(m_objSocket.m_strSent, Texts{"{Z5;0|}"});
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"Command Error"});
}

TEST_F(CReadWriteFlowTest, ChangingTheInterfaceInTheLastGroupStillReadsIt) {
    ConnectQuietly();
    m_objPrinter.m_fnAnswer = [this](const std::string& p_strCommand) {
        if (p_strCommand == ReadCommands.back()) {
            m_objInterface.SetActiveInterface(CInterface::UsbInterface);
        }
        return CScriptedPrinter::Behave(p_strCommand);
    };
    m_objPrinter.m_iDelay = 3000;
    m_objParameterPage.m_fnRefresh = [this] {
        EXPECT_TRUE(IsGroupRead(4));
        return true;
    };
    m_objFlow.Read();
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 1);
    ExpectButtonsHeldToTheEnd();
}

TEST_F(CReadWriteFlowTest, APauseOverMidnightIsEndedByClosing) {
    ConnectQuietly();
    m_objClock.SetTimeOfDay(86399.5);
    m_objEventLoop.After(600'000, [this] { m_objEventLoop.RequestClose(); });
    m_objFlow.Read();
    EXPECT_EQ(m_objSocket.m_strSent, Texts{"{Z5;0|}"});
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 0);
    ExpectButtonsHeldToTheEnd();
}

// SET.

TEST_F(CReadWriteFlowTest, SetStoresThePageBeforeItBegins) {
    ConnectQuietly();
    m_objParameterPage.m_fnStore = [this] {
        EXPECT_TRUE(m_objView.AreControlsEnabled());
        EXPECT_TRUE(m_objSocket.m_strSent.empty());
        m_objItemManager.m_objZeroStyle->SetValue(1);
        return true;
    };
    m_objFlow.Set();
    EXPECT_EQ(m_objParameterPage.m_iStores, 1);
    ASSERT_EQ(m_objSocket.m_strSent.size(), 2U);
    EXPECT_NE(m_objSocket.m_strSent[0], SetCommands[0]);
    EXPECT_EQ(m_objSocket.m_strSent[1], SetCommands[1]);
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 0);
}

TEST_F(CReadWriteFlowTest, SetTakesAnyAnswer) {
    for (const std::string& strAnswer :
         Texts{"~junk", MWire::Status("06"), MWire::Status("03"), "{xx"}) {
        SCOPED_TRACE(strAnswer);
        ConnectQuietly();
        m_objSocket.m_strSent.clear();
        m_objPrinter.m_fnAnswer = [&](const std::string&) { return strAnswer; };
        m_objFlow.Set();
        EXPECT_EQ(m_objSocket.m_strSent, SetCommands);
    }
}

TEST_F(CReadWriteFlowTest, SetBuildsBothCommandsBeforeItBegins) {
    ConnectQuietly();
    m_objItemManager.m_objFeedAdjustment->SetValue("abc");
    m_objFlow.Set();
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
    EXPECT_TRUE(m_objView.m_bEnabled.empty());
}

// LAN READ.

TEST_F(CReadWriteFlowTest, LanReadPausesASecondThenRefreshesItsPage) {
    ConnectQuietly();
    m_objLanPage.m_fnRefresh = [this] {
        EXPECT_EQ(m_objClock.Elapsed() - m_objSocket.m_iSentTimes.back(),
                  m_objPrinter.m_iDelay + 1000);
        EXPECT_TRUE(IsGroupRead(3));
        return true;
    };
    m_objFlow.LanRead();
    EXPECT_EQ(m_objLanPage.m_iRefreshes, 1);
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 0);
}

TEST_F(CReadWriteFlowTest, LanReadSaysNothingOfAPageThatDoesNotRefresh) {
    ConnectQuietly();
    for (const bool bThrows : {false, true}) {
        m_objView.m_bEnabled.clear();
        m_objLanPage.m_fnRefresh = [bThrows] {
            return bThrows ? throw CConversionError("abc") : false;
        };
        m_objFlow.LanRead();
        ExpectButtonsHeldToTheEnd();
    }
    EXPECT_EQ(m_objLanPage.m_iRefreshes, 2);
}

// LAN SET.

TEST_F(CReadWriteFlowTest, LanSetPadsTheHostNameOnTheWire) {
    ConnectQuietly();
    m_objItemManager.m_objDhcpClientHost->SetValue("desk");
    m_objFlow.LanSet();
    ASSERT_EQ(m_objSocket.m_strSent.size(), 5U);
    EXPECT_EQ(m_objSocket.m_strSent.back(),
              MGolden::With(MGolden::Dhcp, {{"DhcpClientHost", "desk" + std::string(12, '\xFF')}}));
}

TEST_F(CReadWriteFlowTest, LanSetBuildsEveryCommandBeforeItSendsTheFirst) {
    ConnectQuietly();
    m_objItemManager.m_objSocketPortNumber->SetValue("abc");
    m_objFlow.LanSet();
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
    ExpectButtonsNeverDisabled();
}

}  // namespace
