#include "simulator/CPrinter.h"
#include "tests/golden/MGolden.h"
#include "tests/simulator/CPrinterClient.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <set>
#include <string>
#include <sys/resource.h>
#include <utility>
#include <vector>

namespace {

constexpr int PatienceMs = 30'000;
constexpr std::size_t Status = 13;  // bytes
const std::string Default0 = MGolden::Answer(0);

struct Address {
    QString m_strHost;
    std::uint16_t m_iPort;
};

Address Parsed(const std::string& p_strAddress) {
    const QString strAddress = QString::fromStdString(p_strAddress);
    return {strAddress.section(':', 0, 0), strAddress.section(':', 1).toUShort()};
}

/// A thousand, or as many as the system lets one program have with p_iClients beside them.
std::size_t MostPrinters(std::size_t p_iClients) {
    constexpr std::size_t iThousand = 1000;
    constexpr std::size_t iOther = 30;  // files that the program has open anyway
    rlimit objLimit{};
    ::getrlimit(RLIMIT_NOFILE, &objLimit);
    return std::min<std::size_t>(iThousand, objLimit.rlim_max - iOther - p_iClients);
}

/// Several printers in one program.
class SimulatorFleetTest : public ::testing::Test {
protected:
    void Start(const QStringList& p_strArguments) {
        ASSERT_TRUE(m_objSimulator.Start(p_strArguments)) << m_objSimulator.ErrorText();
        ASSERT_TRUE(m_objSimulator.WaitForLine("faults: ", PatienceMs));
        m_strAddresses = m_objSimulator.Addresses();
    }

    /// A client of printer p_iNumber, counted from 1.
    std::unique_ptr<CPrinterClient> Client(std::size_t p_iNumber) const {
        const Address objAddress = Parsed(m_strAddresses.at(p_iNumber - 1));
        return std::make_unique<CPrinterClient>(objAddress.m_strHost, objAddress.m_iPort);
    }

    /// Asks all of p_objClients for their status; how many answer.
    static std::size_t Answering(const std::vector<std::unique_ptr<CPrinterClient>>& p_objClients) {
        for (const auto& objClient : p_objClients) {
            objClient->Send("{WS|}");
        }
        std::size_t iAnswering = 0;
        for (const auto& objClient : p_objClients) {
            iAnswering += objClient->WaitForBytes(Status) ? 1 : 0;
        }
        return iAnswering;
    }

    /// How many printed lines begin so.
    [[nodiscard]] std::ptrdiff_t Count(const std::string& p_strBegin) const {
        return std::ranges::count_if(m_objSimulator.Lines(), [&](const std::string& p_strLine) {
            return p_strLine.starts_with(p_strBegin);
        });
    }

