#include "cli/MJsonSettings.h"
#include "cli/MSettingJson.h"
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

    const std::string strText = MJsonSettings::Text(objContent.m_objSnapshot);
    const CFileContent objAgain = MJsonSettings::Read(strText);
    Require(objAgain.m_objProblems.empty(), "what is written can be read");
    MFuzz::RequireSame(objAgain.m_objSnapshot.Items(), objContent.m_objSnapshot.Items());
    Require(MJsonSettings::Text(objAgain.m_objSnapshot) == strText, "what is written comes back");
}
