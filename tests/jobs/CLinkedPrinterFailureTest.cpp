#include "tests/jobs/CJobFixture.h"

#include "model/CConversionError.h"

#include <cerrno>
#include <stdexcept>

// What can go wrong with one link.

namespace {

using Texts = std::vector<std::string>;

class CLinkedPrinterFailureTest : public CJobFixture {
protected:
    CStatusReport LanStatus() { return Printer(CInterface::LanInterface).Status(); }
    CStatusReport ComStatus() { return Printer(CInterface::SerialInterface).Status(); }
    CStatusReport UsbStatus() { return Printer(CInterface::UsbInterface).Status(); }

    static SocketError Socket(std::int32_t p_iNumber) {
        SocketError objError;
        objError.m_iNumber = p_iNumber;
        return objError;
    }
};

// The network.

TEST_F(CLinkedPrinterFailureTest, ARefusedConnectionKeepsTheSocketsNumber) {
    m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Fails;
    m_objSocket.m_objConnectError = Socket(ECONNREFUSED);
    const CStatusReport objReport = LanStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::LanNotConnected);
    EXPECT_EQ(objReport.m_objFailure.m_objSocket.m_iNumber, ECONNREFUSED);
    EXPECT_FALSE(objReport.m_bSent);
    const CReadReport objRead = Printer(CInterface::LanInterface).Read(All());
    EXPECT_EQ(objRead.m_objFailure.m_iKind, Kind::LanNotConnected);
    EXPECT_FALSE(objRead.m_bSent);
    EXPECT_EQ(m_objEvents.Lines("step"), Texts{"step 0 of 0"});
    EXPECT_EQ(m_strCommands, Texts{});
}

TEST_F(CLinkedPrinterFailureTest, OpeningThatDoesNotEndIsEnded) {
    m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Never;
    const CStatusReport objReport = LanStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::TimeUp);
    EXPECT_FALSE(objReport.m_bSent);
    EXPECT_EQ(m_objClock.Elapsed(), 10'000);
    EXPECT_TRUE(IsAllClosed());
    m_objLimits.m_dOpen = 1.5;
    EXPECT_EQ(LanStatus().m_objFailure.m_iKind, Kind::TimeUp);
    EXPECT_EQ(m_objClock.Elapsed(), 11'500);
}

TEST_F(CLinkedPrinterFailureTest, ANetworkThatTakesNothingIsEnded) {
    m_objSocket.m_bCompletesSends = false;
    const CStatusReport objReport = LanStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::LanNotSent);
    EXPECT_TRUE(objReport.m_bSent) << "some of it may have gone";
    EXPECT_TRUE(Printer(CInterface::LanInterface).Read(All()).m_bSent);
    EXPECT_GT(objReport.m_dSeconds, 2);
    EXPECT_LT(objReport.m_dSeconds, 2.1);
    for (const double dSend : {0.5, 4.0}) {
        m_objLimits.m_dSend = dSend;
        const CStatusReport objOther = LanStatus();
        EXPECT_EQ(objOther.m_objFailure.m_iKind, Kind::LanNotSent);
        EXPECT_GT(objOther.m_dSeconds, dSend);
        EXPECT_LT(objOther.m_dSeconds, dSend + 0.1);
    }
}

TEST_F(CLinkedPrinterFailureTest, ASocketThatRefusesBytesHasSentNothing) {
    m_objSocket.m_bRefusesSends = true;
    const CStatusReport objReport = LanStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::LanNotSent);
    EXPECT_FALSE(objReport.m_bSent);
}

TEST_F(CLinkedPrinterFailureTest, APrinterThatHangsUpIsNotWaitedFor) {
    m_fnAnswer = [this](const std::string& /*p_strCommand*/) {
        m_objEventLoop.AtNextYield([this] { m_objSocket.PeerCloses(); });
        return std::nullopt;
    };
    const CStatusReport objReport = LanStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::LanClosed);
    EXPECT_TRUE(objReport.m_bSent);
    EXPECT_LT(objReport.m_dSeconds, 0.5);
}

TEST_F(CLinkedPrinterFailureTest, AConnectionThatBreaksKeepsTheSocketsNumber) {
    m_fnAnswer = [this](const std::string& /*p_strCommand*/) {
        m_objEventLoop.After(30, [this] { m_objSocket.Break(Socket(ECONNRESET)); });
        return std::nullopt;
    };
    const CStatusReport objReport = LanStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::LanError);
    EXPECT_EQ(objReport.m_objFailure.m_objSocket.m_iNumber, ECONNRESET);
}

// The serial port.

TEST_F(CLinkedPrinterFailureTest, APortThatAnotherProgramHasIsHeld) {
    m_objSerialPort.m_iOpenResult = ISerialPort::AlreadyOpen;
    const CStatusReport objReport = ComStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::SerialHeld);
    EXPECT_FALSE(objReport.m_bSent);
}

