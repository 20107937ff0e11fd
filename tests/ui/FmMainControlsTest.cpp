#include "tests/ui/CFormFixture.h"
#include "tests/ui/MGoldenPage.h"
#include "ui/MListEntries.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QMenu>
#include <QTabWidget>

#include <vector>

namespace {

using FmMainControlsTest = CFormFixture;

struct Named {
    const char* m_strName;
    const char* m_strCaption;
};

constexpr int AboveTheTabs = -1;

/// A button or a label of results, and where it stands.
struct Standing {
    const char* m_strName;
    const char* m_strCaption;  ///< after the start
    const char* m_strFrame;    ///< null: in none
    int m_iTab;
};

struct Field {
    const char* m_strFrame;
    const char* m_strName;
    const char* m_strLabel;       ///< of the label that leads to it; null: none does
    const char* m_strAccessible;  ///< null: the label's text
};

struct List {
    const char* m_strName;
    QStringList m_strEntries;
};

// clang-format off
const std::vector<Named> Frames{
    {"FrInterface", "Interface"},
    {"FrParameter", "Parameter"},
    {"FrAdjustment", "Adjustment"},
    {"FrHeadCheck", "HEAD CHECK"},
    {"FrRamClear", "RAM CLEAR"},
    {"FrThresholdCalib", "THRESHOLD CALIB"},
    {"FrSensorAdjust", "SENSOR ADJUST"},
    {"FrTestPrint", "TEST PRINT"},
    {"FmDiagPrint", "DIAG PRINT"},
    {"FrLan", "LAN"},
};

const std::vector<Standing> Buttons{
    {"btnSetup", "Setup", "FrInterface", AboveTheTabs},
    {"btnGetStatus", "GET STATUS", nullptr, AboveTheTabs},
    {"btnRead", "READ", nullptr, 0},
    {"btnSet", "SET", nullptr, 0},
    {"btnLoad", "LOAD", nullptr, 0},
    {"btnSave", "SAVE", nullptr, 0},
    {"btnHeadCheck", "SEND", "FrHeadCheck", 1},
    {"btnRamClear", "SEND", "FrRamClear", 1},
    {"btnThresholdCalib", "SEND", "FrThresholdCalib", 1},
    {"btnReflect", "SEND", "FrSensorAdjust", 1},
    {"btnTrans", "SEND", "FrSensorAdjust", 1},
    {"btnPaperEnd", "SEND", "FrSensorAdjust", 1},
    {"btnTestPrint", "SEND", "FrTestPrint", 1},
    {"btnDiagPrint", "SEND", "FmDiagPrint", 1},
    {"btnLanSet", "SET", "FrLan", 2},
    {"btnLanRead", "READ", "FrLan", 2},
    {"btnLanSave", "SAVE", "FrLan", 2},
    {"btnLanLoad", "LOAD", "FrLan", 2},
};

const std::vector<Standing> ResultLabels{
    {"lblStatus", "", nullptr, AboveTheTabs},
    {"lblHeadCheck", "", "FrHeadCheck", 1},
};

const std::vector<Field> OtherFields{
    {"FrInterface", "cmbInterface", nullptr, "Interface"},
    {"FrRamClear", "cmbRamClear", "MODE", nullptr},
    {"FrRamClear", "cmbDestination", nullptr, "DESTINATION"},
    {"FrThresholdCalib", "cmbThresholdCalib", "SENSOR", nullptr},
    {"FrTestPrint", "SeIssueCount", "ISSUE COUNT", nullptr},
    {"FrTestPrint", "SeLabelLen", "LABEL LEN", nullptr},
    {"FrTestPrint", "cmbType", "TYPE", nullptr},
    {"FrTestPrint", "cmbPrtType", "PRT TYPE", nullptr},
    {"FrTestPrint", "cmbSensor", "SENSOR", nullptr},
    {"FrTestPrint", "cmbPrintSpeed", "PRINT SPEED", nullptr},
    {"FrTestPrint", "cmbPattern", "PATTERN", nullptr},
    {"FmDiagPrint", "cmbDiagPrint", "PRT TYPE", nullptr},
    {"FrLan", "SeIpAddress1", "IP ADDRESS", "IP ADDRESS 1"},
    {"FrLan", "SeIpAddress2", nullptr, "IP ADDRESS 2"},
    {"FrLan", "SeIpAddress3", nullptr, "IP ADDRESS 3"},
    {"FrLan", "SeIpAddress4", nullptr, "IP ADDRESS 4"},
    {"FrLan", "SeSubNet1", "SUBNET MASK", "SUBNET MASK 1"},
    {"FrLan", "SeSubNet2", nullptr, "SUBNET MASK 2"},
    {"FrLan", "SeSubNet3", nullptr, "SUBNET MASK 3"},
    {"FrLan", "SeSubNet4", nullptr, "SUBNET MASK 4"},
    {"FrLan", "SeGateway1", "DEFAULT GATEWAY", "DEFAULT GATEWAY 1"},
    {"FrLan", "SeGateway2", nullptr, "DEFAULT GATEWAY 2"},
    {"FrLan", "SeGateway3", nullptr, "DEFAULT GATEWAY 3"},
    {"FrLan", "SeGateway4", nullptr, "DEFAULT GATEWAY 4"},
    {"FrLan", "cmbPort", nullptr, "SOCKET PORT"},
    {"FrLan", "SeSocetPort", "SOCKET PORT", nullptr},
    {"FrLan", "cmbDhcp", "DHCP", nullptr},
    {"FrLan", "txtDhcpName", "DHCP HOST NAME", nullptr},
};

const std::vector<List> OtherLists{
    {"cmbInterface", {"COM", "LAN", "USB"}},
    {"cmbDiagPrint", {"DIRECT", "TRANSFR"}},
    {"cmbPattern", {"FEED", "SLANT LINE(1DOT)", "SLANT LINE(3DOT)", "CHARACTERS", "BARCODE", "FACTORY TEST"}},
    {"cmbPrintSpeed", {"2\"/sec", "4\"/sec"}},
    {"cmbSensor", {"NONE", "REFLECT.", "TRANS."}},
    {"cmbType", {"NO CUT", "WITH CUT", "PEEL OFF"}},
    {"cmbPrtType", {"DIRECT", "TRANSFR"}},
    {"cmbThresholdCalib", {"REFLECT.", "TRANS."}},
    {"cmbRamClear", {"PARAMETER", "MANTE.CNT"}},
    {"cmbDestination", {"", "JA", "CN", "QP", "QQ"}},
    {"cmbPort", {"OFF", "ON"}},
    {"cmbDhcp", {"OFF", "ON"}},
};
// clang-format on

/// Those, and the controls of the parameter page.
std::vector<Field> Fields() {
    std::vector<Field> objFields = OtherFields;
    for (const MGoldenPage::Control& objControl : MGoldenPage::Parameter()) {
        objFields.push_back({objControl.m_strFrame, objControl.m_strName, objControl.m_strLabel,
                             objControl.m_strAccessible});
    }
    return objFields;
}

/// The same in their order, in which the parameter page's stand behind the first.
std::vector<List> Lists() {
    std::vector<List> objLists;
    for (const MGoldenPage::Control& objControl : MGoldenPage::Parameter()) {
        if (!objControl.m_strEntries.isEmpty()) {
            objLists.push_back({objControl.m_strName, objControl.m_strEntries});
        }
    }
    objLists.insert(objLists.begin(), OtherLists.front());
    objLists.insert(objLists.end(), OtherLists.begin() + 1, OtherLists.end());
    return objLists;
}

/// Whether a control is what its name's prefix says.
bool IsOfItsKind(const QWidget& p_objControl) {
    const QString strName = p_objControl.objectName();
    if (strName.startsWith("cmb")) {
        const auto* const cmb = qobject_cast<const QComboBox*>(&p_objControl);
        return cmb != nullptr && !cmb->isEditable();
    }
    if (strName.startsWith("Se")) {
        return qobject_cast<const UCSpinEdit*>(&p_objControl) != nullptr;
    }
    return qobject_cast<const QLineEdit*>(&p_objControl) != nullptr;
}

QString LabelOf(const QWidget& p_objFrame, const QWidget& p_objControl) {
    for (const auto* const lbl : p_objFrame.findChildren<QLabel*>()) {
        if (lbl->buddy() == &p_objControl) {
            return lbl->text();
        }
    }
    return {};
}

/// The tab that holds the control.
int TabOf(const QTabWidget& p_objTabs, const QWidget& p_objControl) {
    for (int i = 0; i < p_objTabs.count(); ++i) {
        if (p_objTabs.widget(i)->isAncestorOf(&p_objControl)) {
            return i;
        }
    }
    return AboveTheTabs;
}

/// The name of the frame around the control; null when there is none.
QString FrameOf(const QWidget& p_objControl) {
    const QWidget* objParent = p_objControl.parentWidget();
    while (objParent != nullptr && qobject_cast<const QGroupBox*>(objParent) == nullptr) {
        objParent = objParent->parentWidget();
    }
    return objParent != nullptr ? objParent->objectName() : QString();
}

TEST_F(FmMainControlsTest, TheTitleIsTheProgramsName) {
    EXPECT_EQ(m_objWindow.Form().windowTitle(), "Varden Setting Tool");
}

TEST_F(FmMainControlsTest, HasThreeTabs) {
    const auto& objTabs = m_objWindow.Get<QTabWidget>("SSTab1");
    ASSERT_EQ(objTabs.count(), 3);
    EXPECT_EQ(objTabs.tabText(0), "Parameter Setting");
    EXPECT_EQ(objTabs.tabText(1), "Maintenance Mode");
    EXPECT_EQ(objTabs.tabText(2), "Extra Setting");
}

TEST_F(FmMainControlsTest, TheListsAreFilledInTheirOrder) {
    std::vector<std::string> strFilled{"cmbInterface"};
    for (const MListEntries::List& objList : MListEntries::All()) {
        strFilled.push_back(objList.m_strName);
    }
    std::vector<std::string> strExpected;
    for (const List& objList : Lists()) {
        strExpected.emplace_back(objList.m_strName);
    }
    EXPECT_EQ(strFilled, strExpected);
}

TEST_F(FmMainControlsTest, EveryFrameStandsOnItsTab) {
    const std::vector<int> iTabs{AboveTheTabs, 0, 0, 1, 1, 1, 1, 1, 1, 2};
    const auto& objTabs = m_objWindow.Get<QTabWidget>("SSTab1");
    for (std::size_t i = 0; i < Frames.size(); ++i) {
        SCOPED_TRACE(Frames[i].m_strName);
        const auto& Fr = m_objWindow.Get<QGroupBox>(Frames[i].m_strName);
        EXPECT_EQ(Fr.title(), Frames[i].m_strCaption);
        EXPECT_EQ(TabOf(objTabs, Fr), iTabs[i]);
    }
}

TEST_F(FmMainControlsTest, EveryButtonBearsItsCaption) {
    for (const Standing& objRow : Buttons) {
        EXPECT_EQ(m_objWindow.Button(objRow.m_strName).text(), objRow.m_strCaption)
            << objRow.m_strName;
    }
}

TEST_F(FmMainControlsTest, EveryButtonAndResultLabelStandsInItsFrameAndOnItsTab) {
    const auto& objTabs = m_objWindow.Get<QTabWidget>("SSTab1");
    for (const auto* const objRows : {&Buttons, &ResultLabels}) {
        for (const Standing& objRow : *objRows) {
            SCOPED_TRACE(objRow.m_strName);
            const auto& objControl = m_objWindow.Get<QWidget>(objRow.m_strName);
            EXPECT_EQ(FrameOf(objControl), QString(objRow.m_strFrame));
            EXPECT_EQ(TabOf(objTabs, objControl), objRow.m_iTab);
        }
    }
}

TEST_F(FmMainControlsTest, EveryFieldStandsInItsFrameAndIsOfItsKind) {
    for (const Field& objRow : Fields()) {
        SCOPED_TRACE(objRow.m_strName);
        const auto& objControl = m_objWindow.Get<QWidget>(objRow.m_strName);
        EXPECT_TRUE(m_objWindow.Get<QGroupBox>(objRow.m_strFrame).isAncestorOf(&objControl));
        EXPECT_TRUE(IsOfItsKind(objControl));
    }
}

TEST_F(FmMainControlsTest, EveryLabelLeadsToItsField) {
    for (const Field& objRow : Fields()) {
        EXPECT_EQ(LabelOf(m_objWindow.Form(), m_objWindow.Get<QWidget>(objRow.m_strName)),
                  QString(objRow.m_strLabel))
            << objRow.m_strName;
    }
}

TEST_F(FmMainControlsTest, OneLabelAmongTheParametersIsEmptyAndLeadsNowhere) {
    int iEmpty = 0;
    for (const auto* const lbl :
         m_objWindow.Get<QGroupBox>("FrParameter").findChildren<QLabel*>()) {
        if (lbl->text().isEmpty()) {
            ++iEmpty;
            EXPECT_EQ(lbl->buddy(), nullptr);
        }
    }
    EXPECT_EQ(iEmpty, 1);
}

TEST_F(FmMainControlsTest, LabelsShowTheirTextAsItIsWritten) {
    for (const auto* const lbl : m_objWindow.Form().findChildren<QLabel*>()) {
        EXPECT_EQ(lbl->textFormat(), Qt::PlainText) << lbl->text().toStdString();
    }
}

TEST_F(FmMainControlsTest, EveryFieldIsNamedAfterItsLabel) {
    for (const Field& objRow : Fields()) {
        const char* const strExpected =
            objRow.m_strAccessible != nullptr ? objRow.m_strAccessible : objRow.m_strLabel;
        EXPECT_EQ(m_objWindow.Get<QWidget>(objRow.m_strName).accessibleName(), strExpected)
            << objRow.m_strName;
    }
}

TEST_F(FmMainControlsTest, EveryListHoldsItsEntriesInTheirOrder) {
    for (const List& objRow : Lists()) {
        const QComboBox& cmb = m_objWindow.List(objRow.m_strName);
        QStringList strEntries;
        for (int i = 0; i < cmb.count(); ++i) {
            strEntries.append(cmb.itemText(i));
        }
        EXPECT_EQ(strEntries, objRow.m_strEntries) << objRow.m_strName;
    }
}

TEST_F(FmMainControlsTest, HasNoOtherFieldsAndButtons) {
    std::vector<QString> strKnown;
    for (const Field& objRow : Fields()) {
        strKnown.emplace_back(objRow.m_strName);
    }
    for (const Standing& objRow : Buttons) {
        strKnown.emplace_back(objRow.m_strName);
    }
    for (const auto* const objControl : m_objWindow.Form().findChildren<QWidget*>()) {
        const QString strName = objControl->objectName();
        if (strName.startsWith("cmb") || strName.startsWith("Se") || strName.startsWith("txt") ||
            strName.startsWith("btn")) {
            EXPECT_EQ(std::count(strKnown.begin(), strKnown.end(), strName), 1)
                << strName.toStdString();
        }
    }
}

TEST_F(FmMainControlsTest, TheSensorStepsAreTold) {
    // clang-format off
    const QStringList strExpected{
        "REFLECT", "Step1.Put white position on sensor, then click \"SEND\".\r\n",
        "TRANS", "Step2.Put gap position on sensor, then click \"SEND\".\r\n",
        "PAPER END", "Step3.Put paper away, then click \"SEND\".\r\n",
    };
    // clang-format on
    QStringList strShown;
    for (const auto* const lbl :
         m_objWindow.Get<QGroupBox>("FrSensorAdjust").findChildren<QLabel*>()) {
        strShown.append(lbl->text());
    }
    EXPECT_EQ(strShown, strExpected);
}

TEST_F(FmMainControlsTest, TheResultLabelsAreEmptyAtFirst) {
    for (const Standing& objRow : ResultLabels) {
        EXPECT_EQ(m_objWindow.Get<QLabel>(objRow.m_strName).text(), objRow.m_strCaption)
            << objRow.m_strName;
    }
}

TEST_F(FmMainControlsTest, AllOfItIsSetInArial) {
    EXPECT_EQ(m_objWindow.Form().font().family(), "Arial");
    for (const auto* const objControl : m_objWindow.Form().findChildren<QWidget*>()) {
        if (qobject_cast<const QMenu*>(objControl) != nullptr &&
            objControl->objectName().isEmpty()) {
            continue;  // the toolkit's own, for a menu bar that is too narrow
        }
        EXPECT_EQ(objControl->font().family(), "Arial")
            << objControl->metaObject()->className() << " "
            << objControl->objectName().toStdString();
    }
}

}  // namespace
