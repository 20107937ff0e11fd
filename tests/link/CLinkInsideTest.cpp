#include "flows/MFailureBox.h"
#include "tests/fakes/CFakeSerialPort.h"
#include "tests/fakes/CUsbLinkFixture.h"

#include "link/CComLink.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// A link that is used again inside of its own Exchange, by a handler that only delays the other.

namespace {

using Texts = std::vector<std::string>;

/// A printer on USB that lets something happen inside of its next opening or sending, which ends
/// it as any other use of the printer does.
class CDisturbedUsbLibrary : public CFakeUsbLibrary {
public:
    using CFakeUsbLibrary::CFakeUsbLibrary;

    std::function<void()> m_fnInOpen;
    std::function<void()> m_fnInSend;

    std::int32_t Dll_openUSB() override {
        if (const auto fnAction = std::exchange(m_fnInOpen, nullptr)) {
            fnAction();
            return NotReady;
        }
        return CFakeUsbLibrary::Dll_openUSB();
    }

    std::int32_t Dll_sendUSB(std::span<const std::uint8_t> p_objBytes) override {
        if (const auto fnAction = std::exchange(m_fnInSend, nullptr)) {
            fnAction();
            return Failed;
        }
        return CFakeUsbLibrary::Dll_sendUSB(p_objBytes);
    }
};

class CLinkInsideTest : public CUsbLinkFixture {
protected:
    CLinkInsideTest() {
        m_objDisturbed.m_fnSent = [this](const std::string& /*p_strCommand*/) {
            m_objDisturbed.m_strAnswers = {MWire::Status("00")};
        };
    }

    /// One exchange of the link; what it says is in m_strError.
    bool Exchange(ILink& p_objLink, const std::string& p_strCommand) {
        m_strError.clear();
        CFailure objFailure;
        const bool bSent =
            p_objLink.Exchange(MWire::ToBytes(p_strCommand), m_objBuffer, objFailure, m_iCount, 13);
        m_strError = MFailureBox::HandlerText(objFailure);
        return bSent;
    }

    /// The same in a turn of its own, as a handler does.
    bool ExchangeAsHandler(ILink& p_objLink, const std::string& p_strCommand) {
        const CWaiter::Turn objTurn(m_objWaiter);
        return Exchange(p_objLink, p_strCommand);
    }

    /// A handler with a dialog.
    void Stand() { const CWaiter::Turn objTurn(m_objWaiter); }

    void OpenPort() {
        m_objInterface.SetActiveInterface(CInterface::SerialInterface);
        ASSERT_TRUE(m_objComLink.Open());
        m_objPort.m_bRaisesSendEvents = false;
    }

