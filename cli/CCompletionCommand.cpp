#include "cli/CCompletionCommand.h"

#include "cli/MArgumentKind.h"
#include "cli/MCompletionScript.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace {

constexpr const char* Examples = R"(Examples:
  source <(varden completion bash)
  varden completion zsh > ~/.zfunc/_varden
  varden completion fish > ~/.config/fish/completions/varden.fish

An installed program has them in their places already.)";

}  // namespace

void CCompletionCommand::Describe(CLI::App& p_objTable) {
    m_objTable = &p_objTable;
    p_objTable.add_option("SHELL", m_strShell, "The shell: bash, zsh or fish.")
        ->required()
        ->type_name(MArgumentKind::Shell);
    p_objTable.footer(Examples);
}

MExitCode::Code CCompletionCommand::Run(COutput& p_objOutput) {
    const std::vector<std::string> strShells = MCompletionScript::Shells();
    if (std::ranges::find(strShells, m_strShell) == strShells.end()) {
        throw CCommandError(MExitCode::Wrong,
                            {"There is no completion for \"" + m_strShell + "\"",
                             {},
                             {},
                             "there is one for " + MCompletionScript::Joined(strShells, ", ")});
    }
    // The words are those of all commands, and stand in the table around this one.
    const CWordTable objWords(*m_objTable->get_parent());
    const std::string strScript = MCompletionScript::Script(m_strShell, objWords);
    p_objOutput.Json()["completion"] = {{"shell", m_strShell}, {"script", strScript}};
    p_objOutput.Print(strScript);
    return MExitCode::Done;
}
