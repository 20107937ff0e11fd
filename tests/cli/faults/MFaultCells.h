#pragma once

#include "tests/cli/faults/CFaultScene.h"

#include <string>
#include <vector>

/// The cells of the table of faults: what comes of one command line, on one link, with one fault at
/// one of its moments.
namespace MFaultCells {

struct Cell {
    const MFaultRows::Row* m_objRow = nullptr;
    MFaults::Link m_iLink = MFaults::Link::Lan;
    const MFaultRows::Moment* m_objMoment = nullptr;  ///< null: nothing goes wrong
    const MFaults::Fault* m_objFault = nullptr;
    CFaultyPrinter::Plan m_objPlan{};

    /// "LAN, the first request: no answer"; no other cell of its row has the same.
    [[nodiscard]] std::string Heading() const;
    /// The part of it that is not the link.
    [[nodiscard]] std::string Fault() const;
};

/// The commands that a row sends when nothing goes wrong.
std::vector<std::string> Commands(const MFaultRows::Row& p_objRow, MFaults::Link p_iLink);

/// All cells of a row on a link, first the one in which nothing goes wrong.
std::vector<Cell> Of(const MFaultRows::Row& p_objRow, MFaults::Link p_iLink);

/// A cell, played: its outcome, and whether a person who heeds the outcome gets out of it.
struct Played {
    CFaultOutcome m_objOutcome;
    /// Where a journal stands behind it: the exit code of "varden recover TARGET --restore" with
    /// a printer that is well, and whether the printer is then as it was before the change.
    int m_iRecovered = CFaultOutcome::NoCode;
    bool m_bRestored = false;
};

Played Play(const Cell& p_objCell);

}  // namespace MFaultCells
