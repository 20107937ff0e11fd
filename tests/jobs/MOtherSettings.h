#pragma once

#include "model/MSettingText.h"
#include "protocol/MCommand.h"

#include <cmath>
#include <string>
#include <vector>

/// Settings none of which, as far as there is a choice, stands at its default.
namespace MOtherSettings {

inline void Change(const MSettings::Row& p_objRow, const CItemManager& p_objItems) {
    const MSettings::Range& objRange = p_objRow.m_objRange;
    CItem& objItem = *(p_objItems.*p_objRow.m_objSlots.front());
    switch (p_objRow.m_iKind) {
    case MSettings::Kind::List: {
        const bool bLast = MSettingText::Show(p_objRow, p_objItems) == p_objRow.m_strEntries.back();
        MSettingText::Set(p_objRow, p_objItems,
                          bLast ? p_objRow.m_strEntries.front() : p_objRow.m_strEntries.back());
        break;
    }
    case MSettings::Kind::Number:
        if (objRange.m_bHexa) {
            MSettingText::Set(p_objRow, p_objItems, "7C");
        } else if (p_objRow.m_objDirection != nullptr && objRange.m_iMin < 0) {
            (p_objItems.*p_objRow.m_objDirection)->SetValue("-");
            objItem.SetValue(std::abs(objRange.m_iMin));
        } else {
            objItem.SetValue(objRange.m_iMax - 1);
        }
        break;
    case MSettings::Kind::Address:
        MSettingText::Set(p_objRow, p_objItems, "10.20.30.40");
        break;
    case MSettings::Kind::Text:
        objItem.SetValue(std::string("shop-printer-003-0123456789ABCDEF")
                             .substr(0, static_cast<std::size_t>(objItem.m_iLength)));
        break;
    }
}

/// The commands that set a printer to them.
inline std::vector<std::string> Commands() {
    const CItemManager objItems;
    for (const MSettings::Row& objRow : MSettings::All()) {
        Change(objRow, objItems);
    }
    std::vector<std::string> strCommands = MCommand::SetCommands(objItems);
    for (const std::string& strCommand : MCommand::LanSetCommands(objItems)) {
        strCommands.push_back(strCommand);
    }
    return strCommands;
}

}  // namespace MOtherSettings
