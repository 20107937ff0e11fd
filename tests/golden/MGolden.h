#pragma once

#include "model/CItemManager.h"

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// What the catalogue, the commands, the answers and the files are held against: bytes and tables
/// written by hand, once for all tests. Whatever a test needs of them beside is made from them.
///
/// Nothing here asks the rooms under test for a width, a place or a value.
namespace MGolden {

// The commands of a printer with its defaults, and the lines of its files.
extern const char* const Parameters;
extern const char* const Adjustments;
extern const char* const IpAddress;
extern const char* const Gateway;
extern const char* const SubnetMask;
extern const char* const SocketPort;
extern const char* const Dhcp;

using Texts = std::vector<std::string>;

/// What SET sends and a parameter file holds; what LAN SET sends and a LAN file holds.
Texts SetCommands();
Texts LanSetCommands();

/// The answer of group p_iGroup, 0 to 4, of a printer with its defaults.
const char* Answer(int p_iGroup);

/// Fields by the names of their items without the "m_obj", in the width that they have.
using Changes = std::vector<std::pair<std::string_view, std::string_view>>;

/// One of the commands or answers above with other fields. Throws std::logic_error for a text that
/// is none of them, an item that is not in it and a field of another width.
std::string With(std::string_view p_strText, const Changes& p_objChanges);

/// The lines as the bytes of a file.
std::string File(const Texts& p_strLines);

using Slot = ItemRef CItemManager::*;

/// One item of the catalogue. Every field as it is sent.
struct Item {
    const char* m_strName;  ///< the member's
    Slot m_objSlot;
    ItemDataType m_iDataType;
    std::int16_t m_iLength;
    const char* m_strDefault;
    const char* m_strLowest;   ///< null for what no file holds, empty for the host name
    const char* m_strHighest;  ///< the same
    const char* m_strOther;    ///< of a printer that somebody has set otherwise
    bool m_bFixed;
};

/// An item in an answer.
struct Answered {
    Slot m_objSlot = nullptr;
    const char* m_strField = "";  ///< that no other item of the answer has
    int m_iStored = -1;           ///< the number that becomes of it; less than 0: the field itself
};

/// In the order in which they are created.
std::span<const Item> Items();

/// The items of answer group p_iGroup, 0 to 4, in their order.
std::span<const Answered> Answers(int p_iGroup);

/// The items of one of the commands above, in their order.
std::span<const Slot> Carried(std::string_view p_strCommand);

/// The item behind p_objSlot.
const Item& Of(Slot p_objSlot);

/// A field of Item, such as &Item::m_strOther.
using Column = const char* Item::*;

/// One of the commands or answers above with every field out of p_objColumn.
std::string All(std::string_view p_strText, Column p_objColumn);

/// Where the field of p_objSlot begins in one of the commands or answers above, counted from 0.
std::size_t Place(std::string_view p_strText, Slot p_objSlot);

}  // namespace MGolden
