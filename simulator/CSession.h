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
/// Lines begin with "> " for a command received, "< " for bytes sent, "! " for what went wrong;
/// events say the same for programs. The log of one connection is bounded, whatever comes: bytes
/// that are no command are told one by one MostLeftOut times, and then together, each time that
/// they have come as often again; behind MostTold bytes, which it says, nothing passes into the log
/// any more. Whoever owns the wire carries the steps out in order and tells each by Sent; and
/// looks, when bytes have been received, whether the printer still has power and is where it was.
class CSession {
public:
    /// What the connection runs on. On USB two bytes stand before each settings answer; only on
    /// a network does a printer that moves hang up.
    enum class Wire : std::uint8_t { Network, Serial, Usb };

    /// How often bytes that are no command are told of as they come.
    static constexpr std::size_t MostLeftOut = 100;
    /// The bytes of lines and events that a connection's traffic may come to in the log.
    static constexpr std::size_t MostTold = 16'777'216;

    /// @param p_iNumber the connection's number in the log, counted from 1.
    /// The printer and the log are not owned and must outlive the session.
    CSession(std::size_t p_iNumber, CPrinter& p_objPrinter, CFaultSettings p_objFaults,
             ISimulatorLog& p_objLog, Wire p_iWire = Wire::Network);

    /// The steps as soon as the connection stands.
    std::vector<CWireStep> Connected();

    /// Takes the next bytes; the steps that answer the commands they complete. As many as the
    /// bytes ask for: pass blocks of a size whose answers can be held. Behind a step that closes,
    /// nothing is taken any more. When the power goes meanwhile there are no steps, and whoever
    /// owns the wire forgets those that it still has.
    std::vector<CWireStep> Received(std::span<const std::uint8_t> p_objBytes);

    /// True when a step that closes is among those given out.
    [[nodiscard]] bool IsClosing() const { return m_bClosed; }

    /// Tells the log that a step has been carried out.
    void Sent(const CWireStep& p_objStep);

    /// Tells the log anything else about this connection, also when it is full.
    void Note(std::string_view p_strLine);
    void Event(std::string_view p_strName, const CJsonObject& p_objDetails = {});

private:
    void Take(const std::string& p_strCommand, std::vector<CWireStep>& p_objSteps);
    void LeaveOut(const CCommandReader::Found& p_objFound);
    void Mishap(std::string_view p_strWhat, std::string_view p_strText);
    void Found(const CCommandReader::Found& p_objFound, std::vector<CWireStep>& p_objSteps);
    void Tell(std::string_view p_strLine, std::string_view p_strName,
              const CJsonObject& p_objDetails);

    std::size_t m_iNumber;
    CPrinter& m_objPrinter;
    CFaultSettings m_objFaults;
    ISimulatorLog& m_objLog;
    Wire m_iWire;
    CCommandReader m_objReader;
    std::size_t m_iCommands = 0;
    bool m_bClosed = false;
    std::size_t m_iTold = 0;           // bytes
    std::size_t m_iLeftOut = 0;        // bytes that are no command, of which nothing is told yet
    std::size_t m_iLeftOuts = 0;       // how often such have come
    std::size_t m_iTellLeftOutAt = 1;  // how often until they are told
};
