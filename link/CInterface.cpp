#include "link/CInterface.h"

#include "model/MNumber.h"

#include <array>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

struct CInterface::Row {
    ItemRef CInterface::*m_objSlot;
    std::int16_t m_iLength;
    std::int16_t m_iDefault;
};

namespace {

constexpr std::array<std::string_view, 6> Speeds{"2400",  "4800",  "9600",
                                                 "19200", "38400", "115200"};
constexpr std::array<std::string_view, 2> DataBits{"7", "8"};
constexpr std::array<std::string_view, 2> StopBits{"1", "2"};
constexpr std::array<std::string_view, 3> Parities{"N", "E", "O"};

std::string TextAt(std::span<const std::string_view> p_strTexts, const CItem& p_objIndex,
                   bool p_bDefaultValue, std::string_view p_strOtherwise) {
    const double dIndex = MNumber::ToDouble(p_objIndex.GetValue(p_bDefaultValue));
    for (std::size_t i = 0; i < p_strTexts.size(); ++i) {
        if (dIndex == static_cast<double>(i)) {
            return std::string(p_strTexts[i]);
        }
    }
    return std::string(p_strOtherwise);
}

std::string PlainNumber(const CItem& p_objItem, bool p_bDefaultValue) {
    return MNumber::ToText(MNumber::ToDouble(p_objItem.GetValue(p_bDefaultValue)));
}

}  // namespace

CInterface::CInterface() {
    CreateItems();
}

void CInterface::CreateItems() {
    static const std::array<Row, 19> arrRows{{
        {&CInterface::m_objIpAddress1, 3, 192},    {&CInterface::m_objIpAddress2, 3, 168},
        {&CInterface::m_objIpAddress3, 3, 10},     {&CInterface::m_objIpAddress4, 3, 20},
        {&CInterface::m_objGateway1, 3, 0},        {&CInterface::m_objGateway2, 3, 0},
        {&CInterface::m_objGateway3, 3, 0},        {&CInterface::m_objGateway4, 3, 0},
        {&CInterface::m_objSubnetMask1, 3, 255},   {&CInterface::m_objSubnetMask2, 3, 255},
        {&CInterface::m_objSubnetMask3, 3, 255},   {&CInterface::m_objSubnetMask4, 3, 0},
        {&CInterface::m_objReservedChoice, 1, 0},  {&CInterface::m_objSocketPort, 5, 8000},
        {&CInterface::m_objComPortIndex, 1, 0},    {&CInterface::m_objSpeedIndex, 1, 2},
        {&CInterface::m_objDataLengthIndex, 1, 1}, {&CInterface::m_objStopBitIndex, 1, 0},
        {&CInterface::m_objParityIndex, 1, 1},
    }};
    for (const Row& objRow : arrRows) {
        auto objItem = std::make_shared<CItem>();
        objItem->m_iLength = objRow.m_iLength;
        objItem->m_iDataType = ItemDataType::Decimal;
        objItem->InitializeValue(objRow.m_iDefault);
        this->*objRow.m_objSlot = std::move(objItem);
    }
}

void CInterface::SetActiveInterface(std::int16_t p_iActiveInterface) {
    m_iActiveInterface = p_iActiveInterface;
}

std::int16_t CInterface::GetActiveInterface() const {
    return m_iActiveInterface;
}

std::int16_t CInterface::GetComPortNumber(bool p_bDefaultValue) const {
    const std::int16_t iIndex = MNumber::ToInt16(m_objComPortIndex->GetValue(p_bDefaultValue));
    return static_cast<std::int16_t>(iIndex + 1);
}

std::string CInterface::GetSerialInfo(bool p_bDefaultValue) const {
    return TextAt(Speeds, *m_objSpeedIndex, p_bDefaultValue, "9600") + "," +
           TextAt(Parities, *m_objParityIndex, p_bDefaultValue, "N") + "," +
           TextAt(DataBits, *m_objDataLengthIndex, p_bDefaultValue, "8") + "," +
           TextAt(StopBits, *m_objStopBitIndex, p_bDefaultValue, "1");
}

std::string CInterface::SetIpAddress(std::int16_t p_iIpAddress1, std::int16_t /*p_iIpAddress2*/,
                                     std::int16_t /*p_iIpAddress3*/,
                                     std::int16_t /*p_iIpAddress4*/) {
    m_objIpAddress1->SetValue(p_iIpAddress1);
    m_objIpAddress2->SetValue(p_iIpAddress1);
    m_objIpAddress3->SetValue(p_iIpAddress1);
    m_objIpAddress4->SetValue(p_iIpAddress1);
    return {};
}

std::string CInterface::GetIpAddress(bool p_bDefaultValue) const {
    // Without padding: some systems read "010" in a host address as octal.
    return PlainNumber(*m_objIpAddress1, p_bDefaultValue) + "." +
           PlainNumber(*m_objIpAddress2, p_bDefaultValue) + "." +
           PlainNumber(*m_objIpAddress3, p_bDefaultValue) + "." +
           PlainNumber(*m_objIpAddress4, p_bDefaultValue);
}

std::string CInterface::GetGateway(bool p_bDefaultValue) const {
    return m_objGateway1->GetValueString(p_bDefaultValue) + "." +
           m_objGateway2->GetValueString(p_bDefaultValue) + "." +
           m_objGateway3->GetValueString(p_bDefaultValue) + "." +
           m_objGateway4->GetValueString(p_bDefaultValue);
}

std::string CInterface::GetSubnetMas(bool p_bDefaultValue) const {
    return m_objSubnetMask1->GetValueString(p_bDefaultValue) + "." +
           m_objSubnetMask2->GetValueString(p_bDefaultValue) + "." +
           m_objSubnetMask3->GetValueString(p_bDefaultValue) + "." +
           m_objSubnetMask4->GetValueString(p_bDefaultValue);
}

std::string CInterface::GetSocketPortNumber(bool p_bDefaultValue) const {
    return m_objSocketPort->GetValueString(p_bDefaultValue);
}
