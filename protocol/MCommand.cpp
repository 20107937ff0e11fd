#include "protocol/MCommand.h"

#include <algorithm>

namespace {

constexpr std::int16_t PrintMargin = 30;

// The pattern behind "BARCODE" is sent as 6; 5 is never sent.
constexpr std::int16_t FactoryTestPosition = 5;
constexpr std::int16_t FactoryTestCode = 6;

/// Filled up with zeros to as many digits as TestPrintNumberPattern has; a number with more is
/// written whole.
std::string TestPrintNumber(std::int16_t p_iNumber) {
    const std::string strPattern = MCommand::TestPrintNumberPattern;
    const std::string strDigits = std::to_string(p_iNumber);
    return strPattern.substr(std::min(strDigits.size(), strPattern.size())) + strDigits;
}

bool IsExact(const CItem& p_objItem) {
    return p_objItem.GetValueString().size() == static_cast<std::size_t>(p_objItem.m_iLength);
}

bool AreExact(const ItemArray& p_objItemAry) {
    return std::ranges::all_of(p_objItemAry,
                               [](const ItemRef& p_objItem) { return IsExact(*p_objItem); });
}

bool HasFourDigits(std::int16_t p_iNumber) {
    return p_iNumber >= 0 && p_iNumber <= 9999;
}

}  // namespace

