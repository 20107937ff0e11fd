#include "cli/MJsonSettings.h"

#include "cli/CJsonSettingsReader.h"
#include "cli/MSettingJson.h"

namespace MJsonSettings {

std::string Text(const CSnapshot& p_objSnapshot) {
    constexpr int iIndent = 2;
    const nlohmann::ordered_json objFile{{"varden", Format},
                                         {"settings", MSettingJson::Values(p_objSnapshot)}};
    return objFile.dump(iIndent) + "\n";
}

CFileContent Read(std::string_view p_strBytes) {
    CJsonSettingsReader objReader;
    nlohmann::json::sax_parse(p_strBytes.begin(), p_strBytes.end(), &objReader);
    return objReader.Finish();
}

}  // namespace MJsonSettings
