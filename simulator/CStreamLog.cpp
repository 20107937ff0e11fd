#include "simulator/CStreamLog.h"

#include <ostream>
#include <string>

namespace {

std::string Heading(std::size_t p_iPrinter, std::size_t p_iConnection) {
    std::string strPrinter = p_iPrinter == 0 ? "printer" : "printer " + std::to_string(p_iPrinter);
    const std::string strConnection = "connection " + std::to_string(p_iConnection);
    if (p_iConnection == 0) {
        return strPrinter;
    }
    return p_iPrinter == 0 ? strConnection : strPrinter + ", " + strConnection;
}

}  // namespace

void CStreamLog::Line(std::size_t p_iPrinter, std::size_t p_iConnection,
                      std::string_view p_strLine) {
    if (p_iPrinter != m_iLastPrinter || p_iConnection != m_iLastConnection) {
        m_objStream << Heading(p_iPrinter, p_iConnection) << ":\n";
        m_iLastPrinter = p_iPrinter;
        m_iLastConnection = p_iConnection;
    }
    m_objStream << p_strLine << '\n' << std::flush;
}