    std::string m_strError;
    Bytes m_objBuffer;
    std::int16_t m_iCount = 0;
    CDisturbedUsbLibrary m_objDisturbed{m_objEventLoop};
    CUsbLink m_objDisturbedLink{m_objDisturbed, m_objRouter, m_objState, m_objWaiter, m_objEvents};
    CFakeSerialPort m_objPort{m_objEventLoop};
    CComLink m_objComLink{m_objPort,  m_objInterface, m_objRouter,
                          m_objState, m_objEvents,    m_objWaiter};
};

// USB.

TEST_F(CLinkInsideTest, AnOpeningThatAnotherHandlerHasEndedIsDoneAgain) {
    const CWaiter::Turn objTurn(m_objWaiter, CWaiter::Turn::Later::DelaysIt);
    m_objDisturbed.m_fnInOpen = [this] {
        EXPECT_TRUE(ExchangeAsHandler(m_objDisturbedLink, "{WS|}"));
    };
    EXPECT_TRUE(Exchange(m_objDisturbedLink, "{IS;1,08000|}"));
    EXPECT_EQ(m_objDisturbed.m_strSent, (Texts{"{WS|}", "{IS;1,08000|}"}));
    EXPECT_EQ(m_iCount, 13);
    EXPECT_FALSE(m_objDisturbed.IsOpen());
}

TEST_F(CLinkInsideTest, TheSameForTheOpeningsBeforeTheSendingAndTheReceiving) {
    for (const std::int64_t iYield : {1, 3}) {
        SCOPED_TRACE(iYield);
        m_objDisturbed.m_strSent.clear();
        const CWaiter::Turn objTurn(m_objWaiter, CWaiter::Turn::Later::DelaysIt);
        m_objEventLoop.AtYield(m_objEventLoop.Yields() + iYield,
                               [this] { m_objDisturbed.m_fnInOpen = [this] { Stand(); }; });
        EXPECT_TRUE(Exchange(m_objDisturbedLink, "{IS;1,08000|}"));
        EXPECT_EQ(m_objDisturbed.m_strSent, Texts{"{IS;1,08000|}"});
        EXPECT_EQ(m_iCount, 13);
    }
}

TEST_F(CLinkInsideTest, ASendingThatAnotherHandlerHasEndedIsDoneAgain) {
    const CWaiter::Turn objTurn(m_objWaiter, CWaiter::Turn::Later::DelaysIt);
    m_objDisturbed.m_fnInSend = [this] {
        EXPECT_TRUE(ExchangeAsHandler(m_objDisturbedLink, "{WS|}"));
        EXPECT_FALSE(m_objDisturbed.IsOpen());
    };
    EXPECT_TRUE(Exchange(m_objDisturbedLink, "{IS;1,08000|}"));
    EXPECT_EQ(m_objDisturbed.m_strSent, (Texts{"{WS|}", "{IS;1,08000|}"}));
    EXPECT_EQ(m_iCount, 13);
    EXPECT_FALSE(m_objDisturbed.IsOpen());
}

TEST_F(CLinkInsideTest, WhereALaterHandlerEndsTheTurnNothingIsDoneAgainNorSaid) {
    for (const bool bInOpen : {true, false}) {
        const CWaiter::Turn objTurn(m_objWaiter);
        (bInOpen ? m_objDisturbed.m_fnInOpen : m_objDisturbed.m_fnInSend) = [this] { Stand(); };
        EXPECT_FALSE(Exchange(m_objDisturbedLink, "{IS;1,08000|}"));
        EXPECT_EQ(m_strError, "");
    }
    EXPECT_TRUE(m_objDisturbed.m_strSent.empty());
}

TEST_F(CLinkInsideTest, AnInnerAnswerEndsTheWaitForTheOwn) {
    const CWaiter::Turn objTurn(m_objWaiter, CWaiter::Turn::Later::DelaysIt);
    m_objLibrary.m_fnSent = [this](const std::string& p_strCommand) {
        if (p_strCommand == "{WS|}") {
            m_objLibrary.m_strAnswers = {MWire::Status("00")};
        }
    };
    m_objEventLoop.After(500, [this] { EXPECT_TRUE(ExchangeAsHandler(m_objUsbLink, "{WS|}")); });
    EXPECT_TRUE(Exchange(m_objUsbLink, "{IS;1,08000|}"));
    EXPECT_EQ(m_strError, "");
    EXPECT_EQ(m_iCount, 0);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_F(CLinkInsideTest, AnInnerAnswerBeforeTheReceivingSparesIt) {
    const CWaiter::Turn objTurn(m_objWaiter, CWaiter::Turn::Later::DelaysIt);
    m_objLibrary.m_fnSent = [this](const std::string& p_strCommand) {
        if (p_strCommand == "{WS|}") {
            m_objLibrary.m_strAnswers = {MWire::Status("00")};
        }
    };
    std::int64_t iOver = 0;
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 3, [&] {
        EXPECT_TRUE(ExchangeAsHandler(m_objUsbLink, "{WS|}"));
        iOver = m_objClock.Elapsed();
    });
    EXPECT_TRUE(Exchange(m_objUsbLink, "{IS;1,08000|}"));
    EXPECT_EQ(m_objClock.Elapsed(), iOver);
    EXPECT_EQ(m_iCount, 0);
}

TEST_F(CLinkInsideTest, AnInnerSilenceBehindTheReceivingLosesNothingOfIt) {
    const CWaiter::Turn objTurn(m_objWaiter, CWaiter::Turn::Later::DelaysIt);
    m_objLibrary.m_fnSent = [this](const std::string& p_strCommand) {
        if (p_strCommand != "{WS|}") {
            m_objLibrary.m_strAnswers = {MWire::Status("14")};
        }
    };
    std::int64_t iOver = 0;
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 5, [&] {
        EXPECT_TRUE(ExchangeAsHandler(m_objUsbLink, "{WS|}"));
        EXPECT_EQ(m_iCount, 0);
        iOver = m_objClock.Elapsed();
    });
    EXPECT_TRUE(Exchange(m_objUsbLink, "{IS;1,08000|}"));
    EXPECT_EQ(m_objClock.Elapsed(), iOver);
    EXPECT_EQ(m_iCount, 13);
    EXPECT_EQ(m_objBuffer, MWire::ToBytes(MWire::Status("14")));
}

