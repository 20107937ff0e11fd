#include "simulator/CPrinter.h"
#include "simulator/MFaultPlan.h"
#include "simulator/program/COptions.h"
#include "tests/golden/MGolden.h"
#include "tests/simulator/CPrinterClient.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QElapsedTimer>
#include <QFile>
#include <QHostAddress>
#include <QRegularExpression>
#include <QTcpServer>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int PatienceMs = 20'000;
const std::string Settings0 = MGolden::Answer(0);

using CClient = CPrinterClient;

/// A started simulator and one client connected to it.
class SimulatorProgramTest : public ::testing::Test {
protected:
    void Start(const QStringList& p_strArguments = {}) {
        ASSERT_TRUE(m_objSimulator.Start(p_strArguments)) << m_objSimulator.ErrorText();
        m_objClient = std::make_unique<CClient>(m_objSimulator.Port());
        ASSERT_TRUE(m_objClient->WaitForConnection());
    }

    CSimulatorProcess m_objSimulator;
    std::unique_ptr<CClient> m_objClient;
};

}  // namespace

TEST_F(SimulatorProgramTest, FirstTellsWhereItListens) {
    Start();
    EXPECT_EQ(m_objSimulator.Lines().front(),
              "Listening on 127.0.0.1:" + std::to_string(m_objSimulator.Port()));
    EXPECT_TRUE(m_objSimulator.WaitForLine("status 00, faults: none", PatienceMs));
}

TEST_F(SimulatorProgramTest, AnswersAReadAndPrintsWhatPasses) {
    Start();
    m_objClient->Send("{Z5;0|}");
    ASSERT_TRUE(m_objClient->WaitForBytes(Settings0.size()));
    EXPECT_EQ(m_objClient->m_strReceived, Settings0);
    EXPECT_TRUE(
        m_objSimulator.WaitForLine("> {Z5;0|}   read settings: Group=0 (adjustment)", PatienceMs));
    EXPECT_TRUE(m_objSimulator.WaitForLine("< " + Settings0 + "   settings of group 0, 27 bytes",
                                           PatienceMs));
}

TEST_F(SimulatorProgramTest, GivesEveryConnectionTheSameSettings) {
    Start({"--status", "14"});
    CClient objOther(m_objSimulator.Port());
    ASSERT_TRUE(objOther.WaitForConnection());
    objOther.Send(
        MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}}));
    ASSERT_TRUE(objOther.WaitForBytes(13));
    EXPECT_EQ(objOther.m_strReceived, CPrinter::StatusAnswer("14"));
    m_objClient->Send("{Z5;0|}");
    ASSERT_TRUE(m_objClient->WaitForBytes(Settings0.size()));
    EXPECT_EQ(
        m_objClient->m_strReceived,
        MGolden::With(MGolden::Answer(0), {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}}));
}

TEST_F(SimulatorProgramTest, GivesTestsTheCommandsItHasReceived) {
    Start();
    const std::string strDhcp =
        "{IH;0," + std::string(32, 'F') + ",a   b" + std::string(11, '\xFF') + "|}";
    m_objClient->Send("{WS|}junk{Z10|}" + strDhcp);
    ASSERT_TRUE(m_objSimulator.WaitForCommands(3, PatienceMs));
    const auto strCommands = m_objSimulator.Commands();
    ASSERT_EQ(strCommands.size(), 3U);
    EXPECT_EQ(strCommands[0], "{WS|}");
    EXPECT_EQ(strCommands[1], "{Z10|}");
    EXPECT_TRUE(strCommands[2].starts_with("{IH;0," + std::string(32, 'F') + ",a   b<FF><FF>"));
    EXPECT_FALSE(m_objSimulator.WaitForCommands(4, 1));
}

