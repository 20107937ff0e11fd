#include "tests/ui/CFormFixture.h"
#include "tests/ui/MGoldenPage.h"
#include "ui/CChangeMarks.h"
#include "ui/CFieldLabel.h"
#include "ui/UCExtraSetting.h"
#include "ui/UCParameterSetting.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QTest>

#include <map>
#include <utility>

namespace {

/// What the fields of the two pages say of themselves.
class FmMainFieldTextsTest : public CFormFixture {
protected:
    QWidget& Control(const QString& p_strName) { return m_objWindow.Get<QWidget>(p_strName); }
    QString Tip(const QString& p_strName) { return Control(p_strName).toolTip(); }
    QString Description(const QString& p_strName) {
        return Control(p_strName).accessibleDescription();
    }

    /// The captions that are set off.
    QStringList Bold() {
        QStringList strBold;
        for (const auto* const lbl : m_objWindow.Form().findChildren<QLabel*>()) {
            if (lbl->font().bold()) {
                strBold.append(lbl->text());
            }
        }
        return strBold;
    }

    /// Where everything stands, by its address.
    std::map<const QWidget*, QRect> Places() {
        QCoreApplication::processEvents();
        std::map<const QWidget*, QRect> objPlaces;
        for (const auto* const objControl : m_objWindow.Form().findChildren<QWidget*>()) {
            if (objControl->isVisible()) {
                objPlaces[objControl] = objControl->geometry();
            }
        }
        return objPlaces;
    }

    /// The context menu of the field, as the mouse opens it.
    QMenu* Menu(const QString& p_strName) {
        QWidget& objField = Control(p_strName);
        const QPoint objPlace = objField.rect().center();
        QContextMenuEvent objEvent(QContextMenuEvent::Mouse, objPlace,
                                   objField.mapToGlobal(objPlace));
        QApplication::sendEvent(&objField, &objEvent);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }

    static QAction* Entry(const QMenu& p_objMenu, const QString& p_strText) {
        for (QAction* const objAction : p_objMenu.actions()) {
            if (objAction->text().remove('&').section('\t', 0, 0) == p_strText) {
                return objAction;
            }
        }
        return nullptr;
    }

    UCParameterSetting& ParameterPage() {
        return *dynamic_cast<UCParameterSetting*>(Control("FrParameter").parentWidget());
    }
};

TEST_F(FmMainFieldTextsTest, ABoldLabelAndTheTextsTellThatAFieldDiffers) {
    EXPECT_EQ(Bold(), QStringList());
    m_objWindow.Type("SeFeedAdj", "1.5");
    EXPECT_EQ(Bold(), QStringList("FEED ADJ."));
    EXPECT_TRUE(Tip("SeFeedAdj").contains("default: 0.0")) << "nothing has been read";
    EXPECT_TRUE(Description("SeFeedAdj").startsWith("default: 0.0"));
    ParameterPage().NoteRead();
    EXPECT_EQ(Bold(), QStringList());
    EXPECT_FALSE(Tip("SeFeedAdj").contains("1.5"));
    m_objWindow.Type("SeFeedAdj", "0");
    EXPECT_EQ(Bold(), QStringList("FEED ADJ."));
    EXPECT_TRUE(Tip("SeFeedAdj").contains("read: 1.5"));
    EXPECT_TRUE(Description("SeFeedAdj").startsWith("read: 1.5"));
}

TEST_F(FmMainFieldTextsTest, EveryFieldHasALabelThatTells) {
    const std::map<QString, QString> strOthers{
        {"SeCode1", "CODE"}, {"SeCode2", "CODE"}, {"SeCode3", "CODE"}};
    for (const MGoldenPage::Control& objRow : MGoldenPage::Parameter()) {
        SCOPED_TRACE(objRow.m_strName);
        const QString strName = objRow.m_strName;
        const auto objOther = strOthers.find(strName);
        const QString strLabel =
            objOther != strOthers.end() ? objOther->second : QString(objRow.m_strLabel);
        if (strName.startsWith("cmb")) {
            QComboBox& cmb = m_objWindow.List(strName);
            const int iBefore = cmb.currentIndex();
            cmb.setCurrentIndex(iBefore == 0 ? 1 : 0);
            EXPECT_EQ(Bold(), QStringList(strLabel));
            cmb.setCurrentIndex(iBefore);
        } else {
            const QString strBefore = Shown(strName);
            m_objWindow.Field(strName).Enter(strName.startsWith("SeRbn") ? "-1" : "2E");
            if (Shown(strName) == strBefore) {  // no hexadecimal one
                m_objWindow.Field(strName).Enter("2");
            }
            EXPECT_EQ(Bold(), QStringList(strLabel));
            m_objWindow.Field(strName).Enter(strBefore);
        }
        EXPECT_EQ(Bold(), QStringList());
    }
}

TEST_F(FmMainFieldTextsTest, TheFieldsOfTheNetworkTellByTheirLine) {
    const std::map<QString, QString> strLabels{
        {"SeIpAddress1", "IP ADDRESS"}, {"SeIpAddress4", "IP ADDRESS"},
        {"SeSubNet3", "SUBNET MASK"},   {"SeGateway2", "DEFAULT GATEWAY"},
        {"SeSocetPort", "SOCKET PORT"},
    };
    for (const auto& [strName, strLabel] : strLabels) {
        const QString strBefore = Shown(strName);
        m_objWindow.Field(strName).Enter("77");
        EXPECT_EQ(Bold(), QStringList(strLabel)) << strName.toStdString();
        m_objWindow.Field(strName).Enter(strBefore);
    }
    m_objWindow.List("cmbPort").setCurrentIndex(0);
    EXPECT_EQ(Bold(), QStringList("SOCKET PORT"));
    m_objWindow.List("cmbPort").setCurrentIndex(1);
    m_objWindow.List("cmbDhcp").setCurrentIndex(1);
    m_objWindow.Type("txtDhcpName", "shop");
    EXPECT_EQ(Bold(), (QStringList{"DHCP", "DHCP HOST NAME"}));
    EXPECT_TRUE(Description("txtDhcpName").startsWith("default: "));
}

TEST_F(FmMainFieldTextsTest, ABoldLabelMovesNothing) {
    for (const char* strTab : {"FrParameter", "FrLan"}) {
        m_objWindow.BringToFront(strTab);
        // A moment after a page has come up the toolkit is done with the sizes of its lists.
        auto objBefore = Places();
        EXPECT_TRUE(QTest::qWaitFor([&] {
            QTest::qWait(20);
            const auto objFormer = std::exchange(objBefore, Places());
            return objFormer == objBefore;
        }));
        for (QComboBox* const cmb : Control(strTab).findChildren<QComboBox*>()) {
            cmb->setCurrentIndex(cmb->currentIndex() == 0 ? 1 : 0);
        }
        for (UCSpinEdit* const Se : Control(strTab).parentWidget()->findChildren<UCSpinEdit*>()) {
            Se->stepBy(-1);
            Se->stepBy(Se->text() == "0" ? 1 : 0);
        }
        EXPECT_GT(Bold().size(), 3);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Places() == objBefore; })) << strTab;
    }
}

