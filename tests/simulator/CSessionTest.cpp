#include "simulator/CSession.h"

#include "simulator/MFaultPlan.h"
#include "tests/golden/MGolden.h"
#include "tests/simulator/MBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using MCommandKind::Kind;
using ::testing::ElementsAre;

class CLinesLog : public ISimulatorLog {
public:
    void Event(std::size_t /*p_iConnection*/, std::string_view p_strName,
               const CJsonObject& p_objDetails) override {
        m_iEventBytes += p_objDetails.Written().size();
        m_strEvents.emplace_back(p_strName);
        m_strDetails = p_objDetails.Written();
    }

    void Line(std::size_t p_iConnection, std::string_view p_strLine) override {
        m_strLines.push_back(std::to_string(p_iConnection) + " " + std::string(p_strLine));
    }

    std::vector<std::string> m_strLines;
    std::vector<std::string> m_strEvents;
    std::string m_strDetails;  // of the latest event
    std::size_t m_iEventBytes = 0;
};

class SessionTest : public ::testing::Test {
protected:
    CSession Session(const CFaultSettings& p_objFaults = {}) {
        return {++m_iSessions, m_objPrinter, p_objFaults, m_objLog};
    }

    /// Feeds p_strBytes in blocks and carries every step out.
    static std::string Exchange(CSession& p_objSession, std::string_view p_strBytes,
                                std::size_t p_iBlock = 100'000) {
        std::string strSent;
        while (!p_strBytes.empty()) {
            const std::string_view strBlock = p_strBytes.substr(0, p_iBlock);
            p_strBytes.remove_prefix(strBlock.size());
            for (const CWireStep& objStep : p_objSession.Received(MBytes::Of(strBlock))) {
                p_objSession.Sent(objStep);
                strSent += objStep.m_strBytes;
            }
        }
        return strSent;
    }

    std::size_t m_iSessions = 0;
    CPrinter m_objPrinter;
    CLinesLog m_objLog;
};

}  // namespace

TEST_F(SessionTest, AnswersTheSameHoweverTheStreamIsCut) {
    const std::string strSet =
        MGolden::With(MGolden::All(MGolden::Adjustments, &MGolden::Item::m_strOther),
                      {{"RibbonMotorDirection_B", "+"}});
    const std::string strStream =
        "x{WS|}\r\n{Z5;0|}" + strSet + "{Z5;0|}{Z5;1|}{QX|}{Z4;0|}{Z5;0|}{WT;1000,1|}";
    const std::string strExpected =
        CPrinter::StatusAnswer("00") + MGolden::Answer(0) + CPrinter::StatusAnswer("00") +
        MGolden::All(MGolden::Answer(0), &MGolden::Item::m_strOther) +
        MGolden::With(MGolden::Answer(1), {{"XCoordinateAdjustment", "055"},
                                           {"ThresholdAdjustment_R", "31"},
                                           {"ThresholdAdjustment_T", "07"}}) +
        CPrinter::StatusAnswer("06") + CPrinter::StatusAnswer("00") + MGolden::Answer(0) +
        CPrinter::StatusAnswer("00");
    for (const std::size_t iBlock :
         {std::size_t{1}, std::size_t{2}, std::size_t{7}, strStream.size()}) {
        CSession objSession = Session();
        EXPECT_EQ(Exchange(objSession, strStream, iBlock), strExpected) << "blocks of " << iBlock;
    }
}

TEST_F(SessionTest, WritesALineForEverythingThatPasses) {
    CSession objSession = Session();
    Exchange(objSession, "{Z5;2|}\r\n{QX|}");
    EXPECT_THAT(
        m_objLog.m_strLines,
        ElementsAre("1 > {Z5;2|}   read settings: Group=2 (sensor)",
                    "1 ! left out 2 bytes that are no command: <0D><0A>",
                    "1 > {QX|}   unknown command, refused: begins like no command of this printer",
                    std::string("1 < ") + MGolden::Answer(2) + "   settings of group 2, 12 bytes",
                    "1 < <01><02>060000000<03><04>   status 06 (Command Error), 13 bytes"));
}

