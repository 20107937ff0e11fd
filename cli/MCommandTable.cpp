#include "cli/MCommandTable.h"

#include "cli/CCompletionCommand.h"
#include "cli/CDiffCommand.h"
#include "cli/CFileCommand.h"
#include "cli/CListCommand.h"
#include "cli/CMaintainCommand.h"
#include "cli/CPortsCommand.h"
#include "cli/CReadCommand.h"
#include "cli/CRecoverCommand.h"
#include "cli/CStatusCommand.h"
#include "cli/CWriteCommand.h"

#include <algorithm>
#include <array>

namespace {

template <typename Command>
std::unique_ptr<ICommand> Make(const CEnvironment& p_objEnvironment) {
    if constexpr (std::is_default_constructible_v<Command>) {
        return std::make_unique<Command>();
    } else {
        return std::make_unique<Command>(p_objEnvironment);
    }
}

constexpr std::array Commands{
    MCommandTable::Row{"list", "Shows every setting: its values, its default, how it travels.",
                       &Make<CListCommand>},
    MCommandTable::Row{"read", "Reads settings from a printer.", &Make<CReadCommand>},
    MCommandTable::Row{"write", "Changes settings of a printer, whole or not at all.",
                       &Make<CWriteCommand>},
    MCommandTable::Row{"recover", "Ends changes of printers that were begun and not ended.",
                       &Make<CRecoverCommand>},
    MCommandTable::Row{"status", "Asks a printer for its status.", &Make<CStatusCommand>},
    MCommandTable::Row{"maintain", "Has a printer carry out a maintenance function.",
                       &Make<CMaintainCommand>},
    MCommandTable::Row{"file", "Shows, checks or converts a settings file.", &Make<CFileCommand>},
    MCommandTable::Row{"diff", "Compares two sets of settings.", &Make<CDiffCommand>},
    MCommandTable::Row{"ports", "Shows the serial ports and the USB printers that are here.",
                       &Make<CPortsCommand>},
    MCommandTable::Row{"completion", "Prints a shell's script that completes the program's words.",
                       &Make<CCompletionCommand>},
};

}  // namespace

namespace MCommandTable {

std::span<const Row> All() {
    return Commands;
}

const Row* Find(std::string_view p_strName) {
    const auto* const objFound = std::ranges::find(Commands, p_strName, &Row::m_strName);
    return objFound == Commands.end() ? nullptr : objFound;
}

}  // namespace MCommandTable
