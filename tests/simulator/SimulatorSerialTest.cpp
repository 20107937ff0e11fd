#include "simulator/CPrinter.h"
#include "simulator/MFaultPlan.h"
#include "tests/golden/MGolden.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int PatienceMs = 20'000;
const std::string Settings0 = MGolden::Answer(0);

/// A program that has the serial line open, without any settings of its own.
class CSerialClient {
public:
    explicit CSerialClient(const std::string& p_strName)
        : m_iPort(::open(p_strName.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}
    ~CSerialClient() { ::close(m_iPort); }
    CSerialClient(const CSerialClient&) = delete;
    CSerialClient& operator=(const CSerialClient&) = delete;

    [[nodiscard]] bool IsOpen() const { return m_iPort >= 0; }

    void Send(const std::string& p_strBytes) const {
        ASSERT_EQ(::write(m_iPort, p_strBytes.data(), p_strBytes.size()),
                  static_cast<ssize_t>(p_strBytes.size()));
    }

    /// The same, while the line takes it.
    [[nodiscard]] bool Takes(const std::string& p_strBytes) const {
        return ::write(m_iPort, p_strBytes.data(), p_strBytes.size()) > 0;
    }

    /// What has come so far.
    const std::string& Received() {
        char strBlock[4096];
        const ssize_t iCount = ::read(m_iPort, strBlock, sizeof strBlock);
        if (iCount > 0) {
            m_strReceived.append(strBlock, static_cast<std::size_t>(iCount));
            ++m_iBlocks;
        }
        m_bEnded = m_bEnded || iCount == 0 || (iCount < 0 && errno == EIO);
        return m_strReceived;
    }
    bool WaitForBytes(std::size_t p_iCount) {
        return CSimulatorProcess::WaitUntil([&] { return Received().size() >= p_iCount; },
                                            PatienceMs);
    }
    bool WaitForEnd() {
        return CSimulatorProcess::WaitUntil(
            [this] {
                Received();
                return m_bEnded;
            },
            PatienceMs);
    }
    [[nodiscard]] int Blocks() const { return m_iBlocks; }

private:
    int m_iPort;
    int m_iBlocks = 0;
    bool m_bEnded = false;
    std::string m_strReceived;
};

/// A started simulator and a program that has opened its line under the alias.
class SimulatorSerialTest : public ::testing::Test {
protected:
    void Start(const QStringList& p_strArguments = {}) {
        const QStringList strAlias{"--alias", QString::fromStdString(m_strAlias)};
        ASSERT_TRUE(m_objSimulator.StartSerial(strAlias + p_strArguments))
            << m_objSimulator.ErrorText();
        OpenPort();
    }

    void OpenPort() {
        m_objClient = std::make_unique<CSerialClient>(m_strAlias);
        ASSERT_TRUE(m_objClient->IsOpen());
    }

    /// Sends p_strCommand and expects exactly p_strAnswer.
    void Exchange(const std::string& p_strCommand, const std::string& p_strAnswer) {
        const std::size_t iBefore = m_objClient->Received().size();
        m_objClient->Send(p_strCommand);
        ASSERT_TRUE(m_objClient->WaitForBytes(iBefore + p_strAnswer.size()));
        EXPECT_EQ(m_objClient->Received().substr(iBefore), p_strAnswer);
    }

    /// The bytes that it has told to be no command, as it prints them: in as many lines as the
    /// bytes came in pieces, all of them in front of the command that follows.
    [[nodiscard]] std::string LeftOut() const {
        static const std::string strMark = " no command: ";
        std::string strBytes;
        for (const std::string& strLine : m_objSimulator.Lines()) {
            const std::size_t iMark = strLine.find(strMark);
            strBytes += iMark == std::string::npos ? "" : strLine.substr(iMark + strMark.size());
        }
        return strBytes;
    }