TEST_F(SimulatorProgramTest, StaysSilentYetCarriesOut) {
    Start({"--silent"});
    m_objClient->Send("{Z5;0|}");
    ASSERT_TRUE(m_objSimulator.WaitForLine("! no answer", PatienceMs));
    m_objClient->Send("{WS|}");
    ASSERT_TRUE(m_objSimulator.WaitForCommands(2, PatienceMs));
    EXPECT_EQ(m_objClient->m_strReceived, "");
}

TEST_F(SimulatorProgramTest, AnswersLate) {
    Start({"--delay", "300"});
    QElapsedTimer objTime;
    objTime.start();
    m_objClient->Send("{Z5;0|}");
    ASSERT_TRUE(m_objClient->WaitForBytes(Settings0.size()));
    EXPECT_GE(objTime.elapsed(), 285);  // the event loop's timers may be 5 % early
    EXPECT_EQ(m_objClient->m_strReceived, Settings0);
}

TEST_F(SimulatorProgramTest, AnswersInPieces) {
    Start({"--pieces", "10", "--gap", "400"});
    m_objClient->Send("{Z5;0|}{WS|}");
    ASSERT_TRUE(m_objClient->WaitForBytes(Settings0.size() + 13));
    EXPECT_EQ(m_objClient->m_strReceived, Settings0 + CPrinter::StatusAnswer("00"));
    EXPECT_GT(m_objClient->m_strBlocks.size(), 2U) << "pieces must arrive apart";
    EXPECT_EQ(m_objClient->m_strBlocks.front(), Settings0.substr(0, 10));
}

TEST_F(SimulatorProgramTest, CutsAnswersShort) {
    Start({"--cut", "5"});
    m_objClient->Send("{Z5;0|}{Z5;2|}");
    ASSERT_TRUE(m_objClient->WaitForBytes(10));
    EXPECT_EQ(m_objClient->m_strReceived, "{0+00{2000");
}

TEST_F(SimulatorProgramTest, SendsJunkInPlaceOfAnswers) {
    Start({"--junk"});
    const std::string strJunk(MFaultPlan::Junk);
    m_objClient->Send("{Z5;0|}{WS|}");
    ASSERT_TRUE(m_objClient->WaitForBytes(2 * strJunk.size()));
    EXPECT_EQ(m_objClient->m_strReceived, strJunk + strJunk);
}

TEST_F(SimulatorProgramTest, SendsJunkInFrontOfAnswers) {
    Start({"--junk-before"});
    const std::string strExpected = std::string(MFaultPlan::Junk) + Settings0;
    m_objClient->Send("{Z5;0|}");
    ASSERT_TRUE(m_objClient->WaitForBytes(strExpected.size()));
    EXPECT_EQ(m_objClient->m_strReceived, strExpected);
}

TEST_F(SimulatorProgramTest, ClosesAfterSoManyAnswersOnEachConnection) {
    Start({"--close-after", "2"});
    CClient objOther(m_objSimulator.Port());
    objOther.Send("{Z5;2|}");
    ASSERT_TRUE(objOther.WaitForBytes(12));
    m_objClient->Send("{WS|}{Z5;0|}{Z5;1|}");
    ASSERT_TRUE(m_objClient->WaitForEnd());
    EXPECT_EQ(m_objClient->m_strReceived, CPrinter::StatusAnswer("00") + Settings0);
    EXPECT_EQ(objOther.m_objSocket.state(), QAbstractSocket::ConnectedState);
}

TEST_F(SimulatorProgramTest, ClosesAtOnce) {
    Start({"--close-after", "0"});
    EXPECT_TRUE(m_objClient->WaitForEnd());
    EXPECT_EQ(m_objClient->m_strReceived, "");
}

TEST_F(SimulatorProgramTest, CombinesFaults) {
    Start({"--delay", "50", "--pieces", "4", "--cut", "6", "--junk-before", "--close-after", "1"});
    m_objClient->Send("{Z5;0|}");
    ASSERT_TRUE(m_objClient->WaitForEnd());
    EXPECT_EQ(m_objClient->m_strReceived, std::string(MFaultPlan::Junk) + "{0+000");
    EXPECT_GT(m_objClient->m_strBlocks.size(), 1U);
}

