#include "tests/golden/MGolden.h"
#include "tests/ui/faults/CFaultStage.h"
#include "tests/ui/faults/MFaultLaws.h"
#include "tests/ui/faults/MFaultPage.h"
#include "tests/ui/faults/MFaultRecord.h"
#include "tests/ui/faults/MSeeing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr std::size_t FewestCells = 2000;
constexpr int FewestOfAFlow = 15;
constexpr std::size_t Glimpse = 200;
constexpr std::size_t MostTold = 5;  // of the cells that differ

std::string File(const std::string& p_strPath) {
    std::ifstream objFile(p_strPath, std::ios::binary);
    EXPECT_TRUE(objFile) << "no file " << p_strPath;
    return {std::istreambuf_iterator<char>(objFile), {}};
}

MFaultRecord::Outcomes Recorded() {
    return MFaultRecord::FromText(File(VARDEN_FAULT_TABLE));
}

enum class Kind : std::uint8_t { Reads, Sets, Steps, Plain };
constexpr std::array<const char*, 4> KindNames{"Reads", "Sets", "Steps", "Plain"};

Kind KindOf(const MFlows::Flow& p_objFlow) {
    const std::string strButton = p_objFlow.m_strButton;
    if (strButton.ends_with("Read")) {
        return Kind::Reads;
    }
    if (strButton.ends_with("Set")) {
        return Kind::Sets;
    }
    const std::set<std::string> strSteps{"btnReflect", "btnTrans", "btnPaperEnd", "btnHeadCheck"};
    return strSteps.contains(strButton) ? Kind::Steps : Kind::Plain;
}

/// A part of the table: some flows on a link.
struct Part {
    LinkKind m_iLink;
    Kind m_iKind;
};

std::vector<Part> Parts() {
    std::vector<Part> objParts;
    for (const LinkKind iLink : MFlows::AllLinks) {
        for (const Kind iKind : {Kind::Reads, Kind::Sets, Kind::Steps, Kind::Plain}) {
            objParts.push_back({iLink, iKind});
        }
    }
    return objParts;
}

class FmMainFaultTableTest : public ::testing::TestWithParam<Part> {};

/// What is wrong with a cell, in words; empty when nothing is.
std::string Wrong(const CFaultCell& p_objCell, const CSeen& p_objSeen, const CSeen& p_objSound,
                  const MFaultRecord::Outcomes& p_strRecorded) {
    const std::string strKey = MFaultRecord::Key(p_objCell);
    std::string strWrong;
    for (const std::string& strBroken : MFaultLaws::Broken(p_objCell, p_objSeen, p_objSound)) {
        strWrong += strKey + ": " + strBroken + "\n";
    }
    const auto objRecorded = p_strRecorded.find(strKey);
    const std::string strBefore =
        objRecorded != p_strRecorded.end() ? objRecorded->second : "no such cell";
    const std::string strNow = MFaultRecord::Outcome(p_objCell, p_objSeen);
    if (strNow != strBefore) {
        strWrong +=
            strKey + "\n  in the table: " + strBefore + "\n  now:          " + strNow + "\n";
    }
    return strWrong;
}

TEST_P(FmMainFaultTableTest, EachCellKeepsTheLawsAndEndsAsTheTableSays) {
    const MFaultRecord::Outcomes strRecorded = Recorded();
    CFaultStage objStage;
    std::vector<std::string> strWrong;  // told at the end: the copies would inherit a failure
    for (const MFlows::Flow& objFlow : MFlows::Talking()) {
        if (KindOf(objFlow) != GetParam().m_iKind) {
            continue;
        }
        CSeen objSound;
        for (const CFaultCell& objCell : MFaultCells::Of(objFlow, GetParam().m_iLink)) {
            const CSeen objSeen = objStage.Play(objCell);
            objSound = objCell.m_objFault == &MFaults::All().front() ? objSeen : objSound;
            const std::string strCell = Wrong(objCell, objSeen, objSound, strRecorded);
            if (!strCell.empty()) {
                strWrong.push_back(strCell);
            }
        }
    }
    EXPECT_EQ(strWrong.size(), 0U);
    strWrong.resize(std::min(strWrong.size(), MostTold));
    for (const std::string& strCell : strWrong) {
        ADD_FAILURE() << strCell;
    }
}

