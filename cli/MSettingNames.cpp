#include "cli/MSettingNames.h"

#include "cli/CCommandError.h"

#include <algorithm>
#include <iterator>

namespace MSettingNames {

std::vector<const MSettings::Row*> Rows(const std::vector<std::string>& p_strNames) {
    std::vector<std::string> strUnknown;
    std::ranges::copy_if(
        p_strNames, std::back_inserter(strUnknown),
        [](const std::string& p_strName) { return MSettings::Find(p_strName) == nullptr; });
    if (!strUnknown.empty()) {
        std::string strFurther;
        for (std::size_t i = 1; i < strUnknown.size(); ++i) {
            strFurther += (i == 1 ? "nor \"" : ", nor \"") + strUnknown[i] + "\"";
        }
        throw CCommandError(MExitCode::Wrong, {"There is no setting \"" + strUnknown.front() + "\"",
                                               strFurther,
                                               {},
                                               "varden list shows all of them"});
    }
    std::vector<const MSettings::Row*> objRows;
    for (const MSettings::Row& objRow : MSettings::All()) {
        if (p_strNames.empty() ||
            std::ranges::find(p_strNames, objRow.m_strName) != p_strNames.end()) {
            objRows.push_back(&objRow);
        }
    }
    return objRows;
}

}  // namespace MSettingNames
