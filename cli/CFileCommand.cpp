#include "cli/CFileCommand.h"

#include "cli/MArgumentKind.h"
#include "cli/MSettingJson.h"
#include "cli/MSettingsFile.h"
#include "cli/MUtf8.h"
#include "model/MSettingText.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <system_error>

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

std::string Joined(const std::vector<std::string>& p_strNames) {
    std::string strText;
    for (const std::string& strName : p_strNames) {
        strText += (strText.empty() ? "" : ", ") + strName;
    }
    return strText;
}

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
            const auto strValue = MSettingText::Show(objRow, p_objSnapshot.Items());
            objTable.Add({std::string(objRow.m_strName), std::string(objRow.m_strLabel),
                          strValue ? MUtf8::FromLatin1(*strValue)
                                   : "none of its values: " + MUtf8::FromLatin1(MSettingText::Raw(
                                                                  objRow, p_objSnapshot.Items()))});
        }
    }
    return objTable;
}

std::size_t CountKnown(const CSnapshot& p_objSnapshot) {
    return static_cast<std::size_t>(std::ranges::count_if(
        MSettings::All(), [&](const Row& p_objRow) { return p_objSnapshot.IsKnown(p_objRow); }));
}

/// Whether anything stands at the path, hidden or not, and be it a link that leads nowhere.
bool IsThere(const std::string& p_strPath) {
    std::error_code objError;
    return std::filesystem::exists(std::filesystem::symlink_status(p_strPath, objError));
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
    const MSettingsFile::Kind iKind = MSettingsFile::KindOf(m_strSave);
    CSnapshot objSnapshot = p_objSnapshot;
    std::vector<std::string> strMissing;
    std::vector<std::string> strLeftOut;
    for (const Row& objRow : MSettings::All()) {
        const bool bHolds = MSettingsFile::CanHold(iKind, objRow);
        const bool bKnown = p_objSnapshot.IsKnown(objRow);
        // A JSON file has room for all, and needs none.
        if (bHolds && !bKnown && iKind != MSettingsFile::Kind::Json) {
            strMissing.emplace_back(objRow.m_strName);
            objSnapshot.SetKnown(objRow);  // at its default
        } else if (!bHolds && bKnown) {
            strLeftOut.emplace_back(objRow.m_strName);
        }
    }
    if (!strMissing.empty() && !m_bDefaults) {
        throw CCommandError(MExitCode::Wrong,
                            {m_strFile + " does not hold all that " + m_strSave + " has to hold",
                             "missing: " + Joined(strMissing), m_strSave,
                             "--defaults gives them their defaults"});
    }
    if (IsThere(m_strSave) && !m_bForce) {
        throw CCommandError(
            MExitCode::Wrong,
            {m_strSave + " is there already", {}, m_strSave, "--force replaces it"});
    }
    MSettingsFile::Write(m_objFiles, m_strSave, objSnapshot);
    p_objOutput.Json()["saved"] = {{"file", m_strSave},
                                   {"format", MSettingsFile::Name(iKind)},
                                   {"filled", strMissing},
                                   {"omitted", strLeftOut}};
    p_objOutput.Say("Saved " + m_strSave);
    if (!strMissing.empty()) {
        p_objOutput.Note("set to their defaults: " + Joined(strMissing));
    }
    if (!strLeftOut.empty()) {
        p_objOutput.Note("left out, a ." + std::string(MSettingsFile::Name(iKind)) +
                         " file has no room for them: " + Joined(strLeftOut));
    }
}
