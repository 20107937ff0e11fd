#include "protocol/MCommand.h"

#include "model/CConversionError.h"
#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

ItemRef TextItem(const char* p_strText) {
    auto objItem = std::make_shared<CItem>();
    objItem->InitializeValue(p_strText);
    return objItem;
}

CItem DecimalItem(int p_iNumber, std::int16_t p_iLength) {
    CItem objItem;
    objItem.m_iDataType = ItemDataType::Decimal;
    objItem.m_iLength = p_iLength;
    objItem.InitializeValue(p_iNumber);
    return objItem;
}

}  // namespace

TEST(MCommand, HasTheCommandsThatAreSentAsTheyStand) {
    const struct {
        const char* m_strText;
        const char* m_strExpected;
    } arrCases[] = {
        {MCommand::StatusRequest, "{WS|}"},
        {MCommand::HeadCheck, "{HD001,A|}"},
        {MCommand::SensorAdjustReflect, "{Z6;0|}"},
        {MCommand::SensorAdjustTrans, "{Z6;1|}"},
    };
    for (const auto& objCase : arrCases) {
        EXPECT_STREQ(objCase.m_strText, objCase.m_strExpected);
    }
}

TEST(MCommand, AsksForAGroupByItsPlainDecimalNumber) {
    EXPECT_EQ(MCommand::ReadRequest(0), "{Z5;0|}");
    EXPECT_EQ(MCommand::ReadRequest(1), "{Z5;1|}");
    EXPECT_EQ(MCommand::ReadRequest(2), "{Z5;2|}");
    EXPECT_EQ(MCommand::ReadRequest(3), "{Z5;3|}");
    EXPECT_EQ(MCommand::ReadRequest(3).size(), 7U);
    EXPECT_EQ(MCommand::ReadRequest(4), "{Z5;4|}");
    EXPECT_EQ(MCommand::ReadRequest(12), "{Z5;12|}");
    EXPECT_EQ(MCommand::ReadRequest(-1), "{Z5;-1|}");
}

TEST(MCommand, WritesTheFieldsOfAGroupBackToBack) {
    EXPECT_EQ(MCommand::WriteGroup(1, {TextItem("0001"), TextItem("+05")}), "{Z2;1,0001+05|}");
    EXPECT_EQ(MCommand::WriteGroup(2, {TextItem("x")}), "{Z2;2,x|}");
    EXPECT_EQ(MCommand::WriteGroup(1, {}), "{Z2;1,|}");
}

TEST(MCommand, SetsTheDefaults) {
    const CItemManager objItemManager;

    EXPECT_EQ(MCommand::MakeParameterSetCommand(objItemManager, 1), MGolden::Parameters);
    EXPECT_EQ(MCommand::MakeParameterSetCommand(objItemManager, 2), MGolden::Adjustments);
}

TEST(MCommand, SetsTheCurrentValues) {
    const CItemManager objItemManager;
    objItemManager.m_objFontCode->SetValue("F");
    objItemManager.m_objEuroCode->SetValue("80");
    objItemManager.m_objStripMotorTorque->SetValue(3);
    objItemManager.m_objFeedDirection->SetValue("-");
    objItemManager.m_objFeedAdjustment->SetValue(-12);
    objItemManager.m_objRibbonMotorDirection_F->SetValue("+");
    objItemManager.m_objThresholdAdjustment_T->SetValue("7");

    EXPECT_EQ(MCommand::MakeParameterSetCommand(objItemManager, 1),
              MGolden::With(MGolden::Parameters,
                            {{"FontCode", "F"}, {"EuroCode", "80"}, {"StripMotorTorque", "3"}}));
    EXPECT_EQ(MCommand::MakeParameterSetCommand(objItemManager, 2),
              MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"},
                                                   {"FeedAdjustment", "012"},
                                                   {"ThresholdAdjustment_T", "07"}}));
}

TEST(MCommand, SendsNeitherCountryNorKeyboardNorPrintPosition) {
    const CItemManager objItemManager;
    const std::string strParameter = MCommand::MakeParameterSetCommand(objItemManager, 1);
    const std::string strAdjustment = MCommand::MakeParameterSetCommand(objItemManager, 2);

    objItemManager.m_objCountry->SetValue(9);
    objItemManager.m_objKeyboardIF->SetValue(3);
    objItemManager.m_objPrintPosCorrectionDirection->SetValue("-");
    objItemManager.m_objPrintPosCorrectionValue->SetValue(123);

    EXPECT_EQ(MCommand::MakeParameterSetCommand(objItemManager, 1), strParameter);
    EXPECT_EQ(MCommand::MakeParameterSetCommand(objItemManager, 2), strAdjustment);
}

