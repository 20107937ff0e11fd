#include "simulator/CEventLog.h"

#include <ostream>
#include <utility>

CEventLog::CEventLog(std::ostream& p_objStream, Clock p_fnNow)
    : m_objStream(p_objStream)
    , m_fnNow(std::move(p_fnNow))
    , m_iBegin(m_fnNow()) {}

void CEventLog::Write(const CJsonObject& p_objEvent) {
    const auto iTime = std::chrono::duration_cast<std::chrono::microseconds>(m_fnNow() - m_iBegin);
    CJsonObject objLine;
    objLine.Seconds("time", iTime).Append(p_objEvent);
    m_objStream << objLine.Written() << '\n' << std::flush;
}
