#include "platform/qt/CQtTcpClient.h"

#include "tests/MSanitizers.h"
#include "tests/platform_qt/CRefusedPort.h"
#include "tests/platform_qt/CTcpEventLog.h"
#include "tests/platform_qt/CTestNetwork.h"
#include "tests/platform_qt/CUnreachablePort.h"
#include "tests/platform_qt/CWordChanger.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

#include <gtest/gtest.h>

#include <sys/socket.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr const char* Loopback = "127.0.0.1";
constexpr int LongEnough = MSanitizers::Address ? 100'000 : 20'000;
constexpr int LongEnoughForNothing = 150;
constexpr std::size_t BlockBytes = 16384;

/// Closes a connection with a reset in place of the usual end.
void Reset(QTcpSocket& p_objSocket) {
    const linger objLinger{1, 0};
    ASSERT_EQ(setsockopt(static_cast<int>(p_objSocket.socketDescriptor()), SOL_SOCKET, SO_LINGER,
                         &objLinger, sizeof objLinger),
              0);
    p_objSocket.abort();
}

/// The toolkit's complaints are failures here.
void FailOnWarning(QtMsgType p_iType, const QMessageLogContext& /*p_objContext*/,
                   const QString& p_strText) {
    if (p_iType != QtDebugMsg && p_iType != QtInfoMsg) {
        ADD_FAILURE() << p_strText.toStdString();
    }
}

class CQtTcpClientTest : public ::testing::Test {
protected:
    CQtTcpClientTest()
        : m_objFormerHandler(qInstallMessageHandler(FailOnWarning)) {}
    ~CQtTcpClientTest() override { qInstallMessageHandler(m_objFormerHandler); }

    void SetUp() override { ASSERT_TRUE(m_objServer.listen(QHostAddress::LocalHost)); }

    void CallConnect(const std::string& p_strHost, std::int32_t p_iPort) {
        m_objClient.SetRemote(p_strHost, p_iPort);
        m_objEvents.m_bInsideACall = true;
        m_objClient.Connect();
        m_objEvents.m_bInsideACall = false;
    }

    void CallClose() {
        m_objEvents.m_bInsideACall = true;
        m_objClient.Close();
        m_objEvents.m_bInsideACall = false;
    }

    bool CallSend(const std::string& p_strBytes) {
        m_objEvents.m_bInsideACall = true;
        const bool bTaken = m_objClient.SendData(std::span<const std::uint8_t>(
            reinterpret_cast<const std::uint8_t*>(p_strBytes.data()), p_strBytes.size()));
        m_objEvents.m_bInsideACall = false;
        return bTaken;
    }

    /// Connects to the test's own server; m_objPeer is the other end.
    void Connect() {
        CallConnect(Loopback, m_objServer.serverPort());
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_objEvents.Has("connect"); }, LongEnough));
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return m_objServer.hasPendingConnections(); }, LongEnough));
        m_objPeer.reset(m_objServer.nextPendingConnection());
        m_objEvents.m_strEvents.clear();
    }

    bool WaitFor(const std::string& p_strEvent) {
        return QTest::qWaitFor([&] { return m_objEvents.Has(p_strEvent); }, LongEnough);
    }

    QtMessageHandler m_objFormerHandler;
    QTcpServer m_objServer;
    CRefusedPort m_objRefused;
    std::unique_ptr<QTcpSocket> m_objPeer;
    CQtTcpClient m_objClient;
    CTcpEventLog m_objEvents{m_objClient};
};

using Events = std::vector<std::string>;

// Connecting.

TEST_F(CQtTcpClientTest, Connects) {
    CallConnect(Loopback, m_objServer.serverPort());
    ASSERT_TRUE(WaitFor("connect"));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strEvents, Events{"connect"});
}

TEST_F(CQtTcpClientTest, ARefusalIsAnErrorWithItsNumberAndWords) {
    CallConnect(Loopback, m_objRefused.Number());
    ASSERT_TRUE(WaitFor("error"));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strEvents, Events{"error"});
    const SocketError& objError = m_objEvents.m_objErrors.front();
    EXPECT_EQ(objError.m_iNumber, ECONNREFUSED);
    EXPECT_FALSE(objError.m_strDescription.empty());
    EXPECT_EQ(objError.m_iScode, 0);
    EXPECT_EQ(objError.m_strSource, "");
    EXPECT_EQ(objError.m_strHelpFile, "");
    EXPECT_EQ(objError.m_iHelpContext, 0);
    EXPECT_FALSE(objError.m_bCancelDisplay);
}

