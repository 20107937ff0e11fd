#include "model/CItemManager.h"

#include "model/CItem.h"

#include <gtest/gtest.h>

#include <set>

namespace {

constexpr auto T = ItemDataType::Text;
constexpr auto D = ItemDataType::Decimal;
constexpr auto H = ItemDataType::Hexadecimal;

using Slot = ItemRef CItemManager::*;
using GroupOperation = bool (CItemManager::*)(ItemArray&) const;

struct ExpectedItem {
    const char* m_strName;
    Slot m_objSlot;
    ItemDataType m_iDataType;
    std::int16_t m_iLength;
    CItemValue m_vDefault;
    bool m_bFixed;
};

struct ExpectedField {
    Slot m_objSlot;
    std::int16_t m_iLength;
    ItemDataType m_iDataType;
};

struct ExpectedGroup {
    const char* m_strName;
    GroupOperation m_objOperation;
    std::size_t m_iItems;
    int m_iCharacters;
    std::vector<ExpectedField> m_objFields;
};

// clang-format off
const ExpectedItem ExpectedItems[] = {
    {"m_objFeedDirection", &CItemManager::m_objFeedDirection, T, 1, "+", false},
    {"m_objFeedAdjustment", &CItemManager::m_objFeedAdjustment, D, 3, 0, false},
    {"m_objCutPosDirection", &CItemManager::m_objCutPosDirection, T, 1, "+", false},
    {"m_objCutPosAdjustment", &CItemManager::m_objCutPosAdjustment, D, 3, 0, false},
    {"m_objBackFeedDirection", &CItemManager::m_objBackFeedDirection, T, 1, "+", false},
    {"m_objBackFeedAdjustment", &CItemManager::m_objBackFeedAdjustment, D, 2, 0, false},
    {"m_objToneDirection_T", &CItemManager::m_objToneDirection_T, T, 1, "+", false},
    {"m_objToneAdjustment_T", &CItemManager::m_objToneAdjustment_T, D, 2, 0, false},
    {"m_objToneDirection_D", &CItemManager::m_objToneDirection_D, T, 1, "+", false},
    {"m_objToneAdjustment_D", &CItemManager::m_objToneAdjustment_D, D, 2, 0, false},
    {"m_objRibbonMotorDirection_F", &CItemManager::m_objRibbonMotorDirection_F, T, 1, "-", true},
    {"m_objRibbonMotorAdjustment_F", &CItemManager::m_objRibbonMotorAdjustment_F, D, 2, 0, false},
    {"m_objRibbonMotorDirection_B", &CItemManager::m_objRibbonMotorDirection_B, T, 1, "-", true},
    {"m_objRibbonMotorAdjustment_B", &CItemManager::m_objRibbonMotorAdjustment_B, D, 2, 0, false},
    {"m_objXCoordinateDirection", &CItemManager::m_objXCoordinateDirection, T, 1, "+", false},
    {"m_objXCoordinateAdjustment", &CItemManager::m_objXCoordinateAdjustment, D, 3, 0, false},
    {"m_objPrintPosCorrectionDirection", &CItemManager::m_objPrintPosCorrectionDirection, T, 1, "+", false},
    {"m_objPrintPosCorrectionValue", &CItemManager::m_objPrintPosCorrectionValue, D, 3, 0, false},
    {"m_objFontCode", &CItemManager::m_objFontCode, H, 1, 0, false},
    {"m_objZeroStyle", &CItemManager::m_objZeroStyle, D, 1, 0, false},
    {"m_objControl", &CItemManager::m_objControl, D, 1, 2, false},
    {"m_objControlCode", &CItemManager::m_objControlCode, D, 1, 0, false},
    {"m_objStripStatus", &CItemManager::m_objStripStatus, D, 1, 0, false},
    {"m_objThresholdAdjustment_R", &CItemManager::m_objThresholdAdjustment_R, D, 2, 10, false},
    {"m_objThresholdAdjustment_T", &CItemManager::m_objThresholdAdjustment_T, D, 2, 14, false},
    {"m_objKanjiCode", &CItemManager::m_objKanjiCode, D, 1, 0, false},
    {"m_objCountry", &CItemManager::m_objCountry, D, 1, 0, false},
    {"m_objEuroCode", &CItemManager::m_objEuroCode, H, 2, 176, false},
    {"m_objThermalHeadSensor", &CItemManager::m_objThermalHeadSensor, D, 2, 0, false},
    {"m_objAmbientSensor", &CItemManager::m_objAmbientSensor, D, 2, 0, false},
    {"m_objReflectiveSensor", &CItemManager::m_objReflectiveSensor, D, 2, 0, false},
    {"m_objTransmissiveSensor", &CItemManager::m_objTransmissiveSensor, D, 2, 0, false},
    {"m_objLanSetting", &CItemManager::m_objLanSetting, D, 1, 0, false},
    {"m_objIpAddress1", &CItemManager::m_objIpAddress1, D, 3, 192, false},
    {"m_objIpAddress2", &CItemManager::m_objIpAddress2, D, 3, 168, false},
    {"m_objIpAddress3", &CItemManager::m_objIpAddress3, D, 3, 10, false},
    {"m_objIpAddress4", &CItemManager::m_objIpAddress4, D, 3, 20, false},
    {"m_objGateway1", &CItemManager::m_objGateway1, D, 3, 0, false},
    {"m_objGateway2", &CItemManager::m_objGateway2, D, 3, 0, false},
    {"m_objGateway3", &CItemManager::m_objGateway3, D, 3, 0, false},
    {"m_objGateway4", &CItemManager::m_objGateway4, D, 3, 0, false},
    {"m_objSubnetMask1", &CItemManager::m_objSubnetMask1, D, 3, 255, false},
    {"m_objSubnetMask2", &CItemManager::m_objSubnetMask2, D, 3, 255, false},
    {"m_objSubnetMask3", &CItemManager::m_objSubnetMask3, D, 3, 255, false},
    {"m_objSubnetMask4", &CItemManager::m_objSubnetMask4, D, 3, 0, false},
    {"m_objSocketPortSetting", &CItemManager::m_objSocketPortSetting, D, 1, 1, false},
    {"m_objSocketPortNumber", &CItemManager::m_objSocketPortNumber, D, 5, 8000, false},
    {"m_objDhcpSetting", &CItemManager::m_objDhcpSetting, D, 1, 0, false},
    {"m_objDhcpClientId", &CItemManager::m_objDhcpClientId, T, 32, "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF", false},
    {"m_objDhcpClientHost", &CItemManager::m_objDhcpClientHost, T, 16, "", false},
    {"m_objCommunicationSpeed", &CItemManager::m_objCommunicationSpeed, D, 1, 2, false},
    {"m_objDataLength", &CItemManager::m_objDataLength, D, 1, 1, false},
    {"m_objStopBit", &CItemManager::m_objStopBit, D, 1, 0, false},
    {"m_objParity", &CItemManager::m_objParity, D, 1, 1, false},
    {"m_objAutoForward", &CItemManager::m_objAutoForward, D, 1, 1, false},
    {"m_objAutoForwardDirection", &CItemManager::m_objAutoForwardDirection, T, 1, "+", false},
    {"m_objAutoForwardAdjustment", &CItemManager::m_objAutoForwardAdjustment, D, 2, 0, false},
    {"m_objControlCode1st", &CItemManager::m_objControlCode1st, H, 2, 27, false},
    {"m_objControlCode2nd", &CItemManager::m_objControlCode2nd, H, 2, 10, false},
    {"m_objControlCode3rd", &CItemManager::m_objControlCode3rd, H, 2, 0, false},
    {"m_objFeedKeyFunction", &CItemManager::m_objFeedKeyFunction, D, 1, 0, false},
    {"m_objHeadCheck", &CItemManager::m_objHeadCheck, D, 1, 0, false},
    {"m_objAckBusyTiming", &CItemManager::m_objAckBusyTiming, D, 1, 0, false},
    {"m_objWebPrinter", &CItemManager::m_objWebPrinter, D, 1, 0, false},
    {"m_objResetNInitSignalIsON", &CItemManager::m_objResetNInitSignalIsON, D, 1, 0, false},
    {"m_objRibbonNearEnd", &CItemManager::m_objRibbonNearEnd, D, 1, 0, false},
    {"m_objExpansionIO", &CItemManager::m_objExpansionIO, D, 1, 0, false},
    {"m_objPlugAndPlay", &CItemManager::m_objPlugAndPlay, D, 1, 0, false},
    {"m_objLabelendRibbonend", &CItemManager::m_objLabelendRibbonend, D, 1, 0, false},
    {"m_objPreStrip", &CItemManager::m_objPreStrip, D, 1, 0, false},
    {"m_objBackFeedSpeed", &CItemManager::m_objBackFeedSpeed, D, 1, 1, false},
    {"m_objMaxiCodeSpecification", &CItemManager::m_objMaxiCodeSpecification, D, 1, 0, false},
    {"m_objStripMotorTorque", &CItemManager::m_objStripMotorTorque, D, 1, 0, false},
    {"m_objKeyboardIF", &CItemManager::m_objKeyboardIF, D, 1, 0, false},
};

const ExpectedGroup ExpectedGroups[] = {
    {"GetItem_Adjustment", &CItemManager::GetItem_Adjustment, 14, 23, {
        {&CItemManager::m_objFeedDirection, 1, T},
        {&CItemManager::m_objFeedAdjustment, 3, D},
        {&CItemManager::m_objCutPosDirection, 1, T},
        {&CItemManager::m_objCutPosAdjustment, 3, D},
        {&CItemManager::m_objBackFeedDirection, 1, T},
        {&CItemManager::m_objBackFeedAdjustment, 2, D},
        {&CItemManager::m_objToneDirection_T, 1, T},
        {&CItemManager::m_objToneAdjustment_T, 2, D},
        {&CItemManager::m_objToneDirection_D, 1, T},
        {&CItemManager::m_objToneAdjustment_D, 2, D},
        {&CItemManager::m_objRibbonMotorDirection_F, 1, T},
        {&CItemManager::m_objRibbonMotorAdjustment_F, 2, D},
        {&CItemManager::m_objRibbonMotorDirection_B, 1, T},
        {&CItemManager::m_objRibbonMotorAdjustment_B, 2, D},
    }},
    {"GetItem_Parameter", &CItemManager::GetItem_Parameter, 14, 21, {
        {&CItemManager::m_objXCoordinateDirection, 1, T},
        {&CItemManager::m_objXCoordinateAdjustment, 3, D},
        {&CItemManager::m_objPrintPosCorrectionDirection, 1, T},
        {&CItemManager::m_objPrintPosCorrectionValue, 3, D},
        {&CItemManager::m_objFontCode, 1, H},
        {&CItemManager::m_objZeroStyle, 1, D},
        {&CItemManager::m_objControl, 1, D},
        {&CItemManager::m_objControlCode, 1, D},
        {&CItemManager::m_objStripStatus, 1, D},
        {&CItemManager::m_objThresholdAdjustment_R, 2, D},
        {&CItemManager::m_objThresholdAdjustment_T, 2, D},
        {&CItemManager::m_objKanjiCode, 1, D},
        {&CItemManager::m_objCountry, 1, D},
        {&CItemManager::m_objEuroCode, 2, H},
    }},
    {"GetItem_Sensor", &CItemManager::GetItem_Sensor, 4, 8, {
        {&CItemManager::m_objThermalHeadSensor, 2, D},
        {&CItemManager::m_objAmbientSensor, 2, D},
        {&CItemManager::m_objReflectiveSensor, 2, D},
        {&CItemManager::m_objTransmissiveSensor, 2, D},
    }},
    {"GetItem_Lan", &CItemManager::GetItem_Lan, 18, 92, {
        {&CItemManager::m_objLanSetting, 1, D},
        {&CItemManager::m_objIpAddress1, 3, D},
        {&CItemManager::m_objIpAddress2, 3, D},
        {&CItemManager::m_objIpAddress3, 3, D},
        {&CItemManager::m_objIpAddress4, 3, D},
        {&CItemManager::m_objGateway1, 3, D},
        {&CItemManager::m_objGateway2, 3, D},
        {&CItemManager::m_objGateway3, 3, D},
        {&CItemManager::m_objGateway4, 3, D},
        {&CItemManager::m_objSubnetMask1, 3, D},
        {&CItemManager::m_objSubnetMask2, 3, D},
        {&CItemManager::m_objSubnetMask3, 3, D},
        {&CItemManager::m_objSubnetMask4, 3, D},
        {&CItemManager::m_objSocketPortSetting, 1, D},
        {&CItemManager::m_objSocketPortNumber, 5, D},
        {&CItemManager::m_objDhcpSetting, 1, D},
        {&CItemManager::m_objDhcpClientId, 32, T},
        {&CItemManager::m_objDhcpClientHost, 16, T},
    }},
    {"GetItem_ParameterExpansion1", &CItemManager::GetItem_ParameterExpansion1, 23, 27, {
        {&CItemManager::m_objCommunicationSpeed, 1, D},
        {&CItemManager::m_objDataLength, 1, D},
        {&CItemManager::m_objParity, 1, D},
        {&CItemManager::m_objAutoForward, 1, D},
        {&CItemManager::m_objAutoForwardDirection, 1, T},
        {&CItemManager::m_objAutoForwardAdjustment, 2, D},
        {&CItemManager::m_objControlCode1st, 2, H},
        {&CItemManager::m_objControlCode2nd, 2, H},
        {&CItemManager::m_objControlCode3rd, 2, H},
        {&CItemManager::m_objFeedKeyFunction, 1, D},
        {&CItemManager::m_objHeadCheck, 1, D},
        {&CItemManager::m_objAckBusyTiming, 1, D},
        {&CItemManager::m_objWebPrinter, 1, D},
        {&CItemManager::m_objResetNInitSignalIsON, 1, D},
        {&CItemManager::m_objRibbonNearEnd, 1, D},
        {&CItemManager::m_objExpansionIO, 1, D},
        {&CItemManager::m_objPlugAndPlay, 1, D},
        {&CItemManager::m_objLabelendRibbonend, 1, D},
        {&CItemManager::m_objPreStrip, 1, D},
        {&CItemManager::m_objBackFeedSpeed, 1, D},
        {&CItemManager::m_objMaxiCodeSpecification, 1, D},
        {&CItemManager::m_objStripMotorTorque, 1, D},
        {&CItemManager::m_objKeyboardIF, 1, D},
    }},
    {"SetItem_Parameter", &CItemManager::SetItem_Parameter, 30, 35, {
        {&CItemManager::m_objFontCode, 1, H},
        {&CItemManager::m_objZeroStyle, 1, D},
        {&CItemManager::m_objCommunicationSpeed, 1, D},
        {&CItemManager::m_objDataLength, 1, D},
        {&CItemManager::m_objStopBit, 1, D},
        {&CItemManager::m_objParity, 1, D},
        {&CItemManager::m_objControl, 1, D},
        {&CItemManager::m_objAutoForward, 1, D},
        {&CItemManager::m_objAutoForwardDirection, 1, T},
        {&CItemManager::m_objAutoForwardAdjustment, 2, D},
        {&CItemManager::m_objControlCode, 1, D},
        {&CItemManager::m_objControlCode1st, 2, H},
        {&CItemManager::m_objControlCode2nd, 2, H},
        {&CItemManager::m_objControlCode3rd, 2, H},
        {&CItemManager::m_objStripStatus, 1, D},
        {&CItemManager::m_objFeedKeyFunction, 1, D},
        {&CItemManager::m_objKanjiCode, 1, D},
        {&CItemManager::m_objEuroCode, 2, H},
        {&CItemManager::m_objHeadCheck, 1, D},
        {&CItemManager::m_objAckBusyTiming, 1, D},
        {&CItemManager::m_objWebPrinter, 1, D},
        {&CItemManager::m_objResetNInitSignalIsON, 1, D},
        {&CItemManager::m_objRibbonNearEnd, 1, D},
        {&CItemManager::m_objExpansionIO, 1, D},
        {&CItemManager::m_objPlugAndPlay, 1, D},
        {&CItemManager::m_objLabelendRibbonend, 1, D},
        {&CItemManager::m_objPreStrip, 1, D},
        {&CItemManager::m_objBackFeedSpeed, 1, D},
        {&CItemManager::m_objMaxiCodeSpecification, 1, D},
        {&CItemManager::m_objStripMotorTorque, 1, D},
    }},
    {"SetItem_Adjustment", &CItemManager::SetItem_Adjustment, 18, 31, {
        {&CItemManager::m_objFeedDirection, 1, T},
        {&CItemManager::m_objFeedAdjustment, 3, D},
        {&CItemManager::m_objCutPosDirection, 1, T},
        {&CItemManager::m_objCutPosAdjustment, 3, D},
        {&CItemManager::m_objBackFeedDirection, 1, T},
        {&CItemManager::m_objBackFeedAdjustment, 2, D},
        {&CItemManager::m_objXCoordinateDirection, 1, T},
        {&CItemManager::m_objXCoordinateAdjustment, 3, D},
        {&CItemManager::m_objToneDirection_T, 1, T},
        {&CItemManager::m_objToneAdjustment_T, 2, D},
        {&CItemManager::m_objToneDirection_D, 1, T},
        {&CItemManager::m_objToneAdjustment_D, 2, D},
        {&CItemManager::m_objRibbonMotorDirection_F, 1, T},
        {&CItemManager::m_objRibbonMotorAdjustment_F, 2, D},
        {&CItemManager::m_objRibbonMotorDirection_B, 1, T},
        {&CItemManager::m_objRibbonMotorAdjustment_B, 2, D},
        {&CItemManager::m_objThresholdAdjustment_R, 2, D},
        {&CItemManager::m_objThresholdAdjustment_T, 2, D},
    }},
    {"SetItem_ExtraIpAddress", &CItemManager::SetItem_ExtraIpAddress, 4, 12, {
        {&CItemManager::m_objIpAddress1, 3, D},
        {&CItemManager::m_objIpAddress2, 3, D},
        {&CItemManager::m_objIpAddress3, 3, D},
        {&CItemManager::m_objIpAddress4, 3, D},
    }},
    {"SetItem_ExtraGateway", &CItemManager::SetItem_ExtraGateway, 4, 12, {
        {&CItemManager::m_objGateway1, 3, D},
        {&CItemManager::m_objGateway2, 3, D},
        {&CItemManager::m_objGateway3, 3, D},
        {&CItemManager::m_objGateway4, 3, D},
    }},
    {"SetItem_ExtraSubnet", &CItemManager::SetItem_ExtraSubnet, 4, 12, {
        {&CItemManager::m_objSubnetMask1, 3, D},
        {&CItemManager::m_objSubnetMask2, 3, D},
        {&CItemManager::m_objSubnetMask3, 3, D},
        {&CItemManager::m_objSubnetMask4, 3, D},
    }},
};
// clang-format on

}  // namespace

