#include "jobs/CReadReport.h"

#include "protocol/MAnswer.h"
#include "protocol/MSettingRoute.h"

CReadReport::Why CReadReport::WhyUnknown(const MSettings::Row& p_objRow) const {
    if (m_objSnapshot.IsKnown(p_objRow)) {
        return Why::Known;
    }
    const std::int16_t iGroup = MSettingRoute::ReportedIn(p_objRow);
    if (iGroup == MAnswer::NoGroup) {
        return Why::NotReported;
    }
    if (!m_iAsked.contains(iGroup)) {
        return Why::NotAsked;
    }
    return m_iAnswered.contains(iGroup) ? Why::Unreadable : Why::Failed;
}