TEST_F(FmMainFieldTextsTest, TheContextMenuBringsBackWhatWasRead) {
    m_objWindow.Type("SeFeedAdj", "1.5");
    m_objWindow.List("cmbSpeed").setCurrentIndex(0);
    for (const QString strName : {"SeFeedAdj", "cmbSpeed"}) {
        SCOPED_TRACE(strName.toStdString());
        QMenu* const objMenu = Menu(strName);
        ASSERT_NE(objMenu, nullptr);
        QAction* const objBack = Entry(*objMenu, CChangeMarks::BackText);
        ASSERT_NE(objBack, nullptr);
        EXPECT_TRUE(objBack->isEnabled());
        objBack->trigger();
        objMenu->close();
    }
    EXPECT_EQ(Shown("SeFeedAdj"), "0.0");
    EXPECT_EQ(Shown("cmbSpeed"), "9600bps");
    EXPECT_EQ(Bold(), QStringList());
}

TEST_F(FmMainFieldTextsTest, TheUsualEntriesAreThereBesideIt) {
    const std::map<QString, QStringList> strUsual{
        {"SeFeedAdj", {"Undo", "Cut", "Copy", "Paste", "Select All", "Step up", "Step down"}},
        {"cmbSpeed", {}},
        {"txtDhcpName", {"Undo", "Cut", "Copy", "Paste", "Select All"}},
    };
    for (const auto& [strName, strEntries] : strUsual) {
        m_objWindow.BringToFront(strName);
        QMenu* const objMenu = Menu(strName);
        ASSERT_NE(objMenu, nullptr);
        EXPECT_EQ(objMenu->font().family(), m_objWindow.Form().font().family());
        for (const QString& strEntry : strEntries) {
            EXPECT_NE(Entry(*objMenu, strEntry), nullptr) << strEntry.toStdString();
        }
        const QAction* const objBack = Entry(*objMenu, CChangeMarks::BackText);
        ASSERT_NE(objBack, nullptr);
        EXPECT_FALSE(objBack->isEnabled()) << "nothing differs";
        objMenu->close();
    }
    QMenu* const objMenu = Menu("SeFeedAdj");
    Entry(*objMenu, "Step up")->trigger();
    EXPECT_EQ(Shown("SeFeedAdj"), "0.1");
    objMenu->close();
}

TEST_F(FmMainFieldTextsTest, SpinEditsTellTheirRangeAndStep) {
    const std::map<QString, QString> strRanges{
        {"SeFowardPosition", "-5.0 to 5.0, in steps of 0.5"},
        {"SeCode1", "00 to FF (hexadecimal), in steps of 1"},
        {"SeEuroCode", "20 to FF (hexadecimal), in steps of 1"},
        {"SeFeedAdj", "-50.0 to 50.0, in steps of 0.1"},
        {"SeXAdj", "-99.5 to 99.5, in steps of 0.5"},
        {"SeToneAdjT", "-10 to 10, in steps of 1"},
        {"SeRbnAdjFw", "-15 to 0, in steps of 1"},
        {"SeThresholdR", "0.0 to 4.0, in steps of 0.1"},
        {"SeIssueCount", "1 to 5000, in steps of 1"},
        {"SeLabelLen", "100 to 9999, in steps of 1"},
        {"SeIpAddress1", "0 to 255, in steps of 1"},
        {"SeSocetPort", "0 to 65535, in steps of 1"},
    };
    for (const auto& [strName, strRange] : strRanges) {
        EXPECT_TRUE(Tip(strName).contains(strRange)) << Tip(strName).toStdString();
        EXPECT_TRUE(Description(strName).contains(strRange)) << strName.toStdString();
    }
}

TEST_F(FmMainFieldTextsTest, WhatThePrinterDoesNotReportOrIsNotSentIsTold) {
    QStringList strReported;
    QStringList strSent;
    for (const auto& strField : m_objWindow.ShownFields()) {
        if (Tip(strField.first).contains("not reported by the printer")) {
            strReported.append(strField.first);
            EXPECT_TRUE(Description(strField.first).contains("not reported by the printer"));
        }
        if (Tip(strField.first).contains("not sent to the printer")) {
            strSent.append(strField.first);
        }
    }
    EXPECT_EQ(strReported, QStringList("cmbStopBit"));
    EXPECT_EQ(strSent, QStringList("cmbKbIF"));
}

}  // namespace