TEST_F(CLinkedPrinterFailureTest, APortThatDoesNotOpenKeepsTheSystemsNumber) {
    for (const std::int32_t iNumber : {ENOENT, EACCES, ENOTTY}) {
        m_objSerialPort.m_iOpenResult = iNumber;
        const CStatusReport objReport = ComStatus();
        EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::SerialNotOpened);
        EXPECT_EQ(objReport.m_objFailure.m_iNumber, iNumber);
    }
}

TEST_F(CLinkedPrinterFailureTest, APortThatIsGoneAtOnceOrRefusesIsToldOf) {
    m_objSerialPort.m_bGoesAtOnce = true;
    const CStatusReport objGone = ComStatus();
    EXPECT_EQ(objGone.m_objFailure.m_iKind, Kind::SerialNotOpen);
    EXPECT_FALSE(objGone.m_bSent);
    m_objSerialPort.m_bGoesAtOnce = false;
    m_objSerialPort.m_bRefusesOutput = true;
    const CStatusReport objReport = ComStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::SerialNotSent);
    EXPECT_FALSE(objReport.m_bSent);
}

TEST_F(CLinkedPrinterFailureTest, APortThatGoesWhileAnAnswerIsAwaitedIsNotWaitedFor) {
    m_fnAnswer = [this](const std::string& /*p_strCommand*/) {
        m_objEventLoop.After(50, [this] { m_objSerialPort.Close(); });
        return std::nullopt;
    };
    const CStatusReport objReport = ComStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::SerialLost);
    EXPECT_LT(objReport.m_dSeconds, 0.5);
}

// USB.

TEST_F(CLinkedPrinterFailureTest, WhyAPrinterOnUsbCannotBeHadIsTold) {
    const std::vector<std::pair<std::int32_t, Kind>> arrCases{
        {IUsbLibrary::NotReady, Kind::UsbNotReady},
        {IUsbLibrary::NoDeviceId, Kind::UsbNoDeviceId},
        {IUsbLibrary::Mismatch, Kind::UsbMismatch}};
    for (const auto& [iResult, iKind] : arrCases) {
        m_objUsbLibrary.m_iOpenResults = {iResult};
        const CStatusReport objReport = UsbStatus();
        EXPECT_EQ(objReport.m_objFailure.m_iKind, iKind);
        EXPECT_EQ(objReport.m_objFailure.m_iNumber, iResult);
        EXPECT_FALSE(objReport.m_bSent);
    }
    EXPECT_EQ(m_strCommands, Texts{});
    EXPECT_TRUE(IsAllClosed());
}

TEST_F(CLinkedPrinterFailureTest, TheSystemsNumberSaysMoreWhereThereIsOne) {
    m_objUsbLibrary.m_iNotReadyNumber = EACCES;
    m_objUsbLibrary.m_iOpenResults = {IUsbLibrary::NotReady};
    EXPECT_EQ(UsbStatus().m_objFailure.m_iNumber, EACCES);
    m_objUsbLibrary.m_iOpenResults = {IUsbLibrary::Mismatch};
    EXPECT_EQ(UsbStatus().m_objFailure.m_iNumber, IUsbLibrary::Mismatch);
}

TEST_F(CLinkedPrinterFailureTest, APrinterOnUsbThatTakesNothingIsToldOf) {
    m_objUsbLibrary.m_iSendResult = IUsbLibrary::Failed;
    const CStatusReport objReport = UsbStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::UsbNotSent);
}

TEST_F(CLinkedPrinterFailureTest, APrinterThatIsPulledOutIsNotWaitedFor) {
    m_fnAnswer = [this](const std::string& /*p_strCommand*/) {
        m_objUsbLibrary.m_iOpenResults = {IUsbLibrary::NotReady};
        return std::nullopt;
    };
    const CStatusReport objReport = UsbStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::UsbNotOpened);
    EXPECT_TRUE(objReport.m_bSent);
    EXPECT_LT(objReport.m_dSeconds, 0.5);
}

// Any link.

TEST_F(CLinkedPrinterFailureTest, ThereIsNoSuchLink) {
    EXPECT_FALSE(Printer(7).Status().m_objFailure.IsNone());
}

TEST_F(CLinkedPrinterFailureTest, AStatusInPlaceOfSettingsIsKept) {
    m_fnAnswer = [this](const std::string& p_strCommand) -> std::optional<std::string> {
        return p_strCommand == "{Z5;1|}" ? MWire::Status("06")
                                         : m_objSimulated.Handle(p_strCommand).m_strAnswer;
    };
    // USB drops unread what was not asked for.
    for (const std::int16_t iInterface : {CInterface::LanInterface, CInterface::SerialInterface}) {
        SCOPED_TRACE(iInterface);
        const CReadReport objReport = Printer(iInterface).Read(All());
        EXPECT_FALSE(objReport.m_objFailure.IsNone());
        EXPECT_EQ(objReport.m_iAnswered, std::set<std::int16_t>{0});
        EXPECT_EQ(objReport.m_strStatusCode, "06");
        EXPECT_EQ(objReport.m_strStatusText, "Command Error");
    }
}

