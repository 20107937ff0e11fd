#include "simulator/CPrinter.h"
#include "tests/golden/MGolden.h"
#include "tests/simulator/CPrinterClient.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int PatienceMs = 20'000;
constexpr std::size_t Status = 13;  // bytes
const std::string Good = CPrinter::StatusAnswer("00");
const std::string Refused = CPrinter::StatusAnswer("06");
const std::string SetFeed =
    MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}});
const std::string Default0 = MGolden::Answer(0);
const std::string Changed0 =
    MGolden::With(MGolden::Answer(0), {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}});

/// The command that sends a printer to 127.0.0.p_iLast.
std::string MoveTo(int p_iLast) {
    return "{IP;2,127,000,000," + std::to_string(1000 + p_iLast).substr(1) + "|}";
}

/// The command that sends a printer to a port.
std::string MoveToPort(int p_iPort) {
    return "{IS;1," + std::to_string(100'000 + p_iPort).substr(1) + "|}";
}

/// A simulator on TCP and a client connected to it.
class SimulatorStateTest : public ::testing::Test {
protected:
    void Start(const QStringList& p_strArguments) {
        ASSERT_TRUE(m_objSimulator.Start(p_strArguments)) << m_objSimulator.ErrorText();
        Connect();
    }

    void Connect(const QString& p_strHost = "127.0.0.1") {
        m_objClient = std::make_unique<CPrinterClient>(p_strHost, m_objSimulator.Port());
        ASSERT_TRUE(m_objClient->WaitForConnection());
    }

    /// Sends p_strCommand and expects exactly p_strAnswer.
    void Exchange(const std::string& p_strCommand, const std::string& p_strAnswer) {
        EXPECT_EQ(m_objClient->Ask(p_strCommand, p_strAnswer.size()), p_strAnswer) << p_strCommand;
    }

    [[nodiscard]] bool IsRefused(const QString& p_strHost = "127.0.0.1") const {
        return CPrinterClient::IsRefused(p_strHost, m_objSimulator.Port());
    }

    /// Waits for the power to be back, and connects again.
    void ComeBack() {
        ASSERT_TRUE(m_objSimulator.WaitForLine("! power on", PatienceMs));
        Connect();
    }

    CSimulatorProcess m_objSimulator;
    std::unique_ptr<CPrinterClient> m_objClient;
};

// ---- What it stores

struct Case {
    const char* m_strName;
    QStringList m_strOptions;
    std::string m_strFaults;  ///< as the program describes them
    std::vector<std::pair<std::string, std::string>> m_strExchanges;
};

const std::string Gateway = "{IP;3,001,002,003,004|}";
const std::string SettingsHead = "{30192168010020";
const std::string SettingsTail =
    "2552552550001080000" + std::string(32, 'F') + std::string(16, ' ') + "|}";

std::string WithGateway(const std::string& p_strGateway) {
    return SettingsHead + p_strGateway + SettingsTail;
}

// clang-format off
const std::vector<Case> Cases{
    {"refused", {"--refuse", "{Z2;2,"}, "\"{Z2;2,\" refused",
     {{SetFeed, Refused}, {"{WS|}", Good}, {"{Z5;0|}", Default0}}},
    {"refused_without_brace", {"--refuse", "Z5;0", "--refuse", "WS"}, "\"{Z5;0\", \"{WS\" refused",
     {{SetFeed, Good}, {"{Z5;0|}", Refused}, {"{WS|}", Refused}}},
    {"refused_once", {"--refuse", "Z2;2,", "--refuse-only", "2"}, "\"{Z2;2,\" refused, only number 2",
     {{SetFeed, Good}, {SetFeed, Refused}, {SetFeed, Good}, {"{Z5;0|}", Changed0}}},
    {"stuck", {"--stuck", "FeedAdjustment"}, "FeedAdjustment never changed",
     {{SetFeed, Good}, {"{Z5;0|}", MGolden::With(MGolden::Answer(0), {{"FeedDirection", "-"}})}}},
    {"two_stuck", {"--stuck", "FeedAdjustment", "--stuck", "FeedDirection"}, "FeedAdjustment, FeedDirection never changed",
     {{SetFeed, Good}, {"{Z5;0|}", Default0}}},
    {"half_fields", {"--half-fields", "2"}, "only 2 fields stored of set commands",
     {{Gateway, Good}, {"{Z5;3|}", WithGateway("001002000000")}}},
    {"half_bytes", {"--half-bytes", "6", "--half-of", "IP;3"}, "only 6 bytes stored of \"{IP;3\"",
     {{SetFeed, Good}, {Gateway, Good}, {"{Z5;0|}", Changed0}, {"{Z5;3|}", WithGateway("001002000000")}}},
    {"fill", {"--fill", "ff"}, "none",
     {{"{Z5;3|}", SettingsHead + "0000000000002552552550001080000" + std::string(32, 'F') + std::string(16, '\xFF') + "|}"}}},
    {"together", {"--stuck", "Gateway1", "--half-fields", "2", "--cut", "20"},
     "answers cut short after 20 bytes; Gateway1 never changed; only 2 fields stored of set commands",
     {{Gateway, Good}, {"{Z5;3|}", WithGateway("000002000000").substr(0, 20)}}},
};
// clang-format on

class SimulatorStoringTest : public SimulatorStateTest,
                             public ::testing::WithParamInterface<Case> {};

TEST_P(SimulatorStoringTest, DoesAsItIsToldOnTheCommandLine) {
    Start(GetParam().m_strOptions);
    EXPECT_TRUE(
        m_objSimulator.WaitForLine("status 00, faults: " + GetParam().m_strFaults, PatienceMs));
    for (const auto& [strCommand, strAnswer] : GetParam().m_strExchanges) {
        Exchange(strCommand, strAnswer);
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, SimulatorStoringTest, ::testing::ValuesIn(Cases),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

// ---- Power

TEST_F(SimulatorStateTest, APowerCutDropsAllConnectionsAndAnswersNothing) {
    Start({"--power-cut", QString::number(5 + SetFeed.size()), "--power-back", "700"});
    CPrinterClient objOther(m_objSimulator.Port());
    ASSERT_TRUE(objOther.WaitForConnection());
    Exchange("{WS|}", Good);
    m_objClient->m_strReceived.clear();
    QElapsedTimer objTime;
    objTime.start();
    m_objClient->Send(SetFeed + "{WS|}");
    EXPECT_TRUE(m_objClient->WaitForEnd());
    EXPECT_TRUE(objOther.WaitForEnd());
    EXPECT_EQ(m_objClient->m_strReceived, "");
    EXPECT_TRUE(IsRefused());
    ASSERT_NO_FATAL_FAILURE(ComeBack());
    EXPECT_GE(objTime.elapsed(), 660);
    Exchange("{Z5;0|}", Changed0);
    EXPECT_TRUE(m_objSimulator.WaitForLine("< " + Changed0, PatienceMs));
    EXPECT_EQ(m_objSimulator.Commands().size(), 3U) << "the rest was not read";
}

TEST_F(SimulatorStateTest, WhatWasNotCompleteWhenThePowerWentIsNotCarriedOut) {
    Start({"--power-cut", QString::number(SetFeed.size() - 1), "--power-back", "10"});
    m_objClient->Send(SetFeed);
    EXPECT_TRUE(m_objClient->WaitForEnd());
    ASSERT_NO_FATAL_FAILURE(ComeBack());
    m_objClient->Send("}");
    Exchange("{Z5;0|}", Default0);
}

TEST_F(SimulatorStateTest, APowerCutForgetsTheSettingsWhenToldSo) {
    Start({"--power-cut", QString::number(SetFeed.size() + 7), "--power-back", "10", "--forget"});
    Exchange(SetFeed, Good);
    m_objClient->Send("{Z5;0|}");
    EXPECT_TRUE(m_objClient->WaitForEnd());
    ASSERT_NO_FATAL_FAILURE(ComeBack());
    Exchange("{Z5;0|}", Default0);
    Exchange(SetFeed, Good);
    Exchange("{Z5;0|}", Changed0);
}

TEST_F(SimulatorStateTest, ThePowerMayNeverComeBack) {
    Start({"--power-cut", "5", "--power-back", "never"});
    m_objClient->Send("{WS|}");
    EXPECT_TRUE(m_objClient->WaitForEnd());
    EXPECT_TRUE(m_objSimulator.WaitForLine("! power off", PatienceMs));
    EXPECT_TRUE(IsRefused());
    CSimulatorProcess::WaitUntil([] { return false; }, 1300);
    EXPECT_TRUE(IsRefused());
    EXPECT_EQ(m_objSimulator.Stop(), 0);
}

#ifdef Q_OS_UNIX

TEST_F(SimulatorStateTest, ThePowerGoesForAWhileWhenAsked) {
    for (const bool bForget : {false, true}) {
        CSimulatorProcess objSimulator;
        ASSERT_TRUE(objSimulator.Start(QStringList{"--power-back", "300"} +
                                       (bForget ? QStringList{"--forget"} : QStringList())));
        CPrinterClient objClient(objSimulator.Port());
        EXPECT_EQ(objClient.Ask(SetFeed, Status), Good);
        objSimulator.PowerCycle();
        EXPECT_TRUE(objClient.WaitForEnd());
        EXPECT_TRUE(CPrinterClient::IsRefused("127.0.0.1", objSimulator.Port()));
        ASSERT_TRUE(objSimulator.WaitForLine("! power on", PatienceMs));
        CPrinterClient objNext(objSimulator.Port());
        EXPECT_EQ(objNext.Ask("{Z5;0|}", Default0.size()), bForget ? Default0 : Changed0);
    }
}

TEST_F(SimulatorStateTest, OnlyTheFaultyOnesLoseTheirPower) {
    Start({"--printers", "2", "--faulty", "2", "--power-back", "never"});
    m_objSimulator.PowerCycle();
    ASSERT_TRUE(m_objSimulator.WaitForLine("! power off", PatienceMs));
    EXPECT_TRUE(IsRefused("127.0.0.2"));
    Exchange("{WS|}", Good);
}

#endif

// ---- The place on the network

TEST_F(SimulatorStateTest, StaysWhereItIsUnlessToldOtherwise) {
    Start({});
    Exchange(MoveTo(77) + MoveToPort(1), Good + Good);
    Exchange("{WS|}", Good);
    EXPECT_TRUE(IsRefused("127.0.0.77"));
}

TEST_F(SimulatorStateTest, MovesAtOnceBehindItsAnswer) {
    Start({"--moves", "at-once"});
    CPrinterClient objOther(m_objSimulator.Port());
    ASSERT_TRUE(objOther.WaitForConnection());
    Exchange(MoveTo(77) + "{WS|}", Good);
    EXPECT_TRUE(m_objClient->WaitForEnd());
    EXPECT_TRUE(objOther.WaitForEnd());
    EXPECT_EQ(m_objClient->m_strReceived, Good) << "nothing behind the move is answered";
    EXPECT_TRUE(IsRefused());
    ASSERT_NO_FATAL_FAILURE(Connect("127.0.0.77"));
    Exchange("{Z5;3|}", "{30127000000077000000000000" + SettingsTail);
    Exchange(MoveTo(77), Good);
    Exchange("{WS|}", Good) /* where it is already it stays */;
}

TEST_F(SimulatorStateTest, ALateAnswerIsSentBeforeTheConnectionEnds) {
    Start({"--moves", "at-once", "--delay", "200"});
    Exchange(MoveTo(78), Good);
    EXPECT_TRUE(m_objClient->WaitForEnd());
    EXPECT_NO_FATAL_FAILURE(Connect("127.0.0.78"));
}

TEST_F(SimulatorStateTest, MovesWhenThePowerIsBack) {
    Start({"--moves", "after-restart", "--power-back", "10", "--power-cut",
           QString::number(MoveTo(77).size() + 10)});
    Exchange(MoveTo(77), Good);
    Exchange("{WS|}", Good);
    m_objClient->Send("{WS|}");
    EXPECT_TRUE(m_objClient->WaitForEnd());
    ASSERT_TRUE(m_objSimulator.WaitForLine("! moved to 127.0.0.77:", PatienceMs));
    EXPECT_TRUE(IsRefused());
    ASSERT_NO_FATAL_FAILURE(Connect("127.0.0.77"));
    Exchange("{WS|}", Good);
}

TEST_F(SimulatorStateTest, AMoveThatThePowerMakesItForgetIsNone) {
    Start({"--moves", "after-restart", "--forget", "--power-back", "10", "--power-cut",
           QString::number(MoveTo(77).size())});
    m_objClient->Send(MoveTo(77));
    EXPECT_TRUE(m_objClient->WaitForEnd());
    ASSERT_NO_FATAL_FAILURE(ComeBack());
    Exchange("{Z5;3|}", WithGateway("000000000000"));
}

TEST_F(SimulatorStateTest, MovesToAnotherPort) {
    CSimulatorProcess objFree;  // a port that is free once it has ended
    ASSERT_TRUE(objFree.Start());
    const std::uint16_t iPort = objFree.Port();
    Start({"--moves", "at-once"});
    objFree.Stop();
    Exchange(MoveToPort(iPort), Good);
    EXPECT_TRUE(m_objClient->WaitForEnd());
    EXPECT_TRUE(IsRefused());
    CPrinterClient objClient(iPort);
    EXPECT_EQ(objClient.Ask("{WS|}", Status), Good);
}

struct Unreachable {
    const char* m_strName;
    std::string m_strCommand;
    std::string m_strLine;
};

// clang-format off
const std::vector<Unreachable> Unreachables{
    {"address_outside", "{IP;2,192,168,010,021|}", "! moved to 192.168.10.21:"},
    {"no_such_address", "{IP;2,127,000,000,999|}", "! moved to 127.0.0.999:"},
    {"no_such_port", "{IS;1,99999|}", "! moved to 127.0.0.1:99999, not reachable there"},
    {"port_zero", "{IS;1,00000|}", "! moved to 127.0.0.1:0, not reachable there"},
    {"socket_off", "{IS;0,08000|}", ", not reachable there"},
};
// clang-format on

class SimulatorUnreachableTest : public SimulatorStateTest,
                                 public ::testing::WithParamInterface<Unreachable> {};

TEST_P(SimulatorUnreachableTest, IsAPrinterThatHasMovedToWhereNobodyCanGo) {
    Start({"--moves", "at-once"});
    Exchange(GetParam().m_strCommand, Good);
    EXPECT_TRUE(m_objClient->WaitForEnd());
    EXPECT_TRUE(m_objSimulator.WaitForLine(GetParam().m_strLine, PatienceMs));
    EXPECT_TRUE(m_objSimulator.WaitForLine("not reachable there", PatienceMs));
    EXPECT_TRUE(IsRefused());
    EXPECT_EQ(m_objSimulator.Stop(), 0);
}

INSTANTIATE_TEST_SUITE_P(Places, SimulatorUnreachableTest, ::testing::ValuesIn(Unreachables),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

}  // namespace
