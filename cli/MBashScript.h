#pragma once

#include "cli/CWordTable.h"

#include <string>

/// Completion in bash.
namespace MBashScript {

std::string Make(const CWordTable& p_objWords);

}  // namespace MBashScript
