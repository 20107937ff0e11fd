#pragma once

#include "model/CItemManager.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// The settings as people know them: one row a setting, in the catalogue's order. What a front
/// shows of a setting (its name, its list or range) and what it accepts comes from here.
namespace MSettings {

/// A member of the catalogue.
using Slot = ItemRef CItemManager::*;

/// How people see a setting's value.
enum class Kind : std::uint8_t {
    List,     ///< an entry of a list; its position, counted from 0, is the item's value
    Number,   ///< a number in a range, of one item or of a direction and a magnitude
    Address,  ///< four numbers, an item each, as in "192.168.10.20"
    Text,     ///< text of at most the item's width
};

/// The link whose connection stands on a setting: changing it over that link can cut the link.
enum class Cuts : std::uint8_t { Nothing, Lan, Serial };

/// What a number can be, in units of the last shown decimal place (15 is 1.5 with one place); of
/// an address each of its parts.
struct Range {
    std::int32_t m_iMin = 0;
    std::int32_t m_iMax = 0;
    std::int32_t m_iStep = 1;    ///< of a step key; a value between two steps is as good
    std::int16_t m_iLength = 0;  ///< how many characters people can type
    std::int16_t m_iDecimals = 0;
    bool m_bHexa = false;  ///< shown in hexadecimal digits
};

struct Row {
    std::string_view m_strName;   ///< stable: scripts and files name the setting so
    std::string_view m_strLabel;  ///< as the printer's people call it
    Kind m_iKind = Kind::List;
    std::array<Slot, 4> m_objSlots{};  ///< of an address all four, else the first one alone
    Slot m_objDirection = nullptr;     ///< of a signed number only
    std::vector<std::string_view> m_strEntries{};  ///< of a list only
    Range m_objRange{};                            ///< of numbers and addresses only
    Cuts m_iCuts = Cuts::Nothing;

    /// Every item behind the setting, a direction first.
    [[nodiscard]] std::vector<Slot> Items() const;
};

/// All settings. Every item of the catalogue belongs to exactly one.
std::span<const Row> All();

/// The setting of that name, or null.
const Row* Find(std::string_view p_strName);

/// The setting of that name. Throws std::logic_error, which names it, when there is none: for
/// tables that speak of settings.
const Row& Get(std::string_view p_strName);

/// Throws std::logic_error, which names the row, for one that contradicts itself or its items: no
/// name or label, a name twice, a list without entries, a range upside down or too wide for its
/// item, a default that the row does not allow, an item in two rows or in none.
void Check(std::span<const Row> p_objRows);

}  // namespace MSettings
