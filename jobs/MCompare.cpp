#include "jobs/MCompare.h"

#include "model/MSettingText.h"

namespace MCompare {

Result Compare(const CSnapshot& p_objA, const CSnapshot& p_objB) {
    Result objResult;
    for (const MSettings::Row& objRow : MSettings::All()) {
        if (!p_objA.IsKnown(objRow) || !p_objB.IsKnown(objRow)) {
            objResult.m_objUnknown.push_back(&objRow);
        } else if (MSettingText::Same(objRow, p_objA.Items(), p_objB.Items())) {
            objResult.m_objSame.push_back(&objRow);
        } else {
            objResult.m_objDifferent.push_back(&objRow);
        }
    }
    return objResult;
}

}  // namespace MCompare
