#include "cli/CTargetWays.h"

#include "cli/CCommandError.h"

std::unique_ptr<IPrinter> CTargetWays::At(const CPrinterPlace& p_objPlace) {
    try {
        auto objPrinter = m_objPrinters.Connect(m_objTarget.At(p_objPlace), m_iPause, m_objEvents);
        m_bMet = true;
        return objPrinter;
    } catch (const CCommandError&) {
        if (!m_bMet) {
            throw;
        }
        return nullptr;  // unplugged, or not there again yet
    }
}

bool CTargetWays::IsTaken(const CPrinterPlace& p_objPlace) {
    return m_objPrinters.IsTaken(m_objTarget.At(p_objPlace));
}
