#include "simulator/CPrinterLog.h"

#include <utility>

CPrinterLog::CPrinterLog(Printer p_objPrinter, CStreamLog& p_objLines, CEventLog* p_objEvents)
    : m_objPrinter(std::move(p_objPrinter))
    , m_objLines(p_objLines)
    , m_objEvents(p_objEvents) {}

void CPrinterLog::Line(std::size_t p_iConnection, std::string_view p_strLine) {
    m_objLines.Line(m_objPrinter.m_bAlone ? 0 : m_objPrinter.m_iNumber, p_iConnection, p_strLine);
}

void CPrinterLog::Event(std::size_t p_iConnection, std::string_view p_strName,
                        const CJsonObject& p_objDetails) {
    if (m_objEvents == nullptr) {
        return;
    }
    CJsonObject objEvent;
    objEvent.Number("printer", m_objPrinter.m_iNumber)
        .Text("address", m_strAddress)
        .Text("link", m_objPrinter.m_strLink);
    if (p_iConnection > 0) {
        objEvent.Number("connection", p_iConnection);
    }
    objEvent.Text("event", p_strName).Append(p_objDetails);
    m_objEvents->Write(objEvent);
}
