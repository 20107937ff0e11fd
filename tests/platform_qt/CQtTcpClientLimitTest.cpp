#include "platform/qt/CQtTcpClient.h"

#include "tests/platform_qt/CUnreachablePort.h"

#include <QTest>

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

namespace {

/// The toolkit gives up after a minute.
constexpr int PatienceMs = 110'000;

/// Keeps what becomes of a connect.
class CConnectLog : public ITcpClientEvents {
public:
    std::vector<std::string> m_strEvents;
    SocketError m_objError;

    void OnConnect() override { m_strEvents.emplace_back("connect"); }
    void OnClose() override { m_strEvents.emplace_back("close"); }
    void OnSendComplete() override { m_strEvents.emplace_back("sent"); }
    void OnDataArrival() override { m_strEvents.emplace_back("data"); }
    void OnError(const SocketError& p_objError) override {
        m_strEvents.emplace_back("error");
        m_objError = p_objError;
    }
};

TEST(CQtTcpClientLimitTest, APrinterThatNeverTakesTheConnectionIsAnErrorInTheEnd) {
    const CUnreachablePort objPort;
    ASSERT_TRUE(objPort.IsFull());
    CQtTcpClient objClient;
    CConnectLog objLog;
    objClient.SetEvents(&objLog);
    objClient.SetRemote("127.0.0.1", objPort.Number());
    objClient.Connect();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !objLog.m_strEvents.empty(); }, PatienceMs));
    EXPECT_EQ(objLog.m_strEvents, std::vector<std::string>{"error"});
    EXPECT_EQ(objLog.m_objError.m_iNumber, ETIMEDOUT);
    EXPECT_FALSE(objLog.m_objError.m_strDescription.empty());
    objClient.SetEvents(nullptr);
}

}  // namespace
