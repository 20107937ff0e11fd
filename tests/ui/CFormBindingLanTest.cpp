#include "tests/ui/CBindingFixture.h"
#include "ui/UCExtraSetting.h"

#include <stdexcept>
#include <vector>

namespace {

struct Row {
    const char* m_strControl;
    Slot m_objItem;
    CItemValue m_vItem;        ///< another value than the default, as the printer sends it
    const char* m_strShown;    ///< how the control shows it
    CItemValue m_vStored;      ///< what the item gets from a control that shows it
    const char* m_strDefault;  ///< what the control shows for the default
};

// Every control, in the order in which both directions visit them.
// clang-format off
const std::vector<Row> Rows{
    {"SeIpAddress1", &CItemManager::m_objIpAddress1, "010", "10", "10", "192"},
    {"SeIpAddress2", &CItemManager::m_objIpAddress2, "020", "20", "20", "168"},
    {"SeIpAddress3", &CItemManager::m_objIpAddress3, "003", "3", "3", "10"},
    {"SeIpAddress4", &CItemManager::m_objIpAddress4, "255", "255", "255", "20"},
    {"SeSubNet1", &CItemManager::m_objSubnetMask1, "254", "254", "254", "255"},
    {"SeSubNet2", &CItemManager::m_objSubnetMask2, "240", "240", "240", "255"},
    {"SeSubNet3", &CItemManager::m_objSubnetMask3, "128", "128", "128", "255"},
    {"SeSubNet4", &CItemManager::m_objSubnetMask4, "064", "64", "64", "0"},
    {"SeGateway1", &CItemManager::m_objGateway1, "011", "11", "11", "0"},
    {"SeGateway2", &CItemManager::m_objGateway2, "012", "12", "12", "0"},
    {"SeGateway3", &CItemManager::m_objGateway3, "013", "13", "13", "0"},
    {"SeGateway4", &CItemManager::m_objGateway4, "014", "14", "14", "0"},
    {"cmbPort", &CItemManager::m_objSocketPortSetting, "0", "OFF", 0, "ON"},
    {"SeSocetPort", &CItemManager::m_objSocketPortNumber, "09100", "9100", "9100", "8000"},
    {"cmbDhcp", &CItemManager::m_objDhcpSetting, "1", "ON", 1, "OFF"},
    {"txtDhcpName", &CItemManager::m_objDhcpClientHost, "printer 7", "printer 7", "printer 7", ""},
};
// clang-format on

class CFormBindingLanTest : public CBindingFixture<UCExtraSetting> {
protected:
    bool Refresh(bool p_bDefaultValue = false) {
        return m_objPage.RefreshLanSettingItem(m_objItems, p_bDefaultValue);
    }
    bool Store() { return m_objPage.StoreLanSettingItem(m_objItems); }