TEST(CItemManager, CreatesEverySettingWithItsTypeWidthDefaultAndFixedFlag) {
    const CItemManager objItemManager;

    for (const ExpectedItem& objExpected : ExpectedItems) {
        SCOPED_TRACE(objExpected.m_strName);
        const ItemRef& objItem = objItemManager.*objExpected.m_objSlot;
        ASSERT_NE(objItem, nullptr);
        EXPECT_EQ(objItem->m_iDataType, objExpected.m_iDataType);
        EXPECT_EQ(objItem->m_iLength, objExpected.m_iLength);
        EXPECT_EQ(objItem->m_vDefaultValue, objExpected.m_vDefault);
        EXPECT_EQ(objItem->m_vValue, objExpected.m_vDefault);
        EXPECT_EQ(objItem->m_bFixedValue, objExpected.m_bFixed);
    }
}

TEST(CItemManager, CreatesItsItemsInTheOrderOfTheTableAndNoOther) {
    const auto objRows = CItemManager::Rows();
    ASSERT_EQ(std::size(ExpectedItems), 74U);
    ASSERT_EQ(objRows.size(), 74U);

    for (std::size_t i = 0; i < objRows.size(); ++i) {
        SCOPED_TRACE(ExpectedItems[i].m_strName);
        EXPECT_EQ(objRows[i].m_strName, ExpectedItems[i].m_strName);
        EXPECT_EQ(objRows[i].m_objSlot, ExpectedItems[i].m_objSlot);
    }
}

