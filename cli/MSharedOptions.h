#pragma once

#include <CLI/CLI.hpp>

#include <string>

/// Options that several commands have, each described once.
namespace MSharedOptions {

/// "--reach": for how long a printer is sought, in seconds; see MSeconds::Reach.
void AddReach(CLI::App& p_objTable, double& p_dSeconds);

/// "--pause": the pause between two answers, in seconds; see MSeconds::Pause.
void AddPause(CLI::App& p_objTable, double& p_dSeconds);

/// "--state": the folder of the journals; empty for the usual one.
void AddState(CLI::App& p_objTable, std::string& p_strFolder);

}  // namespace MSharedOptions
