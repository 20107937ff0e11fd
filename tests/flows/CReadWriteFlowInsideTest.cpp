#include "tests/flows/CLinks.h"
#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

// Handlers that are started while LAN SET waits, which leaves the buttons enabled.

namespace {

using Texts = std::vector<std::string>;

constexpr std::int16_t Serial = CInterface::SerialInterface;
constexpr std::int16_t Lan = CInterface::LanInterface;
constexpr std::int16_t Usb = CInterface::UsbInterface;
constexpr std::int64_t Step = CFakeEventLoop::StepMilliseconds;
constexpr std::int64_t ReplyMilliseconds = 5000;

const Texts LanSetCommands = MGolden::LanSetCommands();

/// LAN SET with something inside of it.
class CLanSet : public CLinks {
public:
    /// All five with p_strInside behind the first p_iBefore.
    static std::string AllWith(std::size_t p_iBefore, const std::string& p_strInside) {
        return First(p_iBefore) + p_strInside +
               Joined(LanSetCommands).substr(First(p_iBefore).size());
    }

    static std::string First(std::size_t p_iCount) {
        return Joined({LanSetCommands.begin(),
                       LanSetCommands.begin() + static_cast<std::ptrdiff_t>(p_iCount)});
    }

    /// How many of the five have been begun, whole or not.
    [[nodiscard]] std::size_t Begun() const {
        std::size_t iBegun = 0;
        while (First(iBegun).size() < Sent().size()) {
            ++iBegun;
        }
        return iBegun;
    }

    /// How many yields LAN SET has over the interface when nothing happens inside of it.
    std::int64_t CountYields() {
        const std::int64_t iBefore = m_objEventLoop.Yields();
        m_objFlow.LanSet();
        EXPECT_EQ(Sent(), Joined(LanSetCommands));
        ForgetSent();
        return m_objEventLoop.Yields() - iBefore;
    }

