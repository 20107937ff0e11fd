#pragma once

#include "cli/CWordTable.h"

#include <string>

/// Completion in fish.
namespace MFishScript {

std::string Make(const CWordTable& p_objWords);

}  // namespace MFishScript