TEST(CItemManager, HoldsADifferentItemInEveryMember) {
    const CItemManager objItemManager;
    const CItemManager objOther;
    std::set<const CItem*> objItems;

    for (const ExpectedItem& objExpected : ExpectedItems) {
        objItems.insert((objItemManager.*objExpected.m_objSlot).get());
        objItems.insert((objOther.*objExpected.m_objSlot).get());
    }

    EXPECT_EQ(objItems.size(), 2 * std::size(ExpectedItems));
}

TEST(CItemManager, WritesTheDefaultsAtTheirWidth) {
    const CItemManager objItemManager;
    const struct {
        Slot m_objSlot;
        const char* m_strField;
    } arrCases[] = {
        {&CItemManager::m_objFeedDirection, "+"},
        {&CItemManager::m_objFeedAdjustment, "000"},
        {&CItemManager::m_objControl, "2"},
        {&CItemManager::m_objFontCode, "0"},
        {&CItemManager::m_objEuroCode, "B0"},
        {&CItemManager::m_objControlCode1st, "1B"},
        {&CItemManager::m_objControlCode2nd, "0A"},
        {&CItemManager::m_objControlCode3rd, "00"},
        {&CItemManager::m_objIpAddress1, "192"},
        {&CItemManager::m_objIpAddress2, "168"},
        {&CItemManager::m_objIpAddress3, "010"},
        {&CItemManager::m_objIpAddress4, "020"},
        {&CItemManager::m_objSocketPortNumber, "08000"},
        {&CItemManager::m_objDhcpClientId, "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF"},
        {&CItemManager::m_objDhcpClientHost, ""},
    };
    for (const auto& objCase : arrCases) {
        EXPECT_EQ((objItemManager.*objCase.m_objSlot)->GetValueString(), objCase.m_strField);
    }
}