INSTANTIATE_TEST_SUITE_P(, FmMainFaultTableTest, ::testing::ValuesIn(Parts()),
                         [](const auto& p_objInfo) {
                             const auto iKind = static_cast<std::size_t>(p_objInfo.param.m_iKind);
                             return std::string(MFlows::NameOf(p_objInfo.param.m_iLink)) +
                                    KindNames.at(iKind);
                         });

TEST(WindowFaultTableTest, HoldsEachCellOnceAndAllOfThem) {
    std::set<std::string> strKeys;
    std::map<std::pair<std::string, LinkKind>, int> iOfFlow;
    for (const CFaultCell& objCell : MFaultCells::All()) {
        EXPECT_TRUE(strKeys.insert(MFaultRecord::Key(objCell)).second)
            << MFaultRecord::Key(objCell);
        ++iOfFlow[{objCell.m_objFlow->m_strButton, objCell.m_iLink}];
    }
    EXPECT_GE(strKeys.size(), FewestCells);
    EXPECT_EQ(iOfFlow.size(), MFlows::Talking().size() * std::size(MFlows::AllLinks));
    for (const auto& [objFlow, iCells] : iOfFlow) {
        EXPECT_GE(iCells, FewestOfAFlow) << objFlow.first;
    }
    std::set<std::string> strRecorded;
    for (const auto& [strKey, strOutcome] : Recorded()) {
        strRecorded.insert(strKey);
    }
    EXPECT_EQ(strRecorded, strKeys);
}

TEST(WindowFaultTableTest, IsATextThatIsReadAsItWasWritten) {
    const std::string strText = File(VARDEN_FAULT_TABLE);
    const std::string strAgain = MFaultRecord::Text(MFaultRecord::FromText(strText));
    EXPECT_EQ(strAgain.size(), strText.size());
    const auto objDiffer = std::ranges::mismatch(strAgain, strText);
    EXPECT_TRUE(objDiffer.in1 == strAgain.end() && objDiffer.in2 == strText.end())
        << "differs at " << std::string(objDiffer.in2, strText.end()).substr(0, Glimpse);
    EXPECT_EQ(MFaultRecord::Part("told - | sent 1 of 1, WS | closed", "sent"), "1 of 1, WS");
    EXPECT_EQ(MFaultRecord::Part("told - | sent 1 of 1, WS", "told"), "-");
    EXPECT_EQ(MFaultRecord::Part("told - | sent 1 of 1, WS", "head"), "");
}

TEST(WindowFaultTableTest, ThePageIsPrintedFromIt) {
    const std::string strPage = File(VARDEN_FAULTS_PAGE);
    EXPECT_TRUE(MFaultPage::Replace(strPage, MFaultPage::Part(Recorded())) == strPage)
        << "write-faults prints it anew, and git diff shows what has changed";
}

TEST(WindowFaultTableTest, ThePageIsReplacedBetweenItsMarksAlone) {
    const std::string strPage = "a\n<!-- window: begin -->\nold\n<!-- window: end -->\nb\n<!-- "
                                "command line: begin -->\nc\n";
    EXPECT_EQ(MFaultPage::Replace(strPage, "new\n"),
              "a\n<!-- window: begin -->\nnew\n<!-- window: end -->\nb\n"
              "<!-- command line: begin -->\nc\n");
    EXPECT_THROW(MFaultPage::Replace("no marks", "new\n"), std::runtime_error);
}

/// The items of a command, which is like p_strGolden, whose fields are not the same.
std::vector<std::string> Unlike(const std::string& p_strGolden, const std::string& p_strSent,
                                const std::string& p_strSet) {
    std::vector<std::string> strNames;
    for (const MGolden::Slot objSlot : MGolden::Carried(p_strGolden)) {
        const std::size_t iPlace = MGolden::Place(p_strGolden, objSlot);
        const auto iLength = static_cast<std::size_t>(MGolden::Of(objSlot).m_iLength);
        if (p_strSent.substr(iPlace, iLength) != p_strSet.substr(iPlace, iLength)) {
            strNames.emplace_back(MGolden::Of(objSlot).m_strName);
        }
    }
    return strNames;
}

