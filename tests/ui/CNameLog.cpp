#include "tests/ui/CNameLog.h"

#include <QWidget>

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace {

/// As when an assistive program listens; else the toolkit tells nobody. It has no public way to say
/// so.
void Listen(bool p_bOn) {
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(p_bOn);
}

}  // namespace

CNameLog* CNameLog::s_objCurrent = nullptr;

CNameLog::CNameLog() {
    s_objCurrent = this;
    Listen(true);
    m_fnFormer = QAccessible::installUpdateHandler(&CNameLog::Take);
}

CNameLog::~CNameLog() {
    QAccessible::installUpdateHandler(m_fnFormer);
    Listen(m_bFormer);
    s_objCurrent = nullptr;
}

std::vector<std::string> CNameLog::Of(const std::string& p_strControl) const {
    std::vector<std::string> strNames;
    const std::string strBeginning = p_strControl + ": ";
    for (const std::string& strLine : m_strLines) {
        if (strLine.starts_with(strBeginning)) {
            strNames.push_back(strLine.substr(strBeginning.size()));
        }
    }
    return strNames;
}

void CNameLog::Take(QAccessibleEvent* p_objEvent) {
    const auto* const objWidget = qobject_cast<QWidget*>(p_objEvent->object());
    if (s_objCurrent != nullptr && objWidget != nullptr &&
        p_objEvent->type() == QAccessible::NameChanged) {
        s_objCurrent->m_strLines.push_back(objWidget->objectName().toStdString() + ": " +
                                           objWidget->accessibleName().toStdString());
    }
}
