#include "ui/CPageKeys.h"

#include "ui/CFieldTexts.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>

namespace {

QString ShownKey(const QString& p_strKey) {
    return QKeySequence(p_strKey).toString(QKeySequence::NativeText);
}

}  // namespace

CPageKeys::CPageKeys(QTabWidget& p_objTabs)
    : m_objTabs(p_objTabs) {
    AddTabKeys();
}

void CPageKeys::AddTabKeys() {
    const auto Add = [this](const QString& p_strKey, const auto& p_fnTab) {
        auto* const objKey = new QShortcut(QKeySequence(p_strKey), m_objTabs.window());
        objKey->setContext(Qt::ApplicationShortcut);  // an open list is a window of its own
        connect(objKey, &QShortcut::activated, this, [this, p_fnTab] { GoToTab(p_fnTab()); });
    };
    const auto Beside = [this](int p_iStep) {
        return [this, p_iStep] {
            return (m_objTabs.currentIndex() + p_iStep + m_objTabs.count()) % m_objTabs.count();
        };
    };
    for (const char* const strKey : {"Ctrl+Tab", "Ctrl+PgDown"}) {
        Add(strKey, Beside(1));
    }
    for (const char* const strKey : {"Ctrl+Shift+Tab", "Ctrl+PgUp"}) {
        Add(strKey, Beside(-1));
    }
    for (int i = 0; i < m_objTabs.count(); ++i) {
        const QString strKey = QStringLiteral("Alt+%1").arg(i + 1);
        Add(strKey, [i] { return i; });
        m_objTabs.setTabToolTip(i, ShownKey(strKey) + "; the next page: " + ShownKey("Ctrl+Tab") +
                                       ", " + ShownKey("Ctrl+PgDown"));
    }
}

void CPageKeys::GoToTab(int p_iTab) {
    if (QWidget* const objOpen = QApplication::activePopupWidget()) {
        objOpen->close();  // a list would stay open over another page
    }
    LeaveMenuBar();
    m_objTabs.setCurrentIndex(p_iTab);
}

void CPageKeys::LeaveMenuBar() {
    // It takes the focus for an Alt that is released alone. While assistive programs listen, keys
    // reach it late: it can take that of one key with Alt for this, when the next has begun.
    if (auto* const objMenu = qobject_cast<QMenuBar*>(QApplication::focusWidget())) {
        QKeyEvent objEscape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(objMenu, &objEscape);
    }
}

void CPageKeys::AddKey(const char* p_strKey, const std::vector<QPushButton*>& p_objButtons) {
    auto* const objKey = new QShortcut(QKeySequence(p_strKey), m_objTabs.window());
    objKey->setAutoRepeat(false);
    connect(objKey, &QShortcut::activated, this, [this, p_objButtons] {
        for (QPushButton* const btn : p_objButtons) {
            if (m_objTabs.currentWidget()->isAncestorOf(btn) && btn->isEnabled()) {
                Press(*btn);
                return;  // another tab may be in front by now
            }
        }
    });
    for (QPushButton* const btn : p_objButtons) {
        CFieldTexts::Of(*btn).Set(CFieldTexts::Part::Note, ShownKey(p_strKey));
    }
}

void CPageKeys::Press(QPushButton& p_objButton) {
    // A button that is pressed takes the focus, and has it back when its handler is done.
    const QWidget& objWindow = *m_objTabs.window();
    const QPointer<QWidget> objFormer = objWindow.focusWidget();
    p_objButton.click();
    if (objFormer != nullptr && objFormer->isVisible() && objWindow.focusWidget() == &p_objButton) {
        objFormer->setFocus(Qt::OtherFocusReason);
    }
}

void CPageKeys::PressByReturn(QPushButton& p_objButton) {
    p_objButton.installEventFilter(this);
}

bool CPageKeys::eventFilter(QObject* p_objWatched, QEvent* p_objEvent) {
    if (p_objEvent->type() != QEvent::KeyPress) {
        return false;
    }
    const auto& objKey = *static_cast<const QKeyEvent*>(p_objEvent);
    const bool bReturn = objKey.key() == Qt::Key_Return || objKey.key() == Qt::Key_Enter;
    const auto iModifiers = objKey.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    if (!bReturn || iModifiers != Qt::NoModifier) {
        return false;
    }
    // A key that is held down has closed a dialog, or has pressed the button already.
    if (!objKey.isAutoRepeat()) {
        qobject_cast<QPushButton*>(p_objWatched)->click();
    }
    return true;
}
