#pragma once

#include "model/CItem.h"

#include <span>
#include <string_view>

/// The catalogue: one item for each of the 74 settings that a printer has, from construction on
/// complete and at its defaults.
///
/// The catalogue owns its items together with whoever holds a reference to one. Every member can
/// be replaced by another item; the groups are built from the members at each call, so they
/// follow. Widths, types and defaults stand in the table in CItemManager.cpp. A const catalogue
/// keeps its items, whose values change all the same.
class CItemManager {
public:
    /// What one row of the catalogue's table lays down.
    struct Row {
        std::string_view m_strName;  ///< the member's own name, for listings
        ItemRef CItemManager::*m_objSlot;
        ItemDataType m_iDataType;
        std::int16_t m_iLength;
        CItemValue m_vDefault;
        bool m_bFixed;
    };

    CItemManager();

    // A copy has items of its own: values, widths, types and defaults are copied, nothing is
    // shared.
    CItemManager(const CItemManager& p_objOther);
    CItemManager& operator=(const CItemManager& p_objOther);
    ~CItemManager() = default;

    /// The catalogue's table, in the order in which the items are created.
    static std::span<const Row> Rows();

    // Signed adjustments: a direction ("+" or "-") and its magnitude.
    ItemRef m_objFeedDirection;
    ItemRef m_objFeedAdjustment;
    ItemRef m_objCutPosDirection;
    ItemRef m_objCutPosAdjustment;
    ItemRef m_objBackFeedDirection;
    ItemRef m_objBackFeedAdjustment;
    ItemRef m_objToneDirection_T;
    ItemRef m_objToneAdjustment_T;
    ItemRef m_objToneDirection_D;
    ItemRef m_objToneAdjustment_D;
    ItemRef m_objRibbonMotorDirection_F;
    ItemRef m_objRibbonMotorAdjustment_F;
    ItemRef m_objRibbonMotorDirection_B;
    ItemRef m_objRibbonMotorAdjustment_B;
    ItemRef m_objXCoordinateDirection;
    ItemRef m_objXCoordinateAdjustment;
    ItemRef m_objPrintPosCorrectionDirection;
    ItemRef m_objPrintPosCorrectionValue;

    // Choices and character codes.
    ItemRef m_objFontCode;
    ItemRef m_objZeroStyle;
    ItemRef m_objControl;
    ItemRef m_objControlCode;
    ItemRef m_objStripStatus;

    // Sensor thresholds, in tenths.
    ItemRef m_objThresholdAdjustment_R;
    ItemRef m_objThresholdAdjustment_T;

    // Choices and character codes.
    ItemRef m_objKanjiCode;
    ItemRef m_objCountry;
    ItemRef m_objEuroCode;

    // Sensor readings, filled by the printer only.
    ItemRef m_objThermalHeadSensor;
    ItemRef m_objAmbientSensor;
    ItemRef m_objReflectiveSensor;
    ItemRef m_objTransmissiveSensor;

    // The printer's network settings.
    ItemRef m_objLanSetting;
    ItemRef m_objIpAddress1;
    ItemRef m_objIpAddress2;
    ItemRef m_objIpAddress3;
    ItemRef m_objIpAddress4;
    ItemRef m_objGateway1;
    ItemRef m_objGateway2;
    ItemRef m_objGateway3;
    ItemRef m_objGateway4;
    ItemRef m_objSubnetMask1;
    ItemRef m_objSubnetMask2;
    ItemRef m_objSubnetMask3;
    ItemRef m_objSubnetMask4;
    ItemRef m_objSocketPortSetting;
    ItemRef m_objSocketPortNumber;
    ItemRef m_objDhcpSetting;
    ItemRef m_objDhcpClientId;
    ItemRef m_objDhcpClientHost;

    // The printer's own serial port.
    ItemRef m_objCommunicationSpeed;
    ItemRef m_objDataLength;
    ItemRef m_objStopBit;
    ItemRef m_objParity;

    // Forward feed, control codes, and the remaining choices.
    ItemRef m_objAutoForward;
    ItemRef m_objAutoForwardDirection;
    ItemRef m_objAutoForwardAdjustment;
    ItemRef m_objControlCode1st;
    ItemRef m_objControlCode2nd;
    ItemRef m_objControlCode3rd;
    ItemRef m_objFeedKeyFunction;
    ItemRef m_objHeadCheck;
    ItemRef m_objAckBusyTiming;
    ItemRef m_objWebPrinter;
    ItemRef m_objResetNInitSignalIsON;
    ItemRef m_objRibbonNearEnd;
    ItemRef m_objExpansionIO;
    ItemRef m_objPlugAndPlay;
    ItemRef m_objLabelendRibbonend;
    ItemRef m_objPreStrip;
    ItemRef m_objBackFeedSpeed;
    ItemRef m_objMaxiCodeSpecification;
    ItemRef m_objStripMotorTorque;
    ItemRef m_objKeyboardIF;

    // The groups in which a printer answers, and those in which it takes settings. Each call
    // re-creates p_objItemAry with the group's items in their order on the wire; true, always.

    /// Answer 0: 14 items, 23 characters.
    bool GetItem_Adjustment(ItemArray& p_objItemAry) const;
    /// Answer 1: 14 items, 21 characters.
    bool GetItem_Parameter(ItemArray& p_objItemAry) const;
    /// Answer 2: 4 items, 8 characters.
    bool GetItem_Sensor(ItemArray& p_objItemAry) const;
    /// Answer 3: 18 items, 92 characters.
    bool GetItem_Lan(ItemArray& p_objItemAry) const;
    /// Answer 4: 23 items, 27 characters. The stop bit is settable, yet never in this answer.
    bool GetItem_ParameterExpansion1(ItemArray& p_objItemAry) const;
    /// Set command 1: 30 items, 35 characters. Country and keyboard are read, never sent.
    bool SetItem_Parameter(ItemArray& p_objItemAry) const;
    /// Set command 2: 18 items, 31 characters. The X coordinate and the thresholds travel here,
    /// though they arrive in answer 1; the print position correction is never sent.
    bool SetItem_Adjustment(ItemArray& p_objItemAry) const;
    /// Address command 2: 4 items, 12 characters.
    bool SetItem_ExtraIpAddress(ItemArray& p_objItemAry) const;
    /// Address command 3: 4 items, 12 characters.
    bool SetItem_ExtraGateway(ItemArray& p_objItemAry) const;
    /// Address command 4: 4 items, 12 characters.
    bool SetItem_ExtraSubnet(ItemArray& p_objItemAry) const;

private:
    bool CreateItems();
    static bool CreateItem(ItemRef& p_objSlot, const CItemValue& p_vDefault, std::int16_t p_iLength,
                           ItemDataType p_iDataType, bool p_bFixed);
    static bool AppendItem(ItemArray& p_objItemAry, const ItemRef& p_objItem);
    template <typename Group>
    bool Fill(ItemArray& p_objItemAry, const Group& p_objGroup) const;
};
