#pragma once

#include "model/CItemManager.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What stands where in the two kinds of settings file, and the files that the tests compare with.
namespace MSettingsFields {

/// One field of a line.
struct Field {
    const char* m_strItem;    ///< the catalogue's member
    std::size_t m_iLine;      ///< counted from 1, as they are saved
    std::size_t m_iPosition;  ///< of the first character, counted from 1
    const char* m_strLowest;  ///< the lowest value as it is saved: its length is the field's width
    const char* m_strHighest;
};

/// Every field of a parameter file, in the file's order.
std::span<const Field> Parameter();
/// Every field of a LAN file but the host name, in the file's order.
std::span<const Field> Lan();

CItem& Item(const CItemManager& p_objItemManager, std::string_view p_strName);

/// Gives every field's item its lowest or highest value (a member pointer of Field).
void SetAll(const CItemManager& p_objItemManager, std::span<const Field> p_objFields,
            const char* Field::*p_strValue);

/// All items' texts as they would be sent, by their order in the catalogue; a text that cannot be
/// sent is "?".
std::vector<std::string> Texts(const CItemManager& p_objItemManager);

/// p_strLine with p_strText at p_iPosition, counted from 1, in the place of what stands there.
std::string With(std::string p_strLine, std::size_t p_iPosition, std::string_view p_strText);

/// The bytes of a file in golden/ or broken/, such as "golden/lan-lowest.dt2".
std::string Content(const std::string& p_strName);

/// The names of the files of a kind (".dt1") in broken/, such as "broken/torn.dt1".
std::vector<std::string> BrokenFiles(std::string_view p_strExtension);

}  // namespace MSettingsFields