TEST_F(CLinkedPrinterFailureTest, AProgramThatClosesEndsEveryCallAtOnce) {
    m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objEventLoop.After(500, [this] { m_objEventLoop.RequestClose(); });
    const CReadReport objReport = Printer(CInterface::LanInterface).Read(All());
    EXPECT_FALSE(objReport.m_objFailure.IsNone());
    EXPECT_LT(m_objClock.Elapsed(), 600);
}

TEST_F(CLinkedPrinterFailureTest, NoExceptionOfAnAnswerGetsOut) {
    m_fnAnswer = [](const std::string& /*p_strCommand*/) -> std::optional<std::string> {
        throw std::out_of_range("an answer that ends inside of a field");
    };
    const CStatusReport objReport = LanStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::NoReply);
    EXPECT_TRUE(objReport.m_bSent);
    EXPECT_TRUE(IsAllClosed());
}

TEST_F(CLinkedPrinterFailureTest, NoExceptionOfAValueGetsOut) {
    m_fnAnswer = [](const std::string& /*p_strCommand*/) -> std::optional<std::string> {
        throw CConversionError("x");
    };
    const CStatusReport objReport = LanStatus();
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::NoReply);
    EXPECT_TRUE(objReport.m_bSent);
    EXPECT_EQ(objReport.m_strCode, "");
}

TEST_F(CLinkedPrinterFailureTest, AProgramThatClosesInAPauseAsksForNothingMore) {
    m_objEventLoop.After(500, [this] { m_objEventLoop.RequestClose(); });
    const CReadReport objReport = Printer(CInterface::LanInterface).Read(All());
    EXPECT_FALSE(objReport.m_objFailure.IsNone());
    EXPECT_EQ(objReport.m_iAnswered, std::set<std::int16_t>{0});
    EXPECT_EQ(m_strCommands.size(), 1U);
    EXPECT_LT(m_objClock.Elapsed(), 600);
}

TEST_F(CLinkedPrinterFailureTest, ANumberOfUsbIsNoNumberOfAnotherLink) {
    m_objUsbLibrary.m_iNotReadyNumber = EBUSY;
    m_fnAnswer = CScriptedPrinter::KeepSilent;
    EXPECT_EQ(LanStatus().m_objFailure.m_iNumber, 0);
}

TEST_F(CLinkedPrinterFailureTest, ANumberOfUsbIsThatOfAnOpeningThatFailsLater) {
    m_objUsbLibrary.m_iNotReadyNumber = EBUSY;
    m_objUsbLibrary.m_iOpenResults = {IUsbLibrary::Opened, IUsbLibrary::NotReady};
    const CFailure objFailure = UsbStatus().m_objFailure;
    EXPECT_EQ(objFailure.m_iKind, Kind::UsbNotOpened);
    EXPECT_EQ(objFailure.m_iNumber, EBUSY);
}

TEST_F(CLinkedPrinterFailureTest, AnAnswerThatIsNoneWasSentForAllThat) {
    m_fnAnswer = [](const std::string& /*p_strCommand*/) -> std::optional<std::string> {
        throw std::out_of_range("an answer that ends inside of a field");
    };
    EXPECT_TRUE(Printer(CInterface::LanInterface).Read(All()).m_bSent);
}

TEST_F(CLinkedPrinterFailureTest, AReadingOfWhichNothingWentOutHasSentNothing) {
    m_objUsbLibrary.m_iOpenResults = {IUsbLibrary::NotReady};
    EXPECT_FALSE(Printer(CInterface::UsbInterface).Read(All()).m_bSent);
    m_objUsbLibrary.m_iOpenResults = {IUsbLibrary::Opened};
    m_fnAnswer = CScriptedPrinter::KeepSilent;
    const CReadReport objReport = Printer(CInterface::UsbInterface).Read(All());
    EXPECT_TRUE(objReport.m_bSent);
    EXPECT_EQ(objReport.m_strStatusCode, "");
}

TEST_F(CLinkedPrinterFailureTest, WhetherALinkOpensIsTriedWithoutACommand) {
    EXPECT_TRUE(Printer(CInterface::LanInterface).CanOpen());
    EXPECT_TRUE(Printer(CInterface::SerialInterface).CanOpen());
    EXPECT_TRUE(IsAllClosed());
    m_objSerialPort.m_iOpenResult = ISerialPort::AlreadyOpen;
    EXPECT_FALSE(Printer(CInterface::SerialInterface).CanOpen());
    EXPECT_TRUE(m_strCommands.empty());
}

}  // namespace
