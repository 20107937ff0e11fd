#include "protocol/MSettingRoute.h"

#include "model/MSettingText.h"
#include "protocol/MAnswer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

using MSettingRoute::Command;
using testing::ElementsAre;

namespace {

std::vector<std::string_view> NamesIn(std::int16_t p_iGroup) {
    std::vector<std::string_view> strNames;
    for (const MSettings::Row& objRow : MSettings::All()) {
        if (MSettingRoute::ReportedIn(objRow) == p_iGroup) {
            strNames.push_back(objRow.m_strName);
        }
    }
    return strNames;
}

std::vector<std::string_view> NamesOf(Command p_iCommand) {
    std::vector<std::string_view> strNames;
    for (const MSettings::Row& objRow : MSettings::All()) {
        if (MSettingRoute::CarriedBy(objRow) == p_iCommand) {
            strNames.push_back(objRow.m_strName);
        }
    }
    return strNames;
}

}  // namespace

TEST(MSettingRoute, TellsTheAnswerThatReportsASetting) {
    EXPECT_THAT(NamesIn(MAnswer::NoGroup), ElementsAre("stop-bit"));
    EXPECT_THAT(NamesIn(MAnswer::Adjustment),
                ElementsAre("feed-adj", "cut-adj", "back-adj", "tone-adj-t", "tone-adj-d",
                            "ribbon-adj-fw", "ribbon-adj-bk"));
    EXPECT_THAT(NamesIn(MAnswer::Parameter),
                ElementsAre("x-adj", "print-position", "font-code", "zero-code", "control", "code",
                            "peel-off-status", "threshold-r", "threshold-t", "kanji-code",
                            "country", "euro-code"));
    EXPECT_THAT(NamesIn(MAnswer::Sensor), ElementsAre("thermal-head-sensor", "ambient-sensor",
                                                      "reflective-sensor", "transmissive-sensor"));
    EXPECT_THAT(NamesIn(MAnswer::Lan),
                ElementsAre("lan", "ip-address", "default-gateway", "subnet-mask", "socket",
                            "socket-port", "dhcp", "dhcp-client-id", "dhcp-host-name"));
    EXPECT_EQ(NamesIn(MAnswer::ParameterExpansion).size(), 22U);
}

TEST(MSettingRoute, TellsTheCommandThatCarriesASetting) {
    EXPECT_THAT(NamesOf(Command::None),
                ElementsAre("print-position", "country", "thermal-head-sensor", "ambient-sensor",
                            "reflective-sensor", "transmissive-sensor", "lan", "kb-if"));
    EXPECT_THAT(NamesOf(Command::Adjustments),
                ElementsAre("feed-adj", "cut-adj", "back-adj", "tone-adj-t", "tone-adj-d",
                            "ribbon-adj-fw", "ribbon-adj-bk", "x-adj", "threshold-r",
                            "threshold-t"));
    EXPECT_EQ(NamesOf(Command::Parameters).size(), 29U);
    EXPECT_THAT(NamesOf(Command::IpAddress), ElementsAre("ip-address"));
    EXPECT_THAT(NamesOf(Command::Gateway), ElementsAre("default-gateway"));
    EXPECT_THAT(NamesOf(Command::SubnetMask), ElementsAre("subnet-mask"));
    EXPECT_THAT(NamesOf(Command::SocketPort), ElementsAre("socket", "socket-port"));
    EXPECT_THAT(NamesOf(Command::Dhcp), ElementsAre("dhcp", "dhcp-client-id", "dhcp-host-name"));
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
        EXPECT_THAT(MSettingRoute::Text(iCommand, objItems),
                    testing::StartsWith(strHeads.at(iCommand)));
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
