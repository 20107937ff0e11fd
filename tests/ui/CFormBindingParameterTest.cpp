#include "tests/ui/CBindingFixture.h"
#include "tests/ui/MGoldenPage.h"
#include "ui/UCParameterSetting.h"

#include <stdexcept>
#include <vector>

namespace {

struct ListRow {
    const char* m_strControl;
    Slot m_objItem;
    int m_iEntries;
};

struct SpinRow {
    const char* m_strControl;
    Slot m_objItem;
    CItemValue m_vItem;      ///< a value as the printer sends it
    const char* m_strShown;  ///< how the control shows it
    CItemValue m_vStored;    ///< what the item gets from a control that shows it
    const char* m_strField;  ///< how that goes out again
};

struct PairRow {
    const char* m_strControl;
    Slot m_objDirection;
    Slot m_objMagnitude;
    CItemValue m_vMagnitude;      ///< a magnitude as the printer sends it
    const char* m_strShownMinus;  ///< with the direction "-"
    const char* m_strShownPlus;   ///< with the direction "+", null where the range has none
    CItemValue m_vStoredMinus;    ///< what the magnitude gets from a control that shows it
    const char* m_strField;       ///< how that goes out again
};

struct Visit {
    const char* m_strControl;
    Slot m_objItem;            ///< of a pair the magnitude
    CItemValue m_vOther;       ///< not its default, and shown
    const char* m_strDefault;  ///< what the control shows for the default
};

// clang-format off
const std::vector<SpinRow> Spins{
    {"SeCode1", &CItemManager::m_objControlCode1st, "2B", "2B", 0x2B, "2B"},
    {"SeCode2", &CItemManager::m_objControlCode2nd, "0D", "0D", 0x0D, "0D"},
    {"SeCode3", &CItemManager::m_objControlCode3rd, "FF", "FF", 0xFF, "FF"},
    {"SeEuroCode", &CItemManager::m_objEuroCode, "A4", "A4", 0xA4, "A4"},
    {"SeThresholdR", &CItemManager::m_objThresholdAdjustment_R, "31", "3.1", 31, "31"},
    {"SeThresholdT", &CItemManager::m_objThresholdAdjustment_T, "07", "0.7", 7, "07"},
};

const std::vector<PairRow> Pairs{
    {"SeFowardPosition", &CItemManager::m_objAutoForwardDirection, &CItemManager::m_objAutoForwardAdjustment, "35", "-3.5", "3.5", -35, "35"},
    {"SeFeedAdj", &CItemManager::m_objFeedDirection, &CItemManager::m_objFeedAdjustment, "005", "-0.5", "0.5", -5, "005"},
    {"SeCutAdj", &CItemManager::m_objCutPosDirection, &CItemManager::m_objCutPosAdjustment, "123", "-12.3", "12.3", -123, "123"},
    {"SeBackAdj", &CItemManager::m_objBackFeedDirection, &CItemManager::m_objBackFeedAdjustment, "67", "-6.7", "6.7", -67, "67"},
    {"SeXAdj", &CItemManager::m_objXCoordinateDirection, &CItemManager::m_objXCoordinateAdjustment, "995", "-99.5", "99.5", -995, "995"},
    {"SeToneAdjT", &CItemManager::m_objToneDirection_T, &CItemManager::m_objToneAdjustment_T, "03", "-3", "3", "-3", "03"},
    {"SeToneAdjD", &CItemManager::m_objToneDirection_D, &CItemManager::m_objToneAdjustment_D, "10", "-10", "10", "-10", "10"},
    {"SeRbnAdjFw", &CItemManager::m_objRibbonMotorDirection_F, &CItemManager::m_objRibbonMotorAdjustment_F, "12", "-12", nullptr, "-12", "12"},
    {"SeRbnAdjBk", &CItemManager::m_objRibbonMotorDirection_B, &CItemManager::m_objRibbonMotorAdjustment_B, "15", "-15", nullptr, "-15", "15"},
};
// clang-format on

std::vector<ListRow> MakeLists() {
    std::vector<ListRow> objLists;
    for (const MGoldenPage::Control& objControl : MGoldenPage::Parameter()) {
        if (!objControl.m_strEntries.isEmpty()) {
            objLists.push_back({objControl.m_strName, objControl.m_objItem,
                                static_cast<int>(objControl.m_strEntries.size())});
        }
    }
    return objLists;
}

/// Every control, in the order in which both directions visit them.
std::vector<Visit> MakeVisits() {
    std::vector<Visit> objVisits;
    for (const MGoldenPage::Control& objControl : MGoldenPage::Parameter()) {
        objVisits.push_back({objControl.m_strName, objControl.m_objItem,
                             MGolden::Of(objControl.m_objItem).m_strOther,
                             objControl.m_strDefault});
    }
    return objVisits;
}

const std::vector<ListRow> Lists = MakeLists();
const std::vector<Visit> Visits = MakeVisits();

class CFormBindingParameterTest : public CBindingFixture<UCParameterSetting> {
protected:
    bool Refresh(bool p_bDefaultValue = false) {
        return m_objPage.RefreshParameterSettingItem(m_objItems, p_bDefaultValue);
    }
    bool Store() { return m_objPage.StoreParameterSettingItem(m_objItems); }