TEST_F(SessionTest, ShowsOnlyTheBeginningOfLotsOfJunk) {
    CSession objSession = Session();
    Exchange(objSession, std::string(1000, '<'));
    ASSERT_EQ(m_objLog.m_strLines.size(), 1U);
    std::string strShown;
    for (std::size_t i = 0; i < CCommandReader::LongestShown; ++i) {
        strShown += "<3C>";
    }
    EXPECT_EQ(m_objLog.m_strLines.front(),
              "1 ! left out 1000 bytes that are no command: " + strShown + "...");
}

TEST_F(SessionTest, TellsOfEndlessJunkTogetherOnceItHasComeAHundredTimes) {
    CSession objSession = Session();
    const std::size_t iMost = CSession::MostLeftOut;
    Exchange(objSession, std::string(iMost, 'x'), 1);
    EXPECT_EQ(m_objLog.m_strLines.size(), iMost);
    Exchange(objSession, std::string(iMost - 1, 'x'), 1);
    EXPECT_EQ(m_objLog.m_strLines.size(), iMost);
    Exchange(objSession, "yz");
    ASSERT_EQ(m_objLog.m_strLines.size(), iMost + 1);
    EXPECT_EQ(m_objLog.m_strLines.back(), "1 ! left out 101 bytes that are no command: yz...");
    EXPECT_EQ(m_objLog.m_strEvents.back(), "left-out");
    EXPECT_EQ(m_objLog.m_strDetails, "{\"bytes\": \"yz\", \"count\": 101}");

    Exchange(objSession, std::string(1'000'000, 'x'), 10);
    EXPECT_EQ(m_objLog.m_strLines.size(), iMost + 1 + 8);  // 400 times, 800, ... up to 51,200
    EXPECT_EQ(Exchange(objSession, "{WS|}"), CPrinter::StatusAnswer("00"));
    EXPECT_EQ(m_objLog.m_strLines.size(), iMost + 1 + 8 + 2) << "commands are told all the same";
}

TEST_F(SessionTest, TellsOnlySoMuchOfOneConnection) {
    CSession objSession = Session();
    const std::string strUnknown = "{" + std::string(250, '\xFF') + "|}";
    const auto fnTold = [this] {
        std::size_t iBytes = m_objLog.m_iEventBytes;
        for (const std::string& strLine : m_objLog.m_strLines) {
            iBytes += strLine.size();
        }
        return iBytes;
    };
    const auto fnIsFull = [this] {
        return !m_objLog.m_strEvents.empty() && m_objLog.m_strEvents.back() == "log-full";
    };
    std::size_t iCommands = 0;
    for (; !fnIsFull() && iCommands < 100'000; ++iCommands) {
        Exchange(objSession, strUnknown);
    }
    EXPECT_GT(fnTold(), CSession::MostTold / 4 * 3);
    EXPECT_LE(fnTold(), CSession::MostTold);
    EXPECT_EQ(m_objLog.m_strLines.back(),
              "1 ! the log of this connection is full: what passes from now on is not told");

    const std::size_t iLines = m_objLog.m_strLines.size();
    EXPECT_EQ(Exchange(objSession, strUnknown + "junk{WS|}").size(), 26U);
    EXPECT_EQ(m_objPrinter.Commands(Kind::Unknown).m_iRefused, iCommands + 1);
    EXPECT_EQ(m_objLog.m_strLines.size(), iLines);
    objSession.Note("connection ended");
    EXPECT_EQ(m_objLog.m_strLines.back(), "1 connection ended");

    CSession objNext = Session();
    Exchange(objNext, "{WS|}");
    EXPECT_EQ(m_objLog.m_strLines.size(), iLines + 3) << "the log of another connection is its own";
}

TEST_F(SessionTest, SharesThePrinterWithOtherSessions) {
    CSession objFirst = Session();
    CSession objSecond = Session();
    Exchange(objFirst, "{Z5;");
    Exchange(objSecond, MGolden::With(MGolden::Adjustments,
                                      {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}}));
    EXPECT_EQ(
        Exchange(objFirst, "0|}"),
        MGolden::With(MGolden::Answer(0), {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}}));
    EXPECT_EQ(m_objPrinter.Commands(Kind::SetAdjustments), (CPrinter::Count{1, 0}));
    EXPECT_EQ(m_objLog.m_strLines.back().substr(0, 3), "1 <");
    EXPECT_EQ(m_objLog.m_strLines.front().substr(0, 3), "2 >");
}