TEST_F(CLinkInsideTest, BehindAHandlerWithoutAnAnswerTheReceivingBeginsAgain) {
    const CWaiter::Turn objTurn(m_objWaiter, CWaiter::Turn::Later::DelaysIt);
    KeepSilent();
    m_objEventLoop.After(900, [this] {
        Stand();
        m_objClock.Advance(60'000);
        m_objEventLoop.After(300, [this] { m_objLibrary.m_strAnswers = {MWire::Status("00")}; });
    });
    EXPECT_TRUE(Exchange(m_objUsbLink, "{IS;1,08000|}"));
    EXPECT_EQ(m_strError, "");
    EXPECT_EQ(m_iCount, 13);
}

// COM.

TEST_F(CLinkInsideTest, WhatIsLeftOfTheOuterCommandsGoesOutFirstAYieldBehindEachByte) {
    OpenPort();
    const CWaiter::Turn objTurn(m_objWaiter, CWaiter::Turn::Later::DelaysIt);
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 4, [this] {
        const CWaiter::Turn objInner(m_objWaiter, CWaiter::Turn::Later::DelaysIt);
        m_objEventLoop.AtYield(m_objEventLoop.Yields() + 13,
                               [this] { EXPECT_TRUE(ExchangeAsHandler(m_objComLink, "{Z10|}")); });
        EXPECT_TRUE(Exchange(m_objComLink, "{HD001,A|}"));
    });
    EXPECT_TRUE(Exchange(m_objComLink, "{IS;1,08000|}"));
    EXPECT_EQ(m_objPort.Sent(), "{IS;1,08000|}{HD001,A|}{Z10|}");
    for (std::size_t i = 1; i < m_objPort.m_iYields.size(); ++i) {
        EXPECT_EQ(m_objPort.m_iYields[i] - m_objPort.m_iYields[i - 1], 1) << i;
    }
}

TEST_F(CLinkInsideTest, AByteThatIsRefusedFailsEveryCommandThatIsNotOutYet) {
    OpenPort();
    const CWaiter::Turn objTurn(m_objWaiter, CWaiter::Turn::Later::DelaysIt);
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 4, [this] {
        m_objPort.m_bRefusesOutput = true;
        EXPECT_FALSE(ExchangeAsHandler(m_objComLink, "{WS|}"));
        m_objPort.m_bRefusesOutput = false;
    });
    EXPECT_FALSE(Exchange(m_objComLink, "{IS;1,08000|}"));
    EXPECT_EQ(m_objPort.Sent(), "{IS;");
    EXPECT_TRUE(Exchange(m_objComLink, "{WS|}"));
    EXPECT_EQ(m_objPort.Sent(), "{IS;{WS|}");
}

