#include "tests/golden/MGolden.h"

#include <array>
#include <stdexcept>

namespace {

using MGolden::Answered;
using MGolden::Item;
using MGolden::Slot;

constexpr auto T = ItemDataType::Text;
constexpr auto D = ItemDataType::Decimal;
constexpr auto H = ItemDataType::Hexadecimal;

// Name, member, type, width; the default, the lowest and the highest that a file holds, what a
// printer has that somebody has set otherwise; whether it is fixed.
// clang-format off
constexpr Item Catalogue[] = {
    {"m_objFeedDirection", &CItemManager::m_objFeedDirection, T, 1, "+", "-", "+", "+", false},
    {"m_objFeedAdjustment", &CItemManager::m_objFeedAdjustment, D, 3, "000", "500", "500", "123", false},
    {"m_objCutPosDirection", &CItemManager::m_objCutPosDirection, T, 1, "+", "-", "+", "-", false},
    {"m_objCutPosAdjustment", &CItemManager::m_objCutPosAdjustment, D, 3, "000", "500", "500", "045", false},
    {"m_objBackFeedDirection", &CItemManager::m_objBackFeedDirection, T, 1, "+", "-", "+", "-", false},
    {"m_objBackFeedAdjustment", &CItemManager::m_objBackFeedAdjustment, D, 2, "00", "95", "95", "67", false},
    {"m_objToneDirection_T", &CItemManager::m_objToneDirection_T, T, 1, "+", "-", "+", "-", false},
    {"m_objToneAdjustment_T", &CItemManager::m_objToneAdjustment_T, D, 2, "00", "10", "10", "03", false},
    {"m_objToneDirection_D", &CItemManager::m_objToneDirection_D, T, 1, "+", "-", "+", "+", false},
    {"m_objToneAdjustment_D", &CItemManager::m_objToneAdjustment_D, D, 2, "00", "10", "10", "09", false},
    {"m_objRibbonMotorDirection_F", &CItemManager::m_objRibbonMotorDirection_F, T, 1, "-", "-", "-", "-", true},
    {"m_objRibbonMotorAdjustment_F", &CItemManager::m_objRibbonMotorAdjustment_F, D, 2, "00", "15", "00", "12", false},
    {"m_objRibbonMotorDirection_B", &CItemManager::m_objRibbonMotorDirection_B, T, 1, "-", "-", "-", "-", true},
    {"m_objRibbonMotorAdjustment_B", &CItemManager::m_objRibbonMotorAdjustment_B, D, 2, "00", "15", "00", "15", false},
    {"m_objXCoordinateDirection", &CItemManager::m_objXCoordinateDirection, T, 1, "+", "-", "+", "+", false},
    {"m_objXCoordinateAdjustment", &CItemManager::m_objXCoordinateAdjustment, D, 3, "000", "995", "995", "055", false},
    {"m_objPrintPosCorrectionDirection", &CItemManager::m_objPrintPosCorrectionDirection, T, 1, "+", nullptr, nullptr, "-", false},
    {"m_objPrintPosCorrectionValue", &CItemManager::m_objPrintPosCorrectionValue, D, 3, "000", nullptr, nullptr, "302", false},
    {"m_objFontCode", &CItemManager::m_objFontCode, H, 1, "0", "0", "F", "A", false},
    {"m_objZeroStyle", &CItemManager::m_objZeroStyle, D, 1, "0", "0", "1", "1", false},
    {"m_objControl", &CItemManager::m_objControl, D, 1, "2", "0", "4", "4", false},
    {"m_objControlCode", &CItemManager::m_objControlCode, D, 1, "0", "0", "3", "3", false},
    {"m_objStripStatus", &CItemManager::m_objStripStatus, D, 1, "0", "0", "1", "1", false},
    {"m_objThresholdAdjustment_R", &CItemManager::m_objThresholdAdjustment_R, D, 2, "10", "00", "40", "31", false},
    {"m_objThresholdAdjustment_T", &CItemManager::m_objThresholdAdjustment_T, D, 2, "14", "00", "40", "07", false},
    {"m_objKanjiCode", &CItemManager::m_objKanjiCode, D, 1, "0", "0", "1", "1", false},
    {"m_objCountry", &CItemManager::m_objCountry, D, 1, "0", nullptr, nullptr, "9", false},
    {"m_objEuroCode", &CItemManager::m_objEuroCode, H, 2, "B0", "20", "FF", "A4", false},
    {"m_objThermalHeadSensor", &CItemManager::m_objThermalHeadSensor, D, 2, "00", nullptr, nullptr, "41", false},
    {"m_objAmbientSensor", &CItemManager::m_objAmbientSensor, D, 2, "00", nullptr, nullptr, "52", false},
    {"m_objReflectiveSensor", &CItemManager::m_objReflectiveSensor, D, 2, "00", nullptr, nullptr, "63", false},
    {"m_objTransmissiveSensor", &CItemManager::m_objTransmissiveSensor, D, 2, "00", nullptr, nullptr, "74", false},
    {"m_objLanSetting", &CItemManager::m_objLanSetting, D, 1, "0", nullptr, nullptr, "1", false},
    {"m_objIpAddress1", &CItemManager::m_objIpAddress1, D, 3, "192", "000", "255", "010", false},
    {"m_objIpAddress2", &CItemManager::m_objIpAddress2, D, 3, "168", "000", "255", "020", false},
    {"m_objIpAddress3", &CItemManager::m_objIpAddress3, D, 3, "010", "000", "255", "030", false},
    {"m_objIpAddress4", &CItemManager::m_objIpAddress4, D, 3, "020", "000", "255", "040", false},
    {"m_objGateway1", &CItemManager::m_objGateway1, D, 3, "000", "000", "255", "051", false},
    {"m_objGateway2", &CItemManager::m_objGateway2, D, 3, "000", "000", "255", "061", false},
    {"m_objGateway3", &CItemManager::m_objGateway3, D, 3, "000", "000", "255", "071", false},
    {"m_objGateway4", &CItemManager::m_objGateway4, D, 3, "000", "000", "255", "081", false},
    {"m_objSubnetMask1", &CItemManager::m_objSubnetMask1, D, 3, "255", "000", "255", "252", false},
    {"m_objSubnetMask2", &CItemManager::m_objSubnetMask2, D, 3, "255", "000", "255", "242", false},
    {"m_objSubnetMask3", &CItemManager::m_objSubnetMask3, D, 3, "255", "000", "255", "232", false},
    {"m_objSubnetMask4", &CItemManager::m_objSubnetMask4, D, 3, "000", "000", "255", "222", false},
    {"m_objSocketPortSetting", &CItemManager::m_objSocketPortSetting, D, 1, "1", "0", "1", "0", false},
    {"m_objSocketPortNumber", &CItemManager::m_objSocketPortNumber, D, 5, "08000", "00000", "65535", "54321", false},
    {"m_objDhcpSetting", &CItemManager::m_objDhcpSetting, D, 1, "0", "0", "1", "1", false},
    {"m_objDhcpClientId", &CItemManager::m_objDhcpClientId, T, 32, "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF", "00000000000000000000000000000000", "~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~", "0123456789ABCDEF0123456789ABCDEF", false},
    {"m_objDhcpClientHost", &CItemManager::m_objDhcpClientHost, T, 16, "", "", "", "label printer 01", false},
    {"m_objCommunicationSpeed", &CItemManager::m_objCommunicationSpeed, D, 1, "2", "0", "5", "5", false},
    {"m_objDataLength", &CItemManager::m_objDataLength, D, 1, "1", "0", "1", "0", false},
    {"m_objStopBit", &CItemManager::m_objStopBit, D, 1, "0", "0", "1", "1", false},
    {"m_objParity", &CItemManager::m_objParity, D, 1, "1", "0", "2", "2", false},
    {"m_objAutoForward", &CItemManager::m_objAutoForward, D, 1, "1", "0", "1", "0", false},
    {"m_objAutoForwardDirection", &CItemManager::m_objAutoForwardDirection, T, 1, "+", "-", "+", "-", false},
    {"m_objAutoForwardAdjustment", &CItemManager::m_objAutoForwardAdjustment, D, 2, "00", "50", "50", "35", false},
    {"m_objControlCode1st", &CItemManager::m_objControlCode1st, H, 2, "1B", "00", "FF", "2B", false},
    {"m_objControlCode2nd", &CItemManager::m_objControlCode2nd, H, 2, "0A", "00", "FF", "0D", false},
    {"m_objControlCode3rd", &CItemManager::m_objControlCode3rd, H, 2, "00", "00", "FF", "7F", false},
    {"m_objFeedKeyFunction", &CItemManager::m_objFeedKeyFunction, D, 1, "0", "0", "1", "1", false},
    {"m_objHeadCheck", &CItemManager::m_objHeadCheck, D, 1, "0", "0", "1", "1", false},
    {"m_objAckBusyTiming", &CItemManager::m_objAckBusyTiming, D, 1, "0", "0", "1", "1", false},
    {"m_objWebPrinter", &CItemManager::m_objWebPrinter, D, 1, "0", "0", "1", "1", false},
    {"m_objResetNInitSignalIsON", &CItemManager::m_objResetNInitSignalIsON, D, 1, "0", "0", "1", "1", false},
    {"m_objRibbonNearEnd", &CItemManager::m_objRibbonNearEnd, D, 1, "0", "0", "2", "2", false},
    {"m_objExpansionIO", &CItemManager::m_objExpansionIO, D, 1, "0", "0", "1", "1", false},
    {"m_objPlugAndPlay", &CItemManager::m_objPlugAndPlay, D, 1, "0", "0", "1", "1", false},
    {"m_objLabelendRibbonend", &CItemManager::m_objLabelendRibbonend, D, 1, "0", "0", "1", "1", false},
    {"m_objPreStrip", &CItemManager::m_objPreStrip, D, 1, "0", "0", "1", "1", false},
    {"m_objBackFeedSpeed", &CItemManager::m_objBackFeedSpeed, D, 1, "1", "0", "1", "0", false},
    {"m_objMaxiCodeSpecification", &CItemManager::m_objMaxiCodeSpecification, D, 1, "0", "0", "1", "1", false},
    {"m_objStripMotorTorque", &CItemManager::m_objStripMotorTorque, D, 1, "0", "0", "3", "3", false},
    {"m_objKeyboardIF", &CItemManager::m_objKeyboardIF, D, 1, "0", nullptr, nullptr, "3", false},
};

// A field of its own for every item of an answer, so that no two can be mistaken for each other,
// and the number that is stored where it is not the field itself.
constexpr Answered AnswerAdjustment[] = {
    {&CItemManager::m_objFeedDirection, "-"},
    {&CItemManager::m_objFeedAdjustment, "123"},
    {&CItemManager::m_objCutPosDirection, "a"},
    {&CItemManager::m_objCutPosAdjustment, "045"},
    {&CItemManager::m_objBackFeedDirection, "b"},
    {&CItemManager::m_objBackFeedAdjustment, "67"},
    {&CItemManager::m_objToneDirection_T, "c"},
    {&CItemManager::m_objToneAdjustment_T, "08"},
    {&CItemManager::m_objToneDirection_D, "d"},
    {&CItemManager::m_objToneAdjustment_D, " 9"},
    {&CItemManager::m_objRibbonMotorDirection_F, "e"},
    {&CItemManager::m_objRibbonMotorAdjustment_F, "10"},
    {&CItemManager::m_objRibbonMotorDirection_B, "f"},
    {&CItemManager::m_objRibbonMotorAdjustment_B, "xy"},
};

constexpr Answered AnswerParameter[] = {
    {&CItemManager::m_objXCoordinateDirection, "-"},
    {&CItemManager::m_objXCoordinateAdjustment, "201"},
    {&CItemManager::m_objPrintPosCorrectionDirection, "a"},
    {&CItemManager::m_objPrintPosCorrectionValue, "302"},
    {&CItemManager::m_objFontCode, "E", 14},
    {&CItemManager::m_objZeroStyle, "3"},
    {&CItemManager::m_objControl, "4"},
    {&CItemManager::m_objControlCode, "5"},
    {&CItemManager::m_objStripStatus, "6"},
    {&CItemManager::m_objThresholdAdjustment_R, "27"},
    {&CItemManager::m_objThresholdAdjustment_T, "38"},
    {&CItemManager::m_objKanjiCode, "7"},
    {&CItemManager::m_objCountry, "9"},
    {&CItemManager::m_objEuroCode, "C7", 199},
};

constexpr Answered AnswerSensor[] = {
    {&CItemManager::m_objThermalHeadSensor, "41"},
    {&CItemManager::m_objAmbientSensor, "52"},
    {&CItemManager::m_objReflectiveSensor, "63"},
    {&CItemManager::m_objTransmissiveSensor, "74"},
};

constexpr Answered AnswerLan[] = {
    {&CItemManager::m_objLanSetting, "1"},
    {&CItemManager::m_objIpAddress1, "010"},
    {&CItemManager::m_objIpAddress2, "020"},
    {&CItemManager::m_objIpAddress3, "030"},
    {&CItemManager::m_objIpAddress4, "040"},
    {&CItemManager::m_objGateway1, "051"},
    {&CItemManager::m_objGateway2, "061"},
    {&CItemManager::m_objGateway3, "071"},
    {&CItemManager::m_objGateway4, "081"},
    {&CItemManager::m_objSubnetMask1, "252"},
    {&CItemManager::m_objSubnetMask2, "242"},
    {&CItemManager::m_objSubnetMask3, "232"},
    {&CItemManager::m_objSubnetMask4, "222"},
    {&CItemManager::m_objSocketPortSetting, "0"},
    {&CItemManager::m_objSocketPortNumber, "54321"},
    {&CItemManager::m_objDhcpSetting, "2"},
    {&CItemManager::m_objDhcpClientId, "0123456789ABCDEF0123456789ABCDEF"},
    {&CItemManager::m_objDhcpClientHost, " \xE9printer\xFF 7    "},
};

constexpr Answered AnswerParameterExpansion[] = {
    {&CItemManager::m_objCommunicationSpeed, "a"},
    {&CItemManager::m_objDataLength, "b"},
    {&CItemManager::m_objParity, "c"},
    {&CItemManager::m_objAutoForward, "d"},
    {&CItemManager::m_objAutoForwardDirection, "-"},
    {&CItemManager::m_objAutoForwardAdjustment, "48"},
    {&CItemManager::m_objControlCode1st, "1C", 28},
    {&CItemManager::m_objControlCode2nd, "0d", 13},
    {&CItemManager::m_objControlCode3rd, "7G", 7},
    {&CItemManager::m_objFeedKeyFunction, "e"},
    {&CItemManager::m_objHeadCheck, "f"},
    {&CItemManager::m_objAckBusyTiming, "g"},
    {&CItemManager::m_objWebPrinter, "h"},
    {&CItemManager::m_objResetNInitSignalIsON, "i"},
    {&CItemManager::m_objRibbonNearEnd, "j"},
    {&CItemManager::m_objExpansionIO, "k"},
    {&CItemManager::m_objPlugAndPlay, "l"},
    {&CItemManager::m_objLabelendRibbonend, "m"},
    {&CItemManager::m_objPreStrip, "n"},
    {&CItemManager::m_objBackFeedSpeed, "o"},
    {&CItemManager::m_objMaxiCodeSpecification, "p"},
    {&CItemManager::m_objStripMotorTorque, "q"},
    {&CItemManager::m_objKeyboardIF, "r"},
};

constexpr Slot SetParameter[] = {
    &CItemManager::m_objFontCode,
    &CItemManager::m_objZeroStyle,
    &CItemManager::m_objCommunicationSpeed,
    &CItemManager::m_objDataLength,
    &CItemManager::m_objStopBit,
    &CItemManager::m_objParity,
    &CItemManager::m_objControl,
    &CItemManager::m_objAutoForward,
    &CItemManager::m_objAutoForwardDirection,
    &CItemManager::m_objAutoForwardAdjustment,
    &CItemManager::m_objControlCode,
    &CItemManager::m_objControlCode1st,
    &CItemManager::m_objControlCode2nd,
    &CItemManager::m_objControlCode3rd,
    &CItemManager::m_objStripStatus,
    &CItemManager::m_objFeedKeyFunction,
    &CItemManager::m_objKanjiCode,
    &CItemManager::m_objEuroCode,
    &CItemManager::m_objHeadCheck,
    &CItemManager::m_objAckBusyTiming,
    &CItemManager::m_objWebPrinter,
    &CItemManager::m_objResetNInitSignalIsON,
    &CItemManager::m_objRibbonNearEnd,
    &CItemManager::m_objExpansionIO,
    &CItemManager::m_objPlugAndPlay,
    &CItemManager::m_objLabelendRibbonend,
    &CItemManager::m_objPreStrip,
    &CItemManager::m_objBackFeedSpeed,
    &CItemManager::m_objMaxiCodeSpecification,
    &CItemManager::m_objStripMotorTorque,
};

constexpr Slot SetAdjustment[] = {
    &CItemManager::m_objFeedDirection,
    &CItemManager::m_objFeedAdjustment,
    &CItemManager::m_objCutPosDirection,
    &CItemManager::m_objCutPosAdjustment,
    &CItemManager::m_objBackFeedDirection,
    &CItemManager::m_objBackFeedAdjustment,
    &CItemManager::m_objXCoordinateDirection,
    &CItemManager::m_objXCoordinateAdjustment,
    &CItemManager::m_objToneDirection_T,
    &CItemManager::m_objToneAdjustment_T,
    &CItemManager::m_objToneDirection_D,
    &CItemManager::m_objToneAdjustment_D,
    &CItemManager::m_objRibbonMotorDirection_F,
    &CItemManager::m_objRibbonMotorAdjustment_F,
    &CItemManager::m_objRibbonMotorDirection_B,
    &CItemManager::m_objRibbonMotorAdjustment_B,
    &CItemManager::m_objThresholdAdjustment_R,
    &CItemManager::m_objThresholdAdjustment_T,
};

constexpr Slot SetIpAddress[] = {
    &CItemManager::m_objIpAddress1,
    &CItemManager::m_objIpAddress2,
    &CItemManager::m_objIpAddress3,
    &CItemManager::m_objIpAddress4,
};

constexpr Slot SetGateway[] = {
    &CItemManager::m_objGateway1,
    &CItemManager::m_objGateway2,
    &CItemManager::m_objGateway3,
    &CItemManager::m_objGateway4,
};

constexpr Slot SetSubnetMask[] = {
    &CItemManager::m_objSubnetMask1,
    &CItemManager::m_objSubnetMask2,
    &CItemManager::m_objSubnetMask3,
    &CItemManager::m_objSubnetMask4,
};

constexpr Slot SetSocketPort[] = {
    &CItemManager::m_objSocketPortSetting,
    &CItemManager::m_objSocketPortNumber,
};

constexpr Slot SetDhcp[] = {
    &CItemManager::m_objDhcpSetting,
    &CItemManager::m_objDhcpClientId,
    &CItemManager::m_objDhcpClientHost,
};
// clang-format on

/// What a text begins with, and what stands in it.
struct Layout {
    std::string_view m_strHead;
    std::span<const Slot> m_objSlots;
    std::size_t m_iBetween = 0;  ///< characters between two fields
};

constexpr std::array<Layout, 7> Commands{{
    {"{Z2;1,", SetParameter},
    {"{Z2;2,", SetAdjustment},
    {"{IP;2,", SetIpAddress, 1},
    {"{IP;3,", SetGateway, 1},
    {"{IP;4,", SetSubnetMask, 1},
    {"{IS;", SetSocketPort, 1},
    {"{IH;", SetDhcp, 1},
}};

constexpr std::size_t AnswerHead = 2;

struct Field {
    Slot m_objSlot;
    std::size_t m_iPlace;
};

[[noreturn]] void Fail(std::string_view p_strWhat) {
    throw std::logic_error("MGolden: " + std::string(p_strWhat));
}

const Layout& LayoutOf(std::string_view p_strCommand) {
    for (const Layout& objLayout : Commands) {
        if (p_strCommand.starts_with(objLayout.m_strHead)) {
            return objLayout;
        }
    }
    Fail(p_strCommand);
}

std::vector<Field> FieldsOf(std::string_view p_strText) {
    std::vector<Slot> objSlots;
    std::size_t iPlace = AnswerHead;
    std::size_t iBetween = 0;
    if (p_strText.size() > 1 && p_strText[1] >= '0' && p_strText[1] <= '4') {
        for (const Answered& objAnswered : MGolden::Answers(p_strText[1] - '0')) {
            objSlots.push_back(objAnswered.m_objSlot);
        }
    } else {
        const Layout& objLayout = LayoutOf(p_strText);
        objSlots.assign(objLayout.m_objSlots.begin(), objLayout.m_objSlots.end());
        iPlace = objLayout.m_strHead.size();
        iBetween = objLayout.m_iBetween;
    }
    std::vector<Field> objFields;
    for (const Slot objSlot : objSlots) {
        objFields.push_back({objSlot, iPlace});
        iPlace += static_cast<std::size_t>(MGolden::Of(objSlot).m_iLength) + iBetween;
    }
    return objFields;
}

}  // namespace

