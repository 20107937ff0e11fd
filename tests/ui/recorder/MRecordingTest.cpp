#include "tests/ui/recorder/MRecording.h"

#include "tests/ui/recorder/MFlows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <set>

namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(MRecordingTest, TheSameRecordingHasNoDifference) {
    EXPECT_EQ(MRecording::Difference("== a\n1\n== b\n", "== a\n1\n== b\n"), "");
}

TEST(MRecordingTest, NamesTheFirstCellAndLineThatDiffer) {
    const std::string strDifference = MRecording::Difference("== a\n1\n2\n== b\n1\n2\n== c\n1\n",
                                                             "== a\n1\n2\n== b\n1\n3\n== c\n");
    EXPECT_THAT(strDifference, HasSubstr("2 of 3 cells differ"));
    EXPECT_THAT(strDifference, HasSubstr("== b\nline 2\n  before: 2\n  now:    3\n"));
    EXPECT_THAT(strDifference, Not(HasSubstr("== c")));
}

TEST(MRecordingTest, NoticesALineThatIsMissingOrMore) {
    EXPECT_THAT(MRecording::Difference("== a\n1\n", "== a\n"), HasSubstr("(the cell has ended)"));
    EXPECT_THAT(MRecording::Difference("== a\n", "== a\n1\n"), HasSubstr("(the cell has ended)"));
}

TEST(MRecordingTest, NoticesCellsThatAreNewOrGoneOrElsewhere) {
    EXPECT_THAT(MRecording::Difference("== a\n", "== a\n== b\n"), HasSubstr("== b"));
    EXPECT_THAT(MRecording::Difference("== a\n== b\n", "== a\n"), HasSubstr("not there any more"));
    EXPECT_THAT(MRecording::Difference("== a\n== b\n", "== b\n== a\n"), HasSubstr("another order"));
}

TEST(MRecordingTest, NoTwoCellsHaveTheSameHeading) {
    std::set<std::string> strHeadings;
    for (const std::string& strName : MRecording::Names()) {
        for (const CCell& objCell : MRecording::CellsOf(strName)) {
            EXPECT_TRUE(strHeadings.insert(objCell.m_strHeading).second) << objCell.m_strHeading;
        }
    }
}

TEST(MRecordingTest, EveryButtonIsPressedOnEveryLink) {
    for (const QString& strButton : CMainWindow::ActionButtons()) {
        std::map<LinkKind, int> iCells;
        for (const CCell& objCell : MRecording::CellsOf(strButton.toStdString())) {
            EXPECT_THAT(objCell.m_strHeading, HasSubstr(strButton.toStdString()));
            ++iCells[objCell.m_iLink];
        }
        for (const LinkKind iLink : MFlows::AllLinks) {
            EXPECT_GE(iCells[iLink], 6) << strButton.toStdString();
        }
    }
}

}  // namespace
