#include "model/MSettings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <utility>

using testing::HasSubstr;

namespace {

std::vector<MSettings::Row> Copied() {
    const auto objRows = MSettings::All();
    return {objRows.begin(), objRows.end()};
}

MSettings::Row& RowNamed(std::vector<MSettings::Row>& p_objRows, std::string_view p_strName) {
    return *std::ranges::find(p_objRows, p_strName, &MSettings::Row::m_strName);
}

struct WrongCase {
    const char* m_strName;
    const char* m_strWhat;  ///< what the refusal says
    std::function<void(std::vector<MSettings::Row>&)> m_objSpoil;
};

void PrintTo(const WrongCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

// clang-format off
const std::vector<WrongCase> WrongCases{
    {"NoName", "): it has no name or no label", [](auto& p_objRows) { p_objRows.front().m_strName = ""; }},
    {"NoLabel", "): it has no name or no label", [](auto& p_objRows) { p_objRows.front().m_strLabel = ""; }},
    {"NameTwice", "): its name stands twice", [](auto& p_objRows) { RowNamed(p_objRows, "dhcp").m_strName = "speed"; }},
    {"ListWithoutEntries", "): a list has entries, and nothing else has", [](auto& p_objRows) { RowNamed(p_objRows, "speed").m_strEntries.clear(); }},
    {"NumberWithEntries", "): a list has entries, and nothing else has", [](auto& p_objRows) { RowNamed(p_objRows, "feed-adj").m_strEntries = {"OFF"}; }},
    {"ListTooLong", "): its list does not fit into its field", [](auto& p_objRows) { RowNamed(p_objRows, "dhcp").m_strEntries.resize(11, "ON"); }},
    {"HexadecimalListTooLong", "): its list does not fit into its field", [](auto& p_objRows) { RowNamed(p_objRows, "font-code").m_strEntries.resize(17, "ON"); }},
    {"RangeUpsideDown", "): its range is upside down", [](auto& p_objRows) { RowNamed(p_objRows, "threshold-r").m_objRange = {40, 0, 1}; }},
    {"RangeOfOne", "): its range is upside down", [](auto& p_objRows) { RowNamed(p_objRows, "threshold-r").m_objRange = {10, 10, 1}; }},
    {"NoStep", "): it has no step", [](auto& p_objRows) { RowNamed(p_objRows, "threshold-r").m_objRange.m_iStep = 0; }},
    {"RangeTooWide", "): its range does not fit into its field", [](auto& p_objRows) { RowNamed(p_objRows, "threshold-r").m_objRange.m_iMax = 100; }},
    {"HexadecimalRangeTooWide", "): its range does not fit into its field", [](auto& p_objRows) { RowNamed(p_objRows, "code-1").m_objRange.m_iMax = 256; }},
    {"RangeTooWideBelow", "): its range does not fit into its field", [](auto& p_objRows) { RowNamed(p_objRows, "tone-adj-t").m_objRange.m_iMin = -100; }},
    {"NothingHoldsTheSign", "): it can be negative, yet nothing holds its sign", [](auto& p_objRows) { RowNamed(p_objRows, "threshold-r").m_objRange.m_iMin = -1; }},
    {"DefaultOutsideTheRange", "): its default is none of its values", [](auto& p_objRows) { RowNamed(p_objRows, "threshold-t").m_objRange.m_iMax = 13; }},
    {"DefaultBeyondTheList", "): its default is none of its values", [](auto& p_objRows) { RowNamed(p_objRows, "speed").m_strEntries.resize(2); }},
    {"AddressOfThree", "): it has too many items or too few", [](auto& p_objRows) { RowNamed(p_objRows, "ip-address").m_objSlots[3] = nullptr; }},
    {"NumberOfTwo", "): it has too many items or too few", [](auto& p_objRows) { RowNamed(p_objRows, "country").m_objSlots[1] = &CItemManager::m_objLanSetting; }},
    {"NoItem", "): it has too many items or too few", [](auto& p_objRows) { RowNamed(p_objRows, "country").m_objSlots[0] = nullptr; }},
    {"ItemInAnothersPlace", "): it has too many items or too few", [](auto& p_objRows) { auto& objRow = RowNamed(p_objRows, "country"); std::swap(objRow.m_objSlots[0], objRow.m_objSlots[1]); }},
    {"ItemTwice", "): one of its items belongs to another setting, too", [](auto& p_objRows) { RowNamed(p_objRows, "dhcp").m_objSlots[0] = &CItemManager::m_objLanSetting; }},
    {"ItemMissing", "no setting has the item m_objDhcpSetting", [](auto& p_objRows) { p_objRows.erase(std::ranges::find(p_objRows, "dhcp", &MSettings::Row::m_strName)); }},
};
// clang-format on

class MSettingsWrongTest : public testing::TestWithParam<WrongCase> {};

}  // namespace

TEST_P(MSettingsWrongTest, IsRefusedWithItsReason) {
    std::vector<MSettings::Row> objRows = Copied();
    GetParam().m_objSpoil(objRows);

    try {
        MSettings::Check(objRows);
        FAIL() << "nothing was refused";
    } catch (const std::logic_error& objError) {
        EXPECT_THAT(objError.what(), HasSubstr(GetParam().m_strWhat));
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, MSettingsWrongTest, testing::ValuesIn(WrongCases),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(MSettings, TheTableIsWhole) {
    EXPECT_NO_THROW(MSettings::Check(MSettings::All()));
}

TEST(MSettings, AWrongRowIsNamed) {
    std::vector<MSettings::Row> objRows = Copied();
    RowNamed(objRows, "threshold-r").m_objRange.m_iStep = 0;

    try {
        MSettings::Check(objRows);
        FAIL() << "nothing was refused";
    } catch (const std::logic_error& objError) {
        EXPECT_STREQ(objError.what(), "setting \"threshold-r\" (THRESHOLD<R>): it has no step");
    }
}

TEST(MSettings, OneThatIsMissingIsNamed) {
    try {
        MSettings::Get("bogus");
        FAIL() << "there is one";
    } catch (const std::logic_error& objError) {
        EXPECT_STREQ(objError.what(), "there is no setting \"bogus\"");
    }
}

TEST(MSettings, StandInTheCataloguesOrder) {
    const CItemManager objItems;
    const auto Place = [](MSettings::Slot p_objSlot) {
        const auto objRows = CItemManager::Rows();
        return std::ranges::find(objRows, p_objSlot, &CItemManager::Row::m_objSlot) -
               objRows.begin();
    };

    std::ptrdiff_t iLast = -1;
    for (const MSettings::Row& objRow : MSettings::All()) {
        const std::ptrdiff_t iFirst = Place(objRow.Items().front());
        EXPECT_GT(iFirst, iLast) << objRow.m_strName;
        iLast = iFirst;
    }
}

TEST(MSettings, NamesAreWordsOfSmallLettersAndDigits) {
    const std::string_view strLetters = "abcdefghijklmnopqrstuvwxyz";
    for (const MSettings::Row& objRow : MSettings::All()) {
        const std::string strName(objRow.m_strName);
        EXPECT_EQ(strName.find_first_of(strLetters), 0U) << strName;
        EXPECT_EQ(strName.find_first_not_of(std::string(strLetters) + "0123456789-"),
                  std::string::npos)
            << strName;
    }
}

TEST(MSettings, ThatCanCutALinkAreThoseThatTheLinkStandsOn) {
    std::vector<std::string_view> strLan;
    std::vector<std::string_view> strSerial;
    for (const MSettings::Row& objRow : MSettings::All()) {
        if (objRow.m_iCuts == MSettings::Cuts::Lan) {
            strLan.push_back(objRow.m_strName);
        } else if (objRow.m_iCuts == MSettings::Cuts::Serial) {
            strSerial.push_back(objRow.m_strName);
        }
    }

    EXPECT_THAT(strLan,
                testing::ElementsAre("ip-address", "default-gateway", "subnet-mask", "socket",
                                     "socket-port", "dhcp", "dhcp-client-id", "dhcp-host-name"));
    EXPECT_THAT(strSerial,
                testing::ElementsAre("control", "speed", "data-length", "stop-bit", "parity"));
}

TEST(MSettings, AreFoundByName) {
    ASSERT_NE(MSettings::Find("x-adj"), nullptr);
    EXPECT_EQ(MSettings::Find("x-adj")->m_strLabel, "X ADJ.");
    EXPECT_EQ(MSettings::Find("X-ADJ"), nullptr);
    EXPECT_EQ(&MSettings::Get("x-adj"), MSettings::Find("x-adj"));
    EXPECT_THROW(MSettings::Get("y-adj"), std::logic_error);
}

TEST(MSettings, TheRibbonsEndAndTheKeyboardBeginWithOff) {
    for (const char* strName : {"ribbon-near-end", "kb-if"}) {
        EXPECT_EQ(MSettings::Get(strName).m_strEntries.front(), "OFF") << strName;
        EXPECT_GT(MSettings::Get(strName).m_strEntries.size(), 2U) << strName;
    }
}
