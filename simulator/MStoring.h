#pragma once

#include "simulator/CDecodedCommand.h"
#include "simulator/CStateFaults.h"

#include <string>
#include <vector>

/// What becomes of the settings when a command is carried out, faults included.
namespace MStoring {

/// Something that has gone wrong on purpose.
struct Mishap {
    std::string m_strWhat;  ///< what kind: "refused", "unchanged", "half-stored"
    std::string m_strText;  ///< the same in words, with what it concerns
};

/// True when the item p_strName does not change, whatever happens.
bool IsStuck(const CStateFaults& p_objFaults, std::string_view p_strName);

/// Stores the fields of a valid command, or as much as the faults let through; what went wrong.
/// @param p_strCommand the same command as it came.
std::vector<Mishap> Store(const CDecodedCommand& p_objCommand, std::string_view p_strCommand,
                          const CStateFaults& p_objFaults);

}  // namespace MStoring