bool IsAnswered(const std::string& p_strName) {
    constexpr std::array iGroups{0, 1, 3, 4};
    return std::ranges::any_of(iGroups, [&](int p_iGroup) {
        return std::ranges::any_of(
            MGolden::Answers(p_iGroup), [&](const MGolden::Answered& p_objAnswered) {
                return MGolden::Of(p_objAnswered.m_objSlot).m_strName == p_strName;
            });
    });
}

/// A text is filled up with blanks when it comes from the printer, and with 0xFF when it goes
/// there.
std::string WithoutFilling(std::string p_strCommand) {
    std::erase_if(p_strCommand, [](char p_c) { return p_c == ' ' || p_c == '\xFF'; });
    return p_strCommand;
}

TEST(WindowFaultTableTest, WhatCountsAsReadIsWhatThePrinterHas) {
    CFaultStage objStage;
    const std::vector<std::string> strSent = objStage.SentBehindReading();
    const std::vector<std::string>& strSet = objStage.Settings();
    const MGolden::Texts strGolden = MGolden::SetCommands();
    ASSERT_EQ(strSent.size(), strSet.size());
    for (std::size_t i = 0; i < strGolden.size(); ++i) {
        for (const std::string& strName : Unlike(strGolden[i], strSent[i], strSet[i])) {
            EXPECT_FALSE(IsAnswered(strName)) << strName;
        }
        EXPECT_NE(strSent[i], strGolden[i]);
    }
    for (std::size_t i = strGolden.size(); i < strSent.size(); ++i) {
        EXPECT_EQ(WithoutFilling(strSent[i]), WithoutFilling(strSet[i]));
    }
}

/// A cell, and what was seen of it without a fault: each law is broken in turn.
class WindowFaultLawsTest : public ::testing::Test {
protected:
    static CFaultCell Cell(const char* p_strFault, const char* p_strButton, LinkKind p_iLink,
                           int p_iCommand = 1) {
        const auto objFault =
            std::ranges::find_if(MFaults::All(), [&](const MFaults::Fault& p_objFault) {
                return p_objFault.m_strName == p_strFault &&
                       MFlows::Has(p_objFault.m_iLinks, p_iLink);
            });
        const auto objFlow =
            std::ranges::find_if(MFlows::Talking(), [&](const MFlows::Flow& p_objFlow) {
                return std::string(p_objFlow.m_strButton) == p_strButton;
            });
        return {&*objFault, &*objFlow, p_iLink, p_iCommand};
    }

    /// A READ over the LAN whose first answer does not come.
    WindowFaultLawsTest() {
        m_objSound.m_strSent = {"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"};
        m_objSound.m_strRead = {"0", "1", "4"};
        m_objSound.m_strShown = {"0", "1", "4"};
        m_objSound.m_strParameterPage = "read";
        m_objSound.m_strPage = "as read from the printer";
        m_objSound.m_iHalfSeconds = 6;
        m_objSound.m_iTaken = 1;
        m_objSeen.m_strTold = {"beep", TimeOut};
        m_objSeen.m_strSent = {"{Z5;0|}"};
        m_objSeen.m_strPage = "READ ended at group 0: no answer (defaults, never read)";
        m_objSeen.m_iHalfSeconds = 10;
        m_objSeen.m_iTaken = 1;
        m_objSeen.SetAgain(m_objSound);
    }

    /// Another flow and another fault, of which the same is seen as without.
    void Take(const CFaultCell& p_objCell) {
        m_objCell = p_objCell;
        m_objSound = {};
        m_objSound.m_strSent = MFaultLaws::CommandsOf(p_objCell);
        m_objSound.m_iTaken = 1;
        m_objSeen = m_objSound;
        m_objSeen.SetAgain(m_objSound);
    }

    [[nodiscard]] std::vector<std::string> Broken() const {
        return MFaultLaws::Broken(m_objCell, m_objSeen, m_objSound);
    }

    void ExpectBroken(const std::string& p_strLaw) const {
        EXPECT_THAT(Broken(), Contains(HasSubstr(p_strLaw)));
    }
    void ExpectHolds() const { EXPECT_THAT(Broken(), IsEmpty()); }

    static constexpr const char* TimeOut = "box, critical, \"Failure\": Device Time Out !!";
    static constexpr const char* NotSent =
        "box, exclamation, \"Varden Setting Tool\": 'LAN' Send Error !!";
    static constexpr const char* Reset =
        "box, no icon, \"Varden Setting Tool\": Number=10054  Connection reset";

