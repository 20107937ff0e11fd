#include "tests/ui/driver/CWindowDriver.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QWidget>

#include <iostream>

namespace {

constexpr int LookEveryMilliseconds = 20;
constexpr int CannotBeDone = 9;

/// The text box of a field, which may be a part of it.
QLineEdit* TextBox(QWidget* p_objControl) {
    auto* const txt = qobject_cast<QLineEdit*>(p_objControl);
    return txt != nullptr || p_objControl == nullptr ? txt : p_objControl->findChild<QLineEdit*>();
}

QString Shown(QWidget* p_objControl) {
    if (const auto* const lbl = qobject_cast<const QLabel*>(p_objControl)) {
        return lbl->text();
    }
    if (const auto* const cmb = qobject_cast<const QComboBox*>(p_objControl)) {
        return cmb->currentText();
    }
    const QLineEdit* const txt = TextBox(p_objControl);
    return txt != nullptr ? txt->text() : QString();
}

bool Choose(QWidget* p_objControl, const QString& p_strPosition) {
    auto* const cmb = qobject_cast<QComboBox*>(p_objControl);
    if (cmb != nullptr) {
        cmb->setCurrentIndex(p_strPosition.toInt());
    }
    return cmb != nullptr;
}

bool Type(QWidget* p_objControl, const QString& p_strText) {
    QLineEdit* const txt = TextBox(p_objControl);
    if (txt != nullptr) {
        txt->setFocus();
        txt->selectAll();
        QTest::keyClicks(txt, p_strText);
    }
    return txt != nullptr;
}

bool Click(QWidget* p_objControl) {
    auto* const btn = qobject_cast<QPushButton*>(p_objControl);
    if (btn != nullptr) {
        btn->click();
    }
    return btn != nullptr;
}

}  // namespace

CWindowDriver::CWindowDriver(const QString& p_strSteps)
    : m_strSteps(p_strSteps.split(';')) {
    connect(&m_objLook, &QTimer::timeout, this, &CWindowDriver::Look);
    m_objLook.start(LookEveryMilliseconds);
}

void CWindowDriver::Look() {
    if (auto* const objBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        std::cout << "driver: box " << objBox->text().toStdString() << std::endl;
        objBox->accept();
        return;
    }
    QWidget* const objWindow = QApplication::activeWindow();
    if (objWindow != nullptr && !m_bStarted) {
        m_bStarted = true;
        Start(*objWindow);
    }
}

void CWindowDriver::Start(QWidget& p_objWindow) {
    // In an event of its own: the steps take time, and the boxes that come are for this timer.
    QTimer::singleShot(0, this, [this, objWindow = &p_objWindow] {
        for (const QString& strStep : m_strSteps) {
            if (!Do(*objWindow, strStep)) {
                std::cout << "driver: cannot " << strStep.toStdString() << std::endl;
                QCoreApplication::exit(CannotBeDone);
                return;
            }
        }
    });
}

bool CWindowDriver::Do(QWidget& p_objWindow, const QString& p_strStep) {
    const QString strVerb = p_strStep.section(' ', 0, 0);
    const QString strName = p_strStep.section(' ', 1, 1);
    const QString strValue = p_strStep.section(' ', 2);
    auto* const objControl = p_objWindow.findChild<QWidget*>(strName);
    if (strVerb == "close") {
        return p_objWindow.close();
    }
    if (strVerb == "show" && objControl != nullptr) {
        std::cout << "driver: " << strName.toStdString() << " shows "
                  << Shown(objControl).toStdString() << std::endl;
        return true;
    }
    return (strVerb == "choose" && Choose(objControl, strValue)) ||
           (strVerb == "type" && Type(objControl, strValue)) ||
           (strVerb == "click" && Click(objControl));
}

QObject* CWindowDriverPlugin::create(const QString& /*p_strKey*/, const QString& p_strSteps) {
    return new CWindowDriver(p_strSteps);
}
