#include "tour/CTour.h"

#include "platform/qt/MText.h"
#include "ui/UCSpinEdit.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPalette>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include <iostream>
#include <stdexcept>

namespace {

constexpr int DialogPollMilliseconds = 20;

/// What a control shows, as text.
QString TextOf(const QWidget* p_objControl) {
    if (const auto* const cmb = qobject_cast<const QComboBox*>(p_objControl)) {
        return cmb->currentText();
    }
    if (const auto* const Se = qobject_cast<const UCSpinEdit*>(p_objControl)) {
        return Se->text();
    }
    if (const auto* const txt = qobject_cast<const QLineEdit*>(p_objControl)) {
        return txt->text();
    }
    if (const auto* const lbl = qobject_cast<const QLabel*>(p_objControl)) {
        return lbl->text();
    }
    return {};
}

bool IsField(const QWidget* p_objControl) {
    const QWidget* const objParent = p_objControl->parentWidget();
    const bool bOwnControl = qobject_cast<const UCSpinEdit*>(objParent) == nullptr &&
                             qobject_cast<const QComboBox*>(objParent) == nullptr;
    return bOwnControl && !p_objControl->accessibleName().isEmpty();
}

}  // namespace

CTour::CTour(QString p_strPictures)
    : m_objPlatform(QFile::encodeName(m_objDevices.path()).toStdString())
    , m_objWindow(m_objPlatform.Interfaces())
    , m_strPictures(std::move(p_strPictures)) {
    m_objWindow.show();
    if (!QTest::qWaitForWindowExposed(&m_objWindow)) {
        Fail("the window does not show");
    }
}

void CTour::Heading(const std::string& p_strText) const {
    std::cout << "\n== " << p_strText << std::endl;
}

void CTour::Note(const std::string& p_strText) const {
    std::cout << "   seen   " << p_strText << std::endl;
}

void CTour::Expect(const std::string& p_strWhat, const std::string& p_strFound,
                   const std::string& p_strExpected) {
    if (p_strFound == p_strExpected) {
        std::cout << "   ok     " << p_strWhat << ": " << p_strFound << std::endl;
        return;
    }
    Fail(p_strWhat + ": \"" + p_strFound + "\" where \"" + p_strExpected + "\" should be");
}

void CTour::Fail(const std::string& p_strText) {
    ++m_iFailures;
    std::cout << "   WRONG  " << p_strText << std::endl;
}

QWidget* CTour::Front() {
    QWidget* const objModal = QApplication::activeModalWidget();
    return objModal != nullptr ? objModal : &m_objWindow;
}

template <typename Control>
Control* CTour::Find(const QString& p_strName) {
    auto* const objControl = Front()->findChild<Control*>(p_strName);
    if (objControl == nullptr) {
        throw std::runtime_error("there is no " + MText::FromQt(p_strName));
    }
    return objControl;
}

void CTour::ShowTab(int p_iTab) {
    Find<QTabWidget>("SSTab1")->setCurrentIndex(p_iTab);
    QApplication::processEvents();
}

void CTour::Click(const QString& p_strButton) {
    QTest::mouseClick(Find<QPushButton>(p_strButton), Qt::LeftButton);
}

void CTour::ClickCaption(const QString& p_strCaption) {
    for (QAbstractButton* const btn : Front()->findChildren<QAbstractButton*>()) {
        if (btn->text().remove('&') == p_strCaption) {
            QTest::mouseClick(btn, Qt::LeftButton);
            return;
        }
    }
    throw std::runtime_error("there is no button " + MText::FromQt(p_strCaption));
}

void CTour::Choose(const QString& p_strList, const QString& p_strEntry) {
    auto* const cmb = Find<QComboBox>(p_strList);
    cmb->setFocus();
    QTest::keyClick(cmb, Qt::Key_Home);
    while (cmb->currentText() != p_strEntry && cmb->currentIndex() + 1 < cmb->count()) {
        QTest::keyClick(cmb, Qt::Key_Down);
    }
    Expect("choose " + MText::FromQt(p_strList), MText::FromQt(cmb->currentText()),
           MText::FromQt(p_strEntry));
}

void CTour::TakeKeyboard() {
    // After a dialog has closed, some platforms leave no window active; a person would click.
    Front()->activateWindow();
    // A dialog's window counts as active already while the window under it is.
    if (!QTest::qWaitFor([this] { return Front()->isActiveWindow(); })) {
        Fail("the window does not get the keyboard");
    }
}

void CTour::Type(const QString& p_strField, const QString& p_strText) {
    QTest::keyClick(Edit(p_strField, p_strText), Qt::Key_Tab);
    std::cout << "   type   " << MText::FromQt(p_strField) << ": " << MText::FromQt(p_strText)
              << std::endl;
}

