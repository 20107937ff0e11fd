#include "tests/cli/CWriteFixture.h"

#include <gmock/gmock.h>

namespace {

using ::testing::IsEmpty;

class CRecoverCommandTest : public CWriteFixture {
protected:
    Ran Recover(Arguments p_strWords) {
        p_strWords.insert(p_strWords.begin(), "recover");
        return RunJson(p_strWords);
    }

    [[nodiscard]] bool IsOpen() { return !Recover({}).m_objJson["journals"].empty(); }
};

TEST_F(CRecoverCommandTest, ListsWhatIsOpen) {
    EXPECT_EQ(Run({"recover"}).m_strOut, "No change is open\n");
    EXPECT_EQ(Recover({"lan:printer"}).m_iCode, 0);
    BreakDown({"feed-adj=1"});
    const Ran objRan = Recover({});
    EXPECT_EQ(objRan.m_iCode, 0);
    ASSERT_EQ(objRan.m_objJson["journals"].size(), 1U);
    EXPECT_EQ(objRan.m_objJson["journals"][0]["target"], "lan:printer");
    EXPECT_TRUE(Has(Run({"recover"}).m_strOut, "lan:printer  20"));
}

TEST_F(CRecoverCommandTest, TellsHowThePrinterStandsAndChangesNothing) {
    BreakDown({"feed-adj=1"});
    m_objModel.m_strCommands.clear();
    const Ran objRan = Recover({"lan:printer"});
    EXPECT_EQ(objRan.m_iCode, 4);
    EXPECT_EQ(objRan.m_objJson["end"], "changed");
    EXPECT_EQ(objRan.m_objJson["before"], Json({{"feed-adj", 0.0}}));
    EXPECT_EQ(objRan.m_objJson["after"], Json({{"feed-adj", 1.0}}));
    EXPECT_EQ(objRan.m_objJson["results"], Json({{"feed-adj", "changed"}}));
    EXPECT_THAT(m_objModel.Sets(), IsEmpty());
    EXPECT_TRUE(IsOpen());
    Hold("feed-adj", "0");
    EXPECT_EQ(Recover({"lan:printer"}).m_objJson["end"], "undone");
    Hold("feed-adj", "3");
    EXPECT_EQ(Recover({"lan:printer"}).m_objJson["end"], "person-needed");
}

TEST_F(CRecoverCommandTest, BringsBackWhatWas) {
    BreakDown({"feed-adj=1"});
    ASSERT_EQ(Held("feed-adj"), "1.0");
    const Ran objRan = Recover({"lan:printer", "--restore"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(Held("feed-adj"), "0.0");
    EXPECT_EQ(objRan.m_objJson["journal"], nullptr);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Write({"feed-adj=2"}).m_iCode, 0);
}

TEST_F(CRecoverCommandTest, WhatCannotBeBroughtBackStaysOpen) {
    BreakDown({"feed-adj=1"});
    CStateFaults objFaults;
    objFaults.m_strStuck = {"FeedAdjustment"};
    m_objModel.m_objPrinter.SetFaults(objFaults);
    const Ran objRan = Recover({"lan:printer", "--restore"});
    EXPECT_EQ(objRan.m_iCode, 5);
    EXPECT_TRUE(IsOpen());
}

TEST_F(CRecoverCommandTest, KeepsThePrinterAsItIs) {
    BreakDown({"feed-adj=1"});
    m_objModel.m_strCommands.clear();
    const Ran objRan = Recover({"lan:printer", "--keep"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["end"], "changed");
    EXPECT_THAT(m_objModel.Sets(), IsEmpty());
    EXPECT_EQ(Held("feed-adj"), "1.0");
    EXPECT_FALSE(IsOpen());
}

TEST_F(CRecoverCommandTest, APrinterThatIsGoneIsKeptOnlyUnseen) {
    BreakDown({"feed-adj=1"});
    for (int iCall = 0; iCall < 1000; ++iCall) {
        m_objModel.m_iMishaps[iCall] = Mishap::Unreached;
    }
    EXPECT_EQ(Recover({"lan:printer", "--keep", "--reach", "2"}).m_iCode, 5);
    EXPECT_EQ(Recover({"lan:printer", "--reach", "2"}).m_iCode, 5);
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Recover({"lan:printer", "--keep", "--unseen", "--reach", "2"}).m_iCode, 0);
    EXPECT_FALSE(IsOpen());
}

TEST_F(CRecoverCommandTest, GoesAnotherWay) {
    BreakDown({"feed-adj=1"});
    std::vector<std::string> strTargets;
    m_objPrinters.m_fnConnect = [&](const CTarget& p_objTarget) {
        strTargets.push_back(p_objTarget.m_strText);
        return m_objModel.At({});
    };
    EXPECT_EQ(Recover({"lan:printer", "--restore", "--via", "usb"}).m_iCode, 0);
    EXPECT_EQ(Held("feed-adj"), "0.0");
    EXPECT_THAT(strTargets, ::testing::Each("usb"));
    EXPECT_FALSE(IsOpen());
}

TEST_F(CRecoverCommandTest, APrinterThatIsUnpluggedIsGivenUpByItsName) {
    BreakDown({"feed-adj=1"});
    m_objPrinters.m_fnConnect = [](const CTarget&) -> std::unique_ptr<IPrinter> {
        throw CCommandError(MExitCode::NotReachable, {"There is no printer", {}, {}, {}});
    };
    m_objPrinters.m_bUnplugged = true;
    for (const Arguments& strWords :
         {Arguments{"lan:printer", "--keep"}, {"lan:printer"}, {"lan:printer", "--restore"}}) {
        const Ran objRan = Recover(strWords);
        EXPECT_EQ(objRan.m_iCode, 5);
        EXPECT_EQ(objRan.m_objJson["end"], "person-needed");
        EXPECT_EQ(objRan.m_objJson["results"], Json({{"feed-adj", "lost"}}));
        EXPECT_TRUE(objRan.m_objJson["journal"].is_string());
        EXPECT_EQ(objRan.m_objJson["error"]["cause"],
                  "it could not be read back: There is no printer");
    }
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(Recover({"lan:printer", "--keep", "--unseen"}).m_iCode, 0);
    EXPECT_FALSE(IsOpen());
}

TEST_F(CRecoverCommandTest, AWrongNameForTheOtherWayIsTold) {
    BreakDown({"feed-adj=1"});
    m_objPrinters.m_fnConnect = [](const CTarget&) -> std::unique_ptr<IPrinter> {
        throw CCommandError(MExitCode::NotReachable,
                            {"Several printers are plugged in on USB", "usb:1-2, usb:1-3", {}, {}});
    };
    const Ran objRan = Recover({"lan:printer", "--restore", "--via", "usb"});
    EXPECT_EQ(objRan.m_iCode, 5);
    EXPECT_EQ(
        objRan.m_objJson["error"]["cause"],
        "it could not be read back: Several printers are plugged in on USB: usb:1-2, usb:1-3");
}

// What is told is no ground for giving up the one thing that knows how the printer was.
TEST_F(CRecoverCommandTest, WhatCannotBeUnderstoodIsNotSeen) {
    BreakDown({"feed-adj=1"});
    const CItemManager& objItems = m_objModel.m_objPrinter.Items();
    for (const bool bSent : {true, false}) {
        m_objModel.m_fnBeforeCall = [&objItems, bSent] {
            objItems.m_objCutPosDirection->SetValue(bSent ? "x" : "+");
            objItems.m_objLanSetting->SetValue(bSent ? "0" : "7");
        };
        const std::string strName = bSent ? "cut-adj" : "lan";
        for (const Arguments& strWords :
             {Arguments{"lan:printer"}, {"lan:printer", "--keep"}, {"lan:printer", "--restore"}}) {
            const Ran objRan = Recover(strWords);
            EXPECT_EQ(objRan.m_iCode, 5) << objRan.m_strOut;
            EXPECT_EQ(objRan.m_objJson["end"], "person-needed");
            EXPECT_EQ(objRan.m_objJson["error"]["cause"],
                      "what it told when it was read back is none of the values of " + strName);
            EXPECT_TRUE(Has(objRan.m_objJson["error"]["hint"], "the journal is "));
            Arguments strPeople = strWords;
            strPeople.insert(strPeople.begin(), "recover");
            EXPECT_FALSE(Has(Run(strPeople).m_strOut, "The printer is"));
            EXPECT_TRUE(IsOpen());
        }
    }
    EXPECT_EQ(Recover({"lan:printer", "--keep", "--unseen"}).m_iCode, 0);
    EXPECT_FALSE(IsOpen());
}

TEST_F(CRecoverCommandTest, GoesHomeFromItsNewAddress) {
    for (int iCall = 4; iCall < 200; ++iCall) {
        m_objModel.m_iMishaps[iCall] = Mishap::Unreached;
    }
    ASSERT_EQ(Write({"ip-address=10.1.2.3", "--allow-link-change", "--reach", "3"}).m_iCode, 5);
    m_objModel.m_iMishaps.clear();
    EXPECT_EQ(Recover({"lan:printer", "--restore", "--via", "lan:10.1.2.3"}).m_iCode, 0);
    EXPECT_EQ(Held("ip-address"), "192.168.10.20");
    EXPECT_FALSE(IsOpen());
}

TEST_F(CRecoverCommandTest, CtrlCNamesTheJournal) {
    BreakDown({"feed-adj=1"});
    m_objModel.m_fnBeforeCall = [this] {
        EXPECT_TRUE(Has(m_objInterrupt.m_strNote, "varden recover lan:printer"));
    };
    EXPECT_EQ(Recover({"lan:printer", "--restore"}).m_iCode, 0);
}

TEST_F(CRecoverCommandTest, WhatIsWrongReadsNothing) {
    BreakDown({"feed-adj=1"});
    const int iCalls = m_objModel.m_iCalls;
    const std::vector<Arguments> Wrong{
        {"--restore"},
        {"--via", "usb"},
        {"lan:printer", "--restore", "--keep"},
        {"lan:printer", "--unseen"},
        {"lan:printer", "--via", "nowhere"},
        {"lan:printer", "--reach", "x"},
    };
    for (const Arguments& strWords : Wrong) {
        EXPECT_EQ(Recover(strWords).m_iCode, 2) << ::testing::PrintToString(strWords);
    }
    EXPECT_EQ(m_objModel.m_iCalls, iCalls);
}

TEST_F(CRecoverCommandTest, AFileThatIsNoJournalIsAPersonsMatter) {
    BreakDown({"feed-adj=1"});
    for (const char* const strContent :
         {"", "{", "{}", R"({"varden-journal": 2})", R"({"varden-journal": 1, "target": "usb"})"}) {
        m_objFolder.Make("state/lan_printer.json", strContent);
        EXPECT_EQ(Recover({"lan:printer", "--restore"}).m_iCode, 5) << strContent;
        EXPECT_EQ(Write({"feed-adj=2"}).m_iCode, 5) << strContent;
        EXPECT_EQ(Recover({}).m_objJson["journals"][0]["target"], nullptr);
    }
}

}  // namespace