TEST(MCommand, SetsNothingForAnyOtherKind) {
    const CItemManager objItemManager;
    for (const std::int16_t iKind : std::initializer_list<std::int16_t>{-1, 0, 3, 4, 12}) {
        EXPECT_EQ(MCommand::MakeParameterSetCommand(objItemManager, iKind), "") << iKind;
    }
}

TEST(MCommand, FailsOnATextThatIsNoNumberInADecimalItem) {
    const CItemManager objItemManager;
    objItemManager.m_objZeroStyle->SetValue("?");
    objItemManager.m_objIpAddress4->SetValue("");
    objItemManager.m_objSocketPortNumber->SetValue("80a");
    objItemManager.m_objDhcpSetting->SetValue("on");

    EXPECT_THROW(MCommand::MakeParameterSetCommand(objItemManager, 1), CConversionError);
    EXPECT_THROW(MCommand::MakeAddressCommand(objItemManager, 2), CConversionError);
    EXPECT_THROW(MCommand::MakeSocketPortCommand(objItemManager), CConversionError);
    EXPECT_THROW(MCommand::MakeDhcpCommand(objItemManager), CConversionError);
}

TEST(MCommand, PutsACommaBeforeEveryFieldOfAnAddress) {
    EXPECT_EQ(MCommand::NetworkAddress(
                  7, {TextItem("a"), TextItem("bb"), TextItem("ccc"), TextItem("d")}),
              "{IP;7,a,bb,ccc,d|}");
}

TEST(MCommand, WritesTheThreeAddressesOfTheCatalogue) {
    const CItemManager objItemManager;
    EXPECT_EQ(MCommand::MakeAddressCommand(objItemManager, 2), MGolden::IpAddress);
    EXPECT_EQ(MCommand::MakeAddressCommand(objItemManager, 3), MGolden::Gateway);
    EXPECT_EQ(MCommand::MakeAddressCommand(objItemManager, 4), MGolden::SubnetMask);

    objItemManager.m_objGateway1->SetValue("10");
    objItemManager.m_objGateway4->SetValue(1);
    EXPECT_EQ(MCommand::MakeAddressCommand(objItemManager, 3), "{IP;3,010,000,000,001|}");
}

TEST(MCommand, WritesNoAddressOfAnyOtherKind) {
    const CItemManager objItemManager;
    for (const std::int16_t iKind : std::initializer_list<std::int16_t>{-1, 0, 1, 5}) {
        EXPECT_EQ(MCommand::MakeAddressCommand(objItemManager, iKind), "") << iKind;
    }
}

TEST(MCommand, WritesTheSocketPortAsAPair) {
    EXPECT_EQ(MCommand::NetworkPair(DecimalItem(0, 1), DecimalItem(80, 5)), "{IS;0,00080|}");
    EXPECT_EQ(MCommand::MakeSocketPortCommand(CItemManager()), MGolden::SocketPort);
}

TEST(MCommand, FillsTheHostNameUpToSixteenCharacters) {
    const struct {
        const char* m_strHost;
        std::size_t m_iFill;
    } arrCases[] = {
        {"", 16},
        {"a", 15},
        {"abcd", 12},
        {"abcdefghijklmno", 1},
        {"abcdefghijklmnop", 0},
        {"abcdefghijklmnopq", 0},
        {"abc             ", 0},
    };
    for (const auto& objCase : arrCases) {
        SCOPED_TRACE(objCase.m_strHost);
        EXPECT_EQ(
            MCommand::NetworkText(DecimalItem(1, 1), *TextItem("id"), *TextItem(objCase.m_strHost)),
            std::string("{IH;1,id,") + objCase.m_strHost + std::string(objCase.m_iFill, '\xFF') +
                "|}");
    }
}

TEST(MCommand, WritesTheDhcpSettingsOfTheCatalogue) {
    const CItemManager objItemManager;
    EXPECT_EQ(MCommand::MakeDhcpCommand(objItemManager), MGolden::Dhcp);

    objItemManager.m_objDhcpSetting->SetValue(1);
    objItemManager.m_objDhcpClientId->SetValue("0123456789ABCDEF0123456789ABCDEF");
    objItemManager.m_objDhcpClientHost->SetValue("host");
    EXPECT_EQ(MCommand::MakeDhcpCommand(objItemManager),
              "{IH;1,0123456789ABCDEF0123456789ABCDEF,host" + std::string(12, '\xFF') + "|}");
}

TEST(MCommand, ListsWhatSetAndLanSetSendInTheirOrder) {
    const CItemManager objItemManager;
    EXPECT_EQ(MCommand::SetCommands(objItemManager), MGolden::SetCommands());
    EXPECT_EQ(MCommand::LanSetCommands(objItemManager), MGolden::LanSetCommands());
}