struct BadRemote {
    const char* m_strName;
    const char* m_strHost;
    std::int32_t m_iPort;
    std::vector<std::int32_t> m_iNumbers;  ///< one of these; it depends on the machine's network
};

void PrintTo(const BadRemote& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

class CQtTcpClientBadRemoteTest : public CQtTcpClientTest,
                                  public ::testing::WithParamInterface<BadRemote> {};

TEST_P(CQtTcpClientBadRemoteTest, IsAnError) {
    CallConnect(GetParam().m_strHost, GetParam().m_iPort);
    ASSERT_TRUE(WaitFor("error"));
    EXPECT_EQ(m_objEvents.m_strEvents, Events{"error"});
    EXPECT_EQ(std::ranges::count(GetParam().m_iNumbers, m_objEvents.m_objErrors.front().m_iNumber),
              1)
        << m_objEvents.m_objErrors.front().m_iNumber;
    EXPECT_FALSE(m_objEvents.m_objErrors.front().m_strDescription.empty());
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(, CQtTcpClientBadRemoteTest, ::testing::Values(
    BadRemote{"OctetTooLarge", "999.168.10.20", 8000, {EADDRNOTAVAIL}},
    BadRemote{"Empty", "", 8000, {EADDRNOTAVAIL}},
    BadRemote{"Words", "no address", 8000, {EADDRNOTAVAIL}},
    BadRemote{"PortTooLarge", Loopback, 65536, {EADDRNOTAVAIL}},
    BadRemote{"PortMuchTooLarge", Loopback, 99999, {EADDRNOTAVAIL}},
    BadRemote{"NegativePort", Loopback, -1, {EADDRNOTAVAIL}},
    BadRemote{"NoPort", Loopback, 0, {ECONNREFUSED}},
    BadRemote{"Broadcast", "255.255.255.255", 8000, {EACCES, ENETUNREACH}}),
    [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });
// clang-format on

/// What the system says to connecting, whether at once or later.
class CQtTcpClientNumberTest : public CQtTcpClientTest, public ::testing::WithParamInterface<int> {
protected:
    void ExpectTheNumber() {
        for (const bool bLater : {false, true}) {
            m_objEvents.m_strEvents.clear();
            m_objEvents.m_objErrors.clear();
            for (int i = 0; i < 2; ++i) {  // the toolkit tries each address twice
                CTestNetwork::Instance().FailNext(GetParam(), bLater);
            }
            CallConnect(Loopback, m_objServer.serverPort());
            ASSERT_TRUE(WaitFor("error")) << bLater;
            EXPECT_TRUE(CTestNetwork::Instance().HasFailed());
            EXPECT_EQ(m_objEvents.m_strEvents, Events{"error"});
            EXPECT_EQ(m_objEvents.m_objErrors.front().m_iNumber, GetParam()) << bLater;
            EXPECT_FALSE(m_objEvents.m_objErrors.front().m_strDescription.empty());
        }
    }
};

TEST_P(CQtTcpClientNumberTest, IsTold) {
    ExpectTheNumber();
}

TEST_P(CQtTcpClientNumberTest, IsToldWhateverTheToolkitsWords) {
    for (const auto iWords : {CWordChanger::Words::AllTheSame, CWordChanger::Words::EachTimeNew}) {
        const CWordChanger objWords(iWords);
        ExpectTheNumber();
        EXPECT_GT(objWords.Asked(), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(, CQtTcpClientNumberTest,
                         ::testing::Values(EHOSTUNREACH, ENETUNREACH, ECONNREFUSED, EACCES));

TEST_F(CQtTcpClientTest, ConnectsAgainAfterAnError) {
    CallConnect(Loopback, m_objRefused.Number());
    ASSERT_TRUE(WaitFor("error"));
    Connect();
    EXPECT_TRUE(CallSend("{WS|}"));
}

TEST_F(CQtTcpClientTest, ConnectingAgainClosesTheFormerConnectionWithoutAnEvent) {
    Connect();
    const std::unique_ptr<QTcpSocket> objFormer = std::move(m_objPeer);
    Connect();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return objFormer->state() == QAbstractSocket::UnconnectedState; }, LongEnough));
    EXPECT_EQ(m_objEvents.m_strEvents, Events{});
}

TEST_F(CQtTcpClientTest, AnErrorOfAFormerConnectionIsNotDelivered) {
    CallConnect("no address", 8000);  // its error is in the queue now
    CallConnect(Loopback, m_objServer.serverPort());
    ASSERT_TRUE(WaitFor("connect"));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strEvents, Events{"connect"});
}

TEST_F(CQtTcpClientTest, AnErrorIsNotDeliveredAfterClose) {
    CallConnect("no address", 8000);
    CallClose();
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strEvents, Events{});
}

