#include "platform/qt/CFixedTcpClient.h"

#include "link/CPrinterSession.h"
#include "platform/qt/CQtClock.h"
#include "platform/qt/CQtEventLoop.h"
#include "tests/fakes/CAbsentSerialPort.h"
#include "tests/fakes/CAbsentUsbLibrary.h"
#include "tests/fakes/CFakeSessionEvents.h"
#include "tests/platform_qt/CRefusedPort.h"
#include "tests/platform_qt/CTcpEventLog.h"
#include "tests/platform_qt/CTestNetwork.h"
#include "tests/platform_qt/CTestResolver.h"
#include "tests/platform_qt/CUnreachablePort.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <netdb.h>

#include <cerrno>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace {

using Events = std::vector<std::string>;

constexpr int LongEnough = 10'000;
constexpr int LongEnoughForNothing = 150;
constexpr std::chrono::milliseconds Limit{10'000};

/// A server on this machine, and a client that is made for one place.
class CFixedTcpClientTest : public ::testing::Test {
protected:
    void TearDown() override { CTestResolver::Instance().Release(); }

    void Listen(const QHostAddress& p_objAddress, std::uint16_t p_iPort = 0) {
        ASSERT_TRUE(m_objServer.listen(p_objAddress, p_iPort));
    }

    void Make(const std::string& p_strHost, std::uint16_t p_iPort,
              std::chrono::milliseconds p_iLimit = Limit) {
        m_objEvents.reset();
        m_objClient = std::make_unique<CFixedTcpClient>(p_strHost, p_iPort, p_iLimit);
        m_objEvents = std::make_unique<CTcpEventLog>(*m_objClient);
    }

    void CallConnect() {
        m_objEvents->m_bInsideACall = true;
        m_objClient->Connect();
        m_objEvents->m_bInsideACall = false;
    }

    void CallConnect(const std::string& p_strHost, std::uint16_t p_iPort) {
        Make(p_strHost, p_iPort);
        CallConnect();
    }

    bool WaitFor(const std::string& p_strEvent) {
        return QTest::qWaitFor([&] { return m_objEvents->Has(p_strEvent); }, LongEnough);
    }

    void ExpectConnects(const std::string& p_strHost) {
        CallConnect(p_strHost, m_objServer.serverPort());
        EXPECT_TRUE(WaitFor("connect")) << p_strHost;
        QTest::qWait(LongEnoughForNothing);
        EXPECT_EQ(m_objEvents->m_strEvents, Events{"connect"}) << p_strHost;
    }

    /// The only event is an error of that number.
    void ExpectError(std::int32_t p_iNumber) {
        EXPECT_TRUE(WaitFor("error"));
        QTest::qWait(LongEnoughForNothing);
        ASSERT_EQ(m_objEvents->m_strEvents, Events{"error"});
        EXPECT_EQ(m_objEvents->m_objErrors.front().m_iNumber, p_iNumber);
    }

    /// The next address that is tried fails so.
    static void FailAddress(int p_iError, bool p_bLater) {
        for (int i = 0; i < 2; ++i) {  // the toolkit tries each address twice
            CTestNetwork::Instance().FailNext(p_iError, p_bLater);
        }
    }

    static void SetName(const std::string& p_strName, const Events& p_strAddresses) {
        CTestResolver::Instance().Set(p_strName, {p_strAddresses});
    }

    QTcpServer m_objServer;
    CRefusedPort m_objRefused;
    std::unique_ptr<CFixedTcpClient> m_objClient;
    std::unique_ptr<CTcpEventLog> m_objEvents;
};

TEST_F(CFixedTcpClientTest, ConnectsToAnAddress) {
    Listen(QHostAddress::LocalHost);
    ExpectConnects("127.0.0.1");
}

TEST_F(CFixedTcpClientTest, ConnectsToAnAddressOfTheLongKindWithAZoneOrWithout) {
    Listen(QHostAddress::LocalHostIPv6);
    ExpectConnects("::1");
    ExpectConnects("::1%lo");
}

TEST_F(CFixedTcpClientTest, ConnectsToAName) {
    Listen(QHostAddress::LocalHost);
    ExpectConnects("localhost");
}

TEST_F(CFixedTcpClientTest, GoesWhereItWasMadeToGo) {
    Listen(QHostAddress::LocalHost);
    Make("127.0.0.1", m_objServer.serverPort());
    m_objClient->SetRemote("127.0.0.1", m_objRefused.Number());
    CallConnect();
    EXPECT_TRUE(WaitFor("connect"));
}

TEST_F(CFixedTcpClientTest, CarriesBytesBothWaysAndTellsOfTheEnd) {
    Listen(QHostAddress::LocalHost);
    ExpectConnects("127.0.0.1");
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return m_objServer.hasPendingConnections(); }, LongEnough));
    const std::unique_ptr<QTcpSocket> objPeer(m_objServer.nextPendingConnection());
    EXPECT_TRUE(m_objClient->SendData(std::vector<std::uint8_t>{'a', 'b'}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return objPeer->bytesAvailable() == 2; }, LongEnough));
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_objEvents->m_iSent == 1; }, LongEnough));
    objPeer->write("answer");
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_objEvents->m_strData == "answer"; }, LongEnough));
    objPeer->disconnectFromHost();
    EXPECT_TRUE(WaitFor("close"));
    EXPECT_EQ(m_objEvents->m_strEvents, (Events{"connect", "close"}));
    EXPECT_FALSE(m_objClient->SendData(std::vector<std::uint8_t>{'c'}));
}

TEST_F(CFixedTcpClientTest, ANameThatNobodyKnowsIsAnErrorOfItsOwn) {
    CTestResolver::Instance().Set("nobody.test", {{}, EAI_NONAME});
    CallConnect("nobody.test", 8000);
    ExpectError(SocketError::NoSuchHost);
    EXPECT_FALSE(m_objEvents->m_objErrors.front().m_strDescription.empty());
}

