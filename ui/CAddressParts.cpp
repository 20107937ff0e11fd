#include "ui/CAddressParts.h"

#include "ui/UCSpinEdit.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QStringList>

#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype PartCount = 4;
constexpr int HighestPart = 255;

/// The four parts; empty when p_strText is no address.
QStringList PartsOf(const QString& p_strText) {
    const QStringList strParts = p_strText.trimmed().split('.');
    const bool bAddress =
        strParts.size() == PartCount && std::ranges::all_of(strParts, [](const QString& p_strPart) {
            bool bNumber = false;
            return p_strPart.toUInt(&bNumber) <= HighestPart && bNumber;
        });
    return bAddress ? strParts : QStringList();
}

/// What p_objEvent would put into a text box; empty when it is no such event.
QString Pasted(const QEvent& p_objEvent) {
    const QClipboard& objClipboard = *QGuiApplication::clipboard();
    switch (p_objEvent.type()) {
    case QEvent::KeyPress:
        return static_cast<const QKeyEvent&>(p_objEvent).matches(QKeySequence::Paste)
                   ? objClipboard.text()
                   : QString();
    case QEvent::MouseButtonRelease:
        return static_cast<const QMouseEvent&>(p_objEvent).button() == Qt::MiddleButton &&
                       objClipboard.supportsSelection()
                   ? objClipboard.text(QClipboard::Selection)
                   : QString();
    case QEvent::Drop:
        return static_cast<const QDropEvent&>(p_objEvent).mimeData()->text();
    default:
        return {};
    }
}

}  // namespace

CAddressParts::CAddressParts(std::vector<UCSpinEdit*> p_objParts, QObject* p_objOwner)
    : QObject(p_objOwner)
    , m_objParts(std::move(p_objParts)) {
    for (UCSpinEdit* const Se : m_objParts) {
        Se->installEventFilter(this);  // hears the keys
        Se->findChild<QLineEdit*>("CText")->installEventFilter(this);
    }
}

bool CAddressParts::eventFilter(QObject* p_objWatched, QEvent* p_objEvent) {
    const QString strPasted = Pasted(*p_objEvent);
    if (!strPasted.isEmpty()) {
        return Fill(strPasted);
    }
    return p_objEvent->type() == QEvent::KeyPress &&
           static_cast<const QKeyEvent*>(p_objEvent)->text() == "." && GoOn(p_objWatched);
}

bool CAddressParts::GoOn(const QObject* p_objWatched) const {
    const auto objPart = std::ranges::find(m_objParts, p_objWatched);
    if (objPart == m_objParts.end()) {
        return false;
    }
    if (objPart + 1 != m_objParts.end()) {
        UCSpinEdit& Se = **(objPart + 1);
        Se.setFocus(Qt::TabFocusReason);
        Se.selectAll();
    }
    return true;  // no part has a point in it
}

bool CAddressParts::Fill(const QString& p_strText) const {
    const QStringList strParts = PartsOf(p_strText);
    for (qsizetype i = 0; i < strParts.size(); ++i) {
        UCSpinEdit& Se = *m_objParts[static_cast<std::size_t>(i)];
        Se.Enter(strParts[i]);
        if (Se.window()->focusWidget() == &Se) {
            Se.selectAll();
        }
    }
    return !strParts.isEmpty();
}
