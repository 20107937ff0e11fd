#include "model/CItemManager.h"

#include <array>

namespace {

constexpr const char* DhcpClientIdDefault = "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF";

// The order is the order of creation. The two directions of the ribbon motors are fixed: whatever
// is stored in them, they are written as "-".
// clang-format off
const std::array<CItemManager::Row, 74> Catalogue{{
    {"m_objFeedDirection", &CItemManager::m_objFeedDirection, ItemDataType::Text, 1, "+", false},
    {"m_objFeedAdjustment", &CItemManager::m_objFeedAdjustment, ItemDataType::Decimal, 3, 0, false},
    {"m_objCutPosDirection", &CItemManager::m_objCutPosDirection, ItemDataType::Text, 1, "+", false},
    {"m_objCutPosAdjustment", &CItemManager::m_objCutPosAdjustment, ItemDataType::Decimal, 3, 0, false},
    {"m_objBackFeedDirection", &CItemManager::m_objBackFeedDirection, ItemDataType::Text, 1, "+", false},
    {"m_objBackFeedAdjustment", &CItemManager::m_objBackFeedAdjustment, ItemDataType::Decimal, 2, 0, false},
    {"m_objToneDirection_T", &CItemManager::m_objToneDirection_T, ItemDataType::Text, 1, "+", false},
    {"m_objToneAdjustment_T", &CItemManager::m_objToneAdjustment_T, ItemDataType::Decimal, 2, 0, false},
    {"m_objToneDirection_D", &CItemManager::m_objToneDirection_D, ItemDataType::Text, 1, "+", false},
    {"m_objToneAdjustment_D", &CItemManager::m_objToneAdjustment_D, ItemDataType::Decimal, 2, 0, false},
    {"m_objRibbonMotorDirection_F", &CItemManager::m_objRibbonMotorDirection_F, ItemDataType::Text, 1, "-", true},
    {"m_objRibbonMotorAdjustment_F", &CItemManager::m_objRibbonMotorAdjustment_F, ItemDataType::Decimal, 2, 0, false},
    {"m_objRibbonMotorDirection_B", &CItemManager::m_objRibbonMotorDirection_B, ItemDataType::Text, 1, "-", true},
    {"m_objRibbonMotorAdjustment_B", &CItemManager::m_objRibbonMotorAdjustment_B, ItemDataType::Decimal, 2, 0, false},
    {"m_objXCoordinateDirection", &CItemManager::m_objXCoordinateDirection, ItemDataType::Text, 1, "+", false},
    {"m_objXCoordinateAdjustment", &CItemManager::m_objXCoordinateAdjustment, ItemDataType::Decimal, 3, 0, false},
    {"m_objPrintPosCorrectionDirection", &CItemManager::m_objPrintPosCorrectionDirection, ItemDataType::Text, 1, "+", false},
    {"m_objPrintPosCorrectionValue", &CItemManager::m_objPrintPosCorrectionValue, ItemDataType::Decimal, 3, 0, false},
    {"m_objFontCode", &CItemManager::m_objFontCode, ItemDataType::Hexadecimal, 1, 0, false},
    {"m_objZeroStyle", &CItemManager::m_objZeroStyle, ItemDataType::Decimal, 1, 0, false},
    {"m_objControl", &CItemManager::m_objControl, ItemDataType::Decimal, 1, 2, false},
    {"m_objControlCode", &CItemManager::m_objControlCode, ItemDataType::Decimal, 1, 0, false},
    {"m_objStripStatus", &CItemManager::m_objStripStatus, ItemDataType::Decimal, 1, 0, false},
    {"m_objThresholdAdjustment_R", &CItemManager::m_objThresholdAdjustment_R, ItemDataType::Decimal, 2, 10, false},
    {"m_objThresholdAdjustment_T", &CItemManager::m_objThresholdAdjustment_T, ItemDataType::Decimal, 2, 14, false},
    {"m_objKanjiCode", &CItemManager::m_objKanjiCode, ItemDataType::Decimal, 1, 0, false},
    {"m_objCountry", &CItemManager::m_objCountry, ItemDataType::Decimal, 1, 0, false},
    {"m_objEuroCode", &CItemManager::m_objEuroCode, ItemDataType::Hexadecimal, 2, 176, false},
    {"m_objThermalHeadSensor", &CItemManager::m_objThermalHeadSensor, ItemDataType::Decimal, 2, 0, false},
    {"m_objAmbientSensor", &CItemManager::m_objAmbientSensor, ItemDataType::Decimal, 2, 0, false},
    {"m_objReflectiveSensor", &CItemManager::m_objReflectiveSensor, ItemDataType::Decimal, 2, 0, false},
    {"m_objTransmissiveSensor", &CItemManager::m_objTransmissiveSensor, ItemDataType::Decimal, 2, 0, false},
    {"m_objLanSetting", &CItemManager::m_objLanSetting, ItemDataType::Decimal, 1, 0, false},
    {"m_objIpAddress1", &CItemManager::m_objIpAddress1, ItemDataType::Decimal, 3, 192, false},
    {"m_objIpAddress2", &CItemManager::m_objIpAddress2, ItemDataType::Decimal, 3, 168, false},
    {"m_objIpAddress3", &CItemManager::m_objIpAddress3, ItemDataType::Decimal, 3, 10, false},
    {"m_objIpAddress4", &CItemManager::m_objIpAddress4, ItemDataType::Decimal, 3, 20, false},
    {"m_objGateway1", &CItemManager::m_objGateway1, ItemDataType::Decimal, 3, 0, false},
    {"m_objGateway2", &CItemManager::m_objGateway2, ItemDataType::Decimal, 3, 0, false},
    {"m_objGateway3", &CItemManager::m_objGateway3, ItemDataType::Decimal, 3, 0, false},
    {"m_objGateway4", &CItemManager::m_objGateway4, ItemDataType::Decimal, 3, 0, false},
    {"m_objSubnetMask1", &CItemManager::m_objSubnetMask1, ItemDataType::Decimal, 3, 255, false},
    {"m_objSubnetMask2", &CItemManager::m_objSubnetMask2, ItemDataType::Decimal, 3, 255, false},
    {"m_objSubnetMask3", &CItemManager::m_objSubnetMask3, ItemDataType::Decimal, 3, 255, false},
    {"m_objSubnetMask4", &CItemManager::m_objSubnetMask4, ItemDataType::Decimal, 3, 0, false},
    {"m_objSocketPortSetting", &CItemManager::m_objSocketPortSetting, ItemDataType::Decimal, 1, 1, false},
    {"m_objSocketPortNumber", &CItemManager::m_objSocketPortNumber, ItemDataType::Decimal, 5, 8000, false},
    {"m_objDhcpSetting", &CItemManager::m_objDhcpSetting, ItemDataType::Decimal, 1, 0, false},
    {"m_objDhcpClientId", &CItemManager::m_objDhcpClientId, ItemDataType::Text, 32, DhcpClientIdDefault, false},
    {"m_objDhcpClientHost", &CItemManager::m_objDhcpClientHost, ItemDataType::Text, 16, "", false},
    {"m_objCommunicationSpeed", &CItemManager::m_objCommunicationSpeed, ItemDataType::Decimal, 1, 2, false},
    {"m_objDataLength", &CItemManager::m_objDataLength, ItemDataType::Decimal, 1, 1, false},
    {"m_objStopBit", &CItemManager::m_objStopBit, ItemDataType::Decimal, 1, 0, false},
    {"m_objParity", &CItemManager::m_objParity, ItemDataType::Decimal, 1, 1, false},
    {"m_objAutoForward", &CItemManager::m_objAutoForward, ItemDataType::Decimal, 1, 1, false},
    {"m_objAutoForwardDirection", &CItemManager::m_objAutoForwardDirection, ItemDataType::Text, 1, "+", false},
    {"m_objAutoForwardAdjustment", &CItemManager::m_objAutoForwardAdjustment, ItemDataType::Decimal, 2, 0, false},
    {"m_objControlCode1st", &CItemManager::m_objControlCode1st, ItemDataType::Hexadecimal, 2, 27, false},
    {"m_objControlCode2nd", &CItemManager::m_objControlCode2nd, ItemDataType::Hexadecimal, 2, 10, false},
    {"m_objControlCode3rd", &CItemManager::m_objControlCode3rd, ItemDataType::Hexadecimal, 2, 0, false},
    {"m_objFeedKeyFunction", &CItemManager::m_objFeedKeyFunction, ItemDataType::Decimal, 1, 0, false},
    {"m_objHeadCheck", &CItemManager::m_objHeadCheck, ItemDataType::Decimal, 1, 0, false},
    {"m_objAckBusyTiming", &CItemManager::m_objAckBusyTiming, ItemDataType::Decimal, 1, 0, false},
    {"m_objWebPrinter", &CItemManager::m_objWebPrinter, ItemDataType::Decimal, 1, 0, false},
    {"m_objResetNInitSignalIsON", &CItemManager::m_objResetNInitSignalIsON, ItemDataType::Decimal, 1, 0, false},
    {"m_objRibbonNearEnd", &CItemManager::m_objRibbonNearEnd, ItemDataType::Decimal, 1, 0, false},
    {"m_objExpansionIO", &CItemManager::m_objExpansionIO, ItemDataType::Decimal, 1, 0, false},
    {"m_objPlugAndPlay", &CItemManager::m_objPlugAndPlay, ItemDataType::Decimal, 1, 0, false},
    {"m_objLabelendRibbonend", &CItemManager::m_objLabelendRibbonend, ItemDataType::Decimal, 1, 0, false},
    {"m_objPreStrip", &CItemManager::m_objPreStrip, ItemDataType::Decimal, 1, 0, false},
    {"m_objBackFeedSpeed", &CItemManager::m_objBackFeedSpeed, ItemDataType::Decimal, 1, 1, false},
    {"m_objMaxiCodeSpecification", &CItemManager::m_objMaxiCodeSpecification, ItemDataType::Decimal, 1, 0, false},
    {"m_objStripMotorTorque", &CItemManager::m_objStripMotorTorque, ItemDataType::Decimal, 1, 0, false},
    {"m_objKeyboardIF", &CItemManager::m_objKeyboardIF, ItemDataType::Decimal, 1, 0, false},
}};

constexpr std::array AnswerAdjustment{
    &CItemManager::m_objFeedDirection,
    &CItemManager::m_objFeedAdjustment,
    &CItemManager::m_objCutPosDirection,
    &CItemManager::m_objCutPosAdjustment,
    &CItemManager::m_objBackFeedDirection,
    &CItemManager::m_objBackFeedAdjustment,
    &CItemManager::m_objToneDirection_T,
    &CItemManager::m_objToneAdjustment_T,
    &CItemManager::m_objToneDirection_D,
    &CItemManager::m_objToneAdjustment_D,
    &CItemManager::m_objRibbonMotorDirection_F,
    &CItemManager::m_objRibbonMotorAdjustment_F,
    &CItemManager::m_objRibbonMotorDirection_B,
    &CItemManager::m_objRibbonMotorAdjustment_B,
};

constexpr std::array AnswerParameter{
    &CItemManager::m_objXCoordinateDirection,
    &CItemManager::m_objXCoordinateAdjustment,
    &CItemManager::m_objPrintPosCorrectionDirection,
    &CItemManager::m_objPrintPosCorrectionValue,
    &CItemManager::m_objFontCode,
    &CItemManager::m_objZeroStyle,
    &CItemManager::m_objControl,
    &CItemManager::m_objControlCode,
    &CItemManager::m_objStripStatus,
    &CItemManager::m_objThresholdAdjustment_R,
    &CItemManager::m_objThresholdAdjustment_T,
    &CItemManager::m_objKanjiCode,
    &CItemManager::m_objCountry,
    &CItemManager::m_objEuroCode,
};

constexpr std::array AnswerSensor{
    &CItemManager::m_objThermalHeadSensor,
    &CItemManager::m_objAmbientSensor,
    &CItemManager::m_objReflectiveSensor,
    &CItemManager::m_objTransmissiveSensor,
};

constexpr std::array AnswerLan{
    &CItemManager::m_objLanSetting,
    &CItemManager::m_objIpAddress1,
    &CItemManager::m_objIpAddress2,
    &CItemManager::m_objIpAddress3,
    &CItemManager::m_objIpAddress4,
    &CItemManager::m_objGateway1,
    &CItemManager::m_objGateway2,
    &CItemManager::m_objGateway3,
    &CItemManager::m_objGateway4,
    &CItemManager::m_objSubnetMask1,
    &CItemManager::m_objSubnetMask2,
    &CItemManager::m_objSubnetMask3,
    &CItemManager::m_objSubnetMask4,
    &CItemManager::m_objSocketPortSetting,
    &CItemManager::m_objSocketPortNumber,
    &CItemManager::m_objDhcpSetting,
    &CItemManager::m_objDhcpClientId,
    &CItemManager::m_objDhcpClientHost,
};

constexpr std::array AnswerParameterExpansion1{
    &CItemManager::m_objCommunicationSpeed,
    &CItemManager::m_objDataLength,
    &CItemManager::m_objParity,
    &CItemManager::m_objAutoForward,
    &CItemManager::m_objAutoForwardDirection,
    &CItemManager::m_objAutoForwardAdjustment,
    &CItemManager::m_objControlCode1st,
    &CItemManager::m_objControlCode2nd,
    &CItemManager::m_objControlCode3rd,
    &CItemManager::m_objFeedKeyFunction,
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
    &CItemManager::m_objKeyboardIF,
};

constexpr std::array SetParameter{
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

constexpr std::array SetAdjustment{
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

constexpr std::array SetExtraIpAddress{
    &CItemManager::m_objIpAddress1,
    &CItemManager::m_objIpAddress2,
    &CItemManager::m_objIpAddress3,
    &CItemManager::m_objIpAddress4,
};

constexpr std::array SetExtraGateway{
    &CItemManager::m_objGateway1,
    &CItemManager::m_objGateway2,
    &CItemManager::m_objGateway3,
    &CItemManager::m_objGateway4,
};

constexpr std::array SetExtraSubnet{
    &CItemManager::m_objSubnetMask1,
    &CItemManager::m_objSubnetMask2,
    &CItemManager::m_objSubnetMask3,
    &CItemManager::m_objSubnetMask4,
};

// clang-format on

}  // namespace

CItemManager::CItemManager() {
    CreateItems();
}

CItemManager::CItemManager(const CItemManager& p_objOther) {
    *this = p_objOther;
}

CItemManager& CItemManager::operator=(const CItemManager& p_objOther) {
    if (this != &p_objOther) {
        for (const Row& objRow : Catalogue) {
            this->*objRow.m_objSlot = std::make_shared<CItem>(*(p_objOther.*objRow.m_objSlot));
        }
    }
    return *this;
}

std::span<const CItemManager::Row> CItemManager::Rows() {
    return Catalogue;
}

bool CItemManager::CreateItems() {
    for (const Row& objRow : Catalogue) {
        CreateItem(this->*objRow.m_objSlot, objRow.m_vDefault, objRow.m_iLength, objRow.m_iDataType,
                   objRow.m_bFixed);
    }
    return true;
}

bool CItemManager::CreateItem(ItemRef& p_objSlot, const CItemValue& p_vDefault,
                              std::int16_t p_iLength, ItemDataType p_iDataType, bool p_bFixed) {
    p_objSlot = std::make_shared<CItem>();
    p_objSlot->m_iLength = p_iLength;
    p_objSlot->m_iDataType = p_iDataType;
    p_objSlot->InitializeValue(p_vDefault, p_bFixed);
    return true;
}

bool CItemManager::AppendItem(ItemArray& p_objItemAry, const ItemRef& p_objItem) {
    p_objItemAry.push_back(p_objItem);
    return true;
}

template <typename Group>
bool CItemManager::Fill(ItemArray& p_objItemAry, const Group& p_objGroup) const {
    p_objItemAry.clear();
    for (const auto& objSlot : p_objGroup) {
        AppendItem(p_objItemAry, this->*objSlot);
    }
    return true;
}

bool CItemManager::GetItem_Adjustment(ItemArray& p_objItemAry) const {
    return Fill(p_objItemAry, AnswerAdjustment);
}

bool CItemManager::GetItem_Parameter(ItemArray& p_objItemAry) const {
    return Fill(p_objItemAry, AnswerParameter);
}

bool CItemManager::GetItem_Sensor(ItemArray& p_objItemAry) const {
    return Fill(p_objItemAry, AnswerSensor);
}

bool CItemManager::GetItem_Lan(ItemArray& p_objItemAry) const {
    return Fill(p_objItemAry, AnswerLan);
}

bool CItemManager::GetItem_ParameterExpansion1(ItemArray& p_objItemAry) const {
    return Fill(p_objItemAry, AnswerParameterExpansion1);
}

bool CItemManager::SetItem_Parameter(ItemArray& p_objItemAry) const {
    return Fill(p_objItemAry, SetParameter);
}

bool CItemManager::SetItem_Adjustment(ItemArray& p_objItemAry) const {
    return Fill(p_objItemAry, SetAdjustment);
}

bool CItemManager::SetItem_ExtraIpAddress(ItemArray& p_objItemAry) const {
    return Fill(p_objItemAry, SetExtraIpAddress);
}

bool CItemManager::SetItem_ExtraGateway(ItemArray& p_objItemAry) const {
    return Fill(p_objItemAry, SetExtraGateway);
}

bool CItemManager::SetItem_ExtraSubnet(ItemArray& p_objItemAry) const {
    return Fill(p_objItemAry, SetExtraSubnet);
}
