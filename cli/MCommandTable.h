#pragma once

#include "cli/CEnvironment.h"
#include "cli/ICommand.h"

#include <memory>
#include <span>
#include <string_view>

/// The program's commands: one row a command, one class a row.
namespace MCommandTable {

struct Row {
    std::string_view m_strName;
    std::string_view m_strSummary;  ///< a line, as the list of commands shows it
    std::unique_ptr<ICommand> (*m_fnMake)(const CEnvironment& p_objEnvironment);
};

/// All commands, in the order in which the help shows them.
std::span<const Row> All();

/// The command of that name, or null.
const Row* Find(std::string_view p_strName);

}  // namespace MCommandTable
