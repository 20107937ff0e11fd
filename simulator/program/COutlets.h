#pragma once

#include "simulator/CEventLog.h"
#include "simulator/CPrinter.h"
#include "simulator/CPrinterLog.h"
#include "simulator/CStreamLog.h"

#include <fstream>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

/// Where the program tells what passes and what its printers hold: lines on a stream, events in a
/// file, and in another, each time it is asked, the settings of all printers.
class COutlets {
public:
    /// @param p_objLines not owned, must outlive this.
    /// @param p_strEvents, p_strDump names of files; empty for none.
    /// Throws std::runtime_error when the events' file cannot be written.
    COutlets(std::ostream& p_objLines, const std::string& p_strEvents, std::string p_strDump);

    [[nodiscard]] CStreamLog& Lines() { return m_objLines; }
    /// Null when nobody wants events.
    [[nodiscard]] CEventLog* Events() { return m_objEvents ? &*m_objEvents : nullptr; }

    /// From now on this printer is among those that are written. Neither is owned; both must
    /// outlive the last Dump.
    void Watch(const CPrinter& p_objPrinter, const CPrinterLog& p_objLog);

    /// Writes the settings of all printers into their file, which at any time is whole, and says so
    /// on the stream. Does nothing when there is no such file. False when it cannot be written.
    [[nodiscard]] bool Dump();

private:
    struct Watched {
        const CPrinter* m_objPrinter;
        const CPrinterLog* m_objLog;
    };

    std::ostream& m_objStream;
    CStreamLog m_objLines;
    std::ofstream m_objFile;
    std::optional<CEventLog> m_objEvents;
    std::string m_strDump;
    std::vector<Watched> m_objWatched;
};