    /// Runs LAN SET with p_fnInside in yield p_iYield of it. How many of the five had been begun.
    std::size_t RunWith(std::int64_t p_iYield, const std::function<void()>& p_fnInside) {
        std::size_t iBegun = 0;
        bool bRan = false;
        m_objEventLoop.AtYield(m_objEventLoop.Yields() + p_iYield, [&] {
            iBegun = Begun();
            bRan = true;
            p_fnInside();
        });
        m_objFlow.LanSet();
        EXPECT_TRUE(bRan);
        ExpectButtonsEnabled();
        return iBegun;
    }
};

class CReadWriteFlowInsideTest : public ::testing::Test, protected CLanSet {};

// Over each link, wherever LAN SET is.

struct InsideCase {
    const char* m_strName;
    void (*m_fnRun)(CReadWriteFlow& p_objFlow, CMaintenanceFlow& p_objMaintenance);
    std::string m_strCommands;
};

// clang-format off
const InsideCase Insides[] = {
    {"GetStatus", [](auto& /*p_objFlow*/, auto& p_objMaintenance) { p_objMaintenance.GetStatus(); }, "{WS|}"},
    {"Read", [](auto& p_objFlow, auto& /*p_objMaintenance*/) { p_objFlow.Read(); }, "{Z5;0|}{Z5;1|}{Z5;4|}"},
    {"LanRead", [](auto& p_objFlow, auto& /*p_objMaintenance*/) { p_objFlow.LanRead(); }, "{Z5;3|}"},
    {"Set", [](auto& p_objFlow, auto& /*p_objMaintenance*/) { p_objFlow.Set(); },
     std::string(MGolden::Parameters) + MGolden::Adjustments},
    {"PaperEnd", [](auto& /*p_objFlow*/, auto& p_objMaintenance) { p_objMaintenance.SensorAdjustPaperEnd(); }, "{Z6;01|}{Z6;11|}"},
};
// clang-format on

void PrintTo(const InsideCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

class CReadWriteFlowInsideEachTest
    : public ::testing::TestWithParam<std::tuple<std::int16_t, InsideCase>> {};

TEST_P(CReadWriteFlowInsideEachTest, RunsToItsEndThenLanSetGoesOnWithWhatIsLeft) {
    const std::int16_t iInterface = std::get<std::int16_t>(GetParam());
    const InsideCase& objInside = std::get<InsideCase>(GetParam());
    std::int64_t iYields = 10;
    for (std::int64_t iYield = 1; iYield <= iYields; ++iYield) {
        SCOPED_TRACE(iYield);
        CLanSet objLanSet;
        objLanSet.Use(iInterface);
        iYields = objLanSet.CountYields();
        std::string strWhenOver;
        const std::size_t iBegun = objLanSet.RunWith(iYield, [&] {
            objInside.m_fnRun(objLanSet.m_objFlow, objLanSet.m_objMaintenance);
            strWhenOver = objLanSet.Sent();
        });
        ASSERT_EQ(strWhenOver, CLanSet::First(iBegun) + objInside.m_strCommands);
        ASSERT_EQ(objLanSet.Sent(), CLanSet::AllWith(iBegun, objInside.m_strCommands));
        ASSERT_FALSE(objLanSet.m_objLibrary.IsOpen());
    }
}

std::string NameOf(const std::tuple<std::int16_t, InsideCase>& p_objParam) {
    const char* const strLinks[] = {"Com", "Lan", "Usb"};
    return std::string(strLinks[std::get<std::int16_t>(p_objParam)]) +
           std::get<InsideCase>(p_objParam).m_strName;
}

INSTANTIATE_TEST_SUITE_P(, CReadWriteFlowInsideEachTest,
                         ::testing::Combine(::testing::Values(Serial, Lan, Usb),
                                            ::testing::ValuesIn(Insides)),
                         [](const auto& p_objInfo) { return NameOf(p_objInfo.param); });

class CReadWriteFlowInsideLinksTest : public CReadWriteFlowInsideTest,
                                      public ::testing::WithParamInterface<std::int16_t> {
protected:
    void SetUp() override { Use(GetParam()); }
};

TEST_P(CReadWriteFlowInsideLinksTest, AnotherLanSetSendsAllFiveAndTheFirstSendsNothingMore) {
    const std::int64_t iYields = CountYields();
    for (std::int64_t iYield = 1; iYield <= iYields; ++iYield) {
        SCOPED_TRACE(iYield);
        m_objItemManager.m_objIpAddress4->SetValue("020");
        const std::size_t iBegun = RunWith(iYield, [this] {
            m_objItemManager.m_objIpAddress4->SetValue("077");
            m_objFlow.LanSet();
        });
        std::string strSecond = Joined(LanSetCommands);
        strSecond.replace(strSecond.find("020"), 3, "077");
        ASSERT_EQ(Sent(), First(iBegun) + strSecond);
        m_objEventLoop.Idle(2000);
        ForgetSent();
    }
}

TEST_P(CReadWriteFlowInsideLinksTest, AHandlerThatSendsNothingTakesItsTime) {
    const std::int64_t iYields = CountYields();
    for (std::int64_t iYield = 1; iYield <= iYields; ++iYield) {
        SCOPED_TRACE(iYield);
        RunWith(iYield, [this] { StandFor(60'000); });
        ASSERT_EQ(Sent(), Joined(LanSetCommands));
        ForgetSent();
    }
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_P(CReadWriteFlowInsideLinksTest, ClosingInsideEndsBothAtOnce) {
    const std::int64_t iYields = CountYields();
    for (std::int64_t iYield = 1; iYield <= iYields; iYield += 3) {
        SCOPED_TRACE(iYield);
        CLanSet objRun;
        objRun.Use(GetParam());
        std::string strSent;
        std::int64_t iEnd = 0;
        objRun.m_objEventLoop.AtYield(objRun.m_objEventLoop.Yields() + iYield, [&] {
            objRun.m_objEventLoop.AtNextYield([&] {
                objRun.m_objEventLoop.RequestClose();
                strSent = objRun.Sent();
                iEnd = objRun.m_objEventLoop.Yields();
            });
            objRun.m_objFlow.Read();
        });
        objRun.m_objFlow.LanSet();
        ASSERT_EQ(objRun.Sent(), strSent);
        ASSERT_LE(objRun.m_objEventLoop.Yields() - iEnd, 1);
    }
}

INSTANTIATE_TEST_SUITE_P(, CReadWriteFlowInsideLinksTest, ::testing::Values(Serial, Lan, Usb));

// What LAN SET waits for on the LAN.

class CReadWriteFlowInsideLanTest : public CReadWriteFlowInsideTest {
protected:
    void SetUp() override { Use(Lan); }
};

TEST_F(CReadWriteFlowInsideLanTest, AnInnerAnswerCountsForTheOneThatNeverCame) {
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objEventLoop.After(4900, [this] {
        m_objPrinter.m_fnAnswer = CScriptedPrinter::Behave;
        m_objMaintenance.GetStatus();
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), AllWith(1, "{WS|}"));
}

TEST_F(CReadWriteFlowInsideLanTest, WithoutAnInnerAnswerItsFiveSecondsAreCountedAnew) {
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objEventLoop.After(4900, [this] {
        StandFor(7000);
        m_objEventLoop.After(4900, [this] {
            m_objPrinter.m_fnAnswer = CScriptedPrinter::Behave;
            m_objSocket.Arrive(MWire::Status("00"));
        });
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), Joined(LanSetCommands));
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_F(CReadWriteFlowInsideLanTest, ItsOwnAnswerCountsBehindAReadThatGotNothing) {
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    ExpectTimeOut();  // the read's
    m_objEventLoop.After(1000, [this] {
        m_objFlow.Read();
        m_objPrinter.m_fnAnswer = CScriptedPrinter::Behave;
        m_objEventLoop.After(500, [this] { m_objSocket.Arrive(MWire::Status("00")); });
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), AllWith(1, "{Z5;0|}"));
}

TEST_F(CReadWriteFlowInsideLanTest, ItsOwnAnswerCountsThatCameWhileAReadInsideWaited) {
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    ExpectTimeOut();  // the read's
    m_objEventLoop.After(1000, [this] {
        m_objEventLoop.After(500, [this] { m_objSocket.Arrive(MWire::Status("00")); });
        m_objFlow.Read();
        m_objPrinter.m_fnAnswer = CScriptedPrinter::Behave;
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), AllWith(1, "{Z5;0|}"));
}

TEST_F(CReadWriteFlowInsideLanTest, FiveSecondsBehindTheInnerOneItTimesOut) {
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    std::int64_t iOver = 0;
    m_objEventLoop.After(1000, [&] {
        StandFor(7000);
        iOver = m_objClock.Elapsed();
    });
    ExpectTimeOut();
    m_objFlow.LanSet();
    EXPECT_EQ(m_objClock.Elapsed() - iOver, ReplyMilliseconds + Step);
    EXPECT_EQ(Sent(), First(1));
}

TEST_F(CReadWriteFlowInsideLanTest, WhatStandsInFrontOfTheWindowTakesItsTimeToo) {
    m_objPrinter.m_iDelay = 500;
    m_objEventLoop.After(100, [this] {
        m_objEventLoop.Idle(60'000);  // no handler: it yields to nobody
        m_objSession.Waiter().NoteAside();
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), Joined(LanSetCommands));
}

TEST_F(CReadWriteFlowInsideLanTest, TheSendLimitIsCountedAnewToo) {
    m_objSocket.m_bCompletesSends = false;
    m_objEventLoop.After(1900, [this] {
        StandFor(3000);
        m_objEventLoop.After(1900, [this] {
            m_objSocket.m_bCompletesSends = true;
            m_objSocket.CompleteSend();
        });
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), Joined(LanSetCommands));
}

TEST_F(CReadWriteFlowInsideLanTest, AnAnswerThatWasThereBeforeTheInnerCommandIsNotLost) {
    m_objPrinter.m_fnAnswer = [this](const std::string& p_strCommand) {
        return m_objSocket.m_strSent.size() == 1 || p_strCommand == "{Z6;0|}"
                   ? std::nullopt
                   : CScriptedPrinter::Behave(p_strCommand);
    };
    m_objEventLoop.After(100, [this] {
        m_objSocket.Arrive(MWire::Status("00"));
        m_objMaintenance.SensorAdjustReflect();  // which nobody answers
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), AllWith(1, "{Z6;0|}"));
}

TEST_F(CReadWriteFlowInsideLanTest, TheSameWhileTheSendHasNotEnded) {
    m_objSocket.m_bCompletesSends = false;
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objEventLoop.After(100, [this] {
        m_objSocket.m_bCompletesSends = true;
        m_objSocket.Arrive(MWire::Status("00"));
        m_objMaintenance.SensorAdjustReflect();
        m_objPrinter.m_fnAnswer = CScriptedPrinter::Behave;
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), AllWith(1, "{Z6;0|}"));
}

TEST_F(CReadWriteFlowInsideLanTest, AnInnerFailureToSendIsToldThenItsOwn) {
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objEventLoop.After(100, [this] {
        m_objSocket.PeerCloses();
        m_objMaintenance.GetStatus();
    });
    ExpectSendError();
    ExpectTimeOut();
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), First(1));
    ExpectButtonsEnabled();
}

// What is started inside of what is started inside.

TEST_F(CReadWriteFlowInsideLanTest, AHandlerInAHeadChecksPauseEndsThePauseAndLanSetGoesOn) {
    m_objPrinter.m_iDelay = 500;
    m_objEventLoop.After(100, [this] {
        m_objEventLoop.After(900, [this] { m_objMaintenance.GetStatus(); });
        m_objMaintenance.HeadCheck();
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), AllWith(1, "{HD001,A|}{WS|}"));
    ExpectButtonsEnabled();
}

TEST_F(CReadWriteFlowInsideLanTest, AnAnswerThatCameInBetweenIsNotLostThereEither) {
    m_objPrinter.m_fnAnswer = [](const std::string& p_strCommand) {
        return p_strCommand == "{WS|}" ? std::nullopt : CScriptedPrinter::Behave(p_strCommand);
    };
    m_objPrinter.m_iDelay = 500;
    m_objEventLoop.After(100, [this] {
        m_objEventLoop.After(900, [this] { m_objMaintenance.GetStatus(); });
        m_objMaintenance.HeadCheck();
    });
    ExpectTimeOut();
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), AllWith(1, "{HD001,A|}{WS|}"));
}

TEST_F(CReadWriteFlowInsideLanTest, ALanSetInAHeadChecksPauseTakesOver) {
    m_objPrinter.m_iDelay = 500;
    m_objEventLoop.After(100, [this] {
        m_objEventLoop.After(900, [this] { m_objFlow.LanSet(); });
        m_objMaintenance.HeadCheck();
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), First(1) + "{HD001,A|}" + Joined(LanSetCommands));
    ExpectButtonsEnabled();
}

TEST_F(CReadWriteFlowInsideLanTest, AHandlerInALanSetThatHasTakenOverDelaysThatOne) {
    m_objPrinter.m_iDelay = 500;
    m_objEventLoop.After(100, [this] { m_objFlow.LanSet(); });
    m_objEventLoop.After(200, [this] { m_objMaintenance.GetStatus(); });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), First(1) + AllWith(1, "{WS|}"));
    ExpectButtonsEnabled();
}

TEST_F(CReadWriteFlowInsideLanTest, ALanSetThatHasNothingToSendTakesNothingOver) {
    m_objPrinter.m_iDelay = 500;
    m_objEventLoop.After(100, [this] {
        m_objItemManager.m_objDhcpClientHost->SetValue("a-name-of-17-char");
        m_objFlow.LanSet();
        m_objLanPage.m_fnStore = [] { return false; };
        m_objFlow.LanSet();
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), Joined(LanSetCommands));
}

// What fails inside.

TEST_F(CReadWriteFlowInsideLanTest, AnInnerHandlerThatFailsEndsAlone) {
    m_objPrinter.m_iDelay = 500;
    m_objEventLoop.After(100, [this] {
        MHandler::Run(m_objSession.Waiter(), [] { throw std::runtime_error("failed"); });
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), Joined(LanSetCommands));
}

TEST_F(CReadWriteFlowInsideLanTest, AnEventThatFailsEndsTheInnermostHandlerThatWaits) {
    m_objPrinter.m_iDelay = 500;
    m_objEventLoop.After(100, [this] {
        m_objView.m_fnShowStatus = [this](const std::string& p_strText) {
            if (!p_strText.empty()) {
                m_objView.m_fnShowStatus = nullptr;
                throw std::runtime_error("no label");
            }
        };
        m_objMaintenance.SensorAdjustReflect();
        EXPECT_EQ(m_objClock.Elapsed(), 500 + Step);  // and not its second
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), AllWith(1, "{Z6;0|}"));
    ExpectButtonsEnabled();
}

TEST_F(CReadWriteFlowInsideLanTest, AnEventThatFailsBeforeTheInnerHandlerEndsLanSetBehindIt) {
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objEventLoop.After(100, [this] {
        m_objView.m_fnShowStatus = [](const std::string&) { throw std::runtime_error("no label"); };
        m_objSocket.Arrive(MWire::Status("00"));
        m_objView.m_fnShowStatus = nullptr;
        m_objMaintenance.SensorAdjustReflect();
    });
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), First(1) + "{Z6;0|}");
}

