#include "platform/qt/CSerialLineWatch.h"

void CSerialLineWatch::Begin(ILineState::Handle p_iPort) {
    const ILineState::Reading objNow = m_objLine.Read(p_iPort);
    m_iOverruns = objNow.m_iOverruns;
    if (m_bClearToSend) {
        m_bClearToSend = objNow.m_bClearToSend.value_or(true);
    }
    m_bSeesAnything = true;  // the first look tells
}

CSerialLineWatch::Change CSerialLineWatch::Look(ILineState::Handle p_iPort) {
    const ILineState::Reading objNow = m_objLine.Read(p_iPort);
    m_bSeesAnything = objNow.m_bClearToSend.has_value() || objNow.m_iOverruns.has_value();
    const bool bClearToSend = objNow.m_bClearToSend.value_or(true);
    const Change objChange{bClearToSend != m_bClearToSend, objNow.m_iOverruns && m_iOverruns &&
                                                               *objNow.m_iOverruns != *m_iOverruns};
    m_bClearToSend = bClearToSend;
    m_iOverruns = objNow.m_iOverruns;
    return objChange;
}