    CSimulatorProcess m_objSimulator;
    std::vector<std::string> m_strAddresses;
};

TEST_F(SimulatorFleetTest, AThousandPrintersAnswerWithinSecondsAndCostNothingWhileIdle) {
    constexpr std::size_t iAtOnce = 250;  // the test itself has a limit of open files
    const std::size_t iPrinters =
        MostPrinters(2 * iAtOnce);  // the last ones' ends may be under way
    QElapsedTimer objTime;
    objTime.start();
    Start({"--printers", QString::number(iPrinters)});
    ASSERT_EQ(m_strAddresses.size(), iPrinters);
    const std::string strPort = ":" + std::to_string(m_objSimulator.Port());
    EXPECT_EQ(m_strAddresses.front(), "127.0.0.1" + strPort);
    EXPECT_EQ(m_strAddresses.at(255), "127.0.1.0" + strPort);
    EXPECT_EQ(m_strAddresses.back(), "127.0." + std::to_string(iPrinters / 256) + "." +
                                         std::to_string(iPrinters % 256) + strPort);
    for (std::size_t i = 0; i < iPrinters; i += iAtOnce) {
        std::vector<std::unique_ptr<CPrinterClient>> objClients;
        for (std::size_t j = i + 1; j <= std::min(i + iAtOnce, iPrinters); ++j) {
            objClients.push_back(Client(j));
        }
        EXPECT_EQ(Answering(objClients), objClients.size());
    }
    EXPECT_LT(objTime.elapsed(), PatienceMs);

    // Connections that end make work: first they must all be over.
    ASSERT_TRUE(CSimulatorProcess::WaitUntil(
        [this, iBefore = std::chrono::milliseconds(-1)]() mutable {
            CSimulatorProcess::WaitUntil([] { return false; }, 200);
            const auto iNow = m_objSimulator.ProcessorTime();
            return std::exchange(iBefore, iNow) == iNow;
        },
        PatienceMs));
    const auto iBefore = m_objSimulator.ProcessorTime();
    CSimulatorProcess::WaitUntil([] { return false; }, 1000);
    EXPECT_LE((m_objSimulator.ProcessorTime() - iBefore).count(), 20);
    EXPECT_EQ(m_objSimulator.Stop(), 0);
    EXPECT_EQ(m_objSimulator.Lines().back(), "status request: " + std::to_string(iPrinters));
}

TEST_F(SimulatorFleetTest, OnePrinterTakesManyConnectionsAtOnce) {
    Start({});
    std::vector<std::unique_ptr<CPrinterClient>> objClients;
    for (int i = 0; i < 300; ++i) {
        objClients.push_back(Client(1));
    }
    EXPECT_EQ(Answering(objClients), 300U);
    for (const auto& objClient : objClients) {
        EXPECT_EQ(objClient->m_objSocket.state(), QAbstractSocket::ConnectedState);
    }
}

TEST_F(SimulatorFleetTest, EachHasItsOwnSettingsAndItsLinesSayWhoseTheyAre) {
    Start({"--printers", "3"});
    EXPECT_EQ(Client(2)
                  ->Ask(MGolden::With(MGolden::Adjustments,
                                      {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}}),
                        Status)
                  .size(),
              Status);
    const std::string strChanged =
        MGolden::With(MGolden::Answer(0), {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}});
    for (std::size_t i = 1; i <= 3; ++i) {
        EXPECT_EQ(Client(i)->Ask("{Z5;0|}", Default0.size()), i == 2 ? strChanged : Default0);
    }
    EXPECT_TRUE(m_objSimulator.WaitForLine("printer 2, connection 1:", PatienceMs));
    EXPECT_TRUE(m_objSimulator.WaitForLine("printer 3, connection 1:", PatienceMs));
}

TEST_F(SimulatorFleetTest, EachCanHaveItsOwnPortOfOneAddress) {
    Start({"--printers", "20", "--by-port"});
    ASSERT_EQ(m_strAddresses.size(), 20U);
    EXPECT_EQ(std::set<std::string>(m_strAddresses.begin(), m_strAddresses.end()).size(), 20U);
    for (std::size_t i = 1; i <= 20; ++i) {
        EXPECT_TRUE(m_strAddresses.at(i - 1).starts_with("127.0.0.1:"));
        EXPECT_EQ(Client(i)->Ask("{WS|}", Status), CPrinter::StatusAnswer("00"));
    }
}