    QTemporaryDir m_objFolder;
    std::string m_strAlias = m_objFolder.filePath("com1").toStdString();
    CSimulatorProcess m_objSimulator;
    std::unique_ptr<CSerialClient> m_objClient;
};

TEST_F(SimulatorSerialTest, FirstTellsTheLinesName) {
    Start();
    EXPECT_EQ(m_objSimulator.Lines().front(), "Listening on " + m_objSimulator.Name());
    EXPECT_TRUE(m_objSimulator.Name().starts_with("/dev/pts/")) << m_objSimulator.Name();
    EXPECT_EQ(fs::read_symlink(m_strAlias), m_objSimulator.Name());
    EXPECT_TRUE(m_objSimulator.WaitForLine("status 00, faults: none", PatienceMs));
}

TEST_F(SimulatorSerialTest, NeedsNoAlias) {
    ASSERT_TRUE(m_objSimulator.StartSerial());
    m_objClient = std::make_unique<CSerialClient>(m_objSimulator.Name());
    Exchange("{Z5;0|}", Settings0);
}

TEST_F(SimulatorSerialTest, AnswersWithTheBytesOfEveryLink) {
    Start({"--status", "14"});
    const CPrinter objPrinter;
    for (std::int16_t iGroup = 0; iGroup <= 4; ++iGroup) {
        Exchange("{Z5;" + std::to_string(iGroup) + "|}", objPrinter.SettingsAnswer(iGroup));
    }
    EXPECT_EQ(objPrinter.SettingsAnswer(3).size(), 96U);
    Exchange("{WS|}", CPrinter::StatusAnswer("14"));
    EXPECT_TRUE(m_objSimulator.WaitForLine("< " + Settings0 + "   settings of group 0, 27 bytes",
                                           PatienceMs));
}

TEST_F(SimulatorSerialTest, TakesACommandByteByByteAndNothingIsEchoed) {
    Start();
    for (const char cByte : std::string("\x03\x04\r\n\x11\x13{WS|}")) {
        m_objClient->Send({cByte});
        ::usleep(1000);
    }
    ASSERT_TRUE(m_objClient->WaitForBytes(13));
    EXPECT_EQ(m_objClient->Received(), CPrinter::StatusAnswer("00"));
    ASSERT_TRUE(m_objSimulator.WaitForCommands(1, PatienceMs));
    EXPECT_EQ(LeftOut(), "<03><04><0D><0A><11><13>");
}

TEST_F(SimulatorSerialTest, KeepsItsSettingsFromOneOpeningToTheNext) {
    Start();
    Exchange(
        MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}}),
        CPrinter::StatusAnswer("00"));
    m_objClient.reset();
    ASSERT_TRUE(m_objSimulator.WaitForLine("port closed", PatienceMs));
    OpenPort();
    Exchange("{Z5;0|}", MGolden::With(MGolden::Answer(0),
                                      {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}}));
}

TEST_F(SimulatorSerialTest, AnAnswerToAClosedPortIsLost) {
    Start({"--delay", "100"});
    m_objClient->Send("{Z5;0|}");
    ASSERT_TRUE(m_objSimulator.WaitForCommands(1, PatienceMs));
    m_objClient.reset();
    ASSERT_TRUE(m_objSimulator.WaitForLine("port closed", PatienceMs));
    OpenPort();
    Exchange("{WS|}", CPrinter::StatusAnswer("00"));
}

TEST_F(SimulatorSerialTest, WhatNobodyHasReadIsLost) {
    Start();
    m_objClient->Send("{Z5;0|}");
    ASSERT_TRUE(m_objSimulator.WaitForLine("< {0", PatienceMs));
    m_objClient.reset();
    ASSERT_TRUE(m_objSimulator.WaitForLine("port closed", PatienceMs));
    OpenPort();
    Exchange("{WS|}", CPrinter::StatusAnswer("00"));
}

TEST_F(SimulatorSerialTest, ACommandCountsThoughThePortIsClosedAtOnce) {
    Start({"--silent"});
    m_objClient->Send(
        MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}}));
    m_objClient.reset();
    EXPECT_TRUE(m_objSimulator.WaitForCommands(1, PatienceMs));
}

// Faults.

TEST_F(SimulatorSerialTest, StaysSilentYetCarriesOut) {
    Start({"--silent"});
    m_objClient->Send("{Z5;0|}{WS|}");
    ASSERT_TRUE(m_objSimulator.WaitForCommands(2, PatienceMs));
    EXPECT_EQ(m_objClient->Received(), "");
}

TEST_F(SimulatorSerialTest, AnswersLate) {
    Start({"--delay", "300"});
    QElapsedTimer objTime;
    objTime.start();
    Exchange("{Z5;0|}", Settings0);
    EXPECT_GE(objTime.elapsed(), 285);
}

TEST_F(SimulatorSerialTest, AnswersInPieces) {
    Start({"--pieces", "10", "--gap", "400"});
    Exchange("{Z5;0|}", Settings0);
    EXPECT_EQ(m_objClient->Blocks(), 3);
}

TEST_F(SimulatorSerialTest, CutsAnswersShort) {
    Start({"--cut", "5"});
    Exchange("{Z5;0|}{Z5;2|}", "{0+00{2000");
}

