#include "flows/CMaintenanceFlow.h"
#include "flows/CReadWriteFlow.h"
#include "flows/MFailureBox.h"
#include "protocol/MAnswer.h"
#include "tests/fakes/CFakeSettingsPage.h"
#include "tests/fakes/CUsbLinkFixture.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

constexpr const char* NoAnswer = "Please confirm the connection of USB.";
constexpr std::int64_t Step = CFakeEventLoop::StepMilliseconds;

const std::string Frame = "\x02"
                          "0";

class CUsbCommandTest : public CUsbLinkFixture {
protected:
    /// Sends with a receive length and routes what comes.
    bool SendCommand(std::int16_t p_iGroup, std::int16_t p_iLength) {
        const CWaiter::Turn objTurn(m_objWaiter);
        m_objRouter.SetAnswerSelector(p_iGroup);
        Bytes objBuffer;
        std::int16_t iCount = 0;
        CFailure objFailure;
        const bool bSent =
            m_objExchange.SendCommand(m_objInterface, MWire::ToBytes("{Z5;1|}"), objBuffer,
                                      objFailure, iCount, p_iLength, AwaitedAnswer::Any);
        m_strError = MFailureBox::HandlerText(objFailure);
        return bSent;
    }

    bool ReadGroup(std::int16_t p_iGroup) {
        const CWaiter::Turn objTurn(m_objWaiter);
        return m_objExchange.ReadGroup(p_iGroup).m_bDone;
    }

    std::string m_strError;
};

TEST_F(CUsbCommandTest, AStatusAnswerIsShown) {
    AnswerWith(MWire::Status("14"));
    EXPECT_TRUE(SendCommand(-1, 13));
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"NO RIBBON"});
    EXPECT_EQ(m_objState.m_iStatusReceived, 1);
}

TEST_F(CUsbCommandTest, SettingsFillTheGroupThatWasNamed) {
    for (std::int16_t iGroup = 0; iGroup <= 4; ++iGroup) {
        SCOPED_TRACE(iGroup);
        AnswerWith(Frame + MWire::Settings(iGroup));
        EXPECT_TRUE(SendCommand(iGroup, MAnswer::ReceiveLength(iGroup)));
        EXPECT_EQ(MWire::StoredFields(m_objItemManager, iGroup), MWire::Fields(iGroup));
    }
}

TEST_F(CUsbCommandTest, TheTwoBytesBeforeTheAnswerMayBeAnything) {
    AnswerWith("\x02\xFF" + MWire::Settings(1));
    EXPECT_TRUE(SendCommand(1, 50));
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 1), MWire::Fields(1));
}

TEST_F(CUsbCommandTest, SettingsThatNoGroupWasNamedForFail) {
    AnswerWith(Frame + MWire::Settings(1));
    EXPECT_FALSE(SendCommand(-1, 13));
    EXPECT_EQ(m_strError, "");
}

TEST_F(CUsbCommandTest, AnyOtherAnswerIsAcceptedAndGoesNowhere) {
    const std::string strBefore = MWire::StoredFields(m_objItemManager, 1);
    for (const std::string& strAnswer : {std::string("\x03whatever"), MWire::Settings(1),
                                         std::string(13, '\0'), std::string("~")}) {
        SCOPED_TRACE(strAnswer);
        AnswerWith(strAnswer);
        EXPECT_TRUE(SendCommand(1, 50));
    }
    EXPECT_TRUE(m_objView.m_strStatuses.empty());
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 1), strBefore);
}

TEST_F(CUsbCommandTest, NoAnswerGoesNowhere) {
    KeepSilent();
    EXPECT_TRUE(SendCommand(1, 50));
    EXPECT_EQ(m_strError, NoAnswer);
}

TEST_F(CUsbCommandTest, AStatusThatEndsBeforeItsCodeGoesNowhere) {
    for (const std::string& strAnswer :
         {std::string("\x01"), std::string("\x01\x02"), std::string("\x01\x02\x30")}) {
        SCOPED_TRACE(strAnswer.size());
        AnswerWith(strAnswer);
        EXPECT_TRUE(SendCommand(-1, 13));
    }
    EXPECT_TRUE(m_objView.m_strStatuses.empty());
    EXPECT_EQ(m_objState.m_iStatusReceived, 0);
}

TEST_F(CUsbCommandTest, SettingsThatAreTooShortFillNothing) {
    const std::string strWhole = Frame + MWire::Settings(1);
    const std::string strBefore = MWire::StoredFields(m_objItemManager, 1);
    for (const std::size_t iLength : {1U, 2U, 3U, 10U, 24U, 26U}) {
        SCOPED_TRACE(iLength);
        AnswerWith(strWhole.substr(0, iLength));
        EXPECT_FALSE(SendCommand(1, 50));
        EXPECT_EQ(m_strError, "");
        EXPECT_EQ(MWire::StoredFields(m_objItemManager, 1), strBefore);
    }
}

