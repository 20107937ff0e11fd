#include "simulator/CStreamLog.h"

#include <ostream>

void CStreamLog::Line(std::size_t p_iConnection, std::string_view p_strLine) {
    if (p_iConnection != m_iLastConnection) {
        m_objStream << "connection " << p_iConnection << ":\n";
        m_iLastConnection = p_iConnection;
    }
    m_objStream << p_strLine << '\n' << std::flush;
}