TEST_F(CFixedTcpClientTest, SoIsANameThatCannotBeAskedFor) {
    CTestResolver::Instance().Set("later.test", {{}, EAI_AGAIN});
    CallConnect("later.test", 8000);
    ExpectError(SocketError::NotResolved);
}

TEST_F(CFixedTcpClientTest, ARefusalHasTheSystemsNumber) {
    CallConnect("127.0.0.1", m_objRefused.Number());
    ExpectError(ECONNREFUSED);
    EXPECT_FALSE(m_objEvents->m_objErrors.front().m_strDescription.empty());
}

TEST_F(CFixedTcpClientTest, SoHasAnAddressWithoutAWay) {
    FailAddress(EHOSTUNREACH, false);
    CallConnect("127.0.0.1", m_objRefused.Number());
    ExpectError(EHOSTUNREACH);
}

TEST_F(CFixedTcpClientTest, TheNextAddressIsTriedWhenOneRefuses) {
    Listen(QHostAddress::LocalHost);
    SetName("two.test", {"::1", "127.0.0.1"});
    ExpectConnects("two.test");
}

TEST_F(CFixedTcpClientTest, TheNextAddressIsTriedWhenOneIsSilentForItsShare) {
    const CUnreachablePort objPort;
    ASSERT_TRUE(objPort.IsFull());
    Listen(QHostAddress::LocalHostIPv6, objPort.Number());
    SetName("silent.test", {"127.0.0.1", "::1"});
    Make("silent.test", objPort.Number(), std::chrono::milliseconds(1000));
    const auto iStart = std::chrono::steady_clock::now();
    CallConnect();
    ASSERT_TRUE(WaitFor("connect"));
    const auto iTook = std::chrono::steady_clock::now() - iStart;
    EXPECT_GE(iTook, std::chrono::milliseconds(450));
    EXPECT_LT(iTook, std::chrono::milliseconds(950));
    EXPECT_EQ(m_objEvents->m_strEvents, Events{"connect"});
}

TEST_F(CFixedTcpClientTest, TheFailureThatCameClosestIsTold) {
    SetName("refused-first.test", {"127.0.0.1", "::1"});
    FailAddress(ECONNREFUSED, true);
    FailAddress(ENETUNREACH, false);
    CallConnect("refused-first.test", m_objRefused.Number());
    ExpectError(ECONNREFUSED);
    EXPECT_TRUE(CTestNetwork::Instance().HasFailed());

    SetName("refused-last.test", {"::1", "127.0.0.1"});
    FailAddress(ENETUNREACH, false);
    FailAddress(ECONNREFUSED, true);
    CallConnect("refused-last.test", m_objRefused.Number());
    ExpectError(ECONNREFUSED);
    EXPECT_TRUE(CTestNetwork::Instance().HasFailed());
}

TEST_F(CFixedTcpClientTest, ClosingEndsTheLookingUpWithoutAnEvent) {
    Listen(QHostAddress::LocalHost);
    CTestResolver::Instance().Set("held.test", {{"127.0.0.1"}, 0, true});
    CallConnect("held.test", m_objServer.serverPort());
    m_objClient->Close();
    CTestResolver::Instance().Release();
    QTest::qWait(LongEnoughForNothing);
    EXPECT_EQ(m_objEvents->m_strEvents, Events{});
    EXPECT_FALSE(m_objServer.hasPendingConnections());
    CallConnect();
    EXPECT_TRUE(WaitFor("connect"));
}

TEST_F(CFixedTcpClientTest, ALinkThatWaitsForANameIsStoppedAtOnce) {
    Listen(QHostAddress::LocalHost);
    CTestResolver::Instance().Set("stopped.test", {{"127.0.0.1"}, 0, true});
    Make("stopped.test", m_objServer.serverPort());
    CQtEventLoop objEventLoop;
    const CQtClock objClock;
    CAbsentSerialPort objPort;
    CAbsentUsbLibrary objLibrary;
    const CItemManager objItemManager;
    CInterface objInterface;
    CFakeSessionEvents objEvents;
    CPrinterSession objSession(objItemManager, objInterface, objEvents,
                               {objEventLoop, objClock, *m_objClient, objPort, objLibrary});
    QTimer::singleShot(LongEnoughForNothing, [&] { objSession.Links().StopOpening(); });
    QElapsedTimer objTime;
    objTime.start();
    EXPECT_FALSE(objSession.Links().OpenLink(CInterface::LanInterface));
    EXPECT_GE(objTime.elapsed(), LongEnoughForNothing - 10);
    EXPECT_LT(objTime.elapsed(), 2000);
    CTestResolver::Instance().Release();
    QTest::qWait(LongEnoughForNothing);
    const std::string strPlace = objInterface.GetIpAddress() + ":8000";  // which it does not go to
    EXPECT_EQ(objEvents.m_strLines,
              (Events{"busy", "link 1 opening " + strPlace, "link 1 closed " + strPlace, "idle"}));
    EXPECT_FALSE(m_objServer.hasPendingConnections());
}

TEST_F(CFixedTcpClientTest, ClosingEndsTheTryingWithoutAnEvent) {
    const CUnreachablePort objPort;
    ASSERT_TRUE(objPort.IsFull());
    SetName("closed.test", {"127.0.0.1", "::1"});
    Make("closed.test", objPort.Number(), std::chrono::milliseconds(200));
    CallConnect();
    QTest::qWait(50);
    m_objClient->Close();
    QTest::qWait(300);
    EXPECT_EQ(m_objEvents->m_strEvents, Events{});
}

}  // namespace