TEST_F(CQtTcpClientTest, CloseEndsAnEndlessConnect) {
    const CUnreachablePort objPort;
    ASSERT_TRUE(objPort.IsFull());
    CallConnect(Loopback, objPort.Number());
    QTest::qWait(2 * LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strEvents, Events{});
    EXPECT_FALSE(CallSend("{WS|}"));
    CallClose();
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strEvents, Events{});
    Connect();
    EXPECT_TRUE(CallSend("{WS|}"));
}

TEST_F(CQtTcpClientTest, MayEndWhileItConnects) {
    auto objClient = std::make_unique<CQtTcpClient>();
    CTcpEventLog objEvents(*objClient);
    objClient->SetRemote(Loopback, m_objServer.serverPort());
    objClient->Connect();
    objClient->SetEvents(nullptr);
    objClient->Connect();
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(objEvents.m_strEvents, Events{});
    EXPECT_TRUE(m_objServer.hasPendingConnections());
}

// Closing.

TEST_F(CQtTcpClientTest, TheOtherSidesClosingIsTheCloseEventAlone) {
    Connect();
    m_objPeer->close();
    ASSERT_TRUE(WaitFor("close"));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strEvents, Events{"close"});
    EXPECT_FALSE(CallSend("{WS|}"));
}

TEST_F(CQtTcpClientTest, AResetIsTheCloseEventAlone) {
    Connect();
    Reset(*m_objPeer);
    ASSERT_TRUE(WaitFor("close"));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strEvents, Events{"close"});
    EXPECT_FALSE(CallSend("{WS|}"));
}

TEST_F(CQtTcpClientTest, AResetFoundBySendingIsTheCloseEventAlone) {
    Connect();
    Reset(*m_objPeer);
    CallSend("{WS|}");
    ASSERT_TRUE(WaitFor("close"));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strEvents, Events{"close"});
}

TEST_F(CQtTcpClientTest, AResetInTheMiddleOfALongSendIsTheCloseEventAlone) {
    Connect();
    m_objPeer->setReadBufferSize(1);
    ASSERT_TRUE(CallSend(std::string(16 << 20, 'x')));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_iSent, 0);
    Reset(*m_objPeer);
    ASSERT_TRUE(WaitFor("close"));
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strEvents, Events{"close"});
    EXPECT_EQ(m_objEvents.m_iSent, 0);
}

TEST_F(CQtTcpClientTest, WhatCameBeforeTheClosingIsStillThere) {
    Connect();
    m_objPeer->write("{1answer|}");
    m_objPeer->close();
    ASSERT_TRUE(WaitFor("close"));
    EXPECT_EQ(m_objEvents.m_strData, "{1answer|}");
}

TEST_F(CQtTcpClientTest, ItsOwnClosingIsNoEvent) {
    Connect();
    CallClose();
    CallClose();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return m_objPeer->state() == QAbstractSocket::UnconnectedState; }, LongEnough));
    EXPECT_EQ(m_objEvents.m_strEvents, Events{});
    EXPECT_FALSE(CallSend("{WS|}"));
}

TEST_F(CQtTcpClientTest, ItsOwnClosingWithBytesOnTheWayIsNoEvent) {
    Connect();
    ASSERT_TRUE(CallSend(std::string(16 << 20, 'x')));
    CallClose();
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strEvents, Events{});
    EXPECT_EQ(m_objEvents.m_iSent, 0);
}

