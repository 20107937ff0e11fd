#pragma once

#include "model/CItemManager.h"

#include <cstdint>
#include <span>
#include <string>

/// The printer's answers: how they begin, how long they are, and which items they fill.
namespace MAnswer {

/// The byte that begins a status answer, and that answer's length in bytes.
inline constexpr std::uint8_t StatusHead = 0x01;
inline constexpr std::int16_t StatusLength = 13;
/// Where the two digits of the status code begin.
inline constexpr std::size_t StatusCodePosition = 2;

/// The byte that begins a settings answer on the serial port and on TCP: "{".
inline constexpr std::uint8_t SettingsHead = 0x7B;
/// The byte that begins a settings answer on USB, and how many bytes there stand before what the
/// other links send: that one and one more.
inline constexpr std::uint8_t UsbSettingsHead = 0x02;
inline constexpr std::size_t UsbHeadLength = 2;
/// Where a settings answer's fields begin, behind the head and one further header character.
inline constexpr std::size_t FieldsPosition = 2;

/// The groups that a settings answer can fill; the number that a read request names.
enum Group : std::int16_t {
    NoGroup = -1,
    Adjustment = 0,
    Parameter = 1,
    Sensor = 2,
    Lan = 3,
    ParameterExpansion = 4,
};

/// What the bytes of a settings answer tell of it, counted from its head.
enum class Frame : std::uint8_t {
    Open,      ///< there are fewer than were asked for
    Whole,     ///< it is the answer that was asked for
    Foreign,   ///< it is another group's: its end stands where that group's answers have theirs
    Doubtful,  ///< there are enough, but no end shows: a longer group's answer may still go on
};

/// The receive length L that a read of p_iGroup asks its link for: 54, 50, 24, 192 and 62 for the
/// groups 0 to 4, 7 for NoGroup, 0 for any other. On the serial port and on TCP the answer has
/// L / 2 bytes: two of header, the fields, two that close it.
std::int16_t ReceiveLength(std::int16_t p_iGroup);

/// True for the two bytes that begin an answer on the serial port and on TCP.
bool BeginsAnswer(std::uint8_t p_iByte);

/// Judges a settings answer of which more bytes may come, as on a stream that is cut anywhere.
///
/// An answer ends with its first "|}". One that has none, or has it where no group's answer ends,
/// is taken by its length alone; so is every one when p_iLength is no group's.
/// @param p_objAnswer what has come of it so far.
/// @param p_iLength the bytes of the answer that was asked for.
Frame JudgePart(std::span<const std::uint8_t> p_objAnswer, std::size_t p_iLength);

/// Judges a settings answer that has come as one block, behind which there is nothing more: where
/// no "|}" shows whose it is, the number of its bytes does. Open is an answer that was cut. Never
/// Doubtful.
/// @param p_bFull the block had no room for more, so that the answer may have been longer.
Frame JudgeBlock(std::span<const std::uint8_t> p_objAnswer, std::size_t p_iLength, bool p_bFull);

/// Fills p_objItemAry with the items of group p_iGroup in the order in which they are answered.
/// False for a group that does not exist.
bool GroupItems(const CItemManager& p_objItemManager, std::int16_t p_iGroup,
                ItemArray& p_objItemAry);

/// Cuts a settings answer into the fields of group p_iGroup and stores each in its item. The font
/// code is translated (MapFontCode), which makes a number of anything; where its item takes texts
/// as they are, what is no hexadecimal number is stored as it came, for somebody else to judge.
///
/// @param p_objAnswer the whole answer, its fields from FieldsPosition on.
/// @return false, and no item changed, for a group that does not exist.
/// Throws std::out_of_range when the answer is too short; the items before the missing field keep
/// their new values. Whether a field is a number is not looked at here.
bool DistributeAnswer(const CItemManager& p_objItemManager,
                      std::span<const std::uint8_t> p_objAnswer, std::int16_t p_iGroup);

/// p_iLength bytes from p_iPosition on, as text. Throws std::out_of_range past the end.
std::string ExtractField(std::span<const std::uint8_t> p_objAnswer, std::size_t p_iPosition,
                         std::int16_t p_iLength);

/// Translates a font code (hexadecimal text or number) between the printer's numbering and the
/// tool's, which differ in 1 to 3; every other code is the same in both.
/// @param p_bFromPrinter true: the printer's 1, 2, 3 become 3, 1, 2; false: the inverse.
/// @return the code in upper-case hexadecimal.
std::string MapFontCode(const CItemValue& p_vValue, bool p_bFromPrinter);

}  // namespace MAnswer
