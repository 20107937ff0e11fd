#include "model/CSnapshot.h"

CSnapshot::CSnapshot(const CItemManager& p_objItems)
    : m_objItems(p_objItems) {
    for (const MSettings::Row& objRow : MSettings::All()) {
        SetKnown(objRow);
    }
}

bool CSnapshot::IsKnown(const MSettings::Row& p_objRow) const {
    return m_strKnown.contains(p_objRow.m_strName);
}

void CSnapshot::SetKnown(const MSettings::Row& p_objRow) {
    m_strKnown.insert(p_objRow.m_strName);
}