TEST_F(SimulatorProgramTest, OutlivesClientsThatVanishAndFlood) {
    Start();
    std::string strFlood;
    while (strFlood.size() < 1'000'000) {
        strFlood += "{Z5;3|}junk{\xFF";
    }
    m_objClient->m_objSocket.setReadBufferSize(1);  // takes none of the answers
    m_objClient->Send(strFlood);
    ASSERT_TRUE(m_objSimulator.WaitForCommands(100, PatienceMs));
    m_objClient->m_objSocket.abort();

    CClient objNext(m_objSimulator.Port());
    objNext.Send("{Z5;0|}");
    ASSERT_TRUE(objNext.WaitForBytes(Settings0.size()));
    EXPECT_EQ(objNext.m_strReceived, Settings0);
    EXPECT_EQ(m_objSimulator.Stop(), 0);
}

TEST_F(SimulatorProgramTest, DropsDelayedAnswersOfAClientThatLeft) {
    Start({"--delay", "30"});
    m_objClient->Send("{WS|}{WS|}");
    ASSERT_TRUE(m_objSimulator.WaitForCommands(2, PatienceMs));
    m_objClient->m_objSocket.abort();
    ASSERT_TRUE(m_objSimulator.WaitForLine("connection ended", PatienceMs));
    CClient objNext(m_objSimulator.Port());
    objNext.Send("{WS|}");
    EXPECT_TRUE(objNext.WaitForBytes(13));
}

#ifdef Q_OS_UNIX
TEST_F(SimulatorProgramTest, EndsCleanlyOnCtrlCAndPrintsTheCounts) {
    Start();
    m_objClient->Send("{WS|}{Z5;0|}{Z5;7|}");
    ASSERT_TRUE(m_objSimulator.WaitForCommands(3, PatienceMs));
    m_objSimulator.Interrupt();
    EXPECT_EQ(m_objSimulator.WaitForExit(PatienceMs), 0);
    const auto& strLines = m_objSimulator.Lines();
    const auto objCounts = std::find(strLines.begin(), strLines.end(), "Commands received:");
    EXPECT_EQ(std::vector<std::string>(objCounts, strLines.end()),
              (std::vector<std::string>{"Commands received:", "status request: 1",
                                        "read settings: 2, refused 1"}));
}

TEST_F(SimulatorProgramTest, EndsCleanlyWhenTerminated) {
    Start();
    m_objSimulator.Terminate();
    EXPECT_EQ(m_objSimulator.WaitForExit(PatienceMs), 0);
    EXPECT_TRUE(m_objClient->WaitForEnd());
}
#endif

TEST(SimulatorProgramStartTest, HelpNamesEveryOptionAndEndsWell) {
    CSimulatorProcess objSimulator;
    objSimulator.Launch({"--help"});
    EXPECT_EQ(objSimulator.WaitForExit(PatienceMs), 0);
    std::string strHelp;
    for (const std::string& strLine : objSimulator.Lines()) {
        strHelp += strLine + '\n';
    }
    for (const char* strOption : {"--help",
                                  "--host <ADDRESS>",
                                  "--port <PORT>",
                                  "--status <CODE>",
                                  "--silent",
                                  "--delay <MS>",
                                  "--pieces <N>",
                                  "--gap <MS>",
                                  "--cut <N>",
                                  "--junk ",
                                  "--junk-before",
                                  "--close-after <N>",
                                  "--serial",
                                  "--alias <PATH>",
                                  "--usb ",
                                  "--printers <N>",
                                  "--by-port",
                                  "--own-address",
                                  "--faulty <N>",
                                  "--log <FILE>",
                                  "--dump <FILE>",
                                  "--fill <WITH>",
                                  "--refuse <HEAD>",
                                  "--refuse-only <N>",
                                  "--stuck <SETTING>",
                                  "--half-fields <N>",
                                  "--half-bytes <N>",
                                  "--half-of <HEAD>",
                                  "--forget",
                                  "--power-cut <N>",
                                  "--power-back <MS>",
                                  "--moves <WHEN>"}) {
        EXPECT_NE(strHelp.find(strOption), std::string::npos) << strOption << "\n" << strHelp;
    }
}

