#include "tests/ui/CMainWindow.h"

#include "tests/ui/CModalAnswer.h"

#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

CMainWindow::CMainWindow(const CPlatform& p_objPlatform)
    : m_objForm(p_objPlatform) {}

QString CMainWindow::Shown(const QString& p_strName) {
    QWidget& objControl = Get<QWidget>(p_strName);
    if (const auto* const cmb = qobject_cast<QComboBox*>(&objControl)) {
        return cmb->currentText();
    }
    if (const auto* const lbl = qobject_cast<QLabel*>(&objControl)) {
        return lbl->text();
    }
    if (const auto* const txt = qobject_cast<QLineEdit*>(&objControl)) {
        return txt->text();
    }
    const auto* const txt = objControl.findChild<QLineEdit*>("CText");
    return txt != nullptr ? txt->text() : QString();
}

std::map<QString, QString> CMainWindow::ShownFields() {
    std::map<QString, QString> strShown;
    for (const auto* const objControl : Get<QTabWidget>("SSTab1").findChildren<QWidget*>()) {
        const QString strName = objControl->objectName();
        if (strName.startsWith("cmb") || strName.startsWith("Se") || strName.startsWith("txt")) {
            strShown[strName] = Shown(strName);
        }
    }
    return strShown;
}

bool CMainWindow::Open() {
    m_objForm.show();
    m_objForm.activateWindow();
    return QTest::qWaitForWindowActive(&m_objForm);
}

void CMainWindow::BringToFront(const QString& p_strName) {
    auto& objTabs = Get<QTabWidget>("SSTab1");
    const QWidget& objControl = Get<QWidget>(p_strName);
    for (int i = 0; i < objTabs.count(); ++i) {
        if (objTabs.widget(i)->isAncestorOf(&objControl)) {
            objTabs.setCurrentIndex(i);
        }
    }
}

void CMainWindow::Click(const QString& p_strName) {
    BringToFront(p_strName);
    QTest::mouseClick(&Button(p_strName), Qt::LeftButton);
}

void CMainWindow::Choose(const QString& p_strList, int p_iPosition) {
    BringToFront(p_strList);
    QComboBox& cmb = List(p_strList);
    cmb.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&cmb, Qt::Key_Home);
    for (int i = 0; i < p_iPosition; ++i) {
        QTest::keyClick(&cmb, Qt::Key_Down);
    }
}

void CMainWindow::Type(const QString& p_strName, const QString& p_strText) {
    BringToFront(p_strName);
    QWidget& objField = Get<QWidget>(p_strName);
    objField.setFocus(Qt::TabFocusReason);
    QTest::keySequence(&objField, QKeySequence::SelectAll);
    QTest::keyClick(&objField, Qt::Key_Delete);
    QTest::keyClicks(&objField, p_strText);
}

bool CMainWindow::SetUp(const QString& p_strAddress, bool p_bCancel) {
    const CModalAnswer objAnswer("FmInterfaceSetup", [&](QWidget& p_objDialog) {
        const QStringList strParts = p_strAddress.split('.');
        for (qsizetype i = 0; i < strParts.size(); ++i) {
            auto* const Se = p_objDialog.findChild<UCSpinEdit*>(QString("SeLan%1").arg(i + 1));
            Se->setFocus(Qt::TabFocusReason);
            Se->selectAll();
            QTest::keyClicks(Se, strParts[i]);
        }
        const QString strButton = p_bCancel ? "btnCancel" : "btnSet";
        QTest::mouseClick(p_objDialog.findChild<QPushButton*>(strButton), Qt::LeftButton);
    });
    Click("btnSetup");
    if (m_objForm.isVisible()) {
        // Not every platform gives the window the keyboard back when a dialog closes.
        m_objForm.activateWindow();
        return objAnswer.Done() && QTest::qWaitForWindowActive(&m_objForm);
    }
    return objAnswer.Done();
}

const QStringList& CMainWindow::ActionButtons() {
    static const QStringList strButtons{
        "btnGetStatus", "btnSetup",          "btnLoad",      "btnSave",      "btnRead",
        "btnSet",       "btnDiagPrint",      "btnTestPrint", "btnReflect",   "btnTrans",
        "btnPaperEnd",  "btnThresholdCalib", "btnRamClear",  "btnHeadCheck", "btnLanLoad",
        "btnLanSave",   "btnLanRead",        "btnLanSet",
    };
    return strButtons;
}

QStringList CMainWindow::DisabledButtons() {
    QStringList strDisabled;
    for (const QString& strName : ActionButtons()) {
        if (!Button(strName).isEnabled()) {
            strDisabled.append(strName);
        }
    }
    return strDisabled;
}
