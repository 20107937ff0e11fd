#include "cli/MSettingJson.h"

#include "cli/MUtf8.h"
#include "model/MNumber.h"
#include "model/MSettingText.h"

namespace {

using Json = nlohmann::ordered_json;
using MSettings::Kind;
using MSettings::Row;

constexpr int Ten = 10;

bool IsNumber(const Row& p_objRow) {
    return p_objRow.m_iKind == Kind::Number && !p_objRow.m_objRange.m_bHexa;
}

}  // namespace

namespace MSettingJson {

Json Value(const Row& p_objRow, const CItemManager& p_objItems, bool p_bDefaultValue) {
    const auto strValue = MSettingText::Show(p_objRow, p_objItems, p_bDefaultValue);
    if (!strValue) {
        return nullptr;
    }
    if (!IsNumber(p_objRow)) {
        return MUtf8::FromLatin1(*strValue);
    }
    if (p_objRow.m_objRange.m_iDecimals == 0) {
        return MNumber::ToInt32(*strValue);
    }
    return MNumber::ToDouble(*strValue);
}

Json Raw(const Row& p_objRow, const CItemManager& p_objItems) {
    return MSettingText::Show(p_objRow, p_objItems)
               ? Json(nullptr)
               : Json(MUtf8::FromLatin1(MSettingText::Raw(p_objRow, p_objItems)));
}

Json Values(const CSnapshot& p_objSnapshot) {
    Json objValues = Json::object();
    for (const Row& objRow : MSettings::All()) {
        if (p_objSnapshot.IsKnown(objRow)) {
            objValues[std::string(objRow.m_strName)] = Value(objRow, p_objSnapshot.Items());
        }
    }
    return objValues;
}

Json RawValues(const CSnapshot& p_objSnapshot) {
    Json objValues = Json::object();
    for (const Row& objRow : MSettings::All()) {
        const Json objRaw = Raw(objRow, p_objSnapshot.Items());
        if (p_objSnapshot.IsKnown(objRow) && !objRaw.is_null()) {
            objValues[std::string(objRow.m_strName)] = objRaw;
        }
    }
    return objValues;
}

Json Number(const Row& p_objRow, std::int32_t p_iNumber) {
    const MSettings::Range& objRange = p_objRow.m_objRange;
    if (objRange.m_bHexa) {
        const std::string strDigits = MNumber::HexText(p_iNumber);
        return strDigits.size() < 2 ? "0" + strDigits : strDigits;
    }
    if (objRange.m_iDecimals == 0) {
        return p_iNumber;
    }
    double dNumber = p_iNumber;
    for (std::int16_t i = 0; i < objRange.m_iDecimals; ++i) {
        dNumber /= Ten;
    }
    return dNumber;
}

}  // namespace MSettingJson
