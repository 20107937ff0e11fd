#pragma once

#include "model/CSnapshot.h"

#include <cstdint>

/// What the printer's answers have put into a catalogue, field by field and as it stands there, to
/// be judged before it counts as a setting's value.
class CReadFields {
public:
    CReadFields();

    /// The catalogue that answers fill.
    [[nodiscard]] const CItemManager& Items() const { return m_objItems; }

    /// Takes the settings that an answer for p_iGroup (MAnswer::Group) reports into p_objSnapshot;
    /// those whose fields hold no value of theirs stay unknown there.
    void Take(std::int16_t p_iGroup, CSnapshot& p_objSnapshot) const;

private:
    [[nodiscard]] bool IsWellFormed(const MSettings::Row& p_objRow) const;

    CItemManager m_objItems;
};
