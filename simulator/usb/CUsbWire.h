#pragma once

#include "simulator/CSession.h"

#include <chrono>
#include <deque>
#include <optional>
#include <string>

/// The printer's two pipes: what is written into one comes out of the other as answers, each
/// piece at its time.
class CUsbWire {
public:
    using Clock = std::chrono::steady_clock;

    /// The printer and the log are not owned and outlive this.
    CUsbWire(CPrinter& p_objPrinter, const CFaultSettings& p_objFaults, ISimulatorLog& p_objLog);

    /// Takes bytes that the computer has sent; how many of them the printer has got. Fewer than
    /// all when its power has gone meanwhile.
    std::size_t Write(std::span<const std::uint8_t> p_objBytes);

    /// True while the printer has power.
    [[nodiscard]] bool IsOn() const { return m_objPrinter.IsOn(); }

    /// True when there are bytes to read by now.
    [[nodiscard]] bool HasAnswer();

    /// Takes at most p_iMost of the bytes that are due; one piece of an answer at a time.
    std::string Read(std::size_t p_iMost);

    /// Throws away the bytes that Read would give.
    void Drop();

    /// True once the printer has hung up on purpose.
    [[nodiscard]] bool IsClosed();

private:
    void Advance();
    void Schedule(const std::vector<CWireStep>& p_objSteps);

    CPrinter& m_objPrinter;
    CSession m_objSession;
    std::deque<CWireStep> m_objSteps;
    Clock::time_point m_iStepDue;  // of the first step
    std::string m_strDue;          // the piece that is to be read
    bool m_bClosed = false;
};