namespace {

/// Takes every item of p_objItemAry for itself a digit too wide, then a digit too narrow if its
/// text can be, and back. p_fnIsExact must see it each time.
void ExpectEachWidthToMatter(const CItemManager& p_objItemManager, const ItemArray& p_objItemAry,
                             bool (*p_fnIsExact)(const CItemManager&)) {
    ASSERT_TRUE(p_fnIsExact(p_objItemManager));
    for (std::size_t i = 0; i < p_objItemAry.size(); ++i) {
        SCOPED_TRACE(i);
        CItem& objItem = *p_objItemAry[i];
        if (objItem.m_bFixedValue) {
            continue;  // always its default
        }
        const CItemValue vBefore = objItem.m_vValue;
        const std::string strField = objItem.GetValueString();
        objItem.SetValue(std::string(strField.size() + 1, '1'));
        EXPECT_FALSE(p_fnIsExact(p_objItemManager));
        if (objItem.m_iDataType == ItemDataType::Text) {
            objItem.SetValue(strField.substr(1));
            EXPECT_FALSE(p_fnIsExact(p_objItemManager));
        }
        objItem.m_vValue = vBefore;
        EXPECT_TRUE(p_fnIsExact(p_objItemManager));
    }
}

}  // namespace

TEST(MCommand, SeesEachFieldOfSetThatIsNotAsWideAsItsItemSays) {
    const CItemManager objItemManager;
    ItemArray objItemAry;
    objItemManager.SetItem_Parameter(objItemAry);
    ExpectEachWidthToMatter(objItemManager, objItemAry, &MCommand::IsSetExact);
    objItemManager.SetItem_Adjustment(objItemAry);
    ExpectEachWidthToMatter(objItemManager, objItemAry, &MCommand::IsSetExact);
}

TEST(MCommand, SeesEachFieldOfLanSetThatIsNotAsWideAsItsItemSays) {
    const CItemManager objItemManager;
    ItemArray objItemAry;
    objItemManager.SetItem_ExtraIpAddress(objItemAry);
    ExpectEachWidthToMatter(objItemManager, objItemAry, &MCommand::IsLanSetExact);
    objItemManager.SetItem_ExtraGateway(objItemAry);
    ExpectEachWidthToMatter(objItemManager, objItemAry, &MCommand::IsLanSetExact);
    objItemManager.SetItem_ExtraSubnet(objItemAry);
    ExpectEachWidthToMatter(objItemManager, objItemAry, &MCommand::IsLanSetExact);
    ExpectEachWidthToMatter(objItemManager,
                            {objItemManager.m_objSocketPortSetting,
                             objItemManager.m_objSocketPortNumber, objItemManager.m_objDhcpSetting,
                             objItemManager.m_objDhcpClientId},
                            &MCommand::IsLanSetExact);
}

TEST(MCommand, AHostNameIsExactUpToSixteenCharacters) {
    const CItemManager objItemManager;
    for (std::size_t iLength = 0; iLength <= 18; ++iLength) {
        objItemManager.m_objDhcpClientHost->SetValue(std::string(iLength, 'h'));
        EXPECT_EQ(MCommand::IsLanSetExact(objItemManager), iLength <= 16) << iLength;
    }
}

TEST(MCommand, NoWidthOfATextThatIsNoNumberIsExact) {
    const CItemManager objItemManager;
    objItemManager.m_objZeroStyle->SetValue("?");
    objItemManager.m_objSocketPortNumber->SetValue("80a");
    EXPECT_THROW(MCommand::IsSetExact(objItemManager), CConversionError);
    EXPECT_THROW(MCommand::IsLanSetExact(objItemManager), CConversionError);
}

TEST(MCommand, ATestPrintIsExactWithFourDigitsAndOne) {
    const MCommand::TestPrintFields objExact[] = {
        {0, 30, 0, 0, 0, 0, 0},
        {9, 9999, 9999, 9, 9, 9, 9},
        {5, 100, 1, 1, 2, 2, 1},
        {0, 760, 5000, 0, 0, 0, 0},
    };
    for (const auto& objFields : objExact) {
        EXPECT_TRUE(MCommand::IsTestPrintExact(objFields));
        EXPECT_EQ(MCommand::TestPrint(objFields).size(), 27U);
    }
    const MCommand::TestPrintFields objOthers[] = {
        {-1, 760, 1, 0, 0, 0, 0},    {10, 760, 1, 0, 0, 0, 0}, {0, 29, 1, 0, 0, 0, 0},
        {0, 10000, 1, 0, 0, 0, 0},   {0, -1, 1, 0, 0, 0, 0},   {0, -32768, 1, 0, 0, 0, 0},
        {0, 760, 10000, 0, 0, 0, 0}, {0, 760, -1, 0, 0, 0, 0}, {0, 760, 1, 10, 0, 0, 0},
        {0, 760, 1, 0, -1, 0, 0},    {0, 760, 1, 0, 0, 10, 0}, {0, 760, 1, 0, 0, 0, -1},
    };
    for (const auto& objFields : objOthers) {
        EXPECT_FALSE(MCommand::IsTestPrintExact(objFields));
    }
}

