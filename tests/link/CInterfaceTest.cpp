#include "link/CInterface.h"

#include "model/CConversionError.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct ItemCase {
    const char* m_strName;
    ItemRef CInterface::*m_objSlot;
    int m_iLength;
    int m_iDefault;
    const char* m_strField;
};

class CInterfaceItemTest : public ::testing::TestWithParam<ItemCase> {};

TEST_P(CInterfaceItemTest, StandsAtItsDefaultInItsWidth) {
    const ItemCase& objCase = GetParam();
    const CInterface objInterface;
    const CItem& objItem = *(objInterface.*objCase.m_objSlot);
    EXPECT_EQ(objItem.m_iLength, objCase.m_iLength);
    EXPECT_EQ(objItem.m_iDataType, ItemDataType::Decimal);
    EXPECT_FALSE(objItem.m_bFixedValue);
    EXPECT_EQ(objItem.GetValue(), CItemValue(objCase.m_iDefault));
    EXPECT_EQ(objItem.GetValue(true), CItemValue(objCase.m_iDefault));
    EXPECT_EQ(objItem.GetValueString(), objCase.m_strField);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(All, CInterfaceItemTest, ::testing::Values(
    ItemCase{"IpAddress1", &CInterface::m_objIpAddress1, 3, 192, "192"},
    ItemCase{"IpAddress2", &CInterface::m_objIpAddress2, 3, 168, "168"},
    ItemCase{"IpAddress3", &CInterface::m_objIpAddress3, 3, 10, "010"},
    ItemCase{"IpAddress4", &CInterface::m_objIpAddress4, 3, 20, "020"},
    ItemCase{"Gateway1", &CInterface::m_objGateway1, 3, 0, "000"},
    ItemCase{"Gateway2", &CInterface::m_objGateway2, 3, 0, "000"},
    ItemCase{"Gateway3", &CInterface::m_objGateway3, 3, 0, "000"},
    ItemCase{"Gateway4", &CInterface::m_objGateway4, 3, 0, "000"},
    ItemCase{"SubnetMask1", &CInterface::m_objSubnetMask1, 3, 255, "255"},
    ItemCase{"SubnetMask2", &CInterface::m_objSubnetMask2, 3, 255, "255"},
    ItemCase{"SubnetMask3", &CInterface::m_objSubnetMask3, 3, 255, "255"},
    ItemCase{"SubnetMask4", &CInterface::m_objSubnetMask4, 3, 0, "000"},
    ItemCase{"ReservedChoice", &CInterface::m_objReservedChoice, 1, 0, "0"},
    ItemCase{"SocketPort", &CInterface::m_objSocketPort, 5, 8000, "08000"},
    ItemCase{"ComPortIndex", &CInterface::m_objComPortIndex, 1, 0, "0"},
    ItemCase{"SpeedIndex", &CInterface::m_objSpeedIndex, 1, 2, "2"},
    ItemCase{"DataLengthIndex", &CInterface::m_objDataLengthIndex, 1, 1, "1"},
    ItemCase{"StopBitIndex", &CInterface::m_objStopBitIndex, 1, 0, "0"},
    ItemCase{"ParityIndex", &CInterface::m_objParityIndex, 1, 1, "1"}),
    [](const auto& p_objInfo) { return std::string(p_objInfo.param.m_strName); });
// clang-format on

TEST(CInterfaceTest, AFreshObjectDescribesTheDefaultLink) {
    const CInterface objInterface;
    EXPECT_EQ(objInterface.GetActiveInterface(), 2);
    EXPECT_EQ(objInterface.GetSerialInfo(), "9600,E,8,1");
    EXPECT_EQ(objInterface.GetComPortNumber(), 1);
    EXPECT_EQ(objInterface.GetIpAddress(), "192.168.10.20");
    EXPECT_EQ(objInterface.GetGateway(), "000.000.000.000");
    EXPECT_EQ(objInterface.GetSubnetMas(), "255.255.255.000");
    EXPECT_EQ(objInterface.GetSocketPortNumber(), "08000");
}

TEST(CInterfaceTest, TwoObjectsShareNoItem) {
    const CInterface objFirst;
    const CInterface objSecond;
    objFirst.m_objSpeedIndex->SetValue(5);
    EXPECT_EQ(objSecond.GetSerialInfo(), "9600,E,8,1");
}

struct SerialCase {
    ItemRef CInterface::*m_objSlot;
    int m_iIndex;
    const char* m_strInfo;
};

TEST(CInterfaceTest, EveryIndexHasItsPlaceInTheSerialSettings) {
    // clang-format off
    const std::vector<SerialCase> arrCases{
        {&CInterface::m_objSpeedIndex, 0, "2400,E,8,1"},
        {&CInterface::m_objSpeedIndex, 1, "4800,E,8,1"},
        {&CInterface::m_objSpeedIndex, 2, "9600,E,8,1"},
        {&CInterface::m_objSpeedIndex, 3, "19200,E,8,1"},
        {&CInterface::m_objSpeedIndex, 4, "38400,E,8,1"},
        {&CInterface::m_objSpeedIndex, 5, "115200,E,8,1"},
        {&CInterface::m_objSpeedIndex, 6, "9600,E,8,1"},
        {&CInterface::m_objSpeedIndex, -1, "9600,E,8,1"},
        {&CInterface::m_objParityIndex, 0, "9600,N,8,1"},
        {&CInterface::m_objParityIndex, 1, "9600,E,8,1"},
        {&CInterface::m_objParityIndex, 2, "9600,O,8,1"},
        {&CInterface::m_objParityIndex, 3, "9600,N,8,1"},
        {&CInterface::m_objParityIndex, -1, "9600,N,8,1"},
        {&CInterface::m_objDataLengthIndex, 0, "9600,E,7,1"},
        {&CInterface::m_objDataLengthIndex, 1, "9600,E,8,1"},
        {&CInterface::m_objDataLengthIndex, 2, "9600,E,8,1"},
        {&CInterface::m_objDataLengthIndex, -1, "9600,E,8,1"},
        {&CInterface::m_objStopBitIndex, 0, "9600,E,8,1"},
        {&CInterface::m_objStopBitIndex, 1, "9600,E,8,2"},
        {&CInterface::m_objStopBitIndex, 2, "9600,E,8,1"},
        {&CInterface::m_objStopBitIndex, -1, "9600,E,8,1"},
    };
    // clang-format on
    for (const SerialCase& objCase : arrCases) {
        const CInterface objInterface;
        (objInterface.*objCase.m_objSlot)->SetValue(objCase.m_iIndex);
        EXPECT_EQ(objInterface.GetSerialInfo(), objCase.m_strInfo) << objCase.m_iIndex;
        EXPECT_EQ(objInterface.GetSerialInfo(true), "9600,E,8,1");
    }
}

TEST(CInterfaceTest, AnIndexHeldAsTextCounts) {
    const CInterface objInterface;
    objInterface.m_objSpeedIndex->SetValue("5");
    EXPECT_EQ(objInterface.GetSerialInfo(), "115200,E,8,1");
    objInterface.m_objSpeedIndex->SetValue("fast");
    EXPECT_THROW((void)objInterface.GetSerialInfo(), CConversionError);
}

TEST(CInterfaceTest, ThePortNumberIsOneAboveItsIndex) {
    const CInterface objInterface;
    objInterface.m_objComPortIndex->SetValue(8);
    EXPECT_EQ(objInterface.GetComPortNumber(), 9);
    EXPECT_EQ(objInterface.GetComPortNumber(true), 1);
}

TEST(CInterfaceTest, TheActiveInterfaceIsStoredUnchecked) {
    CInterface objInterface;
    for (const std::int16_t iNumber : std::vector<std::int16_t>{0, 1, 2, 7, -3}) {
        objInterface.SetActiveInterface(iNumber);
        EXPECT_EQ(objInterface.GetActiveInterface(), iNumber);
    }
}

TEST(CInterfaceTest, TheFirstOctetBecomesTheWholeAddress) {
    CInterface objInterface;
    EXPECT_EQ(objInterface.SetIpAddress(7, 1, 2, 3), "");
    EXPECT_EQ(objInterface.GetIpAddress(), "7.7.7.7");
    EXPECT_EQ(objInterface.GetIpAddress(true), "192.168.10.20");
}

TEST(CInterfaceTest, TheAddressIsPlainAlsoFromTypedOctets) {
    const CInterface objInterface;
    objInterface.m_objIpAddress1->SetValue("10");
    objInterface.m_objIpAddress2->SetValue("007");
    objInterface.m_objIpAddress3->SetValue("0");
    objInterface.m_objIpAddress4->SetValue("255");
    EXPECT_EQ(objInterface.GetIpAddress(), "10.7.0.255");
    objInterface.m_objIpAddress4->SetValue("x");
    EXPECT_THROW((void)objInterface.GetIpAddress(), CConversionError);
}

TEST(CInterfaceTest, EveryOctetHasItsOwnPlace) {
    const CInterface objInterface;
    objInterface.m_objGateway1->SetValue(1);
    objInterface.m_objGateway2->SetValue(22);
    objInterface.m_objGateway3->SetValue(233);
    objInterface.m_objGateway4->SetValue("4");
    objInterface.m_objSubnetMask1->SetValue(5);
    objInterface.m_objSubnetMask2->SetValue(66);
    objInterface.m_objSubnetMask3->SetValue("77");
    objInterface.m_objSubnetMask4->SetValue(128);
    objInterface.m_objSocketPort->SetValue("9100");
    EXPECT_EQ(objInterface.GetGateway(), "001.022.233.004");
    EXPECT_EQ(objInterface.GetGateway(true), "000.000.000.000");
    EXPECT_EQ(objInterface.GetSubnetMas(), "005.066.077.128");
    EXPECT_EQ(objInterface.GetSubnetMas(true), "255.255.255.000");
    EXPECT_EQ(objInterface.GetSocketPortNumber(), "09100");
    EXPECT_EQ(objInterface.GetSocketPortNumber(true), "08000");
}

}  // namespace
