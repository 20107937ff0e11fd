#include "simulator/MDump.h"

#include "protocol/MAnswer.h"
#include "simulator/MItemNames.h"

namespace MDump {

CJsonObject Of(const CPrinter& p_objPrinter) {
    CJsonObject objSettings;
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        const CItem& objItem = *(p_objPrinter.Items().*objRow.m_objSlot);
        objSettings.Text(MItemNames::Of(objRow), objItem.GetValueString());
    }
    std::vector<std::string> strAnswers;
    for (std::int16_t i = MAnswer::Adjustment; i <= MAnswer::ParameterExpansion; ++i) {
        strAnswers.push_back(p_objPrinter.SettingsAnswer(i));
    }
    CJsonObject objDump;
    objDump.Flag("power", p_objPrinter.IsOn())
        .Object("settings", objSettings)
        .Texts("answers", strAnswers);
    return objDump;
}

}  // namespace MDump