TEST(MCommand, APositionHasOneDigit) {
    for (const std::int16_t iPosition : std::initializer_list<std::int16_t>{0, 1, 9}) {
        EXPECT_TRUE(MCommand::IsPosition(iPosition)) << iPosition;
    }
    for (const std::int16_t iPosition : std::initializer_list<std::int16_t>{-1, 10, 32767}) {
        EXPECT_FALSE(MCommand::IsPosition(iPosition)) << iPosition;
    }
}

TEST(MCommand, PrintsATestWithTheFieldsBackToBack) {
    const struct {
        MCommand::TestPrintFields m_objFields;
        const char* m_strExpected;
    } arrCases[] = {
        // pattern, label length, issue count, print speed, sensor, cut type, print type
        {{0, 760, 1, 0, 0, 0, 0}, "{Z3;007600730105700010000|}"},
        {{4, 760, 1, 0, 0, 0, 0}, "{Z3;407600730105700010000|}"},  // BARCODE
        {{5, 760, 1, 0, 0, 0, 0}, "{Z3;607600730105700010000|}"},  // FACTORY TEST
        {{0, 100, 1, 0, 0, 0, 0}, "{Z3;001000070105700010000|}"},
        {{0, 9999, 5000, 0, 0, 0, 0}, "{Z3;099999969105750000000|}"},
        {{0, 760, 1, 1, 0, 0, 0}, "{Z3;007600730105700011000|}"},
        {{0, 760, 1, 0, 2, 0, 0}, "{Z3;007600730105700010200|}"},
        {{0, 760, 1, 0, 0, 2, 0}, "{Z3;007600730105700010020|}"},
        {{0, 760, 1, 0, 0, 0, 1}, "{Z3;007600730105700010001|}"},
    };
    for (const auto& objCase : arrCases) {
        EXPECT_EQ(MCommand::TestPrint(objCase.m_objFields), objCase.m_strExpected);
    }
}

TEST(MCommand, NeverPrintsPatternFive) {
    for (std::int16_t iPosition = 0; iPosition <= 5; ++iPosition) {
        MCommand::TestPrintFields objFields{};
        objFields.m_iPattern = iPosition;
        EXPECT_EQ(MCommand::TestPrint(objFields)[4], iPosition == 5 ? '6' : '0' + iPosition);
    }
}

TEST(MCommand, PrintsADiagnosisWithoutASemicolon) {
    EXPECT_EQ(MCommand::DiagPrint(0), "{Z10|}");
    EXPECT_EQ(MCommand::DiagPrint(1), "{Z11|}");
}

TEST(MCommand, ClearsTheRamWithADestinationInTheFirstModeOnly) {
    const struct {
        std::int16_t m_iMode;
        std::int16_t m_iDestination;
        const char* m_strExpected;
    } arrCases[] = {
        {0, -1, "{Z4;0|}"}, {0, 0, "{Z4;0|}"},  {0, 1, "{Z4;00|}"}, {0, 2, "{Z4;01|}"},
        {0, 3, "{Z4;02|}"}, {0, 4, "{Z4;03|}"}, {1, -1, "{Z4;1|}"}, {1, 0, "{Z4;1|}"},
        {1, 1, "{Z4;1|}"},  {1, 4, "{Z4;1|}"},
    };
    for (const auto& objCase : arrCases) {
        EXPECT_EQ(MCommand::RamClear(objCase.m_iMode, objCase.m_iDestination),
                  objCase.m_strExpected);
    }
}

TEST(MCommand, CalibratesASensorCountedFromOne) {
    EXPECT_EQ(MCommand::ThresholdCalib(0), "{WT;1000,1|}");
    EXPECT_EQ(MCommand::ThresholdCalib(1), "{WT;1000,2|}");
}

TEST(MCommand, AdjustsTheSensorWithoutPaperInTwoPasses) {
    EXPECT_EQ(MCommand::SensorAdjustPaperEnd(0), "{Z6;01|}");
    EXPECT_EQ(MCommand::SensorAdjustPaperEnd(1), "{Z6;11|}");
}
