#pragma once

#include "model/CSnapshot.h"

#include <vector>

/// Two sets of settings, side by side.
namespace MCompare {

/// Rows of MSettings::All(), each in exactly one of the lists, in the catalogue's order.
struct Result {
    std::vector<const MSettings::Row*> m_objDifferent{};
    std::vector<const MSettings::Row*> m_objSame{};
    /// Not known on one side at least, so that nothing can be said.
    std::vector<const MSettings::Row*> m_objUnknown{};
};

/// What means the same is the same (MSettingText::Same), however the two sides have come by it.
Result Compare(const CSnapshot& p_objA, const CSnapshot& p_objB);

}  // namespace MCompare
