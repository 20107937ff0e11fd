#pragma once

#include "tests/ui/faults/CFaultCell.h"
#include "tests/ui/faults/CSeen.h"

#include <string>
#include <vector>

/// What holds of every cell, whatever its recorded outcome says.
namespace MFaultLaws {

/// The laws that p_objSeen breaks, in words. p_objSound is what was seen of the same flow on the
/// same link without a fault.
std::vector<std::string> Broken(const CFaultCell& p_objCell, const CSeen& p_objSeen,
                                const CSeen& p_objSound);

/// The commands of a flow as they are sent from a new window, by hand.
std::vector<std::string> CommandsOf(const CFaultCell& p_objCell);

}  // namespace MFaultLaws