TEST_F(CUsbCommandTest, TheReceiveLengthBoundsTheAnswer) {
    // Half of it and one more: two bytes of header and the group's 21 need a length of 44.
    for (const auto iLength : std::vector<std::int16_t>{40, 42, 43}) {
        SCOPED_TRACE(iLength);
        AnswerWith(Frame + MWire::Settings(1));
        EXPECT_THROW(SendCommand(1, iLength), std::out_of_range);
    }
    AnswerWith(Frame + MWire::Settings(1));
    EXPECT_NO_THROW(SendCommand(1, 44));
}

TEST_F(CUsbCommandTest, AnotherInterfaceChosenMeanwhileDoesNotStopTheRouting) {
    m_objEventLoop.AtNextYield(
        [this] { m_objInterface.SetActiveInterface(CInterface::LanInterface); });
    EXPECT_TRUE(SendCommand(1, 50));
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 1),
              m_objUsbPrinter.SettingsAnswer(1).substr(2, 21));
}

TEST_F(CUsbCommandTest, AReadAsksForTheReceiveLengthOfItsGroup) {
    for (std::int16_t iGroup = 0; iGroup <= 4; ++iGroup) {
        SCOPED_TRACE(iGroup);
        AnswerWith(Frame + MWire::Settings(iGroup));
        m_objLibrary.m_strCalls.clear();
        EXPECT_TRUE(ReadGroup(iGroup));
        EXPECT_EQ(m_objLibrary.m_strCalls[5],
                  "rcv " + std::to_string(MAnswer::ReceiveLength(iGroup)));
        EXPECT_EQ(MWire::StoredFields(m_objItemManager, iGroup), MWire::Fields(iGroup));
        EXPECT_TRUE(m_objView.AreControlsEnabled());
    }
}

TEST_F(CUsbCommandTest, AReadWithoutAnAnswerShowsItAndHasFailed) {
    KeepSilent();
    m_objMessageBox.Expect(NoAnswer, MessageIcon::Exclamation);
    EXPECT_FALSE(ReadGroup(1));
    EXPECT_EQ(m_objMessageBox.BeepCount(), 1);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_F(CUsbCommandTest, AStatusInPlaceOfSettingsIsShownAndTheReadHasFailed) {
    AnswerWith(MWire::Status("14"));
    const std::string strBefore = MWire::StoredFields(m_objItemManager, 1);
    m_objMessageBox.Expect(NoAnswer, MessageIcon::Exclamation);
    EXPECT_FALSE(ReadGroup(1));
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"NO RIBBON"});
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 1), strBefore);
}

TEST_F(CUsbCommandTest, AReadOfAPrinterThatCannotBeHadShowsWhy) {
    m_objLibrary.m_iOpenResults = {-3};
    m_objMessageBox.Expect("USB DeviceID mismatch error", MessageIcon::Exclamation);
    EXPECT_FALSE(ReadGroup(1));
    EXPECT_TRUE(m_objLibrary.m_strSent.empty());
}

TEST_F(CUsbCommandTest, ACommandWithoutAnAnswerBeepsAndShowsNothing) {
    KeepSilent();
    const CWaiter::Turn objTurn(m_objWaiter);
    EXPECT_TRUE(m_objExchange.SendMaintenance("{HD001,A|}"));
    EXPECT_TRUE(m_objExchange.RequestStatus());
    EXPECT_EQ(m_objMessageBox.BeepCount(), 2);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_F(CUsbCommandTest, ACommandToAPrinterThatCannotBeHadShowsWhy) {
    const CWaiter::Turn objTurn(m_objWaiter);
    m_objLibrary.m_iOpenResults = {-1, -2};
    m_objMessageBox.Expect("USB Device not ready !!", MessageIcon::Exclamation);
    m_objMessageBox.Expect("USB DeviceID receive error", MessageIcon::Exclamation);
    EXPECT_FALSE(m_objExchange.SendMaintenance("{HD001,A|}"));
    EXPECT_FALSE(m_objExchange.RequestStatus());
}

// The window's functions.

class CUsbFlowTest : public CUsbLinkFixture {
protected:
    CFakeSettingsPage m_objParameterPage;
    CFakeSettingsPage m_objLanPage;
    CReadWriteFlow m_objFlow{m_objItemManager, m_objSession, m_objMessageBox, m_objParameterPage,
                             m_objLanPage};
    CMaintenanceFlow m_objMaintenance{m_objSession};
};

TEST_F(CUsbFlowTest, ReadFillsThreeGroupsAndRefreshesThePage) {
    m_objLibrary.m_fnSent = [this](const std::string& p_strCommand) {
        const auto iGroup = static_cast<std::int16_t>(p_strCommand[4] - '0');
        m_objLibrary.m_strAnswers.push_back(Frame + MWire::Settings(iGroup));
    };
    m_objFlow.Read();
    EXPECT_EQ(m_objLibrary.m_strSent, (Texts{"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"}));
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 1);
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 4), MWire::Fields(4));
    EXPECT_TRUE(m_objView.AreControlsEnabled());
    EXPECT_FALSE(m_objLibrary.IsOpen());
}