TEST_F(CLinkInsideTest, APortThatIsOpenedAnewGetsNothingOfACommandBegunBefore) {
    OpenPort();
    const std::int64_t iConnection = m_objComLink.Connection();
    const CWaiter::Turn objTurn(m_objWaiter, CWaiter::Turn::Later::DelaysIt);
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 4, [this] {
        const CWaiter::Turn objInner(m_objWaiter);
        EXPECT_TRUE(m_objComLink.Open());
        EXPECT_TRUE(Exchange(m_objComLink, "{WS|}"));
    });
    EXPECT_FALSE(Exchange(m_objComLink, "{IS;1,08000|}"));
    EXPECT_EQ(m_objPort.Sent(), "{IS;{WS|}");
    EXPECT_EQ(m_strError, "");
    EXPECT_NE(m_objComLink.Connection(), iConnection);
}

TEST_F(CLinkInsideTest, AnEventThatFailsOnTheWayIsToldWhenTheCommandIsOut) {
    OpenPort();
    const CWaiter::Turn objTurn(m_objWaiter);
    m_objView.m_fnShowStatus = [](const std::string&) { throw std::runtime_error("no label"); };
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 2,
                           [this] { m_objPort.Arrive(MWire::Status("00")); });
    EXPECT_THROW(Exchange(m_objComLink, "{IS;1,08000|}"), std::runtime_error);
    EXPECT_EQ(m_objPort.Sent(), "{IS;1,08000|}");
}

// LAN.

TEST_F(CLinkInsideTest, AConnectionMadeAnewWhileItSendsIsAFailureToSend) {
    Connect();
    m_objSocket.m_bCompletesSends = false;
    const std::int64_t iConnection = m_objLanLink.Connection();
    const CWaiter::Turn objTurn(m_objWaiter, CWaiter::Turn::Later::DelaysIt);
    m_objEventLoop.AtNextYield([this] {
        const CWaiter::Turn objInner(m_objWaiter);
        EXPECT_TRUE(m_objLanLink.Open());
        m_objSocket.m_bCompletesSends = true;
        EXPECT_TRUE(Exchange(m_objLanLink, "{WS|}"));
    });
    EXPECT_FALSE(Exchange(m_objLanLink, "{IS;1,08000|}"));
    EXPECT_EQ(m_strError, "'LAN' Send Error !!");
    EXPECT_NE(m_objLanLink.Connection(), iConnection);
}

TEST_F(CLinkInsideTest, OnlyOpeningAndClosingMakeAnotherConnection) {
    Connect();
    OpenPort();
    const std::int64_t iLan = m_objLanLink.Connection();
    const std::int64_t iCom = m_objComLink.Connection();
    EXPECT_TRUE(Exchange(m_objLanLink, "{WS|}"));
    EXPECT_TRUE(Exchange(m_objComLink, "{WS|}"));
    EXPECT_TRUE(Exchange(m_objUsbLink, "{WS|}"));
    m_objMessageBox.Expect("Number=0  \r\nScode=0\r\nSource=\r\nHelpFile=\r\nHelpContext=0\r\n"
                           "CancelDisplay=False");
    m_objSocket.Break({});
    EXPECT_EQ(m_objLanLink.Connection(), iLan);
    EXPECT_EQ(m_objComLink.Connection(), iCom);
    m_objLanLink.Close();
    m_objComLink.Close();
    EXPECT_NE(m_objLanLink.Connection(), iLan);
    EXPECT_NE(m_objComLink.Connection(), iCom);
    EXPECT_TRUE(m_objUsbLink.Open());
    m_objUsbLink.Close();
    EXPECT_EQ(m_objUsbLink.Connection(), 0);
    EXPECT_EQ(MFailureBox::HandlerText(m_objUsbLink.WithoutConnection()), "");
    EXPECT_EQ(MFailureBox::HandlerText(m_objComLink.WithoutConnection()), "");
    EXPECT_EQ(MFailureBox::HandlerText(m_objLanLink.WithoutConnection()), "'LAN' Send Error !!");
}

}  // namespace
