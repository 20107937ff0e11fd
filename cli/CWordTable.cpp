#include "cli/CWordTable.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace {

/// A sentence without its full stop, as shells show it.
std::string Meaning(std::string p_strText) {
    if (p_strText.ends_with('.')) {
        p_strText.pop_back();
    }
    return p_strText;
}

CWordTable::Command CommandOf(const CLI::App& p_objTable) {
    CWordTable::Command objCommand{
        p_objTable.get_name(), Meaning(p_objTable.get_description()), {}, {}};
    for (const CLI::Option* const objOption : p_objTable.get_options()) {
        const std::string strMeaning = Meaning(objOption->get_description());
        const bool bValue = objOption->get_items_expected_max() > 0;
        const std::string strKind = bValue ? objOption->get_type_name() : "";
        if (objOption->get_positional()) {
            objCommand.m_objArguments.push_back({objOption->get_single_name(), strMeaning, strKind,
                                                 objOption->get_items_expected_max() > 1});
            continue;
        }
        std::vector<std::string> strNames;
        for (const std::string& strName : objOption->get_snames()) {
            strNames.push_back("-" + strName);
        }
        for (const std::string& strName : objOption->get_lnames()) {
            strNames.push_back("--" + strName);
        }
        objCommand.m_objOptions.push_back({strNames, strMeaning, strKind});
    }
    return objCommand;
}

void AddKind(std::vector<std::string>& p_strKinds, const std::string& p_strKind) {
    if (!p_strKind.empty() && std::ranges::find(p_strKinds, p_strKind) == p_strKinds.end()) {
        p_strKinds.push_back(p_strKind);
    }
}

}  // namespace

CWordTable::CWordTable(const CLI::App& p_objTables)
    : m_objProgram(CommandOf(p_objTables)) {
    m_objProgram.m_strName.clear();
    for (const CLI::App* const objTable : p_objTables.get_subcommands({})) {
        m_objCommands.push_back(CommandOf(*objTable));
    }
}

std::vector<std::string> CWordTable::Kinds() const {
    std::vector<std::string> strKinds;
    for (const Command& objCommand : m_objCommands) {
        for (const Option& objOption : objCommand.m_objOptions) {
            AddKind(strKinds, objOption.m_strKind);
        }
        for (const Argument& objArgument : objCommand.m_objArguments) {
            AddKind(strKinds, objArgument.m_strKind);
        }
    }
    return strKinds;
}
