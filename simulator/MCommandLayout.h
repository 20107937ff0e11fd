#pragma once

#include "model/CItemManager.h"
#include "simulator/MCommandKind.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// How the fields of each kind of command are laid out between its head and its end.
namespace MCommandLayout {

/// One field of fixed width.
struct Field {
    std::string m_strBefore;                      ///< fixed bytes in front of the field
    std::string m_strName;                        ///< what people know it by
    std::size_t m_iWidth = 0;                     ///< in bytes
    std::string_view m_strAllowed;                ///< the bytes it may hold; empty: free text
    std::vector<std::string_view> m_strMeanings;  ///< one for each of m_strAllowed, or none
    ItemRef m_objItem;                            ///< where its value is kept; null: nowhere
};

struct Layout {
    std::vector<Field> m_objFields;
    std::string m_strTail;    ///< fixed bytes behind the last field, before the command's end
    std::string m_strRemark;  ///< what the form itself says, for people; mostly empty

    /// The whole command's length in bytes, its head and its end included.
    [[nodiscard]] std::size_t Length(MCommandKind::Kind p_iKind) const;
};

/// The forms that a command of a kind may have; no two have the same length. Never empty, except
/// for Unknown. The fields of set commands refer to p_objItems' items.
std::vector<Layout> Forms(MCommandKind::Kind p_iKind, const CItemManager& p_objItems);

}  // namespace MCommandLayout