    void GiveEveryItemAnotherValue() {
        for (const Visit& objVisit : Visits) {
            Item(objVisit.m_objItem).SetValue(objVisit.m_vOther);
        }
    }
};

TEST_F(CFormBindingParameterTest, AListShowsTheItemsValueAsItsPosition) {
    for (const ListRow& objRow : Lists) {
        ASSERT_EQ(List(objRow.m_strControl).count(), objRow.m_iEntries) << objRow.m_strControl;
        for (int i = 0; i < objRow.m_iEntries; ++i) {
            Item(objRow.m_objItem).m_vValue = i;
            EXPECT_TRUE(Refresh());
            EXPECT_EQ(List(objRow.m_strControl).currentIndex(), i) << objRow.m_strControl;
        }
    }
}

TEST_F(CFormBindingParameterTest, AListShowsTheDigitThatThePrinterHasSent) {
    for (const ListRow& objRow : Lists) {
        Item(objRow.m_objItem).SetValue("1");
        EXPECT_TRUE(Refresh());
        EXPECT_EQ(List(objRow.m_strControl).currentIndex(), 1) << objRow.m_strControl;
    }
}

TEST_F(CFormBindingParameterTest, TheItemGetsTheListsPosition) {
    EXPECT_TRUE(Refresh());
    for (const ListRow& objRow : Lists) {
        for (int i = 0; i < objRow.m_iEntries; ++i) {
            List(objRow.m_strControl).setCurrentIndex(i);
            EXPECT_TRUE(Store());
            EXPECT_EQ(Item(objRow.m_objItem).GetValue(), CItemValue(i)) << objRow.m_strControl;
        }
    }
}

TEST_F(CFormBindingParameterTest, TheFontCodeTravelsAsAHexadecimalDigit) {
    Item(&CItemManager::m_objFontCode).SetValue("A");
    EXPECT_TRUE(Refresh());
    EXPECT_EQ(Shown("cmbFontCode"), "PC-1254");
    List("cmbFontCode").setCurrentIndex(0);
    EXPECT_TRUE(Store());
    EXPECT_EQ(Item(&CItemManager::m_objFontCode).GetValueString(), "0");
    List("cmbFontCode").setCurrentIndex(10);
    EXPECT_TRUE(Store());
    EXPECT_EQ(Item(&CItemManager::m_objFontCode).GetValueString(), "A");
    List("cmbFontCode").setCurrentIndex(15);
    EXPECT_TRUE(Store());
    EXPECT_EQ(Item(&CItemManager::m_objFontCode).GetValueString(), "F");
}

TEST_F(CFormBindingParameterTest, ASpinEditShowsTheItemsValue) {
    for (const SpinRow& objRow : Spins) {
        Item(objRow.m_objItem).SetValue(objRow.m_vItem);
        EXPECT_TRUE(Refresh());
        EXPECT_EQ(Shown(objRow.m_strControl), objRow.m_strShown) << objRow.m_strControl;
    }
}

TEST_F(CFormBindingParameterTest, TheItemGetsTheSpinEditsValue) {
    for (const SpinRow& objRow : Spins) {
        Item(objRow.m_objItem).SetValue(objRow.m_vItem);
        EXPECT_TRUE(Refresh());
        Item(objRow.m_objItem).SetValue(0);
        EXPECT_TRUE(Store());
        EXPECT_EQ(Item(objRow.m_objItem).GetValue(), objRow.m_vStored) << objRow.m_strControl;
        EXPECT_EQ(Item(objRow.m_objItem).GetValueString(), objRow.m_strField)
            << objRow.m_strControl;
    }
}

TEST_F(CFormBindingParameterTest, ASignedPairShowsDirectionAndMagnitudeTogether) {
    for (const PairRow& objRow : Pairs) {
        Item(objRow.m_objMagnitude).SetValue(objRow.m_vMagnitude);
        Item(objRow.m_objDirection).SetValue("-");
        EXPECT_TRUE(Refresh());
        EXPECT_EQ(Shown(objRow.m_strControl), objRow.m_strShownMinus) << objRow.m_strControl;
        Item(objRow.m_objDirection).SetValue("+");
        EXPECT_TRUE(Refresh());
        EXPECT_EQ(Shown(objRow.m_strControl),
                  objRow.m_strShownPlus != nullptr ? objRow.m_strShownPlus : objRow.m_strShownMinus)
            << objRow.m_strControl;
    }
}

TEST_F(CFormBindingParameterTest, ANegativeValueGivesTheMinusAndTheSignedMagnitude) {
    EXPECT_TRUE(Refresh());
    for (const PairRow& objRow : Pairs) {
        Field(objRow.m_strControl).SetValue(std::string("-") + *objRow.m_vMagnitude.Text());
        EXPECT_TRUE(Store());
        EXPECT_EQ(Item(objRow.m_objDirection).GetValue(), CItemValue("-")) << objRow.m_strControl;
        EXPECT_EQ(Item(objRow.m_objMagnitude).GetValue(), objRow.m_vStoredMinus)
            << objRow.m_strControl;
        EXPECT_EQ(Item(objRow.m_objMagnitude).GetValueString(), objRow.m_strField)
            << objRow.m_strControl;
    }
}

TEST_F(CFormBindingParameterTest, APositiveValueGivesThePlus) {
    EXPECT_TRUE(Refresh());
    for (const PairRow& objRow : Pairs) {
        if (objRow.m_strShownPlus == nullptr) {
            continue;  // a ribbon motor's value is never positive
        }
        Field(objRow.m_strControl).SetValue(objRow.m_vMagnitude);
        Item(objRow.m_objDirection).SetValue("-");
        EXPECT_TRUE(Store());
        EXPECT_EQ(Item(objRow.m_objDirection).GetValue(), CItemValue("+")) << objRow.m_strControl;
        EXPECT_EQ(Item(objRow.m_objMagnitude).GetValueString(), objRow.m_strField)
            << objRow.m_strControl;
    }
}

TEST_F(CFormBindingParameterTest, ZeroGivesThePlusAndTheFixedDirectionsStayMinus) {
    EXPECT_TRUE(Refresh());
    for (const PairRow& objRow : Pairs) {
        Item(objRow.m_objDirection).SetValue("-");
    }
    EXPECT_TRUE(Store());
    for (const PairRow& objRow : Pairs) {
        const bool bFixed = objRow.m_strShownPlus == nullptr;
        EXPECT_EQ(Item(objRow.m_objDirection).GetValue(), CItemValue(bFixed ? "-" : "+"))
            << objRow.m_strControl;
    }
}

TEST_F(CFormBindingParameterTest, DirectionAndMagnitudeAreJoinedAsTheyStand) {
    for (const PairRow& objRow : Pairs) {
        SCOPED_TRACE(objRow.m_strControl);
        EXPECT_TRUE(Refresh());
        const QString strBefore = Shown(objRow.m_strControl);
        Item(objRow.m_objDirection).SetValue("-");
        Item(objRow.m_objMagnitude).SetValue(-5);
        EXPECT_THROW(Refresh(), CConversionError);
        EXPECT_EQ(Shown(objRow.m_strControl), strBefore);
        Item(objRow.m_objMagnitude).SetValue("0");
        Item(objRow.m_objDirection).SetValue("+");
    }
}

TEST_F(CFormBindingParameterTest, DefaultsAreShownWithoutTouchingTheItems) {
    GiveEveryItemAnotherValue();
    EXPECT_TRUE(Refresh());
    std::vector<CItemValue> vBefore;
    for (const Visit& objVisit : Visits) {
        EXPECT_NE(Shown(objVisit.m_strControl), objVisit.m_strDefault) << objVisit.m_strControl;
        vBefore.push_back(Item(objVisit.m_objItem).GetValue());
    }
    EXPECT_TRUE(Refresh(true));
    for (std::size_t i = 0; i < Visits.size(); ++i) {
        EXPECT_EQ(Shown(Visits[i].m_strControl), Visits[i].m_strDefault) << Visits[i].m_strControl;
        EXPECT_EQ(Item(Visits[i].m_objItem).GetValue(), vBefore[i]) << Visits[i].m_strControl;
    }
}

TEST_F(CFormBindingParameterTest, AValueBeyondAListStopsThere) {
    for (const ListRow& objRow : Lists) {
        for (const int iPosition : {objRow.m_iEntries, -1}) {
            EXPECT_TRUE(Refresh(true));
            GiveEveryItemAnotherValue();
            Item(objRow.m_objItem).m_vValue = iPosition;
            EXPECT_THROW(Refresh(), std::out_of_range) << objRow.m_strControl;
            bool bReached = false;
            for (const Visit& objVisit : Visits) {
                bReached = bReached || std::string(objVisit.m_strControl) == objRow.m_strControl;
                EXPECT_EQ(Shown(objVisit.m_strControl) == objVisit.m_strDefault, bReached)
                    << objVisit.m_strControl << " with a bad " << objRow.m_strControl;
            }
            EXPECT_TRUE(bReached);
        }
    }
}

TEST_F(CFormBindingParameterTest, AValueThatIsNoNumberStopsThere) {
    for (const Visit& objBad : Visits) {
        EXPECT_TRUE(Refresh(true));
        GiveEveryItemAnotherValue();
        Item(objBad.m_objItem).m_vValue = "x";
        EXPECT_THROW(Refresh(), CConversionError) << objBad.m_strControl;
        bool bReached = false;
        for (const Visit& objVisit : Visits) {
            bReached = bReached || &objVisit == &objBad;
            EXPECT_EQ(Shown(objVisit.m_strControl) == objVisit.m_strDefault, bReached)
                << objVisit.m_strControl << " with a bad " << objBad.m_strControl;
        }
    }
}

TEST_F(CFormBindingParameterTest, AControlThatIsNoNumberStopsTheStoreThere) {
    for (const char* strBad : {"SeToneAdjT", "SeToneAdjD", "SeRbnAdjFw", "SeRbnAdjBk"}) {
        GiveEveryItemAnotherValue();
        EXPECT_TRUE(Refresh(true));
        Field(strBad).findChild<QLineEdit*>("CText")->setText("abc");
        std::vector<CItemValue> vBefore;
        for (const Visit& objVisit : Visits) {
            vBefore.push_back(Item(objVisit.m_objItem).GetValue());
        }
        EXPECT_THROW(Store(), CConversionError) << strBad;
        bool bReached = false;
        for (std::size_t i = 0; i < Visits.size(); ++i) {
            bReached = bReached || std::string(Visits[i].m_strControl) == strBad;
            EXPECT_EQ(Item(Visits[i].m_objItem).GetValue() == vBefore[i], bReached)
                << Visits[i].m_strControl << " with a bad " << strBad;
        }
        EXPECT_TRUE(bReached);
    }
}

TEST_F(CFormBindingParameterTest, AValueOutsideTheRangeIsToldAndTheRestStillShown) {
    GiveEveryItemAnotherValue();
    Item(&CItemManager::m_objFeedAdjustment).SetValue("999");
    m_objBoxes.Expect("It is a value that exceeds the useful range. ");
    EXPECT_TRUE(Refresh());
    EXPECT_EQ(Shown("SeFeedAdj"), "0.0");
    EXPECT_EQ(Shown("SeThresholdT"), "0.7");
}

}  // namespace