TEST_F(SessionTest, ClosesBehindTheLastAnswerAndHearsNothingAfterwards) {
    CFaultSettings objFaults;
    objFaults.m_iCloseAfter = 2;
    CSession objSession = Session(objFaults);
    EXPECT_TRUE(objSession.Connected().empty());
    const auto objSteps = objSession.Received(MBytes::Of("{WS|}{Z5;2|}{WS|}"));
    ASSERT_EQ(objSteps.size(), 2U);
    EXPECT_FALSE(objSteps[0].m_bClose);
    EXPECT_TRUE(objSteps[1].m_bClose);
    EXPECT_EQ(objSteps[1].m_strBytes, MGolden::Answer(2));
    EXPECT_TRUE(objSession.Received(MBytes::Of("{WS|}")).empty());
    EXPECT_EQ(m_objPrinter.Commands(Kind::Status), (CPrinter::Count{1, 0}));

    CSession objNext = Session(objFaults);
    EXPECT_FALSE(objNext.Received(MBytes::Of("{WS|}")).at(0).m_bClose) << "counts anew";
}

TEST_F(SessionTest, ClosesAtOnceWhenToldTo) {
    CFaultSettings objFaults;
    objFaults.m_iCloseAfter = 0;
    CSession objSession = Session(objFaults);
    const auto objSteps = objSession.Connected();
    ASSERT_EQ(objSteps.size(), 1U);
    objSession.Sent(objSteps.front());
    EXPECT_TRUE(objSession.Received(MBytes::Of("{WS|}")).empty());
    EXPECT_THAT(m_objLog.m_strLines, ElementsAre("1 ! connection closed on purpose"));
}

TEST_F(SessionTest, CarriesCommandsOutWhileSilent) {
    CFaultSettings objFaults;
    objFaults.m_bSilent = true;
    CSession objSession = Session(objFaults);
    EXPECT_EQ(Exchange(objSession, "{IS;0,00515|}"), "");
    EXPECT_EQ(m_objPrinter.Items().m_objSocketPortNumber->GetValueString(), "00515");
    EXPECT_THAT(m_objLog.m_strLines,
                ElementsAre("1 > {IS;0,00515|}   set socket port: SocketPortSetting=0, "
                            "SocketPortNumber=00515",
                            "1 ! no answer"));
}

TEST_F(SessionTest, TellsOfEachPieceAsItIsSent) {
    CFaultSettings objFaults;
    objFaults.m_iPieces = 7;
    CSession objSession = Session(objFaults);
    Exchange(objSession, "{Z5;2|}");
    EXPECT_THAT(m_objLog.m_strLines,
                ElementsAre("1 > {Z5;2|}   read settings: Group=2 (sensor)",
                            "1 < {200000   settings of group 2, piece 1 of 2, 7 bytes",
                            "1 < 000|}   settings of group 2, piece 2 of 2, 5 bytes"));
}

TEST_F(SessionTest, SurvivesAFloodOfEveryByteAndStillAnswers) {
    std::string strFlood;
    unsigned iState = 1;
    while (strFlood.size() < 200'000) {  // the same bytes in every run
        iState = iState * 1'664'525U + 1'013'904'223U;
        strFlood += static_cast<char>(iState >> 24U);
        strFlood += iState % 97 == 0 ? "{Z2;1," : iState % 89 == 0 ? "|}" : "";
    }
    CSession objSession = Session();
    Exchange(objSession, strFlood, 512);
    const auto objRefused = m_objPrinter.Commands(Kind::SetParameters).m_iRefused;
    EXPECT_GT(objRefused, 0U) << "the flood must reach the printer's rules";
    Exchange(objSession, "|}");
    EXPECT_EQ(Exchange(objSession, "{WS|}"), CPrinter::StatusAnswer("00"));
}
