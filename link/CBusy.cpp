#include "link/CBusy.h"

CBusy::Flow::Flow(CBusy& p_objBusy)
    : m_objBusy(p_objBusy) {
    ++m_objBusy.m_iFlows;
    m_objBusy.BeginBusy();
}

CBusy::Flow::~Flow() {
    --m_objBusy.m_iFlows;
    m_objBusy.EndBusy();
}

CBusy::CBusy(ISessionEvents& p_objEvents)
    : m_objEvents(p_objEvents) {}

void CBusy::BeginBusy() {
    m_iBusy = -1;
    m_objEvents.OnBusy(true);
}

void CBusy::EndBusy() {
    if (m_iFlows > 0) {
        return;
    }
    m_iBusy = 0;
    m_objEvents.OnBusy(false);
}