// A link that is set up inside.

TEST_F(CReadWriteFlowInsideLanTest, SetUpInsideItSendsNothingMoreAndSaysSo) {
    const std::int64_t iYields = CountYields();
    for (std::int64_t iYield = 1; iYield <= iYields; ++iYield) {
        SCOPED_TRACE(iYield);
        Use(Lan);
        const std::int64_t iBefore = m_objClock.Elapsed();
        std::int64_t iOver = 0;
        // In the last yield the fifth has left, and there is nothing to tell.
        const bool bLeft = iYield == iYields;
        if (!bLeft) {
            ExpectSendError();
        }
        const std::size_t iBegun = RunWith(iYield, [&] {
            SetUpLinks();
            iOver = m_objClock.Elapsed();
        });
        m_objMessageBox.Verify();
        ASSERT_EQ(Sent(), First(iBegun));
        ASSERT_EQ(m_objClock.Elapsed(), iOver) << "at once";
        ASSERT_LT(m_objClock.Elapsed() - iBefore, 1000);
        ASSERT_TRUE(m_objSocket.IsConnected());
        ForgetSent();
    }
}

TEST_F(CReadWriteFlowInsideLanTest, AnInnerCommandOnTheNewConnectionDoesNotCarryItOn) {
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objEventLoop.After(100, [this] {
        m_objPrinter.m_fnAnswer = CScriptedPrinter::Behave;
        SetUpLinks();
    });
    m_objEventLoop.After(130, [this] { m_objMaintenance.GetStatus(); });
    ExpectSendError();
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), First(1));
    m_objEventLoop.Idle(100);
    EXPECT_EQ(Sent(), First(1) + "{WS|}");
}

