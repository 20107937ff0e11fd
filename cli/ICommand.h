#pragma once

#include "cli/COutput.h"
#include "cli/MExitCode.h"

namespace CLI {
class App;
}

/// One command of the program.
class ICommand {
public:
    virtual ~ICommand() = default;

    /// Adds its arguments, options and examples to its table. Called once, before Run, which finds
    /// in its members what the command line has said. Help, "--json" and its name are there
    /// already.
    virtual void Describe(CLI::App& p_objTable) = 0;

    /// Does what the command line asks for. Throws CCommandError when that cannot be.
    virtual MExitCode::Code Run(COutput& p_objOutput) = 0;
};
