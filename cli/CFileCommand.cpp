#include "cli/CFileCommand.h"

#include "cli/MArgumentKind.h"
#include "cli/MSaving.h"
#include "cli/MSettingCell.h"
#include "cli/MSettingJson.h"
#include "cli/MSettingsFile.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace {

using Json = nlohmann::ordered_json;
using MSettings::Row;

constexpr const char* Examples = R"(Examples:
  varden file shop.dt1
  varden file shop.json --check
  varden file shop.dt1 --save shop.json
  varden file shop.json --save lan.dt2 --defaults

The window's files are .dt1 (parameters and adjustments) and .dt2 (the network),
.json is the command line's own and holds any settings.)";

Json ProblemList(const CFileContent& p_objContent) {
    Json objProblems = Json::array();
    for (const CFileProblem& objProblem : p_objContent.m_objProblems) {
        objProblems.push_back(
            {{"line", objProblem.m_iLine == 0 ? Json(nullptr) : Json(objProblem.m_iLine)},
             {"setting",
              objProblem.m_strSetting.empty() ? Json(nullptr) : Json(objProblem.m_strSetting)},
             {"reason", objProblem.m_strReason}});
    }
    return objProblems;
}

CTable TableOf(const CSnapshot& p_objSnapshot) {
    CTable objTable({"NAME", "LABEL", "VALUE"});
    for (const Row& objRow : MSettings::All()) {
        if (p_objSnapshot.IsKnown(objRow)) {
            objTable.Add({std::string(objRow.m_strName), std::string(objRow.m_strLabel),
                          MSettingCell::Text(objRow, p_objSnapshot.Items())});
        }
    }
    return objTable;
}

std::size_t CountKnown(const CSnapshot& p_objSnapshot) {
    return static_cast<std::size_t>(std::ranges::count_if(
        MSettings::All(), [&](const Row& p_objRow) { return p_objSnapshot.IsKnown(p_objRow); }));
}

}  // namespace

void CFileCommand::Describe(CLI::App& p_objTable) {
    p_objTable.add_option("FILE", m_strFile, "The settings file: .dt1, .dt2 or .json.")
        ->required()
        ->type_name(MArgumentKind::File);
    CLI::Option* const objCheck = p_objTable.add_flag(
        "--check", m_bCheck, "Shows no settings, only everything that is wrong in the file.");
    CLI::Option* const objSave =
        p_objTable
            .add_option("--save", m_strSave,
                        "Writes the settings into another file, of the kind that its name tells.")
            ->type_name(MArgumentKind::File)
            ->excludes(objCheck);
    p_objTable
        .add_flag("--defaults", m_bDefaults,
                  "With --save: gives those settings their defaults that the other file has to "
                  "hold and this one does not.")
        ->needs(objSave);
    p_objTable.add_flag("--force", m_bForce, "With --save: replaces a file that is there already.")
        ->needs(objSave);
    p_objTable.footer(Examples);
}

MExitCode::Code CFileCommand::Run(COutput& p_objOutput) {
    const CFileContent objContent = MSettingsFile::Read(m_objFiles, m_strFile);
    Json& objJson = p_objOutput.Json();
    objJson["file"] = m_strFile;
    objJson["format"] = MSettingsFile::Name(MSettingsFile::KindOf(m_strFile));
    objJson["settings"] = MSettingJson::Values(objContent.m_objSnapshot);
    objJson["raw"] = MSettingJson::RawValues(objContent.m_objSnapshot);
    objJson["problems"] = ProblemList(objContent);
    objJson["saved"] = nullptr;
    Tell(objContent, p_objOutput);
    if (!objContent.m_objProblems.empty()) {
        const std::size_t iCount = objContent.m_objProblems.size();
        throw CCommandError(MExitCode::Wrong,
                            {m_strFile + " is no right settings file",
                             iCount == 1 ? "one thing is wrong in it"
                                         : std::to_string(iCount) + " things are wrong in it",
                             m_strFile,
                             {}});
    }
    if (!m_strSave.empty()) {
        Save(objContent.m_objSnapshot, p_objOutput);
    }
    return MExitCode::Done;
}

void CFileCommand::Tell(const CFileContent& p_objContent, COutput& p_objOutput) const {
    if (!m_bCheck && m_strSave.empty()) {
        p_objOutput.Show(TableOf(p_objContent.m_objSnapshot));
    }
    for (const CFileProblem& objProblem : p_objContent.m_objProblems) {
        p_objOutput.Say(m_strFile + ": " + objProblem.Text());
    }
    if (m_bCheck && p_objContent.m_objProblems.empty()) {
        p_objOutput.Say(m_strFile + ": " + std::to_string(CountKnown(p_objContent.m_objSnapshot)) +
                        " settings, nothing wrong");
    }
}

void CFileCommand::Save(const CSnapshot& p_objSnapshot, COutput& p_objOutput) const {
    const MSaving::Fit objFit = MSaving::FitOf(MSettingsFile::KindOf(m_strSave), p_objSnapshot);
    if (!objFit.m_strMissing.empty() && !m_bDefaults) {
        throw CCommandError(MExitCode::Wrong,
                            {m_strFile + " does not hold all that " + m_strSave + " has to hold",
                             "missing: " + MSaving::Joined(objFit.m_strMissing), m_strSave,
                             "--defaults gives them their defaults"});
    }
    MSaving::CheckFree(m_strSave, m_bForce);
    MSaving::Save(m_objFiles, m_strSave, p_objSnapshot, p_objOutput);
}
