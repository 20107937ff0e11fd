#include "tests/ui/CFormFixture.h"
#include "tests/ui/CModalAnswer.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include <functional>

namespace {

/// The four parts of an address, on the network page and in the setup.
class FmMainAddressTest : public CFormFixture {
protected:
    static constexpr int Lan = 1;

    static UCSpinEdit& Part(QWidget& p_objWindow, const QString& p_strName, int p_iNumber) {
        return *p_objWindow.findChild<UCSpinEdit*>(p_strName + QString::number(p_iNumber));
    }
    static QString Address(QWidget& p_objWindow, const QString& p_strName) {
        QStringList strParts;
        for (int i = 1; i <= 4; ++i) {
            strParts.append(Part(p_objWindow, p_strName, i).text());
        }
        return strParts.join('.');
    }
    static QString Selected(const UCSpinEdit& p_Se) {
        return p_Se.findChild<QLineEdit*>("CText")->selectedText();
    }

    static void ExpectPointsToLeadOn(QWidget& p_objWindow, const QString& p_strName) {
        Part(p_objWindow, p_strName, 1).setFocus(Qt::TabFocusReason);
        Part(p_objWindow, p_strName, 1).selectAll();
        for (const char cKey : QByteArray("10.1.22.3.")) {
            QTest::keyClick(p_objWindow.focusWidget(), cKey);
        }
        EXPECT_EQ(p_objWindow.focusWidget(), &Part(p_objWindow, p_strName, 4));
        EXPECT_EQ(Address(p_objWindow, p_strName), "10.1.22.3");
    }

    static void ExpectAPastedAddressToFillAll(QWidget& p_objWindow, const QString& p_strName) {
        int iLast = 30;
        for (int i = 1; i <= 4; ++i) {
            UCSpinEdit& Se = Part(p_objWindow, p_strName, i);
            Se.setFocus(Qt::TabFocusReason);
            const QString strAddress = QString("172.16.0.%1").arg(++iLast);
            QGuiApplication::clipboard()->setText(" " + strAddress + "\n");
            QTest::keySequence(&Se, QKeySequence::Paste);
            EXPECT_EQ(Address(p_objWindow, p_strName), strAddress) << i;
            EXPECT_EQ(p_objWindow.focusWidget(), &Se);
        }
        for (const char* strOther : {"7", "1.2.3", "1.2.3.256", "a.b.c.d"}) {
            Part(p_objWindow, p_strName, 2).Enter("16");
            UCSpinEdit& Se = Part(p_objWindow, p_strName, 2);
            Se.setFocus(Qt::TabFocusReason);
            Se.selectAll();
            QGuiApplication::clipboard()->setText(strOther);
            QTest::keySequence(&Se, QKeySequence::Paste);
            EXPECT_EQ(Se.text(), QString(strOther).left(Se.text().size())) << "as ever";
            EXPECT_EQ(Part(p_objWindow, p_strName, 1).text(), "172") << strOther;
        }
        Part(p_objWindow, p_strName, 2).Enter("16");
    }

    void InSetup(const std::function<void(QWidget&)>& p_fnAction) {
        m_objWindow.Choose("cmbInterface", Lan);
        const CModalAnswer objAnswer("FmInterfaceSetup", [&](QWidget& p_objDialog) {
            // A dialog's window counts as active already while the window under it is.
            EXPECT_TRUE(QTest::qWaitFor([&] {
                p_objDialog.activateWindow();
                return p_objDialog.focusWidget()->hasFocus();
            }));
            p_fnAction(p_objDialog);
            p_objDialog.close();
        });
        m_objWindow.Click("btnSetup");
        EXPECT_TRUE(objAnswer.Done());
    }
};

TEST_F(FmMainAddressTest, TheFirstPartIsSelectedWhenTheSetupOpens) {
    InSetup([](QWidget& p_objDialog) {
        EXPECT_EQ(p_objDialog.focusWidget(), &Part(p_objDialog, "SeLan", 1));
        EXPECT_EQ(Selected(Part(p_objDialog, "SeLan", 1)), "192");
        QTest::keyClicks(p_objDialog.focusWidget(), "10");
        EXPECT_EQ(Part(p_objDialog, "SeLan", 1).text(), "10");
    });
}

TEST_F(FmMainAddressTest, BehindTheRangeBoxTheNextPartIsSelected) {
    InSetup([this](QWidget& p_objDialog) {
        UCSpinEdit& Se = Part(p_objDialog, "SeLan", 1);
        QTest::keyClicks(&Se, "256");
        m_objBoxes.Expect(UCSpinEdit::RangeMessage);
        QTest::keyClick(&Se, Qt::Key_Tab);
        m_objBoxes.Verify();
        EXPECT_EQ(p_objDialog.focusWidget(), &Part(p_objDialog, "SeLan", 2));
        EXPECT_EQ(Selected(Part(p_objDialog, "SeLan", 2)), "168");
    });
}

TEST_F(FmMainAddressTest, APointLeadsToTheNextPart) {
    m_objWindow.BringToFront("FrLan");
    for (const char* strName : {"SeIpAddress", "SeSubNet", "SeGateway"}) {
        ExpectPointsToLeadOn(m_objWindow.Form(), strName);
    }
    InSetup([](QWidget& p_objDialog) { ExpectPointsToLeadOn(p_objDialog, "SeLan"); });
}

TEST_F(FmMainAddressTest, AWholeAddressThatIsPastedFillsAllParts) {
    m_objWindow.BringToFront("FrLan");
    for (const char* strName : {"SeIpAddress", "SeSubNet", "SeGateway"}) {
        ExpectAPastedAddressToFillAll(m_objWindow.Form(), strName);
    }
    InSetup([](QWidget& p_objDialog) { ExpectAPastedAddressToFillAll(p_objDialog, "SeLan"); });
}

TEST_F(FmMainAddressTest, SoDoesTheMenusPaste) {
    const auto PasteFromMenu = [](UCSpinEdit& p_Se) {
        QGuiApplication::clipboard()->setText("10.20.30.40");
        const QPoint objPlace = p_Se.rect().center();
        QContextMenuEvent objEvent(QContextMenuEvent::Mouse, objPlace, p_Se.mapToGlobal(objPlace));
        QApplication::sendEvent(&p_Se, &objEvent);
        auto* const objMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(objMenu, nullptr);
        for (QAction* const objAction : objMenu->actions()) {
            if (objAction->text().remove('&').startsWith("Paste")) {
                objAction->trigger();
            }
        }
        objMenu->close();
    };
    m_objWindow.BringToFront("FrLan");
    m_objWindow.Field("SeIpAddress3").setFocus();
    PasteFromMenu(m_objWindow.Field("SeIpAddress3"));
    EXPECT_EQ(Address(m_objWindow.Form(), "SeIpAddress"), "10.20.30.40");
    InSetup([&](QWidget& p_objDialog) {
        PasteFromMenu(Part(p_objDialog, "SeLan", 2));
        EXPECT_EQ(Address(p_objDialog, "SeLan"), "10.20.30.40");
    });
}

}  // namespace