TEST_F(CUsbFlowTest, ReadEndsAtTheGroupThatIsNotAnswered) {
    m_objLibrary.m_fnSent = [this](const std::string& p_strCommand) {
        if (p_strCommand == "{Z5;0|}") {
            Behave(p_strCommand);
        }
    };
    m_objMessageBox.Expect(NoAnswer, MessageIcon::Exclamation);
    m_objFlow.Read();
    EXPECT_EQ(m_objLibrary.m_strSent, (Texts{"{Z5;0|}", "{Z5;1|}"}));
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 0);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_F(CUsbFlowTest, ReadEndsAtAnAnswerThatIsTooShort) {
    AnswerWith("\x02{0");
    m_objMessageBox.Expect(NoAnswer, MessageIcon::Exclamation);
    m_objFlow.Read();
    EXPECT_EQ(m_objLibrary.m_strSent, Texts{"{Z5;0|}"});
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 0);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_F(CUsbFlowTest, SetSendsItsTwoCommandsAndThePrinterKeepsThem) {
    m_objFlow.Set();
    ASSERT_EQ(m_objLibrary.m_strSent.size(), 2U);
    EXPECT_TRUE(m_objLibrary.m_strSent[0].starts_with("{Z2;1,"));
    EXPECT_TRUE(m_objLibrary.m_strSent[1].starts_with("{Z2;2,"));
    EXPECT_EQ(m_objUsbPrinter.Commands(MCommandKind::Kind::SetParameters).m_iAccepted, 1U);
    EXPECT_EQ(m_objUsbPrinter.Commands(MCommandKind::Kind::SetAdjustments).m_iAccepted, 1U);
}

TEST_F(CUsbFlowTest, SetSendsBothAlthoughTheAnswersAreCutShort) {
    AnswerWith("\x01\x02");
    m_objFlow.Set();
    EXPECT_EQ(m_objLibrary.m_strSent.size(), 2U);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_F(CUsbFlowTest, SetSendsBothAlthoughNothingAnswers) {
    KeepSilent();
    m_objFlow.Set();
    EXPECT_EQ(m_objLibrary.m_strSent.size(), 2U);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 2);
}

TEST_F(CUsbFlowTest, LanReadAndLanSetWorkToo) {
    m_objFlow.LanRead();
    m_objFlow.LanSet();
    EXPECT_EQ(m_objLibrary.m_strSent.size(), 6U);
    EXPECT_EQ(m_objLanPage.m_iRefreshes, 1);
    EXPECT_EQ(m_objUsbPrinter.Commands(MCommandKind::Kind::SetDhcp).m_iAccepted, 1U);
}

TEST_F(CUsbFlowTest, TheStatusIsShown) {
    m_objMaintenance.GetStatus();
    EXPECT_EQ(m_objView.m_strStatuses, (Texts{"", "ON LINE"}));
    EXPECT_LT(m_objClock.Elapsed(), 1000);
}

TEST_F(CUsbFlowTest, TheHeadCheckAsksForItsResultAfterFiveSeconds) {
    m_objMaintenance.HeadCheck();
    EXPECT_EQ(m_objLibrary.m_strSent, (Texts{"{HD001,A|}", "{WS|}"}));
    EXPECT_EQ(m_objView.m_strHeadChecks, (Texts{"", "ON LINE", "ON LINE"}));
    EXPECT_GE(m_objClock.Elapsed(), 5000);
    EXPECT_LE(m_objClock.Elapsed(), 5000 + 20 * Step);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_F(CUsbFlowTest, AHeadCheckThatIsAnsweredWithSettingsHasBeenSent) {
    m_objLibrary.m_fnSent = [this](const std::string& p_strCommand) {
        m_objLibrary.m_strAnswers.push_back(p_strCommand == "{WS|}" ? MWire::Status("14")
                                                                    : Frame + MWire::Settings(1));
    };
    m_objMaintenance.HeadCheck();
    EXPECT_EQ(m_objLibrary.m_strSent, (Texts{"{HD001,A|}", "{WS|}"}));
    EXPECT_EQ(m_objView.m_strHeadChecks, (Texts{"", "NO RIBBON"}));
}

TEST_F(CUsbFlowTest, ClosingInAReadSendsNothingMore) {
    m_objEventLoop.After(500, [this] { m_objEventLoop.RequestClose(); });
    m_objFlow.Read();
    EXPECT_EQ(m_objLibrary.m_strSent, Texts{"{Z5;0|}"});
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 0);
}

}  // namespace
