#include "tests/cli/faults/MFaultPage.h"
#include "tests/cli/faults/MFaultRules.h"
#include "tests/cli/faults/MFaultText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <tuple>

// The table of faults: each cell comes to what is expected of it, and breaks no rule.

namespace {

using MFaultRows::Row;
using MFaults::Link;

/// What is expected of a row's cells, by their headings.
std::map<std::string, std::string> Expected(const Row& p_objRow) {
    std::map<std::string, std::string> strExpected;
    std::istringstream objLines(
        MFaultPage::Content(std::string(VARDEN_FAULTS) + "/" + p_objRow.m_strName + ".txt"));
    std::string strHeading;
    for (std::string strLine; std::getline(objLines, strLine);) {
        if (strLine.starts_with('[')) {
            strHeading = strLine.substr(1, strLine.size() - 2);
        } else if (!strHeading.empty() && !strLine.empty()) {
            strExpected[strHeading] += strLine + "\n";
        }
    }
    return strExpected;
}

class FaultsTest : public ::testing::TestWithParam<std::tuple<const Row*, Link>> {};

TEST_P(FaultsTest, ComeToWhatIsExpectedAndBreakNoRule) {
    const auto [objRow, iLink] = GetParam();
    const std::map<std::string, std::string> strExpected = Expected(*objRow);
    std::size_t iCells = 0;
    for (const MFaultCells::Cell& objCell : MFaultCells::Of(*objRow, iLink)) {
        SCOPED_TRACE(objRow->m_strName + ", " + objCell.Heading());
        ++iCells;
        const MFaultCells::Played objPlayed = MFaultCells::Play(objCell);
        for (const std::string& strRule : MFaultRules::Broken(objCell, objPlayed)) {
            ADD_FAILURE() << "this must be: " << strRule;
        }
        const auto objFound = strExpected.find(objCell.Heading());
        ASSERT_NE(objFound, strExpected.end()) << "nobody has said what is expected";
        EXPECT_EQ(MFaultText::Whole(objCell, objPlayed), objFound->second);
    }
    const std::string strLink(MFaults::Name(iLink));
    EXPECT_EQ(iCells, std::ranges::count_if(strExpected,
                                            [&](const auto& p_objEntry) {
                                                return p_objEntry.first.starts_with(strLink);
                                            }))
        << "something is expected of cells that there are not";
}

std::vector<std::tuple<const Row*, Link>> RowsOnLinks() {
    std::vector<std::tuple<const Row*, Link>> objAll;
    for (const Row& objRow : MFaultRows::All()) {
        for (const Link iLink : objRow.m_iLinks) {
            objAll.emplace_back(&objRow, iLink);
        }
    }
    return objAll;
}

INSTANTIATE_TEST_SUITE_P(Every, FaultsTest, ::testing::ValuesIn(RowsOnLinks()),
                         [](const auto& p_objInfo) {
                             std::string strName = std::get<0>(p_objInfo.param)->m_strName;
                             std::ranges::replace(strName, '-', '_');
                             return strName + "_" +
                                    std::string(MFaults::Name(std::get<1>(p_objInfo.param)));
                         });

TEST(FaultsPage, IsMadeOfWhatIsExpected) {
    EXPECT_EQ(MFaultPage::PartOf(MFaultPage::Content(VARDEN_FAULTS_PAGE)),
              MFaultPage::Part(VARDEN_FAULTS))
        << "cmake --build build/dev --target write-faults";
}

}  // namespace
