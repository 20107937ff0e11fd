#pragma once

#include "simulator/ISimulatorLog.h"

#include <iosfwd>

/// Writes every line to a stream and flushes it, so that whoever reads along is never behind.
///
/// Whenever the lines change over to another connection, a line naming it comes first; with one
/// connection after the other that is once each.
class CStreamLog : public ISimulatorLog {
public:
    /// @param p_objStream not owned, must outlive the log.
    explicit CStreamLog(std::ostream& p_objStream)
        : m_objStream(p_objStream) {}

    void Line(std::size_t p_iConnection, std::string_view p_strLine) override;

private:
    std::ostream& m_objStream;
    std::size_t m_iLastConnection = 0;
};
