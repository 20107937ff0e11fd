#include "ui/CReadBaseline.h"
#include "tests/ui/CFormFixture.h"
#include "tests/ui/MGoldenPage.h"
#include "ui/UCExtraSetting.h"
#include "ui/UCParameterSetting.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace {

class CReadBaselineTest : public CFormFixture {
protected:
    template <typename Page>
    Page& Of() {
        return *dynamic_cast<Page*>(
            m_objWindow.Get<QWidget>(std::is_same_v<Page, UCExtraSetting> ? "FrLan" : "FrParameter")
                .parentWidget());
    }
    UCParameterSetting& ParameterPage() { return Of<UCParameterSetting>(); }
    UCExtraSetting& LanPage() { return Of<UCExtraSetting>(); }
    CReadBaseline& Parameters() { return ParameterPage().Baseline(); }
    CReadBaseline& Lan() { return LanPage().Baseline(); }
    QWidget& Control(const char* p_strName) { return m_objWindow.Get<QWidget>(p_strName); }
    CItem& Item(ItemRef CItemManager::*p_objSlot) {
        return *(m_objWindow.Form().ItemManager().*p_objSlot);
    }
};

TEST_F(CReadBaselineTest, BeginsWithTheDefaultsOfEveryField) {
    EXPECT_FALSE(Parameters().WasRead());
    EXPECT_FALSE(Lan().WasRead());
    EXPECT_EQ(Parameters().ChangedCount(), 0);
    EXPECT_EQ(Lan().ChangedCount(), 0);
    EXPECT_EQ(Parameters().Fields().size(), MGoldenPage::Parameter().size());
    for (const MGoldenPage::Control& objRow : MGoldenPage::Parameter()) {
        EXPECT_EQ(Parameters().Held(Control(objRow.m_strName)), QString(objRow.m_strDefault))
            << objRow.m_strName;
    }
    EXPECT_EQ(Lan().Held(Control("SeIpAddress1")), "192");
    EXPECT_EQ(Lan().Held(Control("txtDhcpName")), Shown("txtDhcpName"));
    EXPECT_EQ(Lan().Held(Control("cmbPort")), Shown("cmbPort"));
}

TEST_F(CReadBaselineTest, CountsWhatAPersonChangesOnEachPageAlone) {
    m_objWindow.Choose("cmbSpeed", 0);
    m_objWindow.Type("SeFeedAdj", "1.5");
    EXPECT_EQ(Parameters().ChangedCount(), 2);
    EXPECT_TRUE(Parameters().IsChanged(Control("cmbSpeed")));
    EXPECT_TRUE(Parameters().IsChanged(Control("SeFeedAdj")));
    EXPECT_FALSE(Parameters().IsChanged(Control("SeCutAdj")));
    EXPECT_EQ(Lan().ChangedCount(), 0);
    m_objWindow.Type("txtDhcpName", "shop");
    EXPECT_EQ(Lan().ChangedCount(), 1);
    EXPECT_EQ(Parameters().ChangedCount(), 2);
    m_objWindow.Type("SeFeedAdj", "0.0");
    EXPECT_EQ(Parameters().ChangedCount(), 1) << "what it held is typed again";
}

TEST_F(CReadBaselineTest, TellsEachChangeOnce) {
    const QSignalSpy objSpy(&Parameters(), &CReadBaseline::Changed);
    const QSignalSpy objFields(&Parameters(), &CReadBaseline::FieldChanged);
    m_objWindow.Choose("cmbFeedKey", 1);
    EXPECT_EQ(objSpy.size(), 1);
    EXPECT_EQ(objFields.size(), 1);
    m_objWindow.Choose("cmbSpeed", 0);
    const auto iBefore = objSpy.size();
    m_objWindow.List("cmbSpeed").setCurrentIndex(1);
    EXPECT_EQ(objSpy.size(), iBefore) << "it differed before";
}

