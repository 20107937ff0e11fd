#include "platform/widgets/CQtMessageBox.h"

#include "platform/qt/MText.h"
#include "platform/widgets/MDialogOwner.h"

#include <QApplication>
#include <QMessageBox>

namespace {

QMessageBox::Icon ToQt(MessageIcon p_iIcon) {
    switch (p_iIcon) {
    case MessageIcon::Exclamation:
        return QMessageBox::Warning;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    case MessageIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

}  // namespace

CQtMessageBox::CQtMessageBox(const IEventLoop& p_objEventLoop)
    : m_objEventLoop(p_objEventLoop) {}

void CQtMessageBox::Show(const std::string& p_strText, MessageIcon p_iIcon,
                         const std::string& p_strTitle) {
    Run(p_strText, p_iIcon, p_strTitle, QMessageBox::Ok);
}

bool CQtMessageBox::AskYesNo(const std::string& p_strText) {
    return Run(p_strText, MessageIcon::None, ProgramTitle, QMessageBox::Yes | QMessageBox::No) ==
           QMessageBox::Yes;
}

int CQtMessageBox::Run(const std::string& p_strText, MessageIcon p_iIcon,
                       const std::string& p_strTitle, int p_iButtons) const {
    if (m_objEventLoop.IsClosing()) {
        return QMessageBox::NoButton;
    }
    QMessageBox objBox(ToQt(p_iIcon), MText::ToQt(p_strTitle),
                       MText::ToQt(p_strText).replace(QStringLiteral("\r\n"), QStringLiteral("\n")),
                       QMessageBox::StandardButtons(p_iButtons), MDialogOwner::Find());
    objBox.setTextFormat(Qt::PlainText);
    return objBox.exec();
}

void CQtMessageBox::Beep() {
    if (!m_objEventLoop.IsClosing()) {
        QApplication::beep();
    }
}