void CTour::TypeOnly(const QString& p_strField, const QString& p_strText) {
    Edit(p_strField, p_strText);
}

QWidget* CTour::Edit(const QString& p_strField, const QString& p_strText) {
    auto* const objField = Find<QWidget>(p_strField);
    auto* txt = qobject_cast<QLineEdit*>(objField);
    if (txt == nullptr) {
        txt = objField->findChild<QLineEdit*>();
    }
    TakeKeyboard();
    txt->setFocus();
    txt->selectAll();
    QTest::keyClicks(txt, p_strText);
    return txt;
}

std::string CTour::Shown(const QString& p_strControl) {
    return MText::FromQt(TextOf(Find<QWidget>(p_strControl)));
}

void CTour::InDialog(const QString& p_strTitle, const std::function<void()>& p_objOpen,
                     const std::function<void()>& p_objSteps) {
    InDialogs({{p_strTitle, p_objSteps}}, p_objOpen);
}

void CTour::InAnyDialog(const std::function<void()>& p_objOpen,
                        const std::function<void()>& p_objSteps) {
    InDialogs({{QString(), p_objSteps}}, p_objOpen);
}

void CTour::InDialogs(const std::vector<Dialog>& p_objDialogs,
                      const std::function<void()>& p_objOpen) {
    auto objNext = p_objDialogs.begin();
    QTimer objPoll;
    QObject::connect(&objPoll, &QTimer::timeout, &m_objWindow, [&] {
        QWidget* const objModal = QApplication::activeModalWidget();
        if (objModal == nullptr) {
            return;
        }
        objPoll.stop();  // the steps let time pass
        if (objNext == p_objDialogs.end()) {
            Fail("one more dialog comes: \"" + MText::FromQt(objModal->windowTitle()) + "\"");
            objModal->close();
        } else {
            DealWith(*objModal, *objNext++);
        }
        objPoll.start();
    });
    objPoll.start(DialogPollMilliseconds);
    p_objOpen();
    for (; objNext != p_objDialogs.end(); ++objNext) {
        Fail("the dialog \"" + MText::FromQt(objNext->m_strTitle) + "\" does not come");
    }
}

void CTour::DealWith(QWidget& p_objModal, const Dialog& p_objDialog) {
    const QString strExpected =
        p_objDialog.m_strTitle.isEmpty() ? p_objModal.windowTitle() : p_objDialog.m_strTitle;
    Expect("dialog", MText::FromQt(p_objModal.windowTitle()), MText::FromQt(strExpected));
    try {
        if (p_objModal.windowTitle() == strExpected) {
            p_objDialog.m_objSteps();
        }
    } catch (const std::exception& objError) {
        Fail(objError.what());
    }
    if (QApplication::activeModalWidget() == &p_objModal) {
        Fail("the dialog stays open");
        p_objModal.close();
    }
}

void CTour::TriggerMenu(const QString& p_strAction) {
    Find<QAction>(p_strAction)->trigger();
}

void CTour::PrintPage() const {
    const auto* const objTabs = m_objWindow.findChild<QTabWidget*>("SSTab1");
    for (const QWidget* const objControl : objTabs->currentWidget()->findChildren<QWidget*>()) {
        if (IsField(objControl)) {
            const QString strName = objControl->accessibleName().leftJustified(20);
            std::cout << "   " << MText::FromQt(strName) << MText::FromQt(TextOf(objControl))
                      << std::endl;
        }
    }
}

void CTour::Picture(const QString& p_strName) {
    QApplication::processEvents();
    const QString strFile = QDir(m_strPictures).filePath(p_strName + ".png");
    if (Front()->grab().save(strFile)) {
        std::cout << "   saved  " << MText::FromQt(p_strName) << ".png" << std::endl;
    } else {
        Fail("cannot save " + MText::FromQt(strFile));
    }
}

void CTour::DarkPicture(const QString& p_strName) {
    const QPalette objUsual = QApplication::palette();
    QPalette objDark(QColor(53, 53, 53));
    objDark.setColor(QPalette::Base, QColor(35, 35, 35));
    for (const QPalette::ColorRole iRole :
         {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        objDark.setColor(QPalette::Disabled, iRole, QColor(130, 130, 130));
    }
    QApplication::setPalette(objDark);
    Picture(p_strName);
    QApplication::setPalette(objUsual);
}

bool CTour::ButtonsEnabled() const {
    for (const QPushButton* const btn : m_objWindow.findChildren<QPushButton*>()) {
        if (!btn->isEnabled()) {
            return false;
        }
    }
    return true;
}