TEST(SimulatorProgramStartTest, TheManualsPageNamesEveryOption) {
    QFile objFile(VARDEN_SIMULATOR_PAGE);
    ASSERT_TRUE(objFile.open(QFile::ReadOnly));
    const QString strPage = objFile.readAll();
    int iOptions = 0;
    for (const QString& strLine : COptions::HelpText().split('\n')) {
        const QString strOption = strLine.section("--", 1).section(' ', 0, 0);
        if (strLine.startsWith("  -") && !strOption.isEmpty()) {
            ++iOptions;
            EXPECT_TRUE(strPage.contains(QRegularExpression("`--" + strOption + "[ `]")))
                << strOption.toStdString();
        }
    }
    EXPECT_EQ(iOptions, 32);
}

TEST(SimulatorProgramStartTest, APortInUseIsAnErrorThatNamesIt) {
    QTcpServer objOther;
    ASSERT_TRUE(objOther.listen(QHostAddress::LocalHost));
    const QString strPort = QString::number(objOther.serverPort());
    CSimulatorProcess objSimulator;
    objSimulator.Launch({"--port", strPort});
    EXPECT_EQ(objSimulator.WaitForExit(PatienceMs), 1);
    EXPECT_NE(objSimulator.ErrorText().find("Cannot listen on 127.0.0.1:" + strPort.toStdString()),
              std::string::npos)
        << objSimulator.ErrorText();
}

