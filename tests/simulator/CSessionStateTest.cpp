#include "simulator/CSession.h"
#include "tests/simulator/MBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;
using Moves = CStateFaults::Moves;

class CEventsLog : public ISimulatorLog {
public:
    void Line(std::size_t p_iConnection, std::string_view p_strLine) override {
        m_strLines.push_back(std::to_string(p_iConnection) + " " + std::string(p_strLine));
    }
    void Event(std::size_t p_iConnection, std::string_view p_strName,
               const CJsonObject& p_objDetails) override {
        m_strEvents.push_back(std::to_string(p_iConnection) + " " + std::string(p_strName) + " " +
                              p_objDetails.Written());
    }

    std::vector<std::string> m_strLines;
    std::vector<std::string> m_strEvents;
};

class SessionStateTest : public ::testing::Test {
protected:
    CSession Session(CSession::Wire p_iWire = CSession::Wire::Network,
                     const CFaultSettings& p_objFaults = {}) {
        return {++m_iSessions, m_objPrinter, p_objFaults, m_objLog, p_iWire};
    }

    static std::vector<CWireStep> Receive(CSession& p_objSession, std::string_view p_strBytes) {
        return p_objSession.Received(MBytes::Of(p_strBytes));
    }

    void SetFaults(const std::function<void(CStateFaults&)>& p_fnSet) {
        CStateFaults objFaults;
        p_fnSet(objFaults);
        m_objPrinter.SetFaults(objFaults);
    }

    std::size_t m_iSessions = 0;
    CPrinter m_objPrinter;
    CEventsLog m_objLog;
};

TEST_F(SessionStateTest, TellsAnEventForEverythingThatPasses) {
    CSession objSession = Session();
    for (const CWireStep& objStep : Receive(objSession, "\n{WS|}{QX|}")) {
        objSession.Sent(objStep);
    }
    const std::string strAnswered = "1 answered {\"bytes\": \"\\u0001\\u0002";
    EXPECT_THAT(
        m_objLog.m_strEvents,
        ElementsAre("1 left-out {\"bytes\": \"\\u000a\", \"count\": 1}",
                    "1 received {\"command\": \"{WS|}\", \"kind\": \"status request\", "
                    "\"accepted\": true}",
                    "1 received {\"command\": \"{QX|}\", \"kind\": \"unknown command\", "
                    "\"accepted\": false}",
                    strAnswered + "000000000\\u0003\\u0004\", \"note\": \"status 00 (ON LINE)\"}",
                    strAnswered +
                        "060000000\\u0003\\u0004\", \"note\": \"status 06 (Command Error)\"}"));
}

TEST_F(SessionStateTest, TellsWhatGoesWrongOnPurpose) {
    SetFaults([](CStateFaults& p_obj) {
        p_obj.m_strRefused = {"{WS"};
        p_obj.m_strStuck = {"SocketPortNumber"};
        p_obj.m_iBytesKept = 2;
    });
    CFaultSettings objSilent;
    objSilent.m_bSilent = true;
    CSession objSession = Session(CSession::Wire::Network, objSilent);
    Receive(objSession, "{WS|}{IS;1,08001|}");
    EXPECT_THAT(m_objLog.m_strLines,
                ElementsAre("1 > {WS|}   status request", "1 ! refused on purpose", "1 ! no answer",
                            "1 > {IS;1,08001|}   set socket port: SocketPortSetting=1, "
                            "SocketPortNumber=08001",
                            "1 ! SocketPortNumber does not change",
                            "1 ! only 1 field stored, 2 bytes", "1 ! no answer"));
    EXPECT_EQ(m_objLog.m_strEvents.at(1),
              R"(1 fault {"what": "refused", "text": "refused on purpose"})");
    EXPECT_EQ(m_objLog.m_strEvents.at(2), R"(1 fault {"what": "silent", "text": "no answer"})");
    EXPECT_EQ(m_objLog.m_strEvents.at(4),
              R"(1 fault {"what": "unchanged", "text": "SocketPortNumber does not change"})");
    EXPECT_EQ(m_objLog.m_strEvents.at(5),
              R"(1 fault {"what": "half-stored", "text": "only 1 field stored, 2 bytes"})");
}