namespace MCommand {

std::string ReadRequest(std::int16_t p_iGroup) {
    return ReadGroupHead + std::to_string(p_iGroup) + CommandEnd;
}

std::string WriteGroup(std::int16_t p_iKind, const ItemArray& p_objItemAry) {
    std::string strCommand = WriteGroupHead + std::to_string(p_iKind) + ",";
    for (const ItemRef& objItem : p_objItemAry) {
        strCommand += objItem->GetValueString();
    }
    return strCommand + CommandEnd;
}

std::string MakeParameterSetCommand(const CItemManager& p_objItemManager, std::int16_t p_iKind) {
    ItemArray objItemAry;
    switch (p_iKind) {
    case SetParameter:
        p_objItemManager.SetItem_Parameter(objItemAry);
        break;
    case SetAdjustment:
        p_objItemManager.SetItem_Adjustment(objItemAry);
        break;
    default:
        return {};
    }
    return WriteGroup(p_iKind, objItemAry);
}

std::string NetworkAddress(std::int16_t p_iKind, const ItemArray& p_objItemAry) {
    std::string strCommand = AddressHead + std::to_string(p_iKind);
    for (const ItemRef& objItem : p_objItemAry) {
        strCommand += "," + objItem->GetValueString();
    }
    return strCommand + CommandEnd;
}

std::string NetworkPair(const CItem& p_objSetting, const CItem& p_objNumber) {
    return PairHead + p_objSetting.GetValueString() + "," + p_objNumber.GetValueString() +
           CommandEnd;
}

std::string NetworkText(const CItem& p_objSetting, const CItem& p_objId, const CItem& p_objHost) {
    std::string strHost = p_objHost.GetValueString();
    if (strHost.size() < HostNameLength) {
        strHost.resize(HostNameLength, HostNameFill);
    }
    return TextHead + p_objSetting.GetValueString() + "," + p_objId.GetValueString() + "," +
           strHost + CommandEnd;
}

std::string MakeAddressCommand(const CItemManager& p_objItemManager, std::int16_t p_iKind) {
    ItemArray objItemAry;
    switch (p_iKind) {
    case IpAddress:
        p_objItemManager.SetItem_ExtraIpAddress(objItemAry);
        break;
    case Gateway:
        p_objItemManager.SetItem_ExtraGateway(objItemAry);
        break;
    case SubnetMask:
        p_objItemManager.SetItem_ExtraSubnet(objItemAry);
        break;
    default:
        return {};
    }
    return NetworkAddress(p_iKind, objItemAry);
}

std::string MakeSocketPortCommand(const CItemManager& p_objItemManager) {
    return NetworkPair(*p_objItemManager.m_objSocketPortSetting,
                       *p_objItemManager.m_objSocketPortNumber);
}

std::string MakeDhcpCommand(const CItemManager& p_objItemManager) {
    return NetworkText(*p_objItemManager.m_objDhcpSetting, *p_objItemManager.m_objDhcpClientId,
                       *p_objItemManager.m_objDhcpClientHost);
}

std::vector<std::string> SetCommands(const CItemManager& p_objItemManager) {
    return {MakeParameterSetCommand(p_objItemManager, SetParameter),
            MakeParameterSetCommand(p_objItemManager, SetAdjustment)};
}

std::vector<std::string> LanSetCommands(const CItemManager& p_objItemManager) {
    return {MakeAddressCommand(p_objItemManager, IpAddress),
            MakeAddressCommand(p_objItemManager, Gateway),
            MakeAddressCommand(p_objItemManager, SubnetMask),
            MakeSocketPortCommand(p_objItemManager), MakeDhcpCommand(p_objItemManager)};
}

bool IsSetExact(const CItemManager& p_objItemManager) {
    ItemArray objParameters;
    ItemArray objAdjustments;
    p_objItemManager.SetItem_Parameter(objParameters);
    p_objItemManager.SetItem_Adjustment(objAdjustments);
    return AreExact(objParameters) && AreExact(objAdjustments);
}

bool IsLanSetExact(const CItemManager& p_objItemManager) {
    ItemArray objIpAddress;
    ItemArray objGateway;
    ItemArray objSubnet;
    p_objItemManager.SetItem_ExtraIpAddress(objIpAddress);
    p_objItemManager.SetItem_ExtraGateway(objGateway);
    p_objItemManager.SetItem_ExtraSubnet(objSubnet);
    return AreExact(objIpAddress) && AreExact(objGateway) && AreExact(objSubnet) &&
           IsExact(*p_objItemManager.m_objSocketPortSetting) &&
           IsExact(*p_objItemManager.m_objSocketPortNumber) &&
           IsExact(*p_objItemManager.m_objDhcpSetting) &&
           IsExact(*p_objItemManager.m_objDhcpClientId) &&
           // What it lacks is filled up, and what it has too much is not cut.
           p_objItemManager.m_objDhcpClientHost->GetValueString().size() <= HostNameLength;
}

bool IsPosition(std::int16_t p_iPosition) {
    return p_iPosition >= 0 && p_iPosition <= 9;
}

std::string TestPrint(const TestPrintFields& p_objFields) {
    const std::int16_t iPattern =
        p_objFields.m_iPattern == FactoryTestPosition ? FactoryTestCode : p_objFields.m_iPattern;
    const auto iPrintLength = static_cast<std::int16_t>(p_objFields.m_iLabelLength - PrintMargin);
    return TestPrintHead + std::to_string(iPattern) + TestPrintNumber(p_objFields.m_iLabelLength) +
           TestPrintNumber(iPrintLength) + TestPrintFixedField +
           TestPrintNumber(p_objFields.m_iIssueCount) + std::to_string(p_objFields.m_iPrintSpeed) +
           std::to_string(p_objFields.m_iSensor) + std::to_string(p_objFields.m_iCutType) +
           std::to_string(p_objFields.m_iPrintType) + CommandEnd;
}

bool IsTestPrintExact(const TestPrintFields& p_objFields) {
    return IsPosition(p_objFields.m_iPattern) && HasFourDigits(p_objFields.m_iLabelLength) &&
           p_objFields.m_iLabelLength >= PrintMargin && HasFourDigits(p_objFields.m_iIssueCount) &&
           IsPosition(p_objFields.m_iPrintSpeed) && IsPosition(p_objFields.m_iSensor) &&
           IsPosition(p_objFields.m_iCutType) && IsPosition(p_objFields.m_iPrintType);
}

std::string DiagPrint(std::int16_t p_iPrintType) {
    return DiagPrintHead + std::to_string(p_iPrintType) + CommandEnd;
}

std::string RamClear(std::int16_t p_iMode, std::int16_t p_iDestination) {
    std::string strCommand = RamClearHead + std::to_string(p_iMode);
    if (p_iMode == ClearParameters && p_iDestination >= 1) {
        strCommand += std::to_string(p_iDestination - 1);
    }
    return strCommand + CommandEnd;
}

std::string ThresholdCalib(std::int16_t p_iSensor) {
    return ThresholdCalibHead + std::to_string(p_iSensor + 1) + CommandEnd;
}

std::string SensorAdjustPaperEnd(std::int16_t p_iPass) {
    return SensorAdjustPaperEndHead + std::to_string(p_iPass) + SensorAdjustPaperEndTail;
}

}  // namespace MCommand