    CFaultCell m_objCell = Cell("silent", "btnRead", LinkKind::Lan);
    CSeen m_objSeen;
    CSeen m_objSound;
};

TEST_F(WindowFaultLawsTest, HoldOfAReadThatEndsAsItMust) {
    ExpectHolds();
}

TEST_F(WindowFaultLawsTest, NoHandlerIsLeftAndNoBoxAndNothingIsHeld) {
    m_objSeen.m_iRunning = 1;
    ExpectBroken("a handler is not back");
    m_objSeen.m_iRunning = 0;
    m_objSeen.m_strHeld = "the interface list is held";
    ExpectBroken("the interface list is held");
    m_objSeen.m_strHeld.clear();
    m_objSeen.m_strFailure = "the process has come down";
    ExpectBroken("the process has come down");
}

TEST_F(WindowFaultLawsTest, ButtonsAreEnabledAtRestAndTheLineSaysThatNothingIsDone) {
    m_objSeen.m_strDisabled = "btnRead";
    ExpectBroken("disabled at rest: btnRead");
    m_objSeen.m_strDisabled.clear();
    m_objSeen.m_strDoing = "READ 1 of 3";
    ExpectBroken("the line says that something is done");
}

TEST_F(WindowFaultLawsTest, TheButtonPressedAgainDoesWhatItEverDoes) {
    const std::vector<void (*)(CSeen&)> fnFaults{
        [](CSeen& p_objAgain) { p_objAgain.m_strSent.pop_back(); },
        [](CSeen& p_objAgain) { p_objAgain.m_strSent.front() = "{Z5;1|}"; },
        [](CSeen& p_objAgain) { p_objAgain.m_strTold = {"beep"}; },
        [](CSeen& p_objAgain) { p_objAgain.m_strRead.pop_back(); },
        [](CSeen& p_objAgain) { p_objAgain.m_strShown.pop_back(); },
        [](CSeen& p_objAgain) { p_objAgain.m_strPage = "defaults, never read"; },
        [](CSeen& p_objAgain) { p_objAgain.m_strLink = "COM1: not sent whole"; },
        [](CSeen& p_objAgain) { p_objAgain.m_strDisabled = "btnSet"; },
        [](CSeen& p_objAgain) { p_objAgain.m_strHeld = "the interface list is held"; },
        [](CSeen& p_objAgain) { p_objAgain.m_iHalfSeconds += 2; },
        [](CSeen& p_objAgain) { p_objAgain.m_iRefused = 1; },
    };
    for (const auto fnFault : fnFaults) {
        CSeen objAgain = m_objSound;
        fnFault(objAgain);
        m_objSeen.SetAgain(objAgain);
        ExpectBroken("pressed again on the sound link");
    }
}

TEST_F(WindowFaultLawsTest, NothingIsSentOrToldWhenAllIsOver) {
    m_objSeen.m_strBehind = {"LAN sends {Z5;1|}"};
    ExpectBroken("sent or told when all was over");
    m_objSeen.m_strBehind.clear();
    m_objSeen.m_strLater = {TimeOut};
    ExpectBroken("told when all was over");
}

TEST_F(WindowFaultLawsTest, WhatTellsOfItselfTellsItOnce) {
    Take(Cell("an overrun before the answer", "btnGetStatus", LinkKind::Com));
    const std::string strHard = "box, exclamation, \"Varden Setting Tool\": HARD ERROR";
    m_objSeen.m_strLater = {strHard};
    ExpectHolds();
    m_objSeen.m_strLater = {strHard, strHard};
    ExpectBroken("told when all was over");
    m_objSeen.m_strLater = {Reset};
    ExpectBroken("told \"N\", expected \"H\"");
    m_objSeen.m_strLater.clear();
    ExpectBroken("told \"\", expected \"H\"");
}

TEST_F(WindowFaultLawsTest, AWindowThatWasClosedHasClosedAndNoOther) {
    m_objSeen.m_bClosed = true;
    ExpectBroken("the window has closed");
    m_objSeen.m_bClosed = false;
    m_objCell = Cell("the window closed before the answer", "btnRead", LinkKind::Lan);
    ExpectBroken("the window has not closed");
}