TEST_F(CQtTcpClientTest, WhatWasNotSentByThenIsThrownAwayByClosing) {
    const std::string strCommand = "{Z4;1|}";
    Connect();
    m_objPeer->setReadBufferSize(1);
    ASSERT_TRUE(CallSend(std::string(16 << 20, 'x')));
    ASSERT_TRUE(CallSend(strCommand));
    QTest::qWait(LongEnoughForNothing);
    ASSERT_EQ(m_objEvents.m_iSent, 0) << "the network is full";
    CallClose();

    std::string strCame;
    m_objPeer->setReadBufferSize(0);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            strCame += m_objPeer->readAll().toStdString();
            return m_objPeer->state() == QAbstractSocket::UnconnectedState;
        },
        LongEnough));
    strCame += m_objPeer->readAll().toStdString();
    EXPECT_FALSE(strCame.empty());
    EXPECT_EQ(strCame.find_first_not_of('x'), std::string::npos);
    EXPECT_EQ(m_objEvents.m_strEvents, Events{});
    EXPECT_EQ(m_objEvents.m_iSent, 0);
}

TEST_F(CQtTcpClientTest, WhatWasNotReadIsLostByClosing) {
    Connect();
    m_objEvents.m_bTakesData = false;
    bool bCame = false;
    m_objEvents.m_fnOnData = [&] { bCame = true; };
    m_objPeer->write("left over");
    ASSERT_TRUE(QTest::qWaitFor([&] { return bCame; }, LongEnough));
    CallClose();
    EXPECT_TRUE(m_objClient.GetData().empty());
}

TEST_F(CQtTcpClientTest, WhatWasNotReadIsLostByClosingAfterTheOtherSide) {
    Connect();
    m_objEvents.m_bTakesData = false;
    m_objPeer->write("left over");
    m_objPeer->close();
    ASSERT_TRUE(WaitFor("close"));
    CallClose();
    EXPECT_TRUE(m_objClient.GetData().empty());
}

TEST_F(CQtTcpClientTest, HasNoDataBeforeItWasEverOpen) {
    EXPECT_TRUE(m_objClient.GetData().empty());
    CallClose();
    EXPECT_TRUE(m_objClient.GetData().empty());
    EXPECT_FALSE(CallSend("{WS|}"));
    EXPECT_EQ(m_objEvents.m_strEvents, Events{});
}

TEST_F(CQtTcpClientTest, MayBeClosedFromItsOwnEvents) {
    Connect();
    m_objEvents.m_fnOnData = [this] { m_objClient.Close(); };
    m_objPeer->write("x");
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return m_objPeer->state() == QAbstractSocket::UnconnectedState; }, LongEnough));
    EXPECT_EQ(m_objEvents.m_strData, "x");
    EXPECT_EQ(m_objEvents.m_strEvents, Events{});
    m_objEvents.m_fnOnData = nullptr;
    Connect();
}

// Bytes.

TEST_F(CQtTcpClientTest, EveryByteGoesBothWaysUnchanged) {
    Connect();
    std::string strBytes;
    for (int i = 0; i < 256; ++i) {
        strBytes += static_cast<char>(i);
    }
    ASSERT_TRUE(CallSend(strBytes));
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_objPeer->bytesAvailable() >= 256; }, LongEnough));
    EXPECT_EQ(m_objPeer->readAll().toStdString(), strBytes);
    m_objPeer->write(strBytes.data(), 256);
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_objEvents.m_strData.size() >= 256; }, LongEnough));
    EXPECT_EQ(m_objEvents.m_strData, strBytes);
}

TEST_F(CQtTcpClientTest, TellsWhenEachSendIsComplete) {
    Connect();
    for (int i = 1; i <= 3; ++i) {
        ASSERT_TRUE(CallSend("{WS|}"));
        EXPECT_TRUE(QTest::qWaitFor([&] { return m_objEvents.m_iSent == i; }, LongEnough));
    }
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_iSent, 3);
}

std::string LongText() {
    std::string strText(8 << 20, '\0');
    std::uint32_t iState = 1;
    for (char& cByte : strText) {
        iState = iState * 1664525 + 1013904223;
        cByte = static_cast<char>(iState >> 24);
    }
    return strText;
}

