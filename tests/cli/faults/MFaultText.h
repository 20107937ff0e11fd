#pragma once

#include "tests/cli/faults/MFaultCells.h"

#include <string>

/// What has come of a cell, in words: what stands in the files beside this, and on the page.
namespace MFaultText {

/// For the page, in one line: the exit code, what "error" says, how much went out.
std::string Brief(const MFaultCells::Cell& p_objCell, const CFaultOutcome& p_objOutcome);

/// Everything, in lines of its own: first the brief one.
std::string Whole(const MFaultCells::Cell& p_objCell, const MFaultCells::Played& p_objPlayed);

/// A row's file: all cells of a row, on all links.
std::string File(const MFaultRows::Row& p_objRow);

}  // namespace MFaultText