TEST_F(WindowFaultLawsTest, OnlyItsOwnCommandsGoOutInTheirOrder) {
    m_objSeen.m_strSent = {"{Z5;3|}"};
    ExpectBroken("sent what is none of its commands: {Z5;3|}");
    m_objSeen.m_strSent = {"{Z5;1|}"};
    ExpectBroken("sent out of turn: {Z5;1|}");
    m_objSeen.m_strSent = {"{Z5;0|}", "{Z5;0|}"};
    ExpectBroken("sent out of turn: {Z5;0|}");
    m_objSeen.m_strSent = {"{Z5;0|}"};
    m_objSeen.m_strPartly = "{Z4";
    ExpectBroken("sent a part of none of its commands: {Z4");
}

TEST_F(WindowFaultLawsTest, PaperEndLeavesOutWhatIsNotTakenAndSendsNothingTwice) {
    Take(Cell("none", "btnPaperEnd", LinkKind::Lan));
    ExpectHolds();
    for (const MGolden::Texts& strWrong :
         {MGolden::Texts{"{Z6;11|}", "{Z6;01|}"}, MGolden::Texts{"{Z6;01|}", "{Z6;01|}"},
          MGolden::Texts{"{Z6;01|}", "{Z6;11|}", "{Z6;11|}"}}) {
        m_objSeen.m_strSent = strWrong;
        ExpectBroken("sent out of turn");
    }
    Take(Cell("the link takes nothing", "btnPaperEnd", LinkKind::Lan));
    m_objSeen.m_strSent = {"{Z6;11|}"};
    m_objSeen.m_strPage = "sensor adjustment, step 3 ended: not sent";
    ExpectHolds();
}

TEST_F(WindowFaultLawsTest, WhatIsPressedInTheMiddleIsRefusedOrBeginsAnew) {
    Take(Cell("the same button again before the answer", "btnLanSet", LinkKind::Lan));
    const MGolden::Texts strAll = m_objSeen.m_strSent;
    ExpectBroken("pressed, 1 taken and 0 refused, expected 2 and 0");
    m_objSeen.m_iTaken = 2;
    ExpectBroken("sent out of turn");
    m_objSeen.m_strSent.insert(m_objSeen.m_strSent.begin(), strAll.front());
    ExpectHolds();
    m_objSeen.m_strSent = strAll;
    m_objSeen.m_strSent.push_back(strAll.front());
    ExpectBroken("sent out of turn");
    Take(Cell("the same button again before the answer", "btnSet", LinkKind::Lan));
    ExpectBroken("pressed, 1 taken and 0 refused, expected 1 and 1");
    m_objSeen.m_iRefused = 1;
    ExpectHolds();
}

TEST_F(WindowFaultLawsTest, SettingsGoOutByteByByteAsTheyStandInTheFields) {
    m_objCell = Cell("silent", "btnSet", LinkKind::Lan);
    m_objSeen.m_strSent = {"{Z2;1,00210121+0001B0A00000B0000000000101|}"};
    ExpectBroken("sent what is none of its commands");
}

TEST_F(WindowFaultLawsTest, NoCommandGoesOutBehindAFailureThatWasTold) {
    m_objSeen.m_iBehindFailure = 1;
    ExpectBroken("a command went out behind a failure");
    Take(Cell("silent", "btnPaperEnd", LinkKind::Lan));
    m_objSeen.m_iBehindFailure = 1;
    ExpectHolds();
}

TEST_F(WindowFaultLawsTest, EachFaultIsToldByItsOwnBoxesAndOnce) {
    using Boxes = std::vector<std::string>;
    for (const Boxes& strTold :
         {Boxes{}, Boxes{TimeOut}, Boxes{"beep"}, Boxes{"beep", TimeOut, TimeOut},
          Boxes{"beep", TimeOut, NotSent}, Boxes{NotSent}, Boxes{Reset, "beep", TimeOut},
          Boxes{"beep", "box, critical, \"Varden Setting Tool\": Device Time Out !!"},
          Boxes{"beep", TimeOut, "box, no icon, \"Varden Setting Tool\": And something else."}}) {
        m_objSeen.m_strTold = strTold;
        ExpectBroken(", expected \"bT\"");
    }
    m_objCell = Cell("the socket fails before the answer", "btnRead", LinkKind::Lan);
    m_objSeen.m_strTold = {Reset, "beep", TimeOut};
    ExpectHolds();
    m_objCell = Cell("silent", "btnRead", LinkKind::Com);
    m_objSeen.m_strTold = {"beep", TimeOut};
    ExpectBroken(", expected \"\"");
}

