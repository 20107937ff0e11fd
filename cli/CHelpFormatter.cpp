#include "cli/CHelpFormatter.h"

#include "cli/MParagraph.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t Width = 80;
constexpr std::size_t Indent = 2;

/// Something and what it is: a column each.
using Entry = std::pair<std::string, std::string>;

std::string Section(const std::string& p_strHead, const std::vector<Entry>& p_strEntries) {
    if (p_strEntries.empty()) {
        return {};
    }
    std::size_t iColumn = 0;
    for (const Entry& strEntry : p_strEntries) {
        iColumn = std::max(iColumn, strEntry.first.size() + 2 * Indent);
    }
    std::string strText = "\n" + p_strHead + ":\n";
    for (const auto& [strName, strMeaning] : p_strEntries) {
        std::string strBegin = MParagraph::Pad(std::string(Indent, ' ') + strName, iColumn);
        for (const std::string& strLine : MParagraph::Wrap(strMeaning, Width - iColumn)) {
            strText += strBegin + strLine + "\n";
            strBegin.assign(iColumn, ' ');
        }
    }
    return strText;
}

/// An argument as it stands in a call: "SETTING...".
std::string Call(const CLI::Option& p_objOption) {
    return p_objOption.get_single_name() + (p_objOption.get_items_expected_max() > 1 ? "..." : "");
}

/// An option with its other name and its value: "-h, --help", "--save FILE".
std::string Names(const CLI::Option& p_objOption) {
    std::string strNames;
    for (const std::string& strName : p_objOption.get_snames()) {
        strNames += "-" + strName + ", ";
    }
    strNames += "--" + p_objOption.get_lnames().front();
    const bool bValue = p_objOption.get_items_expected_max() > 0;
    return bValue ? strNames + " " + p_objOption.get_type_name() : strNames;
}

std::string Usage(const CLI::App& p_objTable, const std::string& p_strName) {
    std::string strUsage = "Usage: " + p_strName;
    if (!p_objTable.get_subcommands({}).empty()) {
        return strUsage + " COMMAND [OPTION...] [ARGUMENT...]\n";
    }
    strUsage += " [OPTION...]";
    for (const CLI::Option* const objOption : p_objTable.get_options()) {
        if (objOption->get_positional()) {
            const std::string strCall = Call(*objOption);
            strUsage += objOption->get_required() ? " " + strCall : " [" + strCall + "]";
        }
    }
    return strUsage + "\n";
}

}  // namespace

std::string CHelpFormatter::make_help(const CLI::App* p_objTable, std::string p_strName,
                                      CLI::AppFormatMode /*p_iMode*/) const {
    // The parser puts a blank in front of the first name.
    p_strName.erase(0, p_strName.find_first_not_of(' '));
    std::vector<Entry> strCommands;
    std::vector<Entry> strArguments;
    std::vector<Entry> strOptions;
    for (const CLI::App* const objCommand : p_objTable->get_subcommands({})) {
        strCommands.emplace_back(objCommand->get_name(), objCommand->get_description());
    }
    for (const CLI::Option* const objOption : p_objTable->get_options()) {
        const bool bArgument = objOption->get_positional();
        (bArgument ? strArguments : strOptions)
            .emplace_back(bArgument ? Call(*objOption) : Names(*objOption),
                          objOption->get_description());
    }
    std::string strText;
    for (const std::string& strLine : MParagraph::Wrap(p_objTable->get_description(), Width)) {
        strText += strLine + "\n";
    }
    strText += "\n" + Usage(*p_objTable, p_strName) + Section("Commands", strCommands) +
               Section("Arguments", strArguments) + Section("Options", strOptions);
    const std::string& strFooter = p_objTable->get_footer();
    return strFooter.empty() ? strText : strText + "\n" + strFooter + "\n";
}
