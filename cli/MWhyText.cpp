#include "cli/MWhyText.h"

#include "model/MSettingText.h"

namespace MWhyText {

using Why = CReadReport::Why;

Why Of(const CReadReport& p_objReport, const MSettings::Row& p_objRow) {
    const Why iWhy = p_objReport.WhyUnknown(p_objRow);
    const bool bValue = MSettingText::Show(p_objRow, p_objReport.m_objSnapshot.Items()).has_value();
    return iWhy == Why::Known && !bValue ? Why::Unreadable : iWhy;
}

const char* Word(Why p_iWhy) {
    switch (p_iWhy) {
    case Why::Known:
        break;
    case Why::NotReported:
        return "not-reported";
    case Why::NotAsked:
        return "not-asked";
    case Why::Failed:
        return "failed";
    case Why::Unreadable:
        return "unreadable";
    }
    return "";
}

const char* Text(Why p_iWhy) {
    switch (p_iWhy) {
    case Why::Known:
        break;
    case Why::NotReported:
        return "no answer reports it";
    case Why::NotAsked:
        return "it was not asked for";
    case Why::Failed:
        return "it could not be read";
    case Why::Unreadable:
        return "what the printer holds is none of its values";
    }
    return "";
}

}  // namespace MWhyText
