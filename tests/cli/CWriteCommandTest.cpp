#include "tests/cli/CWriteFixture.h"

#include <gmock/gmock.h>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

class CWriteCommandTest : public CWriteFixture {};

TEST_F(CWriteCommandTest, ChangesReadsBackAndTells) {
    const Ran objRan = Write({"feed-adj=-1.5", "cut-adj=0"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(Held("feed-adj"), "-1.5");
    EXPECT_EQ(objRan.m_objJson["changed"], true);
    EXPECT_EQ(objRan.m_objJson["before"]["feed-adj"], 0.0);
    EXPECT_EQ(objRan.m_objJson["after"]["feed-adj"], -1.5);
    EXPECT_EQ(objRan.m_objJson["results"], Json({{"feed-adj", "changed"}, {"cut-adj", "same"}}));
    EXPECT_EQ(objRan.m_objJson["plan"][0]["command"], "{Z2;2,");
    EXPECT_EQ(objRan.m_objJson["plan"][0]["settings"],
              Json({{"feed-adj", {{"from", 0.0}, {"to", -1.5}}}}));
    EXPECT_EQ(objRan.m_objJson["journal"], nullptr);
    EXPECT_THAT(m_objModel.Sets(), SizeIs(1));
}

TEST_F(CWriteCommandTest, TheSameASecondTimeSendsNothingThatSets) {
    const Arguments strWords{"speed=19200bps", "stop-bit=1bit", "feed-adj=-1.5"};
    ASSERT_EQ(Write(strWords).m_iCode, 0);
    m_objModel.m_strCommands.clear();
    const Ran objRan = Write(strWords);
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["changed"], false);
    EXPECT_EQ(objRan.m_objJson["end"], "unchanged");
    EXPECT_THAT(m_objModel.Sets(), IsEmpty());
    EXPECT_EQ(objRan.m_objJson["results"]["stop-bit"], "unverifiable");
}

TEST_F(CWriteCommandTest, PeopleSeeATable) {
    EXPECT_EQ(Run({"write", "lan:printer", "feed-adj=-1.5"}).m_strOut,
              "NAME      BEFORE  AFTER  RESULT\n"
              "feed-adj  0.0     -1.5   changed\n");
    EXPECT_EQ(Run({"write", "lan:printer", "feed-adj=2", "cut-adj=0", "--check"}).m_strOut,
              "NAME      BEFORE  WOULD BE  RESULT\n"
              "feed-adj  -1.5    2.0       to be changed\n"
              "cut-adj   0.0     0.0       same\n");
    EXPECT_EQ(Run({"write", "lan:printer", "feed-adj=-1.5"}).m_strOut,
              "NAME      BEFORE  AFTER  RESULT\n"
              "feed-adj  -1.5    -1.5   same\n"
              "Nothing had to be changed\n");
}

TEST_F(CWriteCommandTest, EverythingThatIsWrongIsToldAtOnceAndNothingSent) {
    const Ran objRan = Write({"kb-if=OFF", "country=1", "foo=1", "feed-adj=200", "speed",
                              "cut-adj=1", "cut-adj=2", "--stop-bit-is", "3bits"});
    EXPECT_EQ(objRan.m_iCode, 2);
    std::vector<std::string> strSettings;
    for (const Json& objProblem : objRan.m_objJson["problems"]) {
        strSettings.push_back(objProblem["setting"]);
        EXPECT_TRUE(Has(objRan.m_objJson["error"]["cause"], objProblem["reason"]));
    }
    EXPECT_THAT(strSettings,
                ElementsAre("kb-if", "country", "foo", "feed-adj", "speed", "cut-adj", "stop-bit"));
    EXPECT_THAT(m_objModel.m_strCommands, IsEmpty());
    EXPECT_EQ(m_objModel.m_iCalls, 0);
}

TEST_F(CWriteCommandTest, WhatIsNoCommandLineSendsNothing) {
    const std::vector<Arguments> Wrong{
        {},
        {"stop-bit=1bit"},  // nobody knows whether it has to be changed
        {"feed-adj=1", "--pause", "11"},
        {"feed-adj=1", "--reach", "-1"},
        {"feed-adj=1", "--file", TestFile("there-is-none.json")},
        {"feed-adj=1", "--if-unchanged", TestFile("there-is-none.json")},
        {"--file", "settings.txt"},
    };
    for (const Arguments& strWords : Wrong) {
        EXPECT_EQ(Write(strWords).m_iCode, 2) << ::testing::PrintToString(strWords);
        EXPECT_EQ(m_objModel.m_iCalls, 0);
    }
}

TEST_F(CWriteCommandTest, AFileIsTakenButForWhatIsOnlyReported) {
    const std::string strFile = Make("shop.json", R"({"varden": 1, "settings":
        {"feed-adj": 2.5, "kb-if": "KB80", "cut-adj": 1, "country": 3}})");
    const Ran objRan = Write({"--file", strFile, "cut-adj=-1"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(Held("feed-adj"), "2.5");
    EXPECT_EQ(Held("cut-adj"), "-1.0");
    EXPECT_EQ(Held("kb-if"), "OFF");
    EXPECT_EQ(objRan.m_objJson["left_out"], Json({"country", "kb-if"}));
}

TEST_F(CWriteCommandTest, CheckTellsThePlanAndChangesNothing) {
    const Ran objRan = Write({"feed-adj=-1.5", "--check"});
    EXPECT_EQ(objRan.m_iCode, 4);
    EXPECT_EQ(objRan.m_objJson["end"], "would-change");
    EXPECT_EQ(objRan.m_objJson["after"]["feed-adj"], -1.5);
    EXPECT_THAT(m_objModel.Sets(), IsEmpty());
    EXPECT_EQ(Write({"feed-adj=0", "--check"}).m_iCode, 0);
}

TEST_F(CWriteCommandTest, WhatTravelsAlongAndIsNotReportedHasToBeTold) {
    const Ran objRan = Write({"font-code=PC-852"});
    EXPECT_EQ(objRan.m_iCode, 1);
    EXPECT_THAT(std::string(objRan.m_objJson["error"]["what"]), StartsWith("stop-bit"));
    EXPECT_THAT(m_objModel.Sets(), IsEmpty());
    Hold("stop-bit", "2bits");
    const Ran objGiven = Write({"font-code=PC-852", "--stop-bit-is", "2bits"});
    EXPECT_EQ(objGiven.m_iCode, 0);
    EXPECT_EQ(Held("stop-bit"), "2bits");
    EXPECT_EQ(objGiven.m_objJson["results"]["stop-bit"], "unverifiable");
    EXPECT_EQ(Write({"font-code=PC-857", "stop-bit=1bit"}).m_iCode, 0);
    EXPECT_EQ(Held("stop-bit"), "1bit");
}

TEST_F(CWriteCommandTest, WhatTheLinkStandsOnIsChangedOnlyWhenAllowed) {
    const Arguments strWords{"ip-address=10.1.2.3", "socket-port=8001", "feed-adj=1"};
    const Ran objRefused = Write(strWords);
    EXPECT_EQ(objRefused.m_iCode, 1);
    EXPECT_EQ(objRefused.m_objJson["error"]["cause"], "ip-address, socket-port");
    EXPECT_THAT(m_objModel.Sets(), IsEmpty());
    Arguments strAllowed = strWords;
    strAllowed.emplace_back("--allow-link-change");
    const Ran objRan = Write(strAllowed);
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["moved_to"], "lan:10.1.2.3:8001");
    EXPECT_EQ(Held("ip-address"), "10.1.2.3");
    // Those that cut the link come last.
    EXPECT_THAT(m_objModel.Sets(),
                ElementsAre(StartsWith("{Z2;2,"), StartsWith("{IS;"), StartsWith("{IP;2,")));
}

TEST_F(CWriteCommandTest, NobodyIsPushedFromHisAddress) {
    m_objModel.m_bSomebodyElse = true;
    const Ran objRan = Write({"ip-address=10.1.2.3", "--allow-link-change"});
    EXPECT_EQ(objRan.m_iCode, 1);
    EXPECT_TRUE(Has(objRan.m_objJson["error"]["what"], "Somebody is already"));
    EXPECT_THAT(m_objModel.Sets(), IsEmpty());
}

TEST_F(CWriteCommandTest, APrinterThatIsAnotherOrOtherIsLeftAlone) {
    const std::string strFile =
        Make("was.json", R"({"varden": 1, "settings": {"feed-adj": 0, "dhcp-host-name": "hall"}})");
    const Ran objRan = Write({"feed-adj=1", "--if-unchanged", strFile});
    EXPECT_EQ(objRan.m_iCode, 1);
    EXPECT_EQ(objRan.m_objJson["error"]["cause"], "dhcp-host-name differ");
    EXPECT_EQ(Write({"feed-adj=1", "--expect-host", "hall"}).m_iCode, 1);
    EXPECT_THAT(m_objModel.Sets(), IsEmpty());
    Hold("dhcp-host-name", "hall");
    EXPECT_EQ(Write({"feed-adj=1", "--if-unchanged", strFile, "--expect-host", "hall"}).m_iCode, 0);
}

TEST_F(CWriteCommandTest, APrinterThatIsNotReadyIsLeftAlone) {
    m_objModel.m_objPrinter.SetStatus("15");
    const Ran objRan = Write({"feed-adj=1"});
    EXPECT_EQ(objRan.m_iCode, 1);
    EXPECT_EQ(objRan.m_objJson["error"]["cause"], "it reports 15 Head Open Error");
    EXPECT_THAT(m_objModel.Sets(), IsEmpty());
}

TEST_F(CWriteCommandTest, ALinkThatFailsAtTheQuestionWhetherItIsReadyIsTold) {
    for (const Mishap iMishap : {Mishap::Unreached, Mishap::Unheard}) {
        m_objModel.m_iMishaps[m_objModel.m_iCalls + 2] = iMishap;
        const Ran objRan = Write({"feed-adj=1"});
        EXPECT_EQ(objRan.m_iCode, 1);
        EXPECT_EQ(objRan.m_objJson["end"], "not-begun");
        EXPECT_EQ(objRan.m_objJson["error"]["what"], "No answer from lan:printer");
        EXPECT_TRUE(m_objModel.Sets().empty());
    }
}

TEST_F(CWriteCommandTest, WhatCannotBeUnderstoodIsNotCalledChanged) {
    m_objModel.m_fnBeforeCall = [this] {
        const bool bGarbled = m_objModel.m_iCalls >= 4;
        m_objModel.m_objPrinter.Items().m_objLanSetting->SetValue(bGarbled ? "7" : "0");
    };
    const Ran objRan = Write({"feed-adj=1"});
    EXPECT_EQ(objRan.m_iCode, 5);
    EXPECT_EQ(objRan.m_objJson["results"], Json({{"feed-adj", "changed"}}));
    EXPECT_EQ(objRan.m_objJson["error"]["cause"],
              "what it told when it was read back is none of the values of lan");
    EXPECT_FALSE(Has(objRan.m_objJson["error"]["hint"], "when that is as it should be"));
}

TEST_F(CWriteCommandTest, ARefusalUndoesWhatWasSentBefore) {
    CStateFaults objFaults;
    objFaults.m_strRefused = {"{Z2;2,"};
    m_objModel.m_objPrinter.SetFaults(objFaults);
    const Ran objRan =
        Write({"font-code=PC-852", "feed-adj=1", "cut-adj=0", "--stop-bit-is", "1bit"});
    EXPECT_EQ(objRan.m_iCode, 1);
    EXPECT_EQ(Held("font-code"), "PC-850");
    EXPECT_EQ(objRan.m_objJson["end"], "undone");
    EXPECT_EQ(objRan.m_objJson["results"], Json({{"feed-adj", "refused"},
                                                 {"cut-adj", "same"},
                                                 {"font-code", "restored"},
                                                 {"stop-bit", "unverifiable"}}));
    EXPECT_EQ(objRan.m_objJson["error"]["cause"],
              "the printer has refused a command with the status 06 Command Error");
    EXPECT_EQ(objRan.m_objJson["journal"], nullptr);
}

TEST_F(CWriteCommandTest, AnErrorBehindACommandIsNoRefusal) {
    m_objModel.m_iMishaps[3] = Mishap::Troubled;
    const Ran objRan = Write({"feed-adj=1"});
    EXPECT_EQ(objRan.m_iCode, 1);
    EXPECT_EQ(objRan.m_objJson["results"], Json({{"feed-adj", "restored"}}));
    EXPECT_EQ(objRan.m_objJson["error"]["cause"],
              "the printer has answered a command with the status 11 Paper JAM");
}

TEST_F(CWriteCommandTest, AnotherStopBitThatCannotBeVerifiedCallsAPerson) {
    m_objModel.m_iMishaps[3] = Mishap::Unanswered;  // the first command
    const Ran objRan = Write({"font-code=PC-852", "stop-bit=2bits"});
    EXPECT_EQ(objRan.m_iCode, 5);
    EXPECT_TRUE(Has(objRan.m_objJson["error"]["cause"], "stop-bit"));
    EXPECT_NE(objRan.m_objJson["journal"], nullptr);
}

TEST_F(CWriteCommandTest, WhatIsCarriedOutLateIsUndoneToo) {
    CStateFaults objFaults;
    objFaults.m_strRefused = {"{IP;3"};
    m_objModel.m_objPrinter.SetFaults(objFaults);
    m_objModel.m_iMishaps[3] = Mishap::Late;
    const Ran objRan = Write({"feed-adj=-1.5", "default-gateway=10.0.0.9", "--allow-link-change"});
    EXPECT_EQ(objRan.m_iCode, 1);
    m_objModel.Settled();
    EXPECT_EQ(Held("feed-adj"), "0.0");
}

TEST_F(CWriteCommandTest, AStopBitThatHasNotToBeSentIsToldSo) {
    EXPECT_EQ(Write({"feed-adj=0", "stop-bit=2bits"}).m_iCode, 2);
    const Ran objRan = Run({"write", "lan:printer", "speed=9600bps", "stop-bit=2bits"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_TRUE(Has(objRan.m_strError, "stop-bit is not sent"));
    EXPECT_EQ(Write({"speed=9600bps", "stop-bit=2bits", "--stop-bit-is", "1bit"}).m_iCode, 0);
    EXPECT_EQ(Held("stop-bit"), "2bits");
}

TEST_F(CWriteCommandTest, AFileThatReadHasSavedTellsWhetherItIsUnchanged) {
    const std::string strFile = m_objFolder.Path("snapshot.json");
    ASSERT_EQ(Run({"read", "lan:printer", "--save", strFile}).m_iCode, 0);
    EXPECT_EQ(Write({"feed-adj=1", "--if-unchanged", strFile}).m_iCode, 0);
    EXPECT_EQ(Write({"feed-adj=2", "--if-unchanged", strFile}).m_iCode, 1);
}

TEST_F(CWriteCommandTest, TheSocketCanBeSwitchedOffOverItself) {
    m_objModel.m_bMoves = false;
    const Ran objRan = Write({"socket=OFF", "--allow-link-change"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(Held("socket"), "OFF");
}

TEST_F(CWriteCommandTest, AHostNameIsComparedInThePrintersOwnBytes) {
    m_objModel.m_objPrinter.Items().m_objDhcpClientHost->SetValue(std::string("h\xE4llen"));
    const Ran objRan = Write({"feed-adj=1", "--expect-host", "hall"});
    EXPECT_EQ(objRan.m_iCode, 1);
    EXPECT_TRUE(Has(objRan.m_objJson["error"]["cause"], "h\u00E4llen"));
    EXPECT_EQ(Write({"feed-adj=1", "--expect-host", "h\u00E4llen"}).m_iCode, 0);
}

TEST_F(CWriteCommandTest, WhatIsWrongInFileAndWordsIsToldTogether) {
    const std::string strFile = Make("bad.json", "{");
    const Ran objRan = Write({"bogus=1", "--file", strFile});
    EXPECT_EQ(objRan.m_iCode, 2);
    EXPECT_EQ(objRan.m_objJson["problems"].size(), 2U);
}

TEST_F(CWriteCommandTest, AMovedPrinterIsTheSamePrinter) {
    for (int iCall = 4; iCall < 200; ++iCall) {
        m_objModel.m_iMishaps[iCall] = Mishap::Unreached;
    }
    ASSERT_EQ(Write({"ip-address=10.1.2.3", "--allow-link-change", "--reach", "3"}).m_iCode, 5);
    m_objModel.m_iMishaps.clear();
    EXPECT_EQ(RunJson({"write", "lan:10.1.2.3", "feed-adj=1"}).m_iCode, 5);
    EXPECT_EQ(RunJson({"maintain", "lan:10.1.2.3", "ram-clear", "mode=mante-cnt", "--yes"}).m_iCode,
              5);
}

TEST_F(CWriteCommandTest, ASettingThatKeepsItsValueIsAMismatch) {
    CStateFaults objFaults;
    objFaults.m_strStuck = {"FeedAdjustment"};
    m_objModel.m_objPrinter.SetFaults(objFaults);
    const Ran objRan = Write({"feed-adj=1", "cut-adj=1"});
    EXPECT_EQ(objRan.m_iCode, 1);
    EXPECT_EQ(objRan.m_objJson["results"],
              Json({{"feed-adj", "mismatch"}, {"cut-adj", "restored"}}));
}

TEST_F(CWriteCommandTest, WhatCouldNotBeUndoneCallsAPersonAndBlocksTheNextChange) {
    const Ran objRan = BreakDown({"feed-adj=1"});
    EXPECT_EQ(objRan.m_iCode, 5);
    EXPECT_EQ(objRan.m_objJson["end"], "person-needed");
    EXPECT_EQ(objRan.m_objJson["results"]["feed-adj"], "lost");
    const std::string strJournal = objRan.m_objJson["journal"];
    EXPECT_TRUE(Has(objRan.m_objJson["error"]["hint"], strJournal));
    EXPECT_TRUE(Has(objRan.m_objJson["error"]["hint"], "varden recover lan:printer"));
    const int iCalls = m_objModel.m_iCalls;
    const Ran objNext = Write({"feed-adj=2"});
    EXPECT_EQ(objNext.m_iCode, 5);
    EXPECT_TRUE(Has(objNext.m_objJson["error"]["cause"], strJournal));
    EXPECT_EQ(m_objModel.m_iCalls, iCalls);
}

TEST_F(CWriteCommandTest, AMaintenanceFunctionHeedsTheJournalsOfTheFolderThatIsNamed) {
    const std::string strFolder = m_objFolder.Path("elsewhere");
    ASSERT_EQ(BreakDown({"feed-adj=1", "--state", strFolder}).m_iCode, 5);
    const int iCalls = m_objModel.m_iCalls;
    const Ran objRan = RunJson(
        {"maintain", "lan:printer", "ram-clear", "mode=mante-cnt", "--yes", "--state", strFolder});
    EXPECT_EQ(objRan.m_iCode, 5);
    EXPECT_TRUE(Has(objRan.m_objJson["error"]["cause"], strFolder));
    EXPECT_EQ(m_objModel.m_iCalls, iCalls);
}

TEST_F(CWriteCommandTest, OneProgramAtATimeChangesAPrinter) {
    CStateFolder objOther(m_objFolder.Path("state"));
    std::string strWhy;
    bool bHeld = false;
    const auto objLock = objOther.Lock("lan_printer", "somebody else", strWhy, bHeld);
    ASSERT_TRUE(objLock);
    const Ran objRan = Write({"feed-adj=1"});
    EXPECT_EQ(objRan.m_iCode, 3);
    EXPECT_TRUE(Has(objRan.m_objJson["error"]["cause"], "somebody else"));
    EXPECT_EQ(m_objModel.m_iCalls, 0);
}

TEST_F(CWriteCommandTest, WithoutAPlaceForTheJournalNothingIsSent) {
    const std::string strFile = Make("no-folder", "");
    const Ran objRan = Write({"feed-adj=1", "--state", strFile + "/below"});
    EXPECT_EQ(objRan.m_iCode, 1);
    EXPECT_THAT(m_objModel.Sets(), IsEmpty());
}

TEST_F(CWriteCommandTest, APrinterThatCannotBeReadIsNotChanged) {
    m_objModel.m_iMishaps[0] = Mishap::Unreached;
    EXPECT_EQ(Write({"feed-adj=1"}).m_iCode, 1);
    m_objModel.m_iMishaps.clear();
    m_objModel.m_iMishaps[m_objModel.m_iCalls + 1] = Mishap::Unheard;  // the second reading
    EXPECT_EQ(Write({"feed-adj=1"}).m_iCode, 1);
    EXPECT_THAT(m_objModel.Sets(), IsEmpty());
}

TEST_F(CWriteCommandTest, ReadingsThatNeverAgreeAreNoGroundForAChange) {
    int iTurn = 0;
    m_objModel.m_fnBeforeCall = [&] { Hold("feed-adj", ++iTurn % 2 == 0 ? "1" : "2"); };
    const Ran objRan = Write({"feed-adj=3"});
    EXPECT_EQ(objRan.m_iCode, 1);
    EXPECT_TRUE(Has(objRan.m_objJson["error"]["what"], "differs from one reading to the next"));
    EXPECT_THAT(m_objModel.Sets(), IsEmpty());
}

TEST_F(CWriteCommandTest, ALineThatChangesIsFoundAgainInItsNewFormat) {
    m_objModel.~CModelPrinter();
    new (&m_objModel) CModelPrinter(MSettings::Cuts::Serial);
    m_strTarget = "com:/dev/ttyS0";
    EXPECT_EQ(Write({"speed=19200bps", "stop-bit=1bit"}).m_iCode, 1);
    const Ran objRan = Write({"speed=19200bps", "stop-bit=1bit", "--allow-link-change"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["moved_to"], "com:/dev/ttyS0,19200,E,8,1");
}

TEST_F(CWriteCommandTest, CtrlCNamesTheJournal) {
    m_objModel.m_fnBeforeCall = [this] {
        if (m_objModel.m_iCalls == 3) {
            EXPECT_TRUE(Has(m_objInterrupt.m_strWords, "varden recover lan:printer"));
            EXPECT_TRUE(Has(m_objInterrupt.m_strNote, "varden recover lan:printer"));
        }
    };
    EXPECT_EQ(Write({"feed-adj=1"}).m_iCode, 0);
    EXPECT_GT(m_objModel.m_iCalls, 3);
    EXPECT_FALSE(Has(m_objInterrupt.m_strNote, "recover"));
}

}  // namespace