namespace MGolden {

const char* const Parameters = "{Z2;1,00210121+0001B0A00000B0000000000100|}";
const char* const Adjustments = "{Z2;2,+000+000+00+000+00+00-00-001014|}";
const char* const IpAddress = "{IP;2,192,168,010,020|}";
const char* const Gateway = "{IP;3,000,000,000,000|}";
const char* const SubnetMask = "{IP;4,255,255,255,000|}";
const char* const SocketPort = "{IS;1,08000|}";
const char* const Dhcp = "{IH;0,FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF,"
                         "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF|}";

const char* Answer(int p_iGroup) {
    constexpr std::array strAnswers{
        "{0+000+000+00+00+00-00-00|}",
        "{1+000+00000200101400B0|}",
        "{200000000|}",
        "{301921680100200000000000002552552550001080000FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF"
        "                |}",
        "{42111+001B0A0000000000001000|}",
    };
    return strAnswers.at(static_cast<std::size_t>(p_iGroup));
}

Texts SetCommands() {
    return {Parameters, Adjustments};
}

Texts LanSetCommands() {
    return {IpAddress, Gateway, SubnetMask, SocketPort, Dhcp};
}

std::string With(std::string_view p_strText, const Changes& p_objChanges) {
    const std::vector<Field> objFields = FieldsOf(p_strText);
    std::string strText(p_strText);
    for (const auto& [strName, strField] : p_objChanges) {
        bool bFound = false;
        for (const Field& objField : objFields) {
            const Item& objItem = Of(objField.m_objSlot);
            if (objItem.m_strName == "m_obj" + std::string(strName)) {
                bFound = strField.size() == static_cast<std::size_t>(objItem.m_iLength);
                strText.replace(objField.m_iPlace, strField.size(), strField);
            }
        }
        if (!bFound) {
            Fail(strName);
        }
    }
    return strText;
}

std::string File(const Texts& p_strLines) {
    std::string strBytes;
    for (const std::string& strLine : p_strLines) {
        strBytes += strLine + "\r\n";
    }
    return strBytes;
}

std::span<const Item> Items() {
    return Catalogue;
}

std::span<const Answered> Answers(int p_iGroup) {
    constexpr std::array<std::span<const Answered>, 5> objAnswers{
        AnswerAdjustment, AnswerParameter, AnswerSensor, AnswerLan, AnswerParameterExpansion};
    return objAnswers.at(static_cast<std::size_t>(p_iGroup));
}

std::span<const Slot> Carried(std::string_view p_strCommand) {
    return LayoutOf(p_strCommand).m_objSlots;
}

const Item& Of(Slot p_objSlot) {
    for (const Item& objItem : Catalogue) {
        if (objItem.m_objSlot == p_objSlot) {
            return objItem;
        }
    }
    Fail("an item that is not in its table");
}

std::string All(std::string_view p_strText, Column p_objColumn) {
    std::string strText(p_strText);
    for (const Field& objField : FieldsOf(p_strText)) {
        const std::string_view strField = Of(objField.m_objSlot).*p_objColumn;
        strText.replace(objField.m_iPlace, strField.size(), strField);
    }
    return strText;
}

std::size_t Place(std::string_view p_strText, Slot p_objSlot) {
    for (const Field& objField : FieldsOf(p_strText)) {
        if (objField.m_objSlot == p_objSlot) {
            return objField.m_iPlace;
        }
    }
    Fail(p_strText);
}

}  // namespace MGolden