TEST(CItemManager, KeepsTheRibbonMotorDirectionsAtMinus) {
    const CItemManager objItemManager;
    for (const ItemRef& objDirection :
         {objItemManager.m_objRibbonMotorDirection_F, objItemManager.m_objRibbonMotorDirection_B}) {
        EXPECT_TRUE(objDirection->SetValue("+"));
        EXPECT_EQ(objDirection->GetValue(), CItemValue("-"));
        EXPECT_EQ(objDirection->GetValueString(), "-");
    }
}

TEST(CItemManager, FillsEveryGroupInTheOrderOfTheWire) {
    const CItemManager objItemManager;
    for (const ExpectedGroup& objExpected : ExpectedGroups) {
        SCOPED_TRACE(objExpected.m_strName);
        ItemArray objItemAry;
        EXPECT_TRUE((objItemManager.*objExpected.m_objOperation)(objItemAry));

        ASSERT_EQ(objExpected.m_objFields.size(), objExpected.m_iItems);
        ASSERT_EQ(objItemAry.size(), objExpected.m_iItems);
        int iCharacters = 0;
        for (std::size_t i = 0; i < objItemAry.size(); ++i) {
            SCOPED_TRACE(i);
            const ExpectedField& objField = objExpected.m_objFields[i];
            EXPECT_EQ(objItemAry[i], objItemManager.*objField.m_objSlot);
            EXPECT_EQ(objItemAry[i]->m_iLength, objField.m_iLength);
            EXPECT_EQ(objItemAry[i]->m_iDataType, objField.m_iDataType);
            iCharacters += objItemAry[i]->m_iLength;
        }
        EXPECT_EQ(iCharacters, objExpected.m_iCharacters);
    }
}