TEST_F(WindowFaultLawsTest, WhatDidNotComeIsTold) {
    m_objSeen.m_strPage = "defaults, never read";
    ExpectBroken("the line says: defaults, never read");
    m_objSeen.m_strPage = "READ ended at group 1: no answer (defaults, never read)";
    ExpectBroken("no answer came, and yet");
    m_objCell.m_iLink = LinkKind::Com;
    m_objSeen.m_strTold.clear();
    m_objSeen.m_strSent = m_objSound.m_strSent;
    m_objSeen.m_strPage = "READ: no answer for group 0 (defaults, never read)";
    ExpectHolds();
    m_objSeen.m_strPage = "READ: no answer for group 1 (0 fields)";
    ExpectBroken("no answer came, and yet");
    Take(Cell("silent", "btnGetStatus", LinkKind::Com));
    ExpectHolds();
    m_objSeen.m_strStatus = "ON LINE";
    ExpectBroken("no answer came, and yet");
}

TEST_F(WindowFaultLawsTest, ItemsComeFromWholeAnswersToWhatWasAsked) {
    m_objSeen.m_strRead = {"3"};
    ExpectBroken("items of a group that was not asked for: 3");
    m_objSeen.m_strRead = {"0"};
    ExpectBroken("items without a whole answer, of group 0");
    m_objSeen.m_strRead.clear();
    m_objSeen.m_strOther = {"0"};
    ExpectBroken("items that no answer brought, of group 0");
    m_objSeen.m_strOther.clear();
    m_objCell = Cell("six seconds late", "btnRead", LinkKind::Lan);
    ExpectHolds();
    m_objSeen.m_strRead = {"0"};
    ExpectBroken("items without a whole answer, of group 0");
    m_objSeen.m_strRead.clear();
    m_objCell = Cell("values out of range", "btnRead", LinkKind::Lan);
    m_objSeen.m_strOther = {"2"};
    ExpectBroken("items that no answer brought, of group 2");
}

TEST_F(WindowFaultLawsTest, APageChangesByItsOwnReadingAlone) {
    m_objSeen.m_strLanPage = "read";
    ExpectBroken("a page has changed that nobody read");
    m_objSeen.m_strLanPage = "-";
    m_objSeen.m_strParameterPage = "read";
    ExpectBroken("the page shows a whole reading");
    m_objSeen.m_strParameterPage = "other";
    ExpectBroken("the page shows what no answer brought");
    m_objSeen.m_strParameterPage = "-";
    m_objSeen.m_strPage = "as read from the printer";
    m_objSeen.m_strSent = {"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"};
    ExpectBroken("the line says that the page is as read");
}

TEST_F(WindowFaultLawsTest, APageShowsTheGroupsThatHaveCome) {
    m_objCell.m_iCommand = 2;
    m_objSeen.m_strSent = {"{Z5;0|}", "{Z5;1|}"};
    m_objSeen.m_strRead = {"0"};
    m_objSeen.m_strPage = "READ ended at group 1: no answer (defaults, never read)";
    ExpectHolds();
    m_objSeen.m_strParameterPage = "part";
    m_objSeen.m_strShown = {"0"};
    ExpectBroken("the page has changed, though the reading has not come to its end");
    m_objSeen.m_strShown = {"1"};
    ExpectBroken("the page shows what no whole answer brought, of group 1");
    m_objCell.m_iLink = LinkKind::Com;
    m_objSeen.m_strTold.clear();
    m_objSeen.m_strSent = m_objSound.m_strSent;
    m_objSeen.m_strPage = "READ: no answer for group 1 (3 fields changed)";
    ExpectBroken("the page shows what no whole answer brought, of group 1");
    m_objSeen.m_strShown = {"0"};
    ExpectHolds();
    m_objSeen.m_strShown = {"0 part"};
    ExpectBroken("the page shows what no whole answer brought, of group 0 part");
}

