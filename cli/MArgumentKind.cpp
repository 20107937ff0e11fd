#include "cli/MArgumentKind.h"

#include "cli/CDefaultsSource.h"
#include "cli/CTarget.h"
#include "cli/MCompletionScript.h"
#include "cli/MMaintenance.h"
#include "model/MSettings.h"
#include "protocol/MSettingRoute.h"

#include <algorithm>
#include <stdexcept>

namespace {

std::vector<std::string> SettingNames() {
    std::vector<std::string> strNames;
    for (const MSettings::Row& objRow : MSettings::All()) {
        strNames.emplace_back(objRow.m_strName);
    }
    return strNames;
}

/// "feed-adj=", of all that a printer can be told.
std::vector<std::string> Assignments() {
    std::vector<std::string> strWords;
    for (const MSettings::Row& objRow : MSettings::All()) {
        if (MSettingRoute::CarriedBy(objRow) != MSettingRoute::Command::None) {
            strWords.push_back(std::string(objRow.m_strName) + "=");
        }
    }
    return strWords;
}

std::vector<std::string> Entries(std::string_view p_strName) {
    const auto& strEntries = MSettings::Get(p_strName).m_strEntries;
    return {strEntries.begin(), strEntries.end()};
}

std::vector<std::string> SideWords() {
    std::vector<std::string> strWords{CDefaultsSource::Name};
    const std::vector<std::string> strTargets = CTarget::Beginnings();
    strWords.insert(strWords.end(), strTargets.begin(), strTargets.end());
    return strWords;
}

std::vector<std::string> FunctionNames() {
    std::vector<std::string> strNames;
    for (const MMaintenance::Function& objFunction : MMaintenance::All()) {
        strNames.emplace_back(objFunction.m_strName);
    }
    return strNames;
}

/// The fields of all functions, those of lists with each of their values; what several functions
/// take once.
std::vector<std::string> FieldWords() {
    std::vector<std::string> strWords;
    const auto fnAdd = [&](const std::string& p_strWord) {
        if (std::ranges::find(strWords, p_strWord) == strWords.end()) {
            strWords.push_back(p_strWord);
        }
    };
    for (const MMaintenance::Function& objFunction : MMaintenance::All()) {
        for (const MMaintenance::Field& objField : objFunction.m_objFields) {
            const std::string strBegin = std::string(objField.m_strName) + "=";
            const std::vector<std::string> strNames = MMaintenance::NamesOf(objField);
            for (const std::string& strName : strNames) {
                fnAdd(strBegin + strName);
            }
            if (strNames.empty()) {
                fnAdd(strBegin);
            }
        }
    }
    return strWords;
}

}  // namespace

namespace MArgumentKind {

std::span<const Row> All() {
    static const std::vector<Row> Rows{
        {Setting, false, SettingNames()},
        {File, true, {}},
        {Side, true, SideWords()},
        {Target, false, CTarget::Beginnings()},
        {Function, false, FunctionNames()},
        {Field, false, FieldWords()},
        {Shell, false, MCompletionScript::Shells()},
        {Seconds, false, {}},
        {Assignment, false, Assignments()},
        {Folder, true, {}},
        {Name, false, {}},
        {StopBit, false, Entries("stop-bit")},
    };
    return Rows;
}

const Row& Get(std::string_view p_strName) {
    const auto objFound = std::ranges::find(All(), p_strName, &Row::m_strName);
    if (objFound == All().end()) {
        throw std::logic_error("no argument is a " + std::string(p_strName));
    }
    return *objFound;
}

}  // namespace MArgumentKind
