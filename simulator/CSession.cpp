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
    const std::size_t iTaken = std::min(p_objBytes.size(), m_objPrinter.MostTaken());
    m_objReader.Feed(p_objBytes.first(iTaken),
                     [&](const CCommandReader::Found& p_objFound) { Found(p_objFound, objSteps); });
    if (m_objPrinter.Took(iTaken)) {
        Mishap("power-cut", "power cut");
        m_objReader = CCommandReader();
        objSteps.clear();
    }
    return objSteps;
}

void CSession::Found(const CCommandReader::Found& p_objFound, std::vector<CWireStep>& p_objSteps) {
    if (m_bClosed) {
        return;
    }
    if (p_objFound.m_bCommand) {
        Take(p_objFound.m_strBytes, p_objSteps);
    } else {
        LeaveOut(p_objFound);
    }
}

void CSession::LeaveOut(const CCommandReader::Found& p_objFound) {
    m_iLeftOut += p_objFound.m_iCount;
    if (++m_iLeftOuts < m_iTellLeftOutAt) {
        return;
    }
    m_iTellLeftOutAt = m_iLeftOuts < MostLeftOut ? m_iLeftOuts + 1 : 2 * m_iLeftOuts;
    const std::size_t iCount = std::exchange(m_iLeftOut, std::size_t{0});
    const bool bAll = p_objFound.m_strBytes.size() == iCount;
    Tell("! left out " + MPrintable::ByteCount(iCount) + " that are no command: " +
             MPrintable::Printable(p_objFound.m_strBytes) + (bAll ? "" : "..."),
         "left-out", CJsonObject().Text("bytes", p_objFound.m_strBytes).Number("count", iCount));
}

void CSession::Take(const std::string& p_strCommand, std::vector<CWireStep>& p_objSteps) {
    CPrinter::Reply objReply = m_objPrinter.Handle(p_strCommand);
    const CDecodedCommand& objCommand = objReply.m_objCommand;
    Tell("> " + MPrintable::Printable(p_strCommand) + "   " + objCommand.Describe(), "received",
         CJsonObject()
             .Text("command", p_strCommand)
             .Text("kind", MCommandKind::Name(objCommand.Kind()))
             .Flag("accepted", objReply.m_bAccepted));
    for (const MStoring::Mishap& objMishap : objReply.m_objMishaps) {
        Mishap(objMishap.m_strWhat, objMishap.m_strText);
    }
    if (m_iWire == Wire::Usb && objReply.m_strAnswer.front() == SettingsHead) {
        objReply.m_strAnswer.insert(0, UsbFrame);
    }
    std::vector<CWireStep> objSteps =
        MFaultPlan::AtAnswer(m_objFaults, ++m_iCommands, objReply.m_strAnswer, objReply.m_strNote);
    if (std::all_of(objSteps.begin(), objSteps.end(),
                    [](const CWireStep& p_objStep) { return p_objStep.m_strBytes.empty(); })) {
        Mishap("silent", "no answer");
    }
    if (objReply.m_bMoved && m_iWire == Wire::Network) {
        if (objSteps.empty()) {
            objSteps.emplace_back();
        }
        objSteps.back().m_bClose = true;
    }
    m_bClosed = !objSteps.empty() && objSteps.back().m_bClose;
    std::move(objSteps.begin(), objSteps.end(), std::back_inserter(p_objSteps));
}

void CSession::Sent(const CWireStep& p_objStep) {
    if (!p_objStep.m_strBytes.empty()) {
        Tell("< " + MPrintable::Printable(p_objStep.m_strBytes) + "   " + p_objStep.m_strNote +
                 ", " + MPrintable::ByteCount(p_objStep.m_strBytes.size()),
             "answered",
             CJsonObject().Text("bytes", p_objStep.m_strBytes).Text("note", p_objStep.m_strNote));
    }
    if (p_objStep.m_bClose) {
        Note("! connection closed on purpose");
    }
}

void CSession::Mishap(std::string_view p_strWhat, std::string_view p_strText) {
    Tell("! " + std::string(p_strText), "fault",
         CJsonObject().Text("what", p_strWhat).Text("text", p_strText));
}

void CSession::Tell(std::string_view p_strLine, std::string_view p_strName,
                    const CJsonObject& p_objDetails) {
    constexpr std::size_t iFrame = 160;  // what else stands in a line and in an event
    if (m_iTold >= MostTold) {
        return;
    }
    Note(p_strLine);
    Event(p_strName, p_objDetails);
    m_iTold += p_strLine.size() + p_objDetails.Size() + iFrame;
    if (m_iTold >= MostTold) {
        Note("! the log of this connection is full: what passes from now on is not told");
        Event("log-full");
    }
}

void CSession::Event(std::string_view p_strName, const CJsonObject& p_objDetails) {
    m_objLog.Event(m_iNumber, p_strName, p_objDetails);
}

void CSession::Note(std::string_view p_strLine) {
    m_objLog.Line(m_iNumber, p_strLine);
}