TEST(CItemManager, DiscardsWhatAGroupArrayHeldBefore) {
    const CItemManager objItemManager;
    for (const ExpectedGroup& objExpected : ExpectedGroups) {
        SCOPED_TRACE(objExpected.m_strName);
        const auto objOld = std::make_shared<CItem>();
        ItemArray objItemAry(40, objOld);

        (objItemManager.*objExpected.m_objOperation)(objItemAry);

        EXPECT_EQ(objItemAry.size(), objExpected.m_iItems);
        EXPECT_EQ(objOld.use_count(), 1);
    }
}

TEST(CItemManager, BuildsEveryGroupFromItsMembersAtTheTimeOfTheCall) {
    for (const ExpectedGroup& objExpected : ExpectedGroups) {
        SCOPED_TRACE(objExpected.m_strName);
        CItemManager objItemManager;
        ItemArray objItemAry;
        (objItemManager.*objExpected.m_objOperation)(objItemAry);
        const ItemRef objBefore = objItemAry.back();

        const auto objReplacement = std::make_shared<CItem>();
        objItemManager.*objExpected.m_objFields.back().m_objSlot = objReplacement;

        EXPECT_EQ(objItemAry.back(), objBefore) << "an array made earlier stays as it is";
        (objItemManager.*objExpected.m_objOperation)(objItemAry);
        EXPECT_EQ(objItemAry.back(), objReplacement);
        EXPECT_EQ(objItemAry.size(), objExpected.m_iItems);
    }
}

