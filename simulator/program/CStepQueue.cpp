#include "simulator/program/CStepQueue.h"

#include <iterator>
#include <utility>

CStepQueue::CStepQueue(std::function<void()> p_fnDue) {
    m_objDelay.setSingleShot(true);
    QObject::connect(&m_objDelay, &QTimer::timeout, &m_objDelay,
                     [this, fnDue = std::move(p_fnDue)] {
                         m_bDelayDone = true;
                         fnDue();
                     });
}

void CStepQueue::Add(std::vector<CWireStep> p_objSteps) {
    std::move(p_objSteps.begin(), p_objSteps.end(), std::back_inserter(m_objSteps));
}

std::optional<CWireStep> CStepQueue::TakeDue() {
    if (m_objSteps.empty() || m_objDelay.isActive()) {
        return std::nullopt;
    }
    if (m_objSteps.front().m_iDelay.count() > 0 && !m_bDelayDone) {
        m_objDelay.start(m_objSteps.front().m_iDelay);
        return std::nullopt;
    }
    m_bDelayDone = false;
    CWireStep objStep = std::move(m_objSteps.front());
    m_objSteps.pop_front();
    return objStep;
}

void CStepQueue::Clear() {
    m_objSteps.clear();
    m_objDelay.stop();
    m_bDelayDone = false;
}
