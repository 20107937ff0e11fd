#include "tests/MSanitizers.h"
#include "tests/golden/MGolden.h"
#include "tests/platform_qt/CRefusedPort.h"
#include "tests/platform_qt/CUnreachablePort.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace {

constexpr int PatienceMs = 20'000;

// Well under a second. The sanitizers look for leaks when the program has ended.
constexpr qint64 LongestEndMs = MSanitizers::Address ? 900 : 500;
constexpr qint64 LongestExitMs = MSanitizers::Address ? 15'000 : 900;

/// Who is at the other end.
enum class Printer : std::uint8_t {
    None,         ///< nobody listens
    Silent,       ///< takes commands, answers none
    Answering,    ///< answers the first read
    Unreachable,  ///< is so busy that connecting never ends
};

struct Case {
    const char* m_strName;
    const char* m_strScene;
    Printer m_iPrinter;
    std::string m_strSent;  ///< all that ever goes out

    friend std::ostream& operator<<(std::ostream& p_objStream, const Case& p_objCase) {
        return p_objStream << p_objCase.m_strName;
    }
};

// clang-format off
const std::vector<Case> Cases{
    {"Idle", "idle", Printer::None, ""},
    {"WithATextOutsideTheRange", "typed", Printer::None, ""},
    {"InThePauseOfRead", "read", Printer::Answering, "{Z5;0|}"},
    {"InTheWaitForAnAnswer", "read", Printer::Silent, "{Z5;0|}"},
    {"ByExitInTheWaitForAnAnswer", "read-exit", Printer::Silent, "{Z5;0|}"},
    {"InTheWaitOfSet", "set", Printer::Silent, MGolden::Parameters},
    {"InTheWaitOfLanSet", "lan-set", Printer::Silent, "{IP;2,192,168,010,020|}"},
    {"InTheWaitForTheSending", "send", Printer::Answering, MGolden::Parameters},
    {"InAnEndlessConnect", "connect", Printer::Unreachable, ""},
    {"UnderTheConnectErrorsBox", "connect-error", Printer::None, ""},
    {"UnderTheSendErrorsBox", "send-error", Printer::None, ""},
    {"UnderTheRangeBox", "range-box", Printer::None, ""},
    {"UnderTheSetupDialog", "setup", Printer::None, ""},
    {"UnderTheAboutBox", "about", Printer::None, ""},
    {"UnderTheSetupDialogInsideOfLanSet", "setup-in-lan-set", Printer::Silent, "{IP;2,192,168,010,020|}"},
    {"UnderTheAboutBoxInsideOfLanSet", "about-in-lan-set", Printer::Silent, "{IP;2,192,168,010,020|}"},
    {"UnderTheDialogOfSave", "save-dialog", Printer::None, ""},
    {"UnderTheDialogOfLoad", "load-dialog", Printer::None, ""},
    {"UnderTheQuestionBeforeOverwriting", "overwrite", Printer::None, ""},
    {"UnderTheBoxThatTellsOfTheSaving", "saved", Printer::None, ""},
};
// clang-format on

class FmMainClosingTest : public ::testing::TestWithParam<Case> {
protected:
    FmMainClosingTest() {
        QObject::connect(&m_objServer, &QTcpServer::newConnection, [this] { Accept(); });
        QObject::connect(&m_objTool, &QProcess::readyReadStandardOutput, [this] {
            m_strOutput += m_objTool.readAllStandardOutput().toStdString();
            if (!m_objSinceClosing.isValid() && m_strOutput.find("closing") != std::string::npos) {
                m_objSinceClosing.start();
            }
        });
        m_objTool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }
    ~FmMainClosingTest() override {
        m_objTool.kill();
        m_objTool.waitForFinished();
    }

    std::uint16_t Prepare(Printer p_iPrinter) {
        m_bAnswers = p_iPrinter == Printer::Answering;
        if (p_iPrinter == Printer::Unreachable) {
            m_objUnreachable = std::make_unique<CUnreachablePort>();
            EXPECT_TRUE(m_objUnreachable->IsFull());
            return m_objUnreachable->Number();
        }
        if (p_iPrinter == Printer::None) {
            return m_objRefused.Number();
        }
        EXPECT_TRUE(m_objServer.listen(QHostAddress::LocalHost));
        return m_objServer.serverPort();
    }

    void Accept() {
        QTcpSocket* const objSocket = m_objServer.nextPendingConnection();
        QObject::connect(objSocket, &QTcpSocket::disconnected, [this] { m_bHungUp = true; });
        QObject::connect(objSocket, &QTcpSocket::readyRead, [this, objSocket] {
            m_strReceived += objSocket->readAll().toStdString();
            if (m_bAnswers && m_strReceived == "{Z5;0|}") {
                objSocket->write(MGolden::Answer(0));
            }
        });
    }

    /// All that was sent, once the other end has hung up.
    std::string Received() {
        if (!m_strReceived.empty()) {
            EXPECT_TRUE(CSimulatorProcess::WaitUntil([this] { return m_bHungUp; }, PatienceMs));
        }
        return m_strReceived;
    }

    QProcess m_objTool;
    QElapsedTimer m_objSinceClosing;
    std::string m_strOutput;

private:
    QTcpServer m_objServer;
    CRefusedPort m_objRefused;
    std::unique_ptr<CUnreachablePort> m_objUnreachable;
    std::string m_strReceived;
    bool m_bAnswers = false;
    bool m_bHungUp = false;
};

TEST_P(FmMainClosingTest, EndsTheProgramAtOnce) {
    const std::uint16_t iPort = Prepare(GetParam().m_iPrinter);
    m_objTool.start(VARDEN_CLOSING_DRIVER, {GetParam().m_strScene, QString::number(iPort)});
    ASSERT_TRUE(
        CSimulatorProcess::WaitUntil([this] { return m_objSinceClosing.isValid(); }, PatienceMs))
        << "the wait was not reached: " << m_strOutput;
    ASSERT_TRUE(CSimulatorProcess::WaitUntil(
        [this] { return m_objTool.state() == QProcess::NotRunning; }, PatienceMs))
        << "the program goes on";
    EXPECT_LE(m_objSinceClosing.elapsed(), LongestExitMs);
    EXPECT_EQ(m_objTool.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_objTool.exitCode(), 0);
    m_strOutput += m_objTool.readAllStandardOutput().toStdString();
    long long iEnd = -1;
    EXPECT_EQ(std::sscanf(m_strOutput.c_str(), "closing ended after %lld ms", &iEnd), 1)
        << "more than the end came: " << m_strOutput;
    EXPECT_GE(iEnd, 0);
    EXPECT_LE(iEnd, LongestEndMs);
    EXPECT_EQ(Received(), GetParam().m_strSent);
}

INSTANTIATE_TEST_SUITE_P(TheWindow, FmMainClosingTest, ::testing::ValuesIn(Cases),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

}  // namespace