TEST_F(SessionStateTest, WhenThePowerIsCutWhatWasCompleteIsCarriedOutAndNothingAnswered) {
    const std::string strSet = "{IS;1,08001|}";
    struct Row {
        std::size_t m_iBytes;
        const char* m_strPort;
    };
    // One byte more, none more, one less than the command has.
    for (const Row& objRow : {Row{19, "08001"}, Row{18, "08001"}, Row{17, "08000"}}) {
        CPrinter objPrinter;
        CStateFaults objFaults;
        objFaults.m_iPowerCut = objRow.m_iBytes;
        objPrinter.SetFaults(objFaults);
        CSession objSession(1, objPrinter, {}, m_objLog);
        EXPECT_TRUE(Receive(objSession, "{WS|}" + strSet + "{WS|}").empty());
        EXPECT_FALSE(objPrinter.IsOn());
        EXPECT_EQ(objPrinter.Items().m_objSocketPortNumber->GetValueString(), objRow.m_strPort);
        EXPECT_EQ(m_objLog.m_strLines.back(), "1 ! power cut");
    }
}

TEST_F(SessionStateTest, WithoutPowerNothingIsHeardAndTheBeginningOfACommandIsForgotten) {
    SetFaults([](CStateFaults& p_obj) { p_obj.m_iPowerCut = 8; });
    CSession objSession = Session();
    EXPECT_EQ(Receive(objSession, "{WS|}").size(), 1U);
    EXPECT_TRUE(Receive(objSession, "{WS").empty());
    EXPECT_TRUE(Receive(objSession, "|}{WS|}").empty());
    m_objPrinter.PowerOn();
    EXPECT_TRUE(Receive(objSession, "|}").empty());
    EXPECT_EQ(Receive(objSession, "{WS|}").size(), 1U);
}

TEST_F(SessionStateTest, OnlyOnANetworkAPrinterThatMovesHangsUpBehindItsAnswer) {
    using Wire = CSession::Wire;
    for (const Wire iWire : {Wire::Network, Wire::Serial, Wire::Usb}) {
        const bool bNetwork = iWire == Wire::Network;
        CPrinter objPrinter;
        CStateFaults objFaults;
        objFaults.m_iMoves = Moves::AtOnce;
        objPrinter.SetFaults(objFaults);
        CSession objSession(1, objPrinter, {}, m_objLog, iWire);
        EXPECT_FALSE(Receive(objSession, "{WS|}").back().m_bClose);
        EXPECT_FALSE(objSession.IsClosing());
        const auto objSteps = Receive(objSession, "{IP;2,127,000,000,077|}{WS|}");
        EXPECT_EQ(objSteps.size(), bNetwork ? 1U : 2U);
        EXPECT_EQ(objSteps.back().m_strBytes, CPrinter::StatusAnswer("00"));
        EXPECT_EQ(objSteps.back().m_bClose, bNetwork);
        EXPECT_EQ(objSession.IsClosing(), bNetwork);
    }
}

TEST_F(SessionStateTest, ASilentPrinterThatMovesHangsUpToo) {
    SetFaults([](CStateFaults& p_obj) { p_obj.m_iMoves = Moves::AtOnce; });
    CFaultSettings objSilent;
    objSilent.m_bSilent = true;
    CSession objSession = Session(CSession::Wire::Network, objSilent);
    const auto objSteps = Receive(objSession, "{IS;1,08001|}");
    ASSERT_EQ(objSteps.size(), 1U);
    EXPECT_EQ(objSteps.front().m_strBytes, "");
    EXPECT_TRUE(objSteps.front().m_bClose);
}

}  // namespace
