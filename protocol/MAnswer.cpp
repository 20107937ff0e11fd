#include "protocol/MAnswer.h"

#include "model/MNumber.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace {

constexpr std::size_t FontCodeIndex = 4;  // in the parameter group

struct Length {
    std::int16_t m_iGroup;
    std::int16_t m_iReceiveLength;
};

constexpr std::array<Length, 6> Lengths{{
    {MAnswer::NoGroup, 7},
    {MAnswer::Adjustment, 54},
    {MAnswer::Parameter, 50},
    {MAnswer::Sensor, 24},
    {MAnswer::Lan, 192},
    {MAnswer::ParameterExpansion, 62},
}};

/// A group's answer in bytes, as the serial port and TCP have it; 0 for NoGroup.
constexpr std::size_t AnswerLength(const Length& p_objLength) {
    const auto iLength = static_cast<std::size_t>(p_objLength.m_iReceiveLength) / 2;
    return p_objLength.m_iGroup == MAnswer::NoGroup ? 0 : iLength;
}

constexpr std::size_t LongestAnswer() {
    std::size_t iLongest = 0;
    for (const Length& objLength : Lengths) {
        iLongest = std::max(iLongest, AnswerLength(objLength));
    }
    return iLongest;
}

/// What the item of the font code gets of its field.
std::string FontCode(const CItem& p_objItem, std::string p_strField) {
    const bool bHexadecimal = std::ranges::all_of(
        p_strField, [](unsigned char p_cDigit) { return std::isxdigit(p_cDigit) != 0; });
    const bool bJudged = p_objItem.m_iDataType == ItemDataType::Text;
    return bJudged && !bHexadecimal ? p_strField : MAnswer::MapFontCode(p_strField, true);
}

bool IsAnswerLength(std::size_t p_iLength) {
    return p_iLength != 0 &&
           std::any_of(Lengths.begin(), Lengths.end(), [&](const Length& p_objLength) {
               return AnswerLength(p_objLength) == p_iLength;
           });
}

/// Where the first "|}" ends, in bytes from the answer's head; 0 when there is none.
std::size_t FirstEnd(std::span<const std::uint8_t> p_objAnswer) {
    constexpr std::string_view strEnd = "|}";
    const std::string_view strAnswer(reinterpret_cast<const char*>(p_objAnswer.data()),
                                     p_objAnswer.size());
    const std::size_t iFound = strAnswer.find(strEnd);
    return iFound == std::string_view::npos ? 0 : iFound + strEnd.size();
}

}  // namespace

namespace MAnswer {

bool GroupItems(const CItemManager& p_objItemManager, std::int16_t p_iGroup,
                ItemArray& p_objItemAry) {
    switch (p_iGroup) {
    case Adjustment:
        return p_objItemManager.GetItem_Adjustment(p_objItemAry);
    case Parameter:
        return p_objItemManager.GetItem_Parameter(p_objItemAry);
    case Sensor:
        return p_objItemManager.GetItem_Sensor(p_objItemAry);
    case Lan:
        return p_objItemManager.GetItem_Lan(p_objItemAry);
    case ParameterExpansion:
        return p_objItemManager.GetItem_ParameterExpansion1(p_objItemAry);
    default:
        return false;
    }
}

std::int16_t ReceiveLength(std::int16_t p_iGroup) {
    const auto* const objFound =
        std::find_if(Lengths.begin(), Lengths.end(),
                     [&](const Length& p_objLength) { return p_objLength.m_iGroup == p_iGroup; });
    return objFound != Lengths.end() ? objFound->m_iReceiveLength : std::int16_t{0};
}

bool BeginsAnswer(std::uint8_t p_iByte) {
    return p_iByte == StatusHead || p_iByte == SettingsHead;
}

Frame JudgePart(std::span<const std::uint8_t> p_objAnswer, std::size_t p_iLength) {
    if (!IsAnswerLength(p_iLength)) {
        return p_objAnswer.size() < p_iLength ? Frame::Open : Frame::Whole;
    }
    const std::size_t iEnd = FirstEnd(p_objAnswer);
    if (iEnd != p_iLength && IsAnswerLength(iEnd)) {
        return Frame::Foreign;
    }
    if (p_objAnswer.size() < p_iLength) {
        return Frame::Open;
    }
    return iEnd != 0 || p_objAnswer.size() >= LongestAnswer() ? Frame::Whole : Frame::Doubtful;
}

Frame JudgeBlock(std::span<const std::uint8_t> p_objAnswer, std::size_t p_iLength, bool p_bFull) {
    const Frame iFrame = JudgePart(p_objAnswer, p_iLength);
    if (!IsAnswerLength(p_iLength) || FirstEnd(p_objAnswer) != 0) {
        return iFrame;
    }
    const std::size_t iCount = p_objAnswer.size();
    const bool bAnothers = iCount != p_iLength && IsAnswerLength(iCount);
    const bool bLonger = p_bFull && iFrame == Frame::Doubtful;
    if (bAnothers || bLonger) {
        return Frame::Foreign;
    }
    return iFrame == Frame::Doubtful ? Frame::Whole : iFrame;
}

bool DistributeAnswer(const CItemManager& p_objItemManager,
                      std::span<const std::uint8_t> p_objAnswer, std::int16_t p_iGroup) {
    ItemArray objItemAry;
    if (!GroupItems(p_objItemManager, p_iGroup, objItemAry)) {
        return false;
    }
    std::size_t iPosition = FieldsPosition;
    for (std::size_t i = 0; i < objItemAry.size(); ++i) {
        CItem& objItem = *objItemAry[i];
        std::string strField = ExtractField(p_objAnswer, iPosition, objItem.m_iLength);
        if (p_iGroup == Parameter && i == FontCodeIndex) {
            strField = FontCode(objItem, std::move(strField));
        }
        objItem.SetValue(strField);
        iPosition += static_cast<std::size_t>(objItem.m_iLength);
    }
    return true;
}

std::string ExtractField(std::span<const std::uint8_t> p_objAnswer, std::size_t p_iPosition,
                         std::int16_t p_iLength) {
    const auto iLength = static_cast<std::size_t>(std::max<std::int16_t>(p_iLength, 0));
    if (p_iPosition > p_objAnswer.size() || iLength > p_objAnswer.size() - p_iPosition) {
        throw std::out_of_range("the answer ends inside a field");
    }
    const auto objField = p_objAnswer.subspan(p_iPosition, iLength);
    return {objField.begin(), objField.end()};
}

std::string MapFontCode(const CItemValue& p_vValue, bool p_bFromPrinter) {
    constexpr std::array<std::uint32_t, 4> arrFromPrinter{0, 3, 1, 2};
    constexpr std::array<std::uint32_t, 4> arrToPrinter{0, 2, 3, 1};
    std::uint32_t iCode = MNumber::ReadHex(MNumber::ToText(p_vValue));
    if (iCode < arrFromPrinter.size()) {
        iCode = p_bFromPrinter ? arrFromPrinter[iCode] : arrToPrinter[iCode];
    }
    return MNumber::HexText(iCode);
}

}  // namespace MAnswer
