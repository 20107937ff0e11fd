#include "model/CItemManager.h"

#include "model/CItem.h"
#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using MGolden::Item;
using MGolden::Slot;
using GroupOperation = bool (CItemManager::*)(ItemArray&) const;

struct ExpectedGroup {
    const char* m_strName;
    GroupOperation m_objOperation;
    std::vector<Slot> m_objSlots;
};

std::vector<Slot> Answered(int p_iGroup) {
    std::vector<Slot> objSlots;
    for (const MGolden::Answered& objAnswered : MGolden::Answers(p_iGroup)) {
        objSlots.push_back(objAnswered.m_objSlot);
    }
    return objSlots;
}

std::vector<Slot> Carried(const char* p_strCommand) {
    const auto objSlots = MGolden::Carried(p_strCommand);
    return {objSlots.begin(), objSlots.end()};
}

std::vector<ExpectedGroup> ExpectedGroups() {
    return {
        {"GetItem_Adjustment", &CItemManager::GetItem_Adjustment, Answered(0)},
        {"GetItem_Parameter", &CItemManager::GetItem_Parameter, Answered(1)},
        {"GetItem_Sensor", &CItemManager::GetItem_Sensor, Answered(2)},
        {"GetItem_Lan", &CItemManager::GetItem_Lan, Answered(3)},
        {"GetItem_ParameterExpansion1", &CItemManager::GetItem_ParameterExpansion1, Answered(4)},
        {"SetItem_Parameter", &CItemManager::SetItem_Parameter, Carried(MGolden::Parameters)},
        {"SetItem_Adjustment", &CItemManager::SetItem_Adjustment, Carried(MGolden::Adjustments)},
        {"SetItem_ExtraIpAddress", &CItemManager::SetItem_ExtraIpAddress,
         Carried(MGolden::IpAddress)},
        {"SetItem_ExtraGateway", &CItemManager::SetItem_ExtraGateway, Carried(MGolden::Gateway)},
        {"SetItem_ExtraSubnet", &CItemManager::SetItem_ExtraSubnet, Carried(MGolden::SubnetMask)},
    };
}

/// The default as a value: of a number the number.
CItemValue Default(const Item& p_objItem) {
    switch (p_objItem.m_iDataType) {
    case ItemDataType::Decimal:
        return std::stoi(p_objItem.m_strDefault);
    case ItemDataType::Hexadecimal:
        return std::stoi(p_objItem.m_strDefault, nullptr, 16);
    case ItemDataType::Text:
        break;
    }
    return p_objItem.m_strDefault;
}

}  // namespace

TEST(CItemManager, CreatesEverySettingWithItsTypeWidthDefaultAndFixedFlag) {
    const CItemManager objItemManager;

    for (const Item& objExpected : MGolden::Items()) {
        SCOPED_TRACE(objExpected.m_strName);
        const ItemRef& objItem = objItemManager.*objExpected.m_objSlot;
        ASSERT_NE(objItem, nullptr);
        EXPECT_EQ(objItem->m_iDataType, objExpected.m_iDataType);
        EXPECT_EQ(objItem->m_iLength, objExpected.m_iLength);
        EXPECT_EQ(objItem->m_vDefaultValue, Default(objExpected));
        EXPECT_EQ(objItem->m_vValue, Default(objExpected));
        EXPECT_EQ(objItem->GetValueString(), objExpected.m_strDefault);
        EXPECT_EQ(objItem->m_bFixedValue, objExpected.m_bFixed);
    }
}

TEST(CItemManager, CreatesItsItemsInTheOrderOfTheTableAndNoOther) {
    const auto objRows = CItemManager::Rows();
    const auto objExpected = MGolden::Items();
    ASSERT_EQ(objRows.size(), objExpected.size());

    for (std::size_t i = 0; i < objRows.size(); ++i) {
        SCOPED_TRACE(objExpected[i].m_strName);
        EXPECT_EQ(objRows[i].m_strName, objExpected[i].m_strName);
        EXPECT_EQ(objRows[i].m_objSlot, objExpected[i].m_objSlot);
    }
}

TEST(CItemManager, HoldsADifferentItemInEveryMember) {
    const CItemManager objItemManager;
    const CItemManager objOther;
    std::set<const CItem*> objItems;

    for (const Item& objExpected : MGolden::Items()) {
        objItems.insert((objItemManager.*objExpected.m_objSlot).get());
        objItems.insert((objOther.*objExpected.m_objSlot).get());
    }

    EXPECT_EQ(objItems.size(), 2 * MGolden::Items().size());
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
    for (const ExpectedGroup& objExpected : ExpectedGroups()) {
        SCOPED_TRACE(objExpected.m_strName);
        ItemArray objItemAry;
        EXPECT_TRUE((objItemManager.*objExpected.m_objOperation)(objItemAry));

        ASSERT_EQ(objItemAry.size(), objExpected.m_objSlots.size());
        for (std::size_t i = 0; i < objItemAry.size(); ++i) {
            SCOPED_TRACE(i);
            EXPECT_EQ(objItemAry[i], objItemManager.*objExpected.m_objSlots[i]);
        }
    }
}

TEST(CItemManager, DiscardsWhatAGroupArrayHeldBefore) {
    const CItemManager objItemManager;
    for (const ExpectedGroup& objExpected : ExpectedGroups()) {
        SCOPED_TRACE(objExpected.m_strName);
        const auto objOld = std::make_shared<CItem>();
        ItemArray objItemAry(40, objOld);

        (objItemManager.*objExpected.m_objOperation)(objItemAry);

        EXPECT_EQ(objItemAry.size(), objExpected.m_objSlots.size());
        EXPECT_EQ(objOld.use_count(), 1);
    }
}

TEST(CItemManager, BuildsEveryGroupFromItsMembersAtTheTimeOfTheCall) {
    for (const ExpectedGroup& objExpected : ExpectedGroups()) {
        SCOPED_TRACE(objExpected.m_strName);
        CItemManager objItemManager;
        ItemArray objItemAry;
        (objItemManager.*objExpected.m_objOperation)(objItemAry);
        const ItemRef objBefore = objItemAry.back();

        const auto objReplacement = std::make_shared<CItem>();
        objItemManager.*objExpected.m_objSlots.back() = objReplacement;

        EXPECT_EQ(objItemAry.back(), objBefore) << "an array made earlier stays as it is";
        (objItemManager.*objExpected.m_objOperation)(objItemAry);
        EXPECT_EQ(objItemAry.back(), objReplacement);
        EXPECT_EQ(objItemAry.size(), objExpected.m_objSlots.size());
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