TEST_F(WindowFaultLawsTest, WhatIsClaimedToBeHarmlessEndsAsWithoutAFault) {
    Take(Cell("three seconds late", "btnGetStatus", LinkKind::Lan));
    m_objSeen.m_iHalfSeconds = 6;
    ExpectHolds();
    m_objSeen.m_iHalfSeconds = 9;
    ExpectBroken("harmless, and yet longer by half seconds: 9");
    m_objSeen.m_iHalfSeconds = 6;
    m_objSound.m_strStatus = "ON LINE";
    ExpectBroken("harmless, and yet other than without a fault");
    Take(Cell("two answers at once", "btnHeadCheck", LinkKind::Lan));
    m_objSound.m_strHeadCheck = "ON LINE";
    m_objSeen.m_strHeadCheck = "ON LINE";
    ExpectBroken("harmless, and yet other than without a fault");
    m_objSeen.m_strStatus = "ON LINE";
    m_objSeen.SetAgain(m_objSound);
    ExpectHolds();
}

TEST_F(WindowFaultLawsTest, WhatComesBehindTheLastAnswerTakesNothingAway) {
    Take(Cell("closed or reset behind the answer", "btnGetStatus", LinkKind::Lan));
    m_objSound.m_strStatus = "ON LINE";
    ExpectBroken("the status is lost");
    Take(Cell("closed or reset behind the answer", "btnLanRead", LinkKind::Lan));
    m_objSound.m_strRead = {"3"};
    ExpectBroken("items are lost");
    m_objSeen.m_strRead = {"3"};
    m_objSound.m_strLanPage = "read";
    ExpectBroken("the page is lost");
}

TEST_F(WindowFaultLawsTest, WhatIsLateTakesNothingFromTheFlowThatWasBegunAnew) {
    Take(Cell("the answer comes when the button has been pressed again", "btnLanRead",
              LinkKind::Com));
    m_objSeen.m_iTaken = 2;
    m_objSeen.m_strSent = {"{Z5;3|}", "{Z5;3|}"};
    ExpectHolds();
    m_objSound.m_strRead = {"3"};
    ExpectBroken("items are lost");
    m_objSeen.m_strSent = {"{Z5;3|}"};
    ExpectBroken("sent out of turn");
}

TEST_F(WindowFaultLawsTest, AFlowEndsInTime) {
    m_objSeen.m_iHalfSeconds = 120;
    ExpectBroken("took 60 s");
}

TEST(WindowFaultSeeingTest, SeesAListThatIsHeldInTheMiddleOfAFlowAndNotBehindIt) {
    CStage objStage;
    CSeen objInside;
    const auto fnRead = [&](CScene& p_objScene) {
        p_objScene.Later(500, [&] { MSeeing::LookAtWindow(p_objScene, objInside); });
        p_objScene.Press("btnRead");
    };
    const CSeen objSeen = CSeen::FromText(
        objStage.Play({"", "btnRead", LinkKind::Lan, true, fnRead}, [&](CScene& p_objScene) {
            CSeen objBehind;
            MSeeing::LookAtWindow(p_objScene, objBehind);
            objBehind.SetAgain(objInside);
            return objBehind.Text();
        }));
    EXPECT_EQ(objSeen.Again().m_strHeld, "the interface list is held");
    EXPECT_NE(objSeen.Again().m_strDisabled, "");
    EXPECT_EQ(objSeen.m_strHeld, "");
    EXPECT_EQ(objSeen.m_strDisabled, "");
}

TEST(CSeenTest, IsReadAsItWasWritten) {
    CSeen objSeen;
    objSeen.m_strTold = {"beep", "box, critical, \"Failure\": Device: Time Out !!"};
    objSeen.m_strSent = {"{WS|}"};
    objSeen.m_strLater = {"box"};
    objSeen.m_strStatus = "  Save Mode";
    objSeen.m_iHalfSeconds = 7;
    objSeen.m_bClosed = true;
    const CSeen objRead = CSeen::FromText(objSeen.Text());
    EXPECT_EQ(objRead.Text(), objSeen.Text());
    EXPECT_EQ(objRead.m_strTold, objSeen.m_strTold);
    EXPECT_EQ(objRead.m_strStatus, objSeen.m_strStatus);
    EXPECT_TRUE(objRead.m_bClosed);
    EXPECT_EQ(CSeen::FromText("FAILED: the process has come down").m_strFailure,
              "the process has come down");
}

}  // namespace