TEST_F(SimulatorSerialTest, SendsJunk) {
    Start({"--junk"});
    Exchange("{Z5;0|}", std::string(MFaultPlan::Junk));
}

TEST_F(SimulatorSerialTest, SendsJunkInFront) {
    Start({"--junk-before"});
    Exchange("{Z5;0|}", std::string(MFaultPlan::Junk) + Settings0);
}

TEST_F(SimulatorSerialTest, PullsTheLineOutAndPlugsANewOneIn) {
    Start({"--close-after", "2"});
    for (int i = 0; i < 2; ++i) {
        const std::string strName = m_objSimulator.Name();
        Exchange("{WS|}", CPrinter::StatusAnswer("00"));
        Exchange("{Z5;0|}", Settings0);
        EXPECT_TRUE(m_objClient->WaitForEnd());
        ASSERT_TRUE(CSimulatorProcess::WaitUntil([&] { return m_objSimulator.Name() != strName; },
                                                 PatienceMs));
        EXPECT_EQ(fs::read_symlink(m_strAlias), m_objSimulator.Name());
        OpenPort();
    }
    EXPECT_EQ(m_objSimulator.Commands().size(), 4U);
}

TEST_F(SimulatorSerialTest, PullsTheLineOutAsSoonAsItIsOpened) {
    Start({"--close-after", "0"});
    EXPECT_TRUE(m_objClient->WaitForEnd());
    EXPECT_EQ(m_objClient->Received(), "");
}

TEST_F(SimulatorSerialTest, OutlivesAFloodThatNobodyReadsTheAnswersOf) {
    Start();
    std::string strFlood;
    while (strFlood.size() < 4000) {
        strFlood += "{Z5;3|}junk{\xFF";
    }
    m_objClient->Send(strFlood);
    bool bFull = false;
    for (int i = 0; i < 1000 && !bFull; ++i) {
        CSimulatorProcess::WaitUntil([] { return false; }, 10);
        bFull = !m_objClient->Takes(strFlood);
    }
    EXPECT_TRUE(bFull) << "the simulator holds a bounded amount";
    m_objClient.reset();
    ASSERT_TRUE(m_objSimulator.WaitForLine("port closed", PatienceMs));
    OpenPort();
    Exchange("{Z5;0|}", Settings0);
    EXPECT_EQ(m_objSimulator.Stop(), 0);
}

// Faults of its state.

const std::string SetFeed =
    MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}});
const std::string Changed0 =
    MGolden::With(MGolden::Answer(0), {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}});

TEST_F(SimulatorSerialTest, RefusesAndStoresWrongly) {
    Start({"--refuse", "WS", "--stuck", "FeedDirection", "--half-fields", "3"});
    Exchange("{WS|}", CPrinter::StatusAnswer("06"));
    Exchange(MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"},
                                                  {"FeedAdjustment", "123"},
                                                  {"CutPosDirection", "-"},
                                                  {"CutPosAdjustment", "456"},
                                                  {"BackFeedDirection", "-"}}),
             CPrinter::StatusAnswer("00"));
    Exchange("{Z5;0|}", MGolden::With(MGolden::Answer(0),
                                      {{"FeedAdjustment", "123"}, {"CutPosDirection", "-"}}));
}

TEST_F(SimulatorSerialTest, WithoutPowerThePortStaysAndWhatIsSentIsLost) {
    Start({"--power-cut", "50", "--power-back", "300"});
    Exchange(SetFeed, CPrinter::StatusAnswer("00"));
    m_objClient->Send("{WS|}{WS|}{WS|}");
    ASSERT_TRUE(m_objSimulator.WaitForLine("! power off", PatienceMs));
    m_objClient->Send("{WS|}{W");
    ASSERT_TRUE(m_objSimulator.WaitForLine("! power on", PatienceMs));
    Exchange("{Z5;0|}", Changed0);
    EXPECT_EQ(m_objClient->Received(), CPrinter::StatusAnswer("00") + Changed0);
    EXPECT_TRUE(m_objSimulator.WaitForLine("< " + Changed0, PatienceMs));
    EXPECT_EQ(m_objSimulator.Commands().size(), 4U) << "of three statuses two were complete";
}

