#include "cli/CTargetWays.h"

std::unique_ptr<IPrinter> CTargetWays::At(const CPrinterPlace& p_objPlace) {
    try {
        auto objPrinter = m_objPrinters.Connect(m_objTarget.At(p_objPlace), m_iPause, m_objEvents);
        m_bMet = true;
        m_objRefusal.reset();
        return objPrinter;
    } catch (const CCommandError& objError) {
        if (!m_bMet) {
            throw;
        }
        m_objRefusal.emplace(objError);
        return nullptr;  // unplugged, or not there again yet
    }
}

bool CTargetWays::IsTaken(const CPrinterPlace& p_objPlace) {
    return m_objPrinters.IsTaken(m_objTarget.At(p_objPlace));
}
