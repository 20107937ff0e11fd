#include "protocol/MSettingRoute.h"

#include "protocol/MAnswer.h"
#include "tests/golden/MGolden.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

using MSettingRoute::Command;
using testing::ElementsAre;

namespace {

/// The answer that reports p_objRow.
std::int16_t ReportedIn(const MSettings::Row& p_objRow) {
    for (std::int16_t iGroup = MAnswer::Adjustment; iGroup <= MAnswer::ParameterExpansion;
         ++iGroup) {
        for (const MGolden::Answered& objAnswered : MGolden::Answers(iGroup)) {
            if (objAnswered.m_objSlot == p_objRow.m_objSlots.front()) {
                return iGroup;
            }
        }
    }
    return MAnswer::NoGroup;
}

const std::map<Command, const char*> Texts{{Command::Parameters, MGolden::Parameters},
                                           {Command::Adjustments, MGolden::Adjustments},
                                           {Command::IpAddress, MGolden::IpAddress},
                                           {Command::Gateway, MGolden::Gateway},
                                           {Command::SubnetMask, MGolden::SubnetMask},
                                           {Command::SocketPort, MGolden::SocketPort},
                                           {Command::Dhcp, MGolden::Dhcp}};

/// The command that carries p_objRow.
Command CarriedBy(const MSettings::Row& p_objRow) {
    for (const auto& [iCommand, strText] : Texts) {
        const auto objSlots = MGolden::Carried(strText);
        if (std::ranges::find(objSlots, p_objRow.m_objSlots.front()) != objSlots.end()) {
            return iCommand;
        }
    }
    return Command::None;
}

}  // namespace

TEST(MSettingRoute, TellsTheAnswerThatReportsASetting) {
    for (const MSettings::Row& objRow : MSettings::All()) {
        EXPECT_EQ(MSettingRoute::ReportedIn(objRow), ReportedIn(objRow)) << objRow.m_strName;
    }
    EXPECT_EQ(MSettingRoute::ReportedIn(MSettings::Get("stop-bit")), MAnswer::NoGroup);
}

TEST(MSettingRoute, TellsTheCommandThatCarriesASetting) {
    for (const MSettings::Row& objRow : MSettings::All()) {
        EXPECT_EQ(MSettingRoute::CarriedBy(objRow), CarriedBy(objRow)) << objRow.m_strName;
    }
    EXPECT_EQ(MSettingRoute::CarriedBy(MSettings::Get("kb-if")), Command::None);
}

TEST(MSettingRoute, EveryCommandBeginsWithItsHead) {
    const CItemManager objItems;
    const std::map<Command, const char*> strHeads{
        {Command::Parameters, "{Z2;1,"}, {Command::Adjustments, "{Z2;2,"},
        {Command::IpAddress, "{IP;2,"},  {Command::Gateway, "{IP;3,"},
        {Command::SubnetMask, "{IP;4,"}, {Command::SocketPort, "{IS;"},
        {Command::Dhcp, "{IH;"}};
    ASSERT_EQ(MSettingRoute::Commands().size(), strHeads.size());
    for (const Command iCommand : MSettingRoute::Commands()) {
        EXPECT_EQ(MSettingRoute::Head(iCommand), strHeads.at(iCommand));
        EXPECT_EQ(MSettingRoute::Text(iCommand, objItems), Texts.at(iCommand));
    }
    EXPECT_EQ(MSettingRoute::Head(Command::None), "");
    EXPECT_EQ(MSettingRoute::Text(Command::None, objItems), "");
}

TEST(MSettingRoute, ACommandCarriesWhatItShould) {
    for (const MSettings::Row& objRow : MSettings::All()) {
        const Command iCommand = MSettingRoute::CarriedBy(objRow);
        if (iCommand == Command::None) {
            continue;
        }
        const CItemManager objItems;
        const std::string strBefore = MSettingRoute::Text(iCommand, objItems);
        (objItems.*objRow.m_objSlots.front())->m_vValue = "1";
        const std::string strOne = MSettingRoute::Text(iCommand, objItems);
        (objItems.*objRow.m_objSlots.front())->m_vValue = "2";
        const std::string strTwo = MSettingRoute::Text(iCommand, objItems);
        EXPECT_NE(strOne, strTwo) << objRow.m_strName;
    }
}

TEST(MSettingRoute, AddressesAreSentBeforeThePortAndDhcp) {
    EXPECT_THAT(MSettingRoute::Commands(),
                ElementsAre(Command::Parameters, Command::Adjustments, Command::IpAddress,
                            Command::Gateway, Command::SubnetMask, Command::SocketPort,
                            Command::Dhcp));
}
