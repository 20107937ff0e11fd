#include "tests/platform_qt/CTcpEventLog.h"
#include "tests/platform_qt/CUnreachablePort.h"

#include <QTest>

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

namespace {

/// The toolkit gives up after a minute.
constexpr int PatienceMs = 110'000;

TEST(CQtTcpClientLimitTest, APrinterThatNeverTakesTheConnectionIsAnErrorInTheEnd) {
    const CUnreachablePort objPort;
    ASSERT_TRUE(objPort.IsFull());
    CQtTcpClient objClient;
    const CTcpEventLog objLog(objClient);
    objClient.SetRemote("127.0.0.1", objPort.Number());
    objClient.Connect();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !objLog.m_strEvents.empty(); }, PatienceMs));
    EXPECT_EQ(objLog.m_strEvents, std::vector<std::string>{"error"});
    EXPECT_EQ(objLog.m_objErrors.front().m_iNumber, ETIMEDOUT);
    EXPECT_FALSE(objLog.m_objErrors.front().m_strDescription.empty());
}

}  // namespace
