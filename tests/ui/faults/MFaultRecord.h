#pragma once

#include "tests/ui/faults/CFaultCell.h"
#include "tests/ui/faults/CSeen.h"

#include <map>
#include <string>

/// The table of the outcomes, as a text that people read: a heading for each fault on each link,
/// and under it a line for each flow that meets it.
namespace MFaultRecord {

/// What comes of a cell, in one line.
std::string Outcome(const CFaultCell& p_objCell, const CSeen& p_objSeen);

/// Outcomes by Key.
using Outcomes = std::map<std::string, std::string>;

/// "LAN: silent / READ"
std::string Key(const CFaultCell& p_objCell);

/// The table as a text. Throws std::out_of_range when a cell has no outcome.
std::string Text(const Outcomes& p_strOutcomes);

/// What Text was made from.
Outcomes FromText(const std::string& p_strText);

/// A part of an outcome by its name, such as "sent"; empty where there is none.
std::string Part(const std::string& p_strOutcome, const std::string& p_strName);

}  // namespace MFaultRecord