TEST(CItemManager, ACopyHasItsOwnItemsWithTheSameContents) {
    const CItemManager objOriginal;
    objOriginal.m_objParity->SetValue(2);
    const CItemManager objCopy = objOriginal;

    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        const ItemRef& objItem = objOriginal.*objRow.m_objSlot;
        const ItemRef& objOther = objCopy.*objRow.m_objSlot;
        EXPECT_NE(objItem, objOther) << objRow.m_strName;
        EXPECT_EQ(objItem->m_vValue, objOther->m_vValue) << objRow.m_strName;
        EXPECT_EQ(objItem->m_vDefaultValue, objOther->m_vDefaultValue) << objRow.m_strName;
        EXPECT_EQ(objItem->m_iLength, objOther->m_iLength) << objRow.m_strName;
        EXPECT_EQ(objItem->m_iDataType, objOther->m_iDataType) << objRow.m_strName;
        EXPECT_EQ(objItem->m_bFixedValue, objOther->m_bFixedValue) << objRow.m_strName;
    }
    objCopy.m_objParity->SetValue(0);
    EXPECT_EQ(objOriginal.m_objParity->GetValueString(), "2");
}

TEST(CItemManager, AnAssignedCatalogueSharesNothingEither) {
    const CItemManager objOriginal;
    CItemManager objOther;
    objOriginal.m_objParity->SetValue(2);
    objOther = objOriginal;
    objOriginal.m_objParity->SetValue(0);

    EXPECT_EQ(objOther.m_objParity->GetValueString(), "2");
    const CItemManager& objItself = objOther;
    objOther = objItself;
    EXPECT_EQ(objOther.m_objParity->GetValueString(), "2");
}