TEST_F(CReadWriteFlowInsideLanTest, AConnectionThatFailsInsideIsToldThenItsOwnFailure) {
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 2, [this] {
        m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Fails;
        SetUpLinks();
    });
    m_objMessageBox.Expect(
        "Number=0  \r\nScode=0\r\nSource=\r\nHelpFile=\r\nHelpContext=0\r\nCancelDisplay=False");
    m_objMessageBox.Expect("'LAN' Open Error !!", MessageIcon::Critical);
    ExpectSendError();
    m_objFlow.LanSet();
    EXPECT_EQ(Sent(), First(1));
    ExpectButtonsEnabled();
}

TEST_F(CReadWriteFlowInsideLanTest, AnotherInterfaceChosenInsideTakesWhatIsLeft) {
    ASSERT_TRUE(m_objSession.Links().OpenLink(Serial));
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 2,
                           [this] { m_objInterface.SetActiveInterface(Serial); });
    m_objFlow.LanSet();
    EXPECT_EQ(Joined(m_objSocket.m_strSent), First(1));
    EXPECT_EQ(First(1) + m_objPort.Sent(), Joined(LanSetCommands));
}

TEST_F(CReadWriteFlowInsideLanTest, AnotherInterfaceSetUpInsideTakesNothing) {
    for (const std::int16_t iInterface : {Serial, Usb}) {
        SCOPED_TRACE(iInterface);
        ForgetSent();
        Use(Lan);
        m_objEventLoop.AtYield(m_objEventLoop.Yields() + 2, [&] {
            m_objInterface.SetActiveInterface(iInterface);
            SetUpLinks();
        });
        ExpectSendError();
        m_objFlow.LanSet();
        m_objMessageBox.Verify();
        EXPECT_EQ(Joined(m_objSocket.m_strSent), First(1));
        EXPECT_EQ(Sent(), "");
    }
}