TEST_F(CQtTcpClientTest, MuchGoesOutWholeAndIsCompleteOnlyThen) {
    Connect();
    const std::string strSent = LongText();
    std::string strTaken;
    ASSERT_TRUE(CallSend(strSent));
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            strTaken += m_objPeer->readAll().toStdString();
            return strTaken.size() >= strSent.size();
        },
        LongEnough));
    EXPECT_TRUE(strTaken == strSent);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_objEvents.m_iSent == 1; }, LongEnough));
}

TEST_F(CQtTcpClientTest, MuchComesInWholeInBoundedBlocks) {
    Connect();
    const std::string strSent = LongText();
    m_objPeer->write(strSent.data(), static_cast<qint64>(strSent.size()));
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_objEvents.m_strData.size() >= strSent.size(); },
                                LongEnough));
    EXPECT_TRUE(m_objEvents.m_strData == strSent);
    EXPECT_LE(m_objEvents.m_iLargestBlock, BlockBytes);
}

TEST_F(CQtTcpClientTest, HoldsNoMoreThanABlockOfWhatNobodyFetches) {
    Connect();
    m_objEvents.m_bTakesData = false;
    const std::string strSent = LongText();
    m_objPeer->write(strSent.data(), static_cast<qint64>(strSent.size()));
    QTest::qWait(2 * LongEnoughForNothing);
    std::size_t iHeld = 0;
    while (m_objEvents.TakeBlock()) {
        iHeld = m_objEvents.m_strData.size();
    }
    EXPECT_GT(iHeld, 0U);
    EXPECT_LE(iHeld, BlockBytes);
    m_objEvents.m_bTakesData = true;
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_objEvents.m_strData.size() >= strSent.size(); },
                                LongEnough));
    EXPECT_TRUE(m_objEvents.m_strData == strSent);
}

// A flood.

/// Sends without end, as fast as the other side takes it.
class CFlood {
public:
    explicit CFlood(int p_iSocket)
        : m_objThread([this, p_iSocket] {
            const std::string strBlock(65536, '~');
            while (!m_bEnough) {
                ::send(p_iSocket, strBlock.data(), strBlock.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
            }
        }) {}
    ~CFlood() {
        m_bEnough = true;
        m_objThread.join();
    }
    CFlood(const CFlood&) = delete;
    CFlood& operator=(const CFlood&) = delete;

private:
    std::atomic<bool> m_bEnough = false;
    std::thread m_objThread;
};

TEST_F(CQtTcpClientTest, OfAFloodNoMoreIsTakenThanItsShare) {
    Connect();
    const CFlood objFlood(static_cast<int>(m_objPeer->socketDescriptor()));
    QElapsedTimer objTimer;
    objTimer.start();
    std::size_t iTaken = 0;
    m_objEvents.m_fnOnData = [&] {
        iTaken += m_objEvents.m_strData.size();
        m_objEvents.m_strData.clear();
    };
    QTest::qWait(400);
    const auto iSlots = static_cast<std::size_t>(objTimer.elapsed() / CFloodGate::Slot.count()) + 2;
    EXPECT_GT(iTaken, 10 * BlockBytes);
    // The block that fills the share may be larger than what is left of it.
    EXPECT_LE(iTaken, iSlots * 4 * BlockBytes);
}

TEST_F(CQtTcpClientTest, AClientThatIsClosedInAFloodHearsNoMoreOfIt) {
    Connect();
    const CFlood objFlood(static_cast<int>(m_objPeer->socketDescriptor()));
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_objEvents.m_strData.size() > 10 * BlockBytes; },
                                LongEnough));
    CallClose();
    const std::size_t iTaken = m_objEvents.m_strData.size();
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents.m_strData.size(), iTaken);
    EXPECT_TRUE(m_objClient.GetData().empty());
}

TEST_F(CQtTcpClientTest, WhatCameBeforeTheEndIsToldBeforeIt) {
    Connect();
    const std::string strSent = LongText() + "the end";
    m_objPeer->write(strSent.data(), static_cast<qint64>(strSent.size()));
    m_objPeer->disconnectFromHost();
    std::size_t iBefore = 0;
    m_objEvents.m_fnOnData = [&] {
        iBefore = m_objEvents.Has("close") ? iBefore : m_objEvents.m_strData.size();
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_objEvents.Has("close"); }, LongEnough));
    EXPECT_EQ(iBefore, strSent.size());
    EXPECT_TRUE(m_objEvents.m_strData == strSent);
}

}  // namespace
