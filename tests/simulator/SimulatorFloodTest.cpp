#include "tests/MSanitizers.h"
#include "tests/golden/MGolden.h"
#include "tests/simulator/CPrinterClient.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

// They take a second or two; the rest is for a busy machine.
constexpr int PatienceMs = MSanitizers::Address ? 200'000 : 60'000;
const std::string Settings3 = MGolden::Answer(3);

/// A client that sends the same bytes over and over, as fast as they are taken.
class CFlood {
public:
    CFlood(std::uint16_t p_iPort, const std::string& p_strPart, bool p_bReads) {
        constexpr std::size_t iBlock = 16'384;
        while (m_strBlock.size() < iBlock) {
            m_strBlock += p_strPart;
        }
        if (!p_bReads) {
            m_objSocket.setReadBufferSize(1);
        }
        QObject::connect(&m_objSocket, &QTcpSocket::connected, &m_objSocket, [this] { Send(); });
        QObject::connect(&m_objSocket, &QTcpSocket::bytesWritten, &m_objSocket, [this] { Send(); });
        QObject::connect(&m_objSocket, &QTcpSocket::readyRead, &m_objSocket, [this, p_bReads] {
            if (p_bReads) {
                m_iReceived += m_objSocket.readAll().size();
            }
        });
        m_objSocket.connectToHost(QHostAddress::LocalHost, p_iPort);
    }

    /// How many bytes have left.
    [[nodiscard]] qint64 Sent() const { return m_iGiven - m_objSocket.bytesToWrite(); }
    [[nodiscard]] qint64 Received() const { return m_iReceived; }
    [[nodiscard]] bool Stands() const {
        return m_objSocket.state() == QAbstractSocket::ConnectedState;
    }

private:
    void Send() {
        if (m_objSocket.bytesToWrite() == 0) {
            m_iGiven +=
                m_objSocket.write(m_strBlock.data(), static_cast<qint64>(m_strBlock.size()));
        }
    }

    QTcpSocket m_objSocket;
    std::string m_strBlock;
    qint64 m_iGiven = 0;
    qint64 m_iReceived = 0;
};

/// A client that comes, sends half a command and resets the connection, over and over.
class CReturning {
public:
    explicit CReturning(std::uint16_t p_iPort)
        : m_iPort(p_iPort) {
        QObject::connect(&m_objTurn, &QTimer::timeout, &m_objTurn, [this] { Come(); });
        m_objTurn.start(1);
    }

    [[nodiscard]] int Times() const { return m_iTimes; }

private:
    void Come() {
        QTcpSocket objSocket;
        objSocket.connectToHost(QHostAddress::LocalHost, m_iPort);
        if (objSocket.waitForConnected(PatienceMs)) {
            ++m_iTimes;
            objSocket.write("{Z2;1,0");
            objSocket.flush();
        }
        objSocket.abort();
    }

    std::uint16_t m_iPort;
    QTimer m_objTurn;
    int m_iTimes = 0;
};

class SimulatorFloodTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_objSimulator.Start({"--log", m_strLog})) << m_objSimulator.ErrorText();
    }

    /// How many lines of the log hold p_strText.
    [[nodiscard]] std::size_t Told(const QByteArray& p_strText) const {
        QFile objFile(m_strLog);
        EXPECT_TRUE(objFile.open(QFile::ReadOnly));
        std::size_t iTold = 0;
        while (!objFile.atEnd()) {
            iTold += objFile.readLine().contains(p_strText) ? 1U : 0U;
        }
        return iTold;
    }

    bool WaitForSent(const CFlood& p_objFlood, qint64 p_iBytes) {
        return CSimulatorProcess::WaitUntil([&] { return p_objFlood.Sent() >= p_iBytes; },
                                            PatienceMs);
    }

    QTemporaryDir m_objFolder;
    QString m_strLog = m_objFolder.filePath("events");
    CSimulatorProcess m_objSimulator;
};

}  // namespace

TEST_F(SimulatorFloodTest, ServesAHundredClientsMeanwhile) {
    const std::uint16_t iPort = m_objSimulator.Port();
    const std::size_t iBefore = m_objSimulator.Memory();
    CFlood objJunk(iPort, "junk\xFF", true);
    CFlood objDeaf(iPort, "{Z5;3|}", false);
    CFlood objHalf(iPort, "{Z5;3", true);
    CFlood objBusy(iPort, "{Z5;3|}{Z9|}", true);
    const CReturning objReturning(iPort);
    ASSERT_TRUE(WaitForSent(objJunk, 200'000) && WaitForSent(objDeaf, 1) &&
                WaitForSent(objHalf, 200'000) && WaitForSent(objBusy, 200'000));

    std::vector<std::unique_ptr<CPrinterClient>> objClients;
    for (int i = 0; i < 100; ++i) {
        objClients.push_back(std::make_unique<CPrinterClient>(iPort));
    }
    for (int iRound = 1; iRound <= 3; ++iRound) {
        for (const auto& objClient : objClients) {
            objClient->Send("{Z5;3|}");
        }
        const std::size_t iBytes = static_cast<std::size_t>(iRound) * Settings3.size();
        ASSERT_TRUE(CSimulatorProcess::WaitUntil(
            [&] {
                return std::ranges::all_of(objClients, [&](const auto& p_objClient) {
                    return p_objClient->m_strReceived.size() == iBytes;
                });
            },
            PatienceMs));
    }
    for (const auto& objClient : objClients) {
        EXPECT_EQ(objClient->m_strReceived, Settings3 + Settings3 + Settings3);
    }
    EXPECT_TRUE(objJunk.Stands() && objDeaf.Stands() && objHalf.Stands() && objBusy.Stands());
    EXPECT_GT(objBusy.Received(), 0);
    EXPECT_GT(objReturning.Times(), 3);
    // The sanitizers keep for a while what has been given back.
    constexpr std::size_t iMost = MSanitizers::Address ? 512'000'000 : 16'000'000;
    EXPECT_LT(m_objSimulator.Memory(), iBefore + iMost);
}

TEST_F(SimulatorFloodTest, TellsOfEndlessJunkNowAndThen) {
    CFlood objJunk(m_objSimulator.Port(), "junk\xFF", true);
    ASSERT_TRUE(WaitForSent(objJunk, 4'000'000));
    CPrinterClient objOther(m_objSimulator.Port());
    EXPECT_EQ(objOther.Ask("{Z5;3|}", Settings3.size()), Settings3);
    EXPECT_LT(Told("left-out"), 130U);
    EXPECT_EQ(Told("\"answered\""), 1U);
}
