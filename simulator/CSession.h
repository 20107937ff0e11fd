#pragma once

#include "simulator/CCommandReader.h"
#include "simulator/CFaultSettings.h"
#include "simulator/CPrinter.h"
#include "simulator/CWireStep.h"
#include "simulator/ISimulatorLog.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// One connection to the printer: bytes in, steps for the wire out, and a line for each of both.
///
/// Lines begin with "> " for a command received, "< " for bytes sent, "! " for what went wrong.
/// Whoever owns the wire carries the steps out in order and tells each by Sent.
class CSession {
public:
    /// What the connection runs on. On USB two bytes stand before each settings answer.
    enum class Wire : std::uint8_t { Stream, Usb };

    /// @param p_iNumber the connection's number in the log, counted from 1.
    /// The printer and the log are not owned and must outlive the session.
    CSession(std::size_t p_iNumber, CPrinter& p_objPrinter, CFaultSettings p_objFaults,
             ISimulatorLog& p_objLog, Wire p_iWire = Wire::Stream);

    /// The steps as soon as the connection stands.
    std::vector<CWireStep> Connected();

    /// Takes the next bytes; the steps that answer the commands they complete. As many as the
    /// bytes ask for: pass blocks of a size whose answers can be held. Behind a step that closes,
    /// nothing is taken any more.
    std::vector<CWireStep> Received(std::span<const std::uint8_t> p_objBytes);

    /// Tells the log that a step has been carried out.
    void Sent(const CWireStep& p_objStep);

    /// Tells the log anything else about this connection.
    void Note(std::string_view p_strLine);

private:
    void Found(const CCommandReader::Found& p_objFound, std::vector<CWireStep>& p_objSteps);

    std::size_t m_iNumber;
    CPrinter& m_objPrinter;
    CFaultSettings m_objFaults;
    ISimulatorLog& m_objLog;
    Wire m_iWire;
    CCommandReader m_objReader;
    std::size_t m_iCommands = 0;
    bool m_bClosed = false;
};
