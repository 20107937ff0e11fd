#pragma once

#include "tests/ui/faults/CSeen.h"
#include "tests/ui/recorder/CScene.h"

#include <string>
#include <vector>

/// Sees in a transcript and a window what there is to be seen of a fault.
namespace MSeeing {

/// A box that tells of a failure of the flow: lost characters are none, nor is a value that a field
/// cannot show.
bool IsFailure(const std::string& p_strTold);

/// The lines of the flow: what was told and sent, and whether something is still running.
void Look(const std::vector<std::string>& p_strLines, CSeen& p_objSeen);

/// The lines behind it: whatever is told or sent there, nobody has asked for.
void LookAtRest(const std::vector<std::string>& p_strLines, CSeen& p_objSeen);

/// The labels, the line at the foot, the buttons.
void LookAtWindow(CScene& p_objScene, CSeen& p_objSeen);

}  // namespace MSeeing