    void GiveEveryItemAnotherValue() {
        for (const Row& objRow : Rows) {
            Item(objRow.m_objItem).SetValue(objRow.m_vItem);
        }
    }
};

TEST_F(CFormBindingLanTest, EveryControlShowsItsItem) {
    EXPECT_TRUE(Refresh());
    for (const Row& objRow : Rows) {
        EXPECT_EQ(Shown(objRow.m_strControl), objRow.m_strDefault) << objRow.m_strControl;
        Item(objRow.m_objItem).SetValue(objRow.m_vItem);
        EXPECT_TRUE(Refresh());
        EXPECT_EQ(Shown(objRow.m_strControl), objRow.m_strShown) << objRow.m_strControl;
    }
}

TEST_F(CFormBindingLanTest, EveryItemGetsWhatItsControlShows) {
    GiveEveryItemAnotherValue();
    EXPECT_TRUE(Refresh());
    for (const Row& objRow : Rows) {
        Item(objRow.m_objItem).SetValue("9");
    }
    EXPECT_TRUE(Store());
    for (const Row& objRow : Rows) {
        EXPECT_EQ(Item(objRow.m_objItem).GetValue(), objRow.m_vStored) << objRow.m_strControl;
    }
}

TEST_F(CFormBindingLanTest, DefaultsAreShownWithoutTouchingTheItems) {
    GiveEveryItemAnotherValue();
    EXPECT_TRUE(Refresh(true));
    for (const Row& objRow : Rows) {
        EXPECT_EQ(Shown(objRow.m_strControl), objRow.m_strDefault) << objRow.m_strControl;
        EXPECT_EQ(Item(objRow.m_objItem).GetValue(), objRow.m_vItem) << objRow.m_strControl;
    }
}

TEST_F(CFormBindingLanTest, AValueThatIsNoNumberStopsThere) {
    for (const Row& objBad : Rows) {
        if (&objBad == &Rows.back()) {
            continue;  // any text can be shown as a text
        }
        EXPECT_TRUE(Refresh(true));
        GiveEveryItemAnotherValue();
        Item(objBad.m_objItem).SetValue("x");
        EXPECT_THROW(Refresh(), CConversionError) << objBad.m_strControl;
        bool bReached = false;
        for (const Row& objRow : Rows) {
            bReached = bReached || &objRow == &objBad;
            EXPECT_EQ(Shown(objRow.m_strControl) == objRow.m_strDefault, bReached)
                << objRow.m_strControl << " with a bad " << objBad.m_strControl;
        }
    }
}

TEST_F(CFormBindingLanTest, AValueBeyondAListStopsThere) {
    for (const auto& [strControl, objSlot] :
         {std::pair{"cmbPort", &CItemManager::m_objSocketPortSetting},
          std::pair{"cmbDhcp", &CItemManager::m_objDhcpSetting}}) {
        for (const int iPosition : {2, -1}) {
            EXPECT_TRUE(Refresh(true));
            GiveEveryItemAnotherValue();
            Item(objSlot).SetValue(iPosition);
            EXPECT_THROW(Refresh(), std::out_of_range);
            EXPECT_EQ(Shown("SeGateway4"), "14");
            EXPECT_EQ(Shown("txtDhcpName"), "");
        }
    }
}

TEST_F(CFormBindingLanTest, TheHostNameKeepsItsBlanks) {
    Item(&CItemManager::m_objDhcpClientHost).SetValue("  a  b          ");
    EXPECT_TRUE(Refresh());
    EXPECT_EQ(Shown("txtDhcpName"), "  a  b          ");
    EXPECT_TRUE(Store());
    EXPECT_EQ(Item(&CItemManager::m_objDhcpClientHost).GetValue(), CItemValue("  a  b          "));
}

TEST_F(CFormBindingLanTest, TheHostNamesCharactersAreBytes) {
    Item(&CItemManager::m_objDhcpClientHost).SetValue("\xE4\xFF");
    EXPECT_TRUE(Refresh());
    EXPECT_EQ(Shown("txtDhcpName"), QString(u'\u00E4') + u'\u00FF');
    EXPECT_TRUE(Store());
    EXPECT_EQ(Item(&CItemManager::m_objDhcpClientHost).GetValue(), CItemValue("\xE4\xFF"));
}

TEST_F(CFormBindingLanTest, ACharacterOutsideOneByteBecomesAQuestionMark) {
    EXPECT_TRUE(Refresh());
    Text("txtDhcpName").setText(QStringLiteral(u"a\u20ACb\u65E5c\U0001F5A8d"));
    EXPECT_TRUE(Store());
    EXPECT_EQ(Item(&CItemManager::m_objDhcpClientHost).GetValue(), CItemValue("a?b?c?d"));
}

TEST_F(CFormBindingLanTest, TheClientIdentifierIsLeftAlone) {
    const std::string strIdentifier = "0123456789ABCDEF0123456789ABCDEF";
    Item(&CItemManager::m_objDhcpClientId).SetValue(strIdentifier);
    GiveEveryItemAnotherValue();
    EXPECT_TRUE(Refresh());
    EXPECT_TRUE(Store());
    EXPECT_TRUE(Refresh(true));
    EXPECT_EQ(Item(&CItemManager::m_objDhcpClientId).GetValue(), CItemValue(strIdentifier));
    for (const auto* const txt : m_objPage.findChildren<QLineEdit*>()) {
        EXPECT_FALSE(txt->text().contains("0123456789ABCDEF")) << txt->objectName().toStdString();
    }
}

}  // namespace
