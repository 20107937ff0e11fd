#include "cli/MJsonSettings.h"
#include "cli/MSettingJson.h"
#include "cli/MUtf8.h"
#include "files/MLanFile.h"
#include "files/MParameterFile.h"
#include "model/MSettingText.h"
#include "tests/fuzz/CSettingsFileFuzz.h"
#include "tests/fuzz/MFuzzTargets.h"

#include <string_view>

using MFuzz::Require;

namespace {

/// A JSON text of it can be printed, as the program does.
void RequirePrintable(const std::string& p_strText) {
    using Json = nlohmann::ordered_json;
    Require(!p_strText.empty() &&
                !Json(p_strText).dump(-1, ' ', false, Json::error_handler_t::replace).empty(),
            "what is wrong has words");
}

void RequireValues(const CSnapshot& p_objSnapshot) {
    for (const MSettings::Row& objRow : MSettings::All()) {
        Require(!p_objSnapshot.IsKnown(objRow) ||
                    MSettingText::Show(objRow, p_objSnapshot.Items()).has_value(),
                "what is known is a value");
    }
}

/// Without what fills a text's field up, which a file may hold and nobody is shown.
std::string Unfilled(std::string p_strText) {
    constexpr std::string_view strFill = "\xFF ";
    p_strText.erase(p_strText.find_last_not_of(strFill) + 1);
    return p_strText;
}

/// In a right file each number and each text is the value that is held.
void RequireAsWritten(std::string_view p_strBytes, const CSnapshot& p_objSnapshot) {
    const auto objFile = nlohmann::ordered_json::parse(p_strBytes);
    for (const auto& [strName, objWritten] : objFile.at("settings").items()) {
        const MSettings::Row& objRow = MSettings::Get(strName);
        const auto objHeld = MSettingJson::Value(objRow, p_objSnapshot.Items());
        Require(p_objSnapshot.IsKnown(objRow), "what a right file holds is known");
        Require(!objWritten.is_number() || objHeld == objWritten, "a number is held as written");
        if (objRow.m_iKind == MSettings::Kind::Text) {
            const auto strWritten = MUtf8::ToLatin1(objWritten.get<std::string>());
            const auto strHeld = MUtf8::ToLatin1(objHeld.get<std::string>());
            Require(strWritten && strHeld && Unfilled(*strWritten) == Unfilled(*strHeld),
                    "a text is held as written");
        }
    }
}

}  // namespace

void MFuzzTargets::ParameterFile(MFuzz::Input p_objInput) {
    CSettingsFileFuzz::Run({&MParameterFile::BuildLines, &MParameterFile::StoreLine}, p_objInput);
}

void MFuzzTargets::LanFile(MFuzz::Input p_objInput) {
    CSettingsFileFuzz::Run({&MLanFile::BuildLines, &MLanFile::StoreLine}, p_objInput);
}

void MFuzzTargets::JsonFile(MFuzz::Input p_objInput) {
    const std::string_view strBytes(reinterpret_cast<const char*>(p_objInput.data()),
                                    p_objInput.size());
    const CFileContent objContent = MJsonSettings::Read(strBytes);
    Require(objContent.m_objProblems.size() <= strBytes.size() + 2,
            "every fault takes some bytes, but for what is missing");
    for (const CFileProblem& objProblem : objContent.m_objProblems) {
        RequirePrintable(objProblem.Text());
    }
    MSettingJson::RawValues(objContent.m_objSnapshot);
    RequireValues(objContent.m_objSnapshot);
    MFuzz::RequireRendered(objContent.m_objSnapshot.Items());
    if (!nlohmann::json::accept(strBytes)) {
        Require(!objContent.m_objProblems.empty(), "what is no JSON is refused");
    }
    if (objContent.m_objProblems.empty()) {
        RequireAsWritten(strBytes, objContent.m_objSnapshot);
    }

    const std::string strText = MJsonSettings::Text(objContent.m_objSnapshot);
    const CFileContent objAgain = MJsonSettings::Read(strText);
    Require(objAgain.m_objProblems.empty(), "what is written can be read");
    MFuzz::RequireSame(objAgain.m_objSnapshot.Items(), objContent.m_objSnapshot.Items());
    Require(MJsonSettings::Text(objAgain.m_objSnapshot) == strText, "what is written comes back");
}