TEST_F(CReadWriteFlowInsideTest, APortSetUpInsideGetsNothingMoreQuietly) {
    Use(Serial);
    const std::int64_t iYields = CountYields();
    for (std::int64_t iYield = 1; iYield < iYields; ++iYield) {
        SCOPED_TRACE(iYield);
        std::string strSent;
        RunWith(iYield, [&] {
            strSent = Sent();
            SetUpLinks();
        });
        ASSERT_EQ(Sent(), strSent);
        ASSERT_TRUE(m_objPort.IsOpen());
        ForgetSent();
    }
}

TEST_F(CReadWriteFlowInsideTest, UsbHasNothingToSetUpAndGoesOn) {
    Use(Usb);
    const std::int64_t iYields = CountYields();
    for (std::int64_t iYield = 1; iYield < iYields; ++iYield) {
        SCOPED_TRACE(iYield);
        RunWith(iYield, [this] { SetUpLinks(); });
        ASSERT_EQ(Sent(), Joined(LanSetCommands));
        ForgetSent();
    }
}

TEST_F(CReadWriteFlowInsideTest, APortThatRefusesAnInnerByteEndsBothQuietly) {
    Use(Serial);
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 30, [this] {
        m_objPort.m_bRefusesOutput = true;
        m_objMaintenance.GetStatus();
    });
    m_objFlow.LanSet();
    EXPECT_TRUE(Joined(LanSetCommands).starts_with(Sent()));
    EXPECT_LT(Sent().size(), First(2).size());
    ExpectButtonsEnabled();
}

}  // namespace
