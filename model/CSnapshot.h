#pragma once

#include "model/CItemManager.h"
#include "model/MSettings.h"

#include <set>
#include <string_view>

/// Settings as they stood at one moment: values of its own, and which of them are known at all.
/// A copy shares nothing with the original.
class CSnapshot {
public:
    /// Nothing known, every value at its default.
    CSnapshot() = default;

    /// All values of p_objItems as they are now, all known.
    explicit CSnapshot(const CItemManager& p_objItems);

    /// The values; those that are not known stand at their defaults.
    [[nodiscard]] const CItemManager& Items() const { return m_objItems; }
    [[nodiscard]] CItemManager& Items() { return m_objItems; }

    /// p_objRow is a row of MSettings::All().
    [[nodiscard]] bool IsKnown(const MSettings::Row& p_objRow) const;
    void SetKnown(const MSettings::Row& p_objRow);

private:
    CItemManager m_objItems;
    std::set<std::string_view> m_strKnown;
};
