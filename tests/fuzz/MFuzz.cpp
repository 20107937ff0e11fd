#include "tests/fuzz/MFuzz.h"

#include "model/CConversionError.h"
#include "protocol/MCommand.h"
#include "tests/golden/MGolden.h"

#include <cstdlib>
#include <iostream>

namespace {

using MGolden::Texts;

/// The largest number has so many digits, and no text that comes in is longer.
constexpr std::size_t LongestField = 400;

bool AreAsWide(const Texts& p_strCommands, const Texts& p_strGolden) {
    bool bSame = p_strCommands.size() == p_strGolden.size();
    for (std::size_t i = 0; bSame && i < p_strCommands.size(); ++i) {
        bSame = p_strCommands[i].size() == p_strGolden[i].size();
    }
    return bSame;
}

template <typename Function>
void OrConversionError(const Function& p_fnCall) {
    try {
        p_fnCall();
    } catch (const CConversionError&) {
        // The one error that a field may give.
    }
}

}  // namespace

namespace MFuzz {

void Require(bool p_bHolds, std::string_view p_strWhat) {
    if (!p_bHolds) {
        std::cerr << "does not hold: " << p_strWhat << std::endl;
        std::abort();
    }
}

void RequireSame(const CItemManager& p_objOne, const CItemManager& p_objOther) {
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        Require((p_objOne.*objRow.m_objSlot)->m_vValue == (p_objOther.*objRow.m_objSlot)->m_vValue,
                "both hold the same");
    }
}

void RequireRendered(const CItemManager& p_objItems) {
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        OrConversionError([&] {
            Require((p_objItems.*objRow.m_objSlot)->GetValueString().size() <= LongestField,
                    "a field is bounded");
        });
    }
    OrConversionError([&] {
        Require(!MCommand::IsSetExact(p_objItems) ||
                    AreAsWide(MCommand::SetCommands(p_objItems), MGolden::SetCommands()),
                "the commands of SET have their widths");
    });
    OrConversionError([&] {
        Require(!MCommand::IsLanSetExact(p_objItems) ||
                    AreAsWide(MCommand::LanSetCommands(p_objItems), MGolden::LanSetCommands()),
                "the commands of LAN SET have their widths");
    });
}

}  // namespace MFuzz
