#include "flows/CReadWriteFlow.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/CFakeSettingsPage.h"
#include "tests/link/CSessionEventsFixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// What a session tells of its links and of how far it is.

namespace {

using Texts = std::vector<std::string>;

constexpr std::int16_t Com = CInterface::SerialInterface;
constexpr std::int16_t Lan = CInterface::LanInterface;
constexpr std::int16_t Usb = CInterface::UsbInterface;

class CSessionEventsTest : public CSessionEventsFixture {};

// States of the links.

TEST_F(CSessionEventsTest, TheSerialPortTellsItsStates) {
    Use(Com);
    m_objSession.Links().CloseLink(Com);
    m_objSession.Links().OpenLink(Com);
    m_objPort.m_iOpenResult = ISerialPort::AlreadyOpen;
    m_objSession.Links().OpenLink(Com);
    m_objPort.m_iOpenResult = 13;
    m_objSession.Links().OpenLink(Com);
    EXPECT_EQ(m_objEvents.m_strLines,
              (Texts{"link 0 closed COM1 9600,E,8,1", "link 0 open COM1 9600,E,8,1",
                     "link 0 failed COM1 9600,E,8,1: SerialHeld", "failure SerialHeld",
                     "link 0 failed COM1 9600,E,8,1: SerialNotOpened", "failure SerialNotOpened"}));
    EXPECT_EQ(m_objEvents.m_objFailures.back().m_iNumber, 13);
    EXPECT_EQ(m_objEvents.m_objFailures.back().m_strDevice, "COM1");
}

TEST_F(CSessionEventsTest, APortThatHasGoneIsToldByTheNextCommand) {
    m_objInterface.SetActiveInterface(Com);
    Exchange().Request("{WS|}", 13, AwaitedAnswer::Any);
    m_objPort.m_bGoesAtOnce = true;
    m_objSession.Links().OpenLink(Com);
    Exchange().Request("{WS|}", 13, AwaitedAnswer::Any);
    EXPECT_EQ(m_objEvents.Lines("failure"), (Texts{"failure SerialNotOpen", "failure SerialLost"}));
    EXPECT_EQ(m_objEvents.Lines("link 0 failed"),
              (Texts{"link 0 failed: SerialNotOpen", "link 0 failed COM1 9600,E,8,1: SerialLost"}));
}

TEST_F(CSessionEventsTest, TheLanTellsItsStates) {
    m_objSession.Links().OpenLink(Lan);
    m_objSocket.PeerCloses();
    m_objSession.Links().CloseLink(Lan);
    EXPECT_EQ(m_objEvents.Lines("link"),
              (Texts{"link 1 opening 192.168.10.20:8000", "link 1 open 192.168.10.20:8000",
                     "link 1 closed by the printer 192.168.10.20:8000",
                     "link 1 closed 192.168.10.20:8000"}));
}

TEST_F(CSessionEventsTest, ARefusedConnectionTellsItsCauseBeforeItsFailure) {
    m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Fails;
    m_objSocket.m_objConnectError.m_iNumber = 111;
    m_objSession.Links().OpenLink(Lan);
    EXPECT_EQ(m_objEvents.m_strLines,
              (Texts{"busy", "link 1 opening 192.168.10.20:8000",
                     "link 1 failed 192.168.10.20:8000: LanError", "failure LanError",
                     "failure LanNotConnected", "idle"}));
    for (const CFailure& objFailure : m_objEvents.m_objFailures) {
        EXPECT_EQ(objFailure.m_objSocket.m_iNumber, 111);
        EXPECT_EQ(objFailure.m_strDevice, "192.168.10.20:8000");
    }
}

TEST_F(CSessionEventsTest, UsbThatIsOpenedByItselfTellsIt) {
    m_objSession.Links().OpenLink(Usb);
    EXPECT_EQ(m_objEvents.m_strLines, Texts{"link 2 open"});
    m_objSession.Links().CloseLink(Usb);
    EXPECT_EQ(m_objEvents.m_strLines, (Texts{"link 2 open", "link 2 closed"}));
}

TEST_F(CSessionEventsTest, UsbIsOpenedAroundEachTransfer) {
    Use(Usb);
    Exchange().Request("{WS|}", 13, AwaitedAnswer::Any);
    m_objLibrary.m_iOpenResults = {IUsbLibrary::NotReady};
    Exchange().Request("{WS|}", 13, AwaitedAnswer::Any);
    EXPECT_EQ(
        m_objEvents.m_strLines,
        (Texts{"link 2 opening", "link 2 open", "link 2 closed", "status ON LINE", "link 2 opening",
               "link 2 failed: UsbNotReady", "failure UsbNotReady", "command failed UsbNotReady"}));
}

TEST_F(CSessionEventsTest, AFailureOfATransferStaysTheStateOfUsb) {
    Use(Usb);
    m_objLibrary.m_iSendResult = IUsbLibrary::Failed;
    Exchange().Request("{WS|}", 13, AwaitedAnswer::Any);
    m_objLibrary.m_iSendResult = 0;
    Answer(CScriptedPrinter::KeepSilent);
    Exchange().ReadGroup(1);
    EXPECT_EQ(m_objEvents.Lines("link"),
              (Texts{"link 2 opening", "link 2 open", "link 2 failed: UsbNotSent", "link 2 opening",
                     "link 2 open", "link 2 failed: UsbNoAnswer"}));
}

// Steps of the flows.

class CSessionStepsTest : public CSessionEventsTest {
protected:
    CFakeMessageBox m_objBoxes;
    CFakeSettingsPage m_objPage;
    CReadWriteFlow m_objFlow{m_objItemManager, m_objSession, m_objBoxes, m_objPage, m_objPage};
};

TEST_F(CSessionStepsTest, EachFlowCountsItsCommandsAndEnds) {
    Use(Lan);
    m_objFlow.Read();
    EXPECT_EQ(m_objEvents.Lines("step"),
              (Texts{"step 1 of 3", "step 2 of 3", "step 3 of 3", "step 0 of 0"}));
    m_objEvents.m_strLines.clear();
    m_objFlow.LanRead();
    EXPECT_EQ(m_objEvents.Lines("step"), (Texts{"step 1 of 1", "step 0 of 0"}));
    CItemManager objDefaults;
    m_objEvents.m_strLines.clear();
    m_objItemManager = objDefaults;
    m_objFlow.Set();
    EXPECT_EQ(m_objEvents.Lines("step"), (Texts{"step 1 of 2", "step 2 of 2", "step 0 of 0"}));
    m_objEvents.m_strLines.clear();
    m_objFlow.LanSet();
    EXPECT_EQ(m_objEvents.Lines("step"), (Texts{"step 1 of 5", "step 2 of 5", "step 3 of 5",
                                                "step 4 of 5", "step 5 of 5", "step 0 of 0"}));
}

TEST_F(CSessionStepsTest, AFlowThatFailsEndsItsSteps) {
    Use(Lan);
    Answer(CScriptedPrinter::KeepSilent);
    m_objFlow.Read();
    EXPECT_EQ(m_objEvents.Lines("step"), (Texts{"step 1 of 3", "step 0 of 0"}));
}

}  // namespace
