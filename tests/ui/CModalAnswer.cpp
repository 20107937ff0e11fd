#include "tests/ui/CModalAnswer.h"

#include <QApplication>

#include <utility>

namespace {

constexpr int LookEveryMs = 10;
constexpr int PatienceMs = 20'000;

}  // namespace

CModalAnswer::CModalAnswer(const QString& p_strName, std::function<void(QWidget&)> p_fnAction)
    : m_strName(p_strName)
    , m_fnAction(std::move(p_fnAction))
    , m_objDeadline(PatienceMs) {
    QObject::connect(&m_objTimer, &QTimer::timeout, &m_objTimer, [this] { Look(); });
    m_objTimer.start(LookEveryMs);
}

void CModalAnswer::Look() {
    QWidget* const objModal = QApplication::activeModalWidget();
    if (objModal == nullptr || !objModal->isVisible()) {
        return;
    }
    if (m_objDeadline.hasExpired()) {
        objModal->close();
        return;
    }
    if (!m_bDone && (objModal->objectName() == m_strName ||
                     objModal->inherits(m_strName.toLatin1().constData()))) {
        m_bDone = true;
        m_fnAction(*objModal);
    }
}
