#include "simulator/CSession.h"

#include "simulator/MFaultPlan.h"
#include "simulator/MPrintable.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace {

/// What stands on USB before a settings answer as the other links have it.
constexpr std::string_view UsbFrame = "\x02\x30";
constexpr char SettingsHead = '{';

}  // namespace

CSession::CSession(std::size_t p_iNumber, CPrinter& p_objPrinter, CFaultSettings p_objFaults,
                   ISimulatorLog& p_objLog, Wire p_iWire)
    : m_iNumber(p_iNumber)
    , m_objPrinter(p_objPrinter)
    , m_objFaults(std::move(p_objFaults))
    , m_objLog(p_objLog)
    , m_iWire(p_iWire) {}

std::vector<CWireStep> CSession::Connected() {
    std::vector<CWireStep> objSteps = MFaultPlan::AtConnect(m_objFaults);
    m_bClosed = !objSteps.empty();
    return objSteps;
}

std::vector<CWireStep> CSession::Received(std::span<const std::uint8_t> p_objBytes) {
    std::vector<CWireStep> objSteps;
    m_objReader.Feed(p_objBytes,
                     [&](const CCommandReader::Found& p_objFound) { Found(p_objFound, objSteps); });
    return objSteps;
}

void CSession::Found(const CCommandReader::Found& p_objFound, std::vector<CWireStep>& p_objSteps) {
    if (m_bClosed) {
        return;
    }
    const std::string strBytes = MPrintable::Printable(p_objFound.m_strBytes);
    if (!p_objFound.m_bCommand) {
        const bool bAll = p_objFound.m_strBytes.size() == p_objFound.m_iCount;
        Note("! left out " + MPrintable::ByteCount(p_objFound.m_iCount) +
             " that are no command: " + strBytes + (bAll ? "" : "..."));
        return;
    }
    CPrinter::Reply objReply = m_objPrinter.Handle(p_objFound.m_strBytes);
    Note("> " + strBytes + "   " + objReply.m_objCommand.Describe());
    if (m_iWire == Wire::Usb && objReply.m_strAnswer.front() == SettingsHead) {
        objReply.m_strAnswer.insert(0, UsbFrame);
    }
    std::vector<CWireStep> objSteps =
        MFaultPlan::AtAnswer(m_objFaults, ++m_iCommands, objReply.m_strAnswer, objReply.m_strNote);
    if (std::all_of(objSteps.begin(), objSteps.end(),
                    [](const CWireStep& p_objStep) { return p_objStep.m_strBytes.empty(); })) {
        Note("! no answer");
    }
    m_bClosed = !objSteps.empty() && objSteps.back().m_bClose;
    std::move(objSteps.begin(), objSteps.end(), std::back_inserter(p_objSteps));
}

void CSession::Sent(const CWireStep& p_objStep) {
    if (!p_objStep.m_strBytes.empty()) {
        Note("< " + MPrintable::Printable(p_objStep.m_strBytes) + "   " + p_objStep.m_strNote +
             ", " + MPrintable::ByteCount(p_objStep.m_strBytes.size()));
    }
    if (p_objStep.m_bClose) {
        Note("! connection closed on purpose");
    }
}

void CSession::Note(std::string_view p_strLine) {
    m_objLog.Line(m_iNumber, p_strLine);
}