TEST_F(CReadBaselineTest, AReadingMovesItForItsPageAlone) {
    m_objWindow.Choose("cmbFeedKey", 1);
    m_objWindow.Type("SeIpAddress4", "77");
    const QSignalSpy objSpy(&Parameters(), &CReadBaseline::Changed);
    ParameterPage().NoteRead();
    EXPECT_TRUE(Parameters().WasRead());
    EXPECT_EQ(Parameters().ChangedCount(), 0);
    EXPECT_EQ(Parameters().Held(Control("cmbFeedKey")), "PRINT");
    EXPECT_EQ(objSpy.size(), 1);
    EXPECT_FALSE(Lan().WasRead());
    EXPECT_EQ(Lan().ChangedCount(), 1);
    m_objWindow.List("cmbFeedKey").setCurrentIndex(0);
    EXPECT_EQ(Parameters().ChangedCount(), 1);
}

TEST_F(CReadBaselineTest, TheFirstReadingIsToldAlsoWhenNothingDiffers) {
    const QSignalSpy objSpy(&Lan(), &CReadBaseline::Changed);
    LanPage().NoteRead();
    EXPECT_EQ(objSpy.size(), 1);
    LanPage().NoteRead();
    EXPECT_EQ(objSpy.size(), 1);
}

TEST_F(CReadBaselineTest, AnotherValueThatIsReadIsToldOfItsField) {
    ParameterPage().NoteRead();
    Item(&CItemManager::m_objFeedKeyFunction).SetValue(1);
    ASSERT_TRUE(ParameterPage().Refresh());
    const QSignalSpy objFields(&Parameters(), &CReadBaseline::FieldChanged);
    ParameterPage().NoteRead();
    ASSERT_EQ(objFields.size(), 1);
    EXPECT_EQ(objFields[0][0].value<QWidget*>(), &Control("cmbFeedKey"));
}

TEST_F(CReadBaselineTest, WhatComesOtherwiseLeavesItAlone) {
    ParameterPage().NoteRead();
    Item(&CItemManager::m_objFeedKeyFunction).SetValue(1);
    ASSERT_TRUE(ParameterPage().Refresh());  // as LOAD does
    EXPECT_EQ(Parameters().ChangedCount(), 1);
    ASSERT_TRUE(ParameterPage().Store());  // as SET does
    EXPECT_EQ(Parameters().ChangedCount(), 1);
}

TEST_F(CReadBaselineTest, AFieldThatRefusedWhatWasReadDiffersFromIt) {
    Item(&CItemManager::m_objBackFeedAdjustment).SetValue(990);  // the field ends at 9.5
    m_objBoxes.Expect(UCSpinEdit::RangeMessage);
    ASSERT_TRUE(ParameterPage().Refresh());
    ParameterPage().NoteRead();
    EXPECT_EQ(Parameters().ChangedCount(), 1);
    EXPECT_TRUE(Parameters().IsChanged(Control("SeBackAdj")));
    EXPECT_EQ(Parameters().Held(Control("SeBackAdj")), "99.0");
    EXPECT_EQ(Shown("SeBackAdj"), "0.0");
    Item(&CItemManager::m_objBackFeedAdjustment).SetValue(0);
    ASSERT_TRUE(ParameterPage().Refresh());
    ParameterPage().NoteRead();
    EXPECT_EQ(Parameters().ChangedCount(), 0);
}

TEST_F(CReadBaselineTest, PutsAFieldOfEachKindBack) {
    for (const MGoldenPage::Control& objRow : MGoldenPage::Parameter()) {
        if (!objRow.m_strEntries.isEmpty()) {
            m_objWindow.List(objRow.m_strName).setCurrentIndex(1);
        }
    }
    m_objWindow.Type("SeFowardPosition", "2.5");
    m_objWindow.Type("SeEuroCode", "FF");
    m_objWindow.Type("txtDhcpName", "shop");
    for (QWidget* const objField : Parameters().Fields()) {
        Parameters().PutBack(*objField);
    }
    EXPECT_EQ(Parameters().ChangedCount(), 0);
    EXPECT_EQ(m_objWindow.Field("SeFowardPosition").GetValue(), CItemValue(0));
    Lan().PutBack(Control("txtDhcpName"));
    EXPECT_EQ(Lan().ChangedCount(), 0);
    m_objBoxes.Verify();
}

TEST_F(CReadBaselineTest, AWidgetThatIsNoFieldIsLeftAlone) {
    EXPECT_FALSE(Parameters().IsChanged(Control("cmbInterface")));
    EXPECT_EQ(Parameters().Held(Control("cmbInterface")), "");
    Parameters().PutBack(Control("cmbInterface"));
    EXPECT_EQ(Shown("cmbInterface"), "COM");
}

}  // namespace