TEST_F(SimulatorFleetTest, PortsAreCountedFromTheOneThatIsGiven) {
    // Three that are free now may be taken before they are asked for: then others are tried.
    for (int iTries = 20; iTries > 0; --iTries) {
        CSimulatorProcess objFirst;
        ASSERT_TRUE(objFirst.Start());
        const int iPort = std::min<int>(objFirst.Port(), 65'000);
        objFirst.Stop();
        CSimulatorProcess objSimulator;
        if (objSimulator.Start(
                {"--printers", "3", "--by-port", "--port", QString::number(iPort)})) {
            ASSERT_TRUE(objSimulator.WaitForLine("faults: ", PatienceMs));
            std::vector<std::string> strExpected;
            for (int i = 0; i < 3; ++i) {
                strExpected.push_back("127.0.0.1:" + std::to_string(iPort + i));
            }
            EXPECT_EQ(objSimulator.Addresses(), strExpected);
            return;
        }
    }
    FAIL() << "no three ports in a row";
}

TEST_F(SimulatorFleetTest, TheSettingsCanNameThePlaceFromTheStart) {
    Start({"--printers", "2", "--host", "127.1.2.3", "--own-address"});
    const std::string strPort = std::to_string(100'000 + m_objSimulator.Port()).substr(1);
    const std::string strRest = "000000000000255255255000"
                                "1" +
                                strPort + "0";
    EXPECT_TRUE(Client(1)->Ask("{Z5;3|}", 96).starts_with("{30127001002003" + strRest));
    EXPECT_TRUE(Client(2)->Ask("{Z5;3|}", 96).starts_with("{30127001002004" + strRest));
}

TEST_F(SimulatorFleetTest, OnlyTheFaultyOnesMisbehave) {
    Start({"--printers", "4", "--faulty", "2", "--faulty", "4", "--status", "14", "--cut", "5",
           "--refuse", "Z4"});
    const std::string strStatus = CPrinter::StatusAnswer("00");
    for (std::size_t i = 1; i <= 4; ++i) {
        const bool bFaulty = i % 2 == 0;
        const auto objClient = Client(i);
        const std::size_t iLength = bFaulty ? 5 : Status;
        EXPECT_EQ(objClient->Ask("{WS|}", iLength),
                  bFaulty ? CPrinter::StatusAnswer("14").substr(0, 5) : strStatus);
        EXPECT_EQ(objClient->Ask("{Z4;1|}", iLength),
                  bFaulty ? CPrinter::StatusAnswer("06").substr(0, 5) : strStatus);
    }
}

#ifdef Q_OS_UNIX

TEST_F(SimulatorFleetTest, AsksForAsManyOpenFilesAsItMay) {
    m_objSimulator.LimitOpenFiles(64, 1000);
    Start({"--printers", "200"});
    EXPECT_EQ(m_objSimulator.ErrorText(), "");
    EXPECT_EQ(Client(200)->Ask("{WS|}", Status).size(), Status);
}

TEST_F(SimulatorFleetTest, SaysWhenOpenFilesAreScarce) {
    m_objSimulator.LimitOpenFiles(64, 150);
    Start({"--printers", "100"});
    EXPECT_NE(
        m_objSimulator.ErrorText().find("The system allows this program 150 open files (see "
                                        "ulimit -n): not more than 18 connections at a time."),
        std::string::npos)
        << m_objSimulator.ErrorText();
}

TEST_F(SimulatorFleetTest, TooFewOpenFilesAreAnError) {
    m_objSimulator.LimitOpenFiles(64, 64);
    m_objSimulator.Launch({"--port", "0", "--printers", "100"});
    EXPECT_EQ(m_objSimulator.WaitForExit(PatienceMs), 1);
    EXPECT_NE(m_objSimulator.ErrorText().find("64 open files (see ulimit -n): too few for 100 "
                                              "printers."),
              std::string::npos)
        << m_objSimulator.ErrorText();
    EXPECT_TRUE(m_objSimulator.Lines().empty());
}

struct Scarce {
    const char* m_strName;
    int m_iPrinters;
    std::uint64_t m_iFiles;
    std::size_t m_iClients;
    std::size_t m_iRoom;  ///< connections that there is room for
};

const std::vector<Scarce> ScarceFiles{{"one_printer", 1, 64, 80, 31},
                                      {"many_printers", 100, 150, 100, 18}};

class SimulatorScarceFilesTest : public SimulatorFleetTest,
                                 public ::testing::WithParamInterface<Scarce> {};

TEST_P(SimulatorScarceFilesTest, MoreConnectionsThanTheSystemAllowsWaitAndNothingSpins) {
    const QTemporaryDir objFolder;
    m_objSimulator.LimitOpenFiles(GetParam().m_iFiles, GetParam().m_iFiles);
    Start({"--printers", QString::number(GetParam().m_iPrinters), "--dump",
           objFolder.filePath("dump")});
    std::vector<std::unique_ptr<CPrinterClient>> objClients;
    for (std::size_t i = 0; i < GetParam().m_iClients; ++i) {
        objClients.push_back(Client(i % m_strAddresses.size() + 1));
    }
    ASSERT_TRUE(m_objSimulator.WaitForLine("! no room for more connections", PatienceMs));
    const auto iBefore = m_objSimulator.ProcessorTime();
    CSimulatorProcess::WaitUntil([] { return false; }, 1000);
    EXPECT_LE((m_objSimulator.ProcessorTime() - iBefore).count(), 500) << "it must not spin";
    EXPECT_EQ(Count("connected from"), static_cast<std::ptrdiff_t>(GetParam().m_iRoom));
    EXPECT_TRUE(m_objSimulator.Dump(PatienceMs)) << "some files are the program's own";

    objClients.erase(objClients.begin(), objClients.end() - 10);
    EXPECT_EQ(Answering(objClients), 10U) << "those that had to wait";
    objClients.clear();
    EXPECT_TRUE(CSimulatorProcess::WaitUntil(
        [this] { return Count("connection ended") == Count("connected from"); }, PatienceMs))
        << "one that ends while it waits is forgotten too";
}

INSTANTIATE_TEST_SUITE_P(Limits, SimulatorScarceFilesTest, ::testing::ValuesIn(ScarceFiles),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

#endif

}  // namespace