namespace {

struct Wrong {
    const char* m_strName;
    QStringList m_strArguments;
    std::string m_strError;
};

// clang-format off
const std::vector<Wrong> WrongCommandLines{
    {"port_text", {"--port", "eight"}, "--port needs a number from 0 to 65535, not \"eight\"."},
    {"port_range", {"--port", "65536"}, "--port needs a number from 0 to 65535, not \"65536\"."},
    {"host", {"--host", "printer"}, "--host needs an IP address, not \"printer\"."},
    {"status_short", {"--status", "1"}, "--status needs two printable characters, not \"1\"."},
    {"status_long", {"--status", "001"}, "--status needs two printable characters, not \"001\"."},
    {"delay", {"--delay", "-1"}, "--delay needs a number from 0 to 3600000, not \"-1\"."},
    {"pieces", {"--pieces", "0"}, "--pieces needs a number from 1 to 65535, not \"0\"."},
    {"gap", {"--gap", "soon"}, "--gap needs a number from 0 to 3600000, not \"soon\"."},
    {"cut", {"--cut", "1.5"}, "--cut needs a number from 0 to 65535, not \"1.5\"."},
    {"close_after", {"--close-after", "x"}, "--close-after needs a number from 0 to 1000000, not \"x\"."},
    {"missing_value", {"--delay"}, "delay"},
    {"unknown_option", {"--loud"}, "loud"},
    {"alias_alone", {"--alias", "/nowhere/com1"}, "--alias goes with --serial only."},
    {"alias_empty", {"--serial", "--alias", ""}, "--alias needs a path, not \"\"."},
    {"serial_port", {"--serial", "--port", "8000"}, "--host and --port do not go with --serial."},
    {"serial_host", {"--host", "127.0.0.1", "--serial"}, "--host and --port do not go with --serial."},
    {"no_printers", {"--printers", "0"}, "--printers needs a number from 1 to 10000, not \"0\"."},
    {"too_many_printers", {"--printers", "10001"}, "--printers needs a number from 1 to 10000, not \"10001\"."},
    {"printers_serial", {"--serial", "--printers", "2"}, "Several printers, and printers with addresses, are on the network."},
    {"printers_usb", {"--own-address", "--usb", "x"}, "Several printers, and printers with addresses, are on the network."},
    {"printers_six", {"--host", "::1", "--printers", "2"}, "--printers needs a --host of four numbers to count on from, or --by-port."},
    {"printers_everywhere", {"--host", "0.0.0.0", "--printers", "2"}, "--printers needs a --host of four numbers to count on from, or --by-port."},
    {"printers_end", {"--host", "255.255.255.254", "--printers", "3"}, "--printers needs a --host of four numbers to count on from, or --by-port."},
    {"ports_end", {"--port", "65534", "--by-port", "--printers", "3"}, "There are not so many ports from --port on."},
    {"own_address_six", {"--host", "::1", "--own-address"}, "--own-address needs a --host of four numbers."},
    {"faulty_none", {"--faulty", "0"}, "--faulty needs the number of a printer, not \"0\"."},
    {"faulty_other", {"--printers", "3", "--faulty", "1", "--faulty", "4"}, "--faulty needs the number of a printer, not \"4\"."},
    {"fill", {"--fill", "zero"}, "--fill needs blanks or ff, not \"zero\"."},
    {"log_empty", {"--log", ""}, "--log needs a path, not \"\"."},
    {"dump_empty", {"--dump", ""}, "--dump needs a path, not \"\"."},
    {"refuse", {"--refuse", "{Z5;", "--refuse", "{QX"}, "--refuse needs how a command begins, such as {Z2;, not \"{QX\"."},
    {"refuse_empty", {"--refuse", ""}, "--refuse needs how a command begins, such as {Z2;, not \"\"."},
    {"refuse_only_none", {"--refuse", "WS", "--refuse-only", "0"}, "--refuse-only needs a number from 1 to 1000000, not \"0\"."},
    {"refuse_only_alone", {"--refuse-only", "1"}, "--refuse-only goes with --refuse only."},
    {"stuck", {"--stuck", "m_objFontCode"}, "--stuck needs the name of a setting, such as FeedAdjustment, not \"m_objFontCode\"."},
    {"half_fields", {"--half-fields", "x"}, "--half-fields needs a number from 0 to 65535, not \"x\"."},
    {"half_bytes", {"--half-bytes", "-1"}, "--half-bytes needs a number from 0 to 65535, not \"-1\"."},
    {"half_of", {"--half-bytes", "1", "--half-of", "x"}, "--half-of needs how a command begins, such as {Z2;, not \"x\"."},
    {"half_of_alone", {"--half-of", "Z2"}, "--half-of goes with --half-fields or --half-bytes only."},
    {"power_cut", {"--power-cut", "0"}, "--power-cut needs a number from 1 to 1000000000, not \"0\"."},
    {"power_back", {"--power-back", "soon"}, "--power-back needs a number from 0 to 3600000, not \"soon\"."},
    {"moves", {"--moves", "later"}, "--moves needs at-once, after-restart or never, not \"later\"."},
    {"stray_argument", {"now"}, "There is nothing to do with \"now\"."},
};
// clang-format on

class WrongCommandLineTest : public ::testing::TestWithParam<Wrong> {};

}  // namespace

TEST_P(WrongCommandLineTest, IsAnErrorThatNamesIt) {
    CSimulatorProcess objSimulator;
    objSimulator.Launch(GetParam().m_strArguments);
    EXPECT_EQ(objSimulator.WaitForExit(PatienceMs), 1);
    EXPECT_NE(objSimulator.ErrorText().find(GetParam().m_strError), std::string::npos)
        << objSimulator.ErrorText();
    EXPECT_TRUE(objSimulator.Lines().empty());
}

INSTANTIATE_TEST_SUITE_P(CommandLines, WrongCommandLineTest, ::testing::ValuesIn(WrongCommandLines),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });
