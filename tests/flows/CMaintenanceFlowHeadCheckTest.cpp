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

using CMaintenanceFlowHeadCheckTest = CMaintenanceFlowFixture;

// Head check.

TEST_F(CMaintenanceFlowHeadCheckTest, HeadCheckEmptiesBothLabelsFirst) {
    ConnectQuietly();
    m_objSocket.m_fnSent = [this, fnSent = m_objSocket.m_fnSent](const std::string& p_strCommand) {
        EXPECT_EQ(m_objView.m_strStatuses, Texts{""});
        EXPECT_EQ(m_objView.m_strHeadChecks, Texts{""});
        fnSent(p_strCommand);
    };
    m_objFlow.HeadCheck();
    EXPECT_EQ(m_objSocket.m_strSent, Texts{"{HD001,A|}"});
}

TEST_F(CMaintenanceFlowHeadCheckTest, AHeadChecksAnswerGoesToItsLabelOnce) {
    for (const std::int16_t iInterface : std::vector<std::int16_t>{Lan, Serial}) {
        SCOPED_TRACE(iInterface);
        m_objView.m_strStatuses.clear();
        m_objView.m_strHeadChecks.clear();
        m_objInterface.SetActiveInterface(iInterface);
        ASSERT_TRUE(m_objLinks.OpenLink(iInterface));
        const auto fnAnswer = [](const std::string& p_strCommand) {
            return MWire::Status(p_strCommand == "{WS|}" ? "02" : "17");
        };
        m_objPrinter.m_fnAnswer = fnAnswer;
        m_objPort.m_fnAnswer = fnAnswer;
        m_objFlow.HeadCheck();
        EXPECT_EQ(m_objView.m_strHeadChecks, (Texts{"", "Thermal head Error"}));
        EXPECT_EQ(m_objView.m_strStatuses, Texts{""});
        m_objFlow.GetStatus();
        m_objEventLoop.Idle(1000);
        EXPECT_EQ(m_objView.m_strHeadChecks, (Texts{"", "Thermal head Error"}));
        EXPECT_EQ(m_objView.m_strStatuses, (Texts{"", "", "On Running"}));
    }
}

TEST_F(CMaintenanceFlowHeadCheckTest, HeadCheckPausesASecondOverTheSerialPort) {
    OpenComQuietly();
    m_objPort.m_bRaisesSendEvents = false;
    const std::int64_t iBefore = m_objClock.Elapsed();
    m_objFlow.HeadCheck();
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, 10 * Step + PauseMilliseconds);
    EXPECT_EQ(m_objPort.Sent(), "{HD001,A|}");
}

TEST_F(CMaintenanceFlowHeadCheckTest, HeadCheckPausesAlthoughNothingCouldBeSent) {
    ExpectSendError();  // the LAN is not connected
    const std::int64_t iBefore = m_objClock.Elapsed();
    m_objFlow.HeadCheck();
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, PauseMilliseconds);
    m_objInterface.SetActiveInterface(Serial);  // and that is closed
    m_objFlow.HeadCheck();
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, 2 * PauseMilliseconds);
}

TEST_F(CMaintenanceFlowHeadCheckTest, AHeadChecksLateAnswerOverTheSerialPortStillGoesToItsLabel) {
    OpenComQuietly();
    m_objFlow.HeadCheck();
    m_objEventLoop.Idle(3000);
    m_objPort.Arrive(MWire::Status("17") + MWire::Status("00"));
    EXPECT_EQ(m_objView.m_strHeadChecks, (Texts{"", "Thermal head Error"}));
    EXPECT_EQ(m_objView.m_strStatuses, (Texts{"", "ON LINE"}));
}

TEST_F(CMaintenanceFlowHeadCheckTest, AHeadCheckEnablesTheButtonsForItsPauseAndALaterPressEndsIt) {
    ConnectQuietly();
    m_objEventLoop.After(200, [this] {
        EXPECT_TRUE(m_objView.AreControlsEnabled());
        m_objFlow.DiagPrint(0);
    });
    const std::int64_t iBefore = m_objClock.Elapsed();
    m_objFlow.HeadCheck();
    EXPECT_EQ(m_objSocket.m_strSent, (Texts{"{HD001,A|}", "{Z10|}"}));
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, 200 + m_objPrinter.m_iDelay);
    ExpectButtonsEnabled();
}

struct UnansweredCase {
    const char* m_strName;
    std::int16_t m_iInterface;
    bool m_bSends;
    const char* m_strAnswer;  // in place of a status; null for silence
};

class CMaintenanceFlowUnansweredTest : public CMaintenanceFlowHeadCheckTest,
                                       public ::testing::WithParamInterface<UnansweredCase> {
protected:
    void SetUp() override {
        m_objLinks.SetLink(Usb, m_objUsbLink);
        m_objInterface.SetActiveInterface(GetParam().m_iInterface);
        ASSERT_TRUE(m_objLinks.OpenLink(GetParam().m_iInterface));
        const auto fnAnswer = [this](const std::string&) { return m_strAnswer; };
        m_objPrinter.m_fnAnswer = fnAnswer;
        m_objPort.m_fnAnswer = fnAnswer;
    }

    /// A head check as the case says, which gets no result.
    void RunHeadCheck() {
        if (GetParam().m_strAnswer != nullptr) {
            m_strAnswer = GetParam().m_strAnswer;
        }
        LetSend(GetParam().m_bSends);
        if (GetParam().m_iInterface == Lan && !GetParam().m_bSends) {
            ExpectSendError();
        } else if (GetParam().m_iInterface == Lan && !m_strAnswer) {
            ExpectTimeOut();
        }
        m_objFlow.HeadCheck();
        m_objMessageBox.Verify();
        LetSend(true);
    }

    /// GET STATUS of a printer that answers; what it shows is in the view.
    void GetStatus() {
        m_objUsbLink.m_strStatuses = {"02"};
        m_strAnswer = MWire::Status("02");
        m_objView.m_strStatuses.clear();
        m_objView.m_strHeadChecks.clear();
        m_objFlow.GetStatus();
        m_objEventLoop.Idle(1000);
    }

    void LetSend(bool p_bSends) {
        m_objSocket.m_bRefusesSends = !p_bSends;
        m_objPort.m_bRefusesOutput = !p_bSends;
        m_objUsbLink.m_bSends = p_bSends;
    }

    void ExpectAStatus() {
        GetStatus();
        EXPECT_EQ(m_objView.m_strStatuses, (Texts{"", "On Running"}));
        EXPECT_EQ(m_objView.m_strHeadChecks, Texts{});
    }

    void ExpectAResult() {
        GetStatus();
        EXPECT_EQ(m_objView.m_strStatuses, Texts{""});
        EXPECT_EQ(m_objView.m_strHeadChecks, Texts{"On Running"});
    }

    std::optional<std::string> m_strAnswer;
};

TEST_P(CMaintenanceFlowUnansweredTest, TheNextStatusIsItsResultUnlessNothingWasSent) {
    RunHeadCheck();
    if (GetParam().m_bSends) {
        ExpectAResult();
    }
    ExpectAStatus();
}

TEST_P(CMaintenanceFlowUnansweredTest, OneBeforeThatWasSentStillWaits) {
    m_objRouter.ExpectHeadCheck();
    RunHeadCheck();
    ExpectAResult();
    ExpectAStatus();
}

INSTANTIATE_TEST_SUITE_P(, CMaintenanceFlowUnansweredTest,
                         ::testing::Values(UnansweredCase{"LanSilent", Lan, true, nullptr},
                                           UnansweredCase{"LanJunk", Lan, true, "~junk"},
                                           UnansweredCase{"LanNotSent", Lan, false, nullptr},
                                           UnansweredCase{"SerialSilent", Serial, true, nullptr},
                                           UnansweredCase{"SerialJunk", Serial, true, "~junk"},
                                           UnansweredCase{"SerialNotSent", Serial, false, nullptr},
                                           UnansweredCase{"UsbSilent", Usb, true, nullptr},
                                           UnansweredCase{"UsbNotSent", Usb, false, nullptr}),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

// Head check over USB.

TEST_F(CMaintenanceFlowHeadCheckTest, AUsbHeadCheckHoldsTheButtonsFiveSecondsThenAsksForTheStatus) {
    UseUsb();
    m_objUsbLink.m_strStatuses = {"00", "17", "02"};
    m_objEventLoop.After(4990, [this] { EXPECT_FALSE(m_objView.AreControlsEnabled()); });
    m_objFlow.HeadCheck();
    EXPECT_EQ(m_objUsbLink.m_strSent, (Texts{"{HD001,A|}", "{WS|}"}));
    EXPECT_EQ(m_objUsbLink.m_iSentTimes, (std::vector<std::int64_t>{0, 5000}));
    EXPECT_EQ(m_objClock.Elapsed(), 5000);
    EXPECT_EQ(m_objView.m_strStatuses, (Texts{"", ""}));
    EXPECT_EQ(m_objView.m_strHeadChecks, (Texts{"", "ON LINE", "Thermal head Error"}));
    ExpectButtonsEnabled();
    m_objFlow.GetStatus();
    EXPECT_EQ(m_objView.m_strStatuses.back(), "On Running");
    EXPECT_EQ(m_objView.m_strHeadChecks.size(), 3U);
}

TEST_F(CMaintenanceFlowHeadCheckTest, AUsbHeadCheckWithoutALinkEndsAtOnceQuietly) {
    m_objInterface.SetActiveInterface(Usb);
    m_objFlow.HeadCheck();
    EXPECT_EQ(m_objClock.Elapsed(), 0);
    EXPECT_EQ(m_objView.m_strStatuses, Texts{""});
    ExpectButtonsEnabled();
}

TEST_F(CMaintenanceFlowHeadCheckTest, AUsbHeadCheckThatCannotSendShowsItsFailureAndEnds) {
    UseUsb();
    m_objUsbLink.m_bSends = false;
    m_objUsbLink.m_iFailure = CFailure::Kind::UsbNotReady;
    m_objMessageBox.WhileShown(
        [this](const auto& /*p_objBox*/) { EXPECT_TRUE(m_objView.AreControlsEnabled()); });
    m_objMessageBox.Expect("USB Device not ready !!", MessageIcon::Exclamation,
                           "Varden Setting Tool");
    m_objFlow.HeadCheck();
    EXPECT_EQ(m_objUsbLink.m_strSent, Texts{"{HD001,A|}"});
    EXPECT_EQ(m_objClock.Elapsed(), 0);
    ExpectButtonsEnabled();
}

TEST_F(CMaintenanceFlowHeadCheckTest, ChangingTheInterfaceInsideAUsbHeadChecksPauseEndsItSanely) {
    UseUsb();
    m_objEventLoop.After(1000, [this] { m_objInterface.SetActiveInterface(Serial); });
    m_objFlow.HeadCheck();
    EXPECT_EQ(m_objUsbLink.m_strSent, Texts{"{HD001,A|}"});
    EXPECT_TRUE(m_objPort.m_strWrites.empty());
    EXPECT_EQ(m_objClock.Elapsed(), 5000);
    ExpectButtonsEnabled();
}

}  // namespace
