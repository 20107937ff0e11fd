#pragma once

#include "cli/CWordTable.h"

#include <string>
#include <string_view>
#include <vector>

/// Scripts by which shells complete the program's words. They hold all the words themselves:
/// neither the program nor a printer is asked.
namespace MCompletionScript {

/// "bash", "zsh" and "fish".
std::vector<std::string> Shells();

/// The script for a shell of Shells().
std::string Script(std::string_view p_strShell, const CWordTable& p_objWords);

/// p_strText between single quotes, as every shell of Shells() reads it; a single quote in it
/// becomes a typographic one.
std::string Quoted(std::string_view p_strText);

/// Texts with a blank between them.
std::string Joined(const std::vector<std::string>& p_strTexts, std::string_view p_strBetween = " ");

}  // namespace MCompletionScript
