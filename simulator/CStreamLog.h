#pragma once

#include "simulator/ISimulatorLog.h"

#include <iosfwd>

/// Writes every line to a stream and flushes it, so that whoever reads along is never behind.
///
/// Whenever the lines change over to another connection, or to another printer, a line naming it
/// comes first; with one connection after the other that is once each.
class CStreamLog : public ISimulatorLog {
public:
    /// @param p_objStream not owned, must outlive the log.
    explicit CStreamLog(std::ostream& p_objStream)
        : m_objStream(p_objStream) {}

    void Line(std::size_t p_iConnection, std::string_view p_strLine) override {
        Line(0, p_iConnection, p_strLine);
    }

    /// The same for one printer of several, counted from 1; 0: it is the only one.
    void Line(std::size_t p_iPrinter, std::size_t p_iConnection, std::string_view p_strLine);

private:
    std::ostream& m_objStream;
    std::size_t m_iLastPrinter = 0;
    std::size_t m_iLastConnection = 0;
};
