#pragma once

#include "cli/CWordTable.h"

#include <string>

/// Completion in zsh.
namespace MZshScript {

std::string Make(const CWordTable& p_objWords);

}  // namespace MZshScript
