#include "simulator/program/COutlets.h"

#include "simulator/MDump.h"

#include <filesystem>
#include <ostream>
#include <stdexcept>
#include <system_error>
#include <utility>

COutlets::COutlets(std::ostream& p_objLines, const std::string& p_strEvents, std::string p_strDump)
    : m_objStream(p_objLines)
    , m_objLines(p_objLines)
    , m_strDump(std::move(p_strDump)) {
    if (p_strEvents.empty()) {
        return;
    }
    m_objFile.open(p_strEvents);
    if (!m_objFile) {
        throw std::runtime_error("Cannot write " + p_strEvents + ".");
    }
    m_objEvents.emplace(m_objFile);
}

void COutlets::Watch(const CPrinter& p_objPrinter, const CPrinterLog& p_objLog) {
    m_objWatched.push_back({&p_objPrinter, &p_objLog});
}

bool COutlets::Dump() {
    if (m_strDump.empty()) {
        return true;
    }
    const std::string strUnfinished = m_strDump + ".part";
    std::ofstream objFile(strUnfinished);
    objFile << "{\"printers\": [";
    const char* strBetween = "\n";
    for (const Watched& objWatched : m_objWatched) {
        CJsonObject objPrinter;
        objPrinter.Number("printer", objWatched.m_objLog->Whose().m_iNumber)
            .Text("address", objWatched.m_objLog->Address())
            .Text("link", objWatched.m_objLog->Whose().m_strLink)
            .Append(MDump::Of(*objWatched.m_objPrinter));
        objFile << std::exchange(strBetween, ",\n") << objPrinter.Written();
    }
    objFile << "\n]}\n";
    objFile.close();
    std::error_code objError;
    if (objFile) {
        std::filesystem::rename(strUnfinished, m_strDump, objError);
    }
    if (!objFile || objError) {
        return false;
    }
    m_objStream << "Settings written to " << m_strDump << std::endl;
    return true;
}
