#include "ui/MSpinRanges.h"

#include "tests/ui/CSpinEditFixture.h"

#include <QLineEdit>
#include <QTest>

#include <algorithm>
#include <string>
#include <vector>

namespace {

struct RangeCase {
    const char* m_strName;
    const char* m_strInitial;
    const char* m_strMax;
    const char* m_strMin;
    const char* m_strStepped;  ///< a step down from the maximum
    int m_iLength;             ///< 0: no limit
    bool m_bCovers;
};

// clang-format off
const std::vector<RangeCase> Cases{
    {"SeFowardPosition", "0.0", "5.0", "-5.0", "4.5", 5, false},
    {"SeCode1", "1B", "FF", "00", "FE", 5, true},
    {"SeCode2", "0A", "FF", "00", "FE", 5, true},
    {"SeCode3", "00", "FF", "00", "FE", 5, true},
    {"SeEuroCode", "B0", "FF", "20", "FE", 5, false},
    {"SeFeedAdj", "0.0", "50.0", "-50.0", "49.9", 5, false},
    {"SeCutAdj", "0.0", "50.0", "-50.0", "49.9", 5, false},
    {"SeBackAdj", "0.0", "9.5", "-9.5", "9.4", 5, false},
    {"SeXAdj", "0.0", "99.5", "-99.5", "99.0", 5, false},
    {"SeToneAdjT", "0", "10", "-10", "9", 5, false},
    {"SeToneAdjD", "0", "10", "-10", "9", 5, false},
    {"SeRbnAdjFw", "0", "0", "-15", "-1", 3, false},
    {"SeRbnAdjBk", "0", "0", "-15", "-1", 3, false},
    {"SeThresholdR", "1.0", "4.0", "0.0", "3.9", 4, false},
    {"SeThresholdT", "1.4", "4.0", "0.0", "3.9", 4, false},
    {"SeIssueCount", "1", "5000", "1", "4999", 0, false},
    {"SeLabelLen", "760", "9999", "100", "9998", 4, false},
    {"SeIpAddress1", "192", "255", "0", "254", 3, true},
    {"SeIpAddress2", "168", "255", "0", "254", 3, true},
    {"SeIpAddress3", "10", "255", "0", "254", 3, true},
    {"SeIpAddress4", "20", "255", "0", "254", 3, true},
    {"SeSubNet1", "255", "255", "0", "254", 3, true},
    {"SeSubNet2", "255", "255", "0", "254", 3, true},
    {"SeSubNet3", "255", "255", "0", "254", 3, true},
    {"SeSubNet4", "0", "255", "0", "254", 3, true},
    {"SeGateway1", "0", "255", "0", "254", 3, true},
    {"SeGateway2", "0", "255", "0", "254", 3, true},
    {"SeGateway3", "0", "255", "0", "254", 3, true},
    {"SeGateway4", "0", "255", "0", "254", 3, true},
    {"SeSocetPort", "8000", "65535", "0", "65534", 5, false},
};
// clang-format on

class MSpinRangesTest : public CSpinEditFixture, public ::testing::WithParamInterface<RangeCase> {
protected:
    void SetUp() override {
        CSpinEditFixture::SetUp();
        const std::vector<MSpinRanges::Row> objRows = MSpinRanges::All();
        const auto objRow = std::find_if(objRows.begin(), objRows.end(), [](const auto& p_objRow) {
            return p_objRow.m_strName == GetParam().m_strName;
        });
        ASSERT_NE(objRow, objRows.end());
        m_objRow = *objRow;
        MSpinRanges::Apply(m_objRow, *m_Se);
    }

    MSpinRanges::Row m_objRow;
};

TEST_P(MSpinRangesTest, StartsAndEndsAsTheTableSays) {
    EXPECT_EQ(Shown(), GetParam().m_strInitial);
    EXPECT_EQ(Entered(GetParam().m_strMin), GetParam().m_strMin);
    QTest::keyClick(m_Se, Qt::Key_Down);
    EXPECT_EQ(Shown(), GetParam().m_strMin);
    EXPECT_EQ(Entered(GetParam().m_strMax), GetParam().m_strMax);
    QTest::keyClick(m_Se, Qt::Key_Up);
    EXPECT_EQ(Shown(), GetParam().m_strMax);
    QTest::keyClick(m_Se, Qt::Key_Down);
    EXPECT_EQ(Shown(), GetParam().m_strStepped);
}

TEST_P(MSpinRangesTest, RefusesTheNextValueBeyond) {
    ExpectRangeBox();
    EXPECT_FALSE(m_Se->SetValue(m_objRow.m_objRange.m_iMax + 1));
    ExpectRangeBox();
    EXPECT_FALSE(m_Se->SetValue(m_objRow.m_objRange.m_iMin - 1));
    EXPECT_EQ(Shown(), GetParam().m_strInitial);
}

TEST_P(MSpinRangesTest, TakesNoMoreCharactersThanItsLength) {
    Type("12345678");
    const QString strTyped = Shown();
    EXPECT_EQ(strTyped.size(), GetParam().m_iLength > 0 ? GetParam().m_iLength : 8);
}

TEST_P(MSpinRangesTest, HasButtonsUnlessTheEditCoversIt) {
    EXPECT_EQ(m_Se->buttonSymbols() == QAbstractSpinBox::NoButtons, GetParam().m_bCovers);
}

INSTANTIATE_TEST_SUITE_P(All, MSpinRangesTest, ::testing::ValuesIn(Cases),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(MSpinRangesTableTest, KeepsTheOrderOfSettingUp) {
    std::vector<std::string> arrNames;
    for (const MSpinRanges::Row& objRow : MSpinRanges::All()) {
        arrNames.emplace_back(objRow.m_strName);
    }
    std::vector<std::string> arrExpected;
    for (const RangeCase& objCase : Cases) {
        arrExpected.emplace_back(objCase.m_strName);
    }
    EXPECT_EQ(arrNames, arrExpected);
}

}  // namespace