TEST_F(SimulatorSerialTest, ThePowerGoesForAWhileWhenAskedAndTakesTheSettingsWithIt) {
    Start({"--forget", "--delay", "200", "--power-back", "10"});
    Exchange(SetFeed, CPrinter::StatusAnswer("00"));
    m_objClient->Send("{Z5;0|}{Z5");
    ASSERT_TRUE(m_objSimulator.WaitForCommands(2, PatienceMs));
    m_objSimulator.PowerCycle();
    ASSERT_TRUE(m_objSimulator.WaitForLine("! power on", PatienceMs));
    m_objClient->Send(";0|}");
    ASSERT_TRUE(m_objSimulator.WaitForLine("that are no command: ;0|}", PatienceMs));
    Exchange("{Z5;0|}", Settings0);
    EXPECT_EQ(m_objClient->Received(), CPrinter::StatusAnswer("00") + Settings0)
        << "neither a late answer nor the half of a command outlives the power";
}

TEST_F(SimulatorSerialTest, AnotherAddressAndAnotherLineFormatChangeNothingHere) {
    Start({"--moves", "at-once"});
    Exchange("{IP;2,127,000,000,077|}", CPrinter::StatusAnswer("00"));
    Exchange("{IS;1,08001|}", CPrinter::StatusAnswer("00"));
    Exchange(MGolden::With(MGolden::Parameters, {{"CommunicationSpeed", "4"}, {"Parity", "0"}}),
             CPrinter::StatusAnswer("00"));
    Exchange("{Z5;0|}", Settings0);
}

TEST_F(SimulatorSerialTest, WritesEventsAndItsSettings) {
    const QString strLog = m_objFolder.filePath("log");
    const QString strDump = m_objFolder.filePath("dump");
    Start({"--log", strLog, "--dump", strDump});
    Exchange("{WS|}", CPrinter::StatusAnswer("00"));
    ASSERT_TRUE(m_objSimulator.Dump(PatienceMs));
    m_objClient.reset();
    const auto strContent = [](const QString& p_strFile) {
        std::ifstream objFile(p_strFile.toStdString());
        return std::string(std::istreambuf_iterator<char>(objFile), {});
    };
    ASSERT_TRUE(CSimulatorProcess::WaitUntil(
        [&] { return strContent(strLog).ends_with("\"by\": \"peer\"}\n"); }, PatienceMs));
    const std::string strWho = "\"address\": \"" + m_objSimulator.Name() + "\", \"link\": \"com\"";
    EXPECT_NE(strContent(strDump).find(strWho + ", \"power\": true, \"settings\": {"),
              std::string::npos);
    const std::string strEvents = strContent(strLog);
    std::size_t iPosition = 0;
    for (const char* strEvent : {"listening", "connected", "received", "answered", "closed"}) {
        iPosition = strEvents.find(std::string("\"event\": \"") + strEvent, iPosition);
        ASSERT_NE(iPosition, std::string::npos) << strEvent << "\n" << strEvents;
    }
    EXPECT_NE(
        strEvents.find(strWho + ", \"connection\": 1, \"event\": \"closed\", \"by\": \"peer\""),
        std::string::npos);
}

// The end.

TEST_F(SimulatorSerialTest, CtrlCRemovesTheAliasAndPrintsTheCounts) {
    Start();
    Exchange("{WS|}", CPrinter::StatusAnswer("00"));
    m_objSimulator.Interrupt();
    EXPECT_EQ(m_objSimulator.WaitForExit(PatienceMs), 0);
    EXPECT_FALSE(fs::is_symlink(m_strAlias));
    EXPECT_EQ(m_objSimulator.Lines().back(), "status request: 1");
}

TEST_F(SimulatorSerialTest, TerminatingRemovesTheAliasAndHangsUp) {
    Start();
    m_objSimulator.Terminate();
    EXPECT_EQ(m_objSimulator.WaitForExit(PatienceMs), 0);
    EXPECT_FALSE(fs::is_symlink(m_strAlias));
    EXPECT_TRUE(m_objClient->WaitForEnd());
}

TEST_F(SimulatorSerialTest, AnAliasThatIsTakenIsAnErrorThatNamesIt) {
    std::ofstream(m_strAlias) << "mine";
    m_objSimulator.Launch({"--serial", "--alias", QString::fromStdString(m_strAlias)});
    EXPECT_EQ(m_objSimulator.WaitForExit(PatienceMs), 1);
    EXPECT_NE(m_objSimulator.ErrorText().find("Cannot make the link " + m_strAlias + ": "),
              std::string::npos)
        << m_objSimulator.ErrorText();
    EXPECT_TRUE(m_objSimulator.Lines().empty());
    EXPECT_EQ(fs::file_size(m_strAlias), 4U);
}

}  // namespace
