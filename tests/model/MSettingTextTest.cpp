#include "model/MSettingText.h"

#include "model/MNumber.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>

using testing::HasSubstr;

namespace {

struct ValueCase {
    const char* m_strSetting;
    const char* m_strText;   ///< what people write
    const char* m_strShown;  ///< how it is shown then
    const char* m_strRaw;    ///< what the items hold
};

void PrintTo(const ValueCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strSetting << " " << p_objCase.m_strText;
}

// clang-format off
const std::vector<ValueCase> Values{
    {"font-code", "UTF-8", "UTF-8", "15"},
    {"font-code", "latin9", "LATIN9", "12"},
    {"speed", "115200bps", "115200bps", "5"},
    {"code", "{,|,}", "{,|,}", "2"},
    {"feed-adj", "-0.5", "-0.5", "-5"},
    {"feed-adj", "+50", "50.0", "+500"},
    {"feed-adj", "0", "0.0", "+0"},
    {"feed-adj", "-0", "0.0", "+0"},
    {"x-adj", "0.3", "0.3", "+3"},
    {"tone-adj-t", "-10", "-10", "-10"},
    {"ribbon-adj-fw", "-15", "-15", "-15"},
    {"ribbon-adj-fw", "0", "0", "-0"},
    {"threshold-r", "1.4", "1.4", "14"},
    {"threshold-r", ".4", "0.4", "4"},
    {"euro-code", "b0", "B0", "176"},
    {"euro-code", "0000020", "20", "32"},
    {"code-1", "A", "0A", "10"},
    {"country", "9", "9", "9"},
    {"socket-port", "65535", "65535", "65535"},
    {"socket-port", "00065535", "65535", "65535"},
    {"ip-address", "10.0.020.255", "10.0.20.255", "10.0.20.255"},
    {"dhcp-host-name", "printer-7", "printer-7", "printer-7"},
    {"dhcp-host-name", "", "", ""},
    {"dhcp-host-name", "a ~z", "a ~z", "a ~z"},
    {"dhcp-host-name", "0123456789abcdef", "0123456789abcdef", "0123456789abcdef"},
    {"dhcp-client-id", "0123456789ABCDEF0123456789abcdef", "0123456789ABCDEF0123456789abcdef", "0123456789ABCDEF0123456789abcdef"},
};

struct RefusedCase {
    const char* m_strSetting;
    const char* m_strText;
};

const std::vector<RefusedCase> Refused{
    {"font-code", "PC-9999"}, {"font-code", ""}, {"font-code", "3"}, {"speed", "9600"},
    {"feed-adj", "50.1"}, {"feed-adj", "-50.1"}, {"feed-adj", "0.05"}, {"feed-adj", "1e1"},
    {"feed-adj", "abc"}, {"feed-adj", ""}, {"feed-adj", " 1"}, {"feed-adj", "1.2.3"},
    {"feed-adj", "123456789"}, {"tone-adj-t", "1.5"}, {"tone-adj-t", "11"},
    {"ribbon-adj-bk", "1"}, {"ribbon-adj-bk", "-16"}, {"threshold-t", "4.1"}, {"threshold-t", "-0.1"},
    {"euro-code", "1F"}, {"euro-code", "100"}, {"euro-code", "G0"}, {"euro-code", "0x20"}, {"euro-code", ""}, {"euro-code", "00000020"}, {"code-1", "G0"}, {"code-1", "-"}, {"euro-code", "123456789ABC"}, {"feed-adj", "99999999999999999999"},
    {"socket-port", "65536"}, {"socket-port", "-1"},
    {"ip-address", "256.0.0.1"}, {"ip-address", "1.2.3"}, {"ip-address", "1.2.3.4.5"}, {"ip-address", "1.2..4"},
    {"ip-address", "1.2.3."}, {"ip-address", "a.b.c.d"}, {"ip-address", "-1.2.3.4"}, {"ip-address", ""},
    {"dhcp-host-name", "0123456789abcdefg"}, {"dhcp-host-name", "a|}b"}, {"dhcp-host-name", "a{b"},
    {"dhcp-host-name", "a\tb"}, {"dhcp-host-name", "a|b"}, {"dhcp-host-name", "a}b"}, {"dhcp-host-name", "a\x7F"}, {"dhcp-host-name", "b\xFC" "ro"},
    {"dhcp-client-id", "short"}, {"dhcp-client-id", "0123456789ABCDEF0123456789abcdef0"},
};
// clang-format on

void PrintTo(const RefusedCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strSetting << " \"" << p_objCase.m_strText << '"';
}

class MSettingTextValueTest : public testing::TestWithParam<ValueCase> {};
class MSettingTextRefusedTest : public testing::TestWithParam<RefusedCase> {};

}  // namespace

TEST_P(MSettingTextValueTest, IsStoredAndShownAgain) {
    const MSettings::Row& objRow = MSettings::Get(GetParam().m_strSetting);
    const CItemManager objItems;

    MSettingText::Set(objRow, objItems, GetParam().m_strText);

    EXPECT_EQ(MSettingText::Show(objRow, objItems), GetParam().m_strShown);
    EXPECT_EQ(MSettingText::Raw(objRow, objItems), GetParam().m_strRaw);
}

TEST(MSettingText, WhetherATextIsAlwaysFullIsTheDefaultsToShow) {
    const MSettings::Row& objRow = MSettings::Get("dhcp-client-id");
    const CItemManager objItems;
    objItems.m_objDhcpClientId->SetValue("short");
    EXPECT_THROW(MSettingText::Set(objRow, objItems, "shorter"), CSettingError);
    const MSettings::Row& objHost = MSettings::Get("dhcp-host-name");
    objItems.m_objDhcpClientHost->SetValue("0123456789abcdef");
    MSettingText::Set(objHost, objItems, "short");
    EXPECT_EQ(MSettingText::Show(objHost, objItems), "short");
}

INSTANTIATE_TEST_SUITE_P(Values, MSettingTextValueTest, testing::ValuesIn(Values));

TEST_P(MSettingTextRefusedTest, StoresNothingAndSaysWhatCouldBe) {
    const MSettings::Row& objRow = MSettings::Get(GetParam().m_strSetting);
    const CItemManager objItems;

    try {
        MSettingText::Set(objRow, objItems, GetParam().m_strText);
        FAIL() << "it was accepted";
    } catch (const CSettingError& objError) {
        EXPECT_EQ(std::string(objError.what()),
                  std::string(GetParam().m_strSetting) + ": \"" + GetParam().m_strText +
                      "\" is none of its values (" + MSettingText::Allowed(objRow) + ")");
    }
    EXPECT_TRUE(MSettingText::Same(objRow, objItems, CItemManager()));
    EXPECT_EQ(MSettingText::Raw(objRow, objItems), MSettingText::Raw(objRow, CItemManager()));
}

INSTANTIATE_TEST_SUITE_P(Texts, MSettingTextRefusedTest, testing::ValuesIn(Refused));

TEST(MSettingText, EveryDefaultIsShownAndAcceptedAgain) {
    for (const MSettings::Row& objRow : MSettings::All()) {
        const CItemManager objItems;
        const auto strShown = MSettingText::Show(objRow, objItems);
        ASSERT_TRUE(strShown) << objRow.m_strName;
        MSettingText::Set(objRow, objItems, *strShown);
        EXPECT_TRUE(MSettingText::Same(objRow, objItems, CItemManager())) << objRow.m_strName;
    }
}

TEST(MSettingText, EveryEntryOfEveryListIsItsPosition) {
    for (const MSettings::Row& objRow : MSettings::All()) {
        for (std::size_t i = 0; i < objRow.m_strEntries.size(); ++i) {
            const CItemManager objItems;
            MSettingText::Set(objRow, objItems, objRow.m_strEntries[i]);
            EXPECT_EQ(MNumber::ToInt32((objItems.*objRow.m_objSlots.front())->GetValue()), i)
                << objRow.m_strName;
        }
    }
}

TEST(MSettingText, ShowsWhatAPrinterHasSentInItsFields) {
    const CItemManager objItems;
    objItems.m_objFeedDirection->SetValue("-");
    objItems.m_objFeedAdjustment->SetValue("005");
    objItems.m_objEuroCode->SetValue("B1");
    objItems.m_objDhcpClientHost->SetValue(std::string("varden\xFF\xFF  ") + '\0');

    EXPECT_EQ(MSettingText::Show(MSettings::Get("feed-adj"), objItems), "-0.5");
    EXPECT_EQ(MSettingText::Show(MSettings::Get("euro-code"), objItems), "B1");
    EXPECT_EQ(MSettingText::Show(MSettings::Get("dhcp-host-name"), objItems), "varden");
}

TEST(MSettingText, ShowsNothingForWhatIsNoValueOfTheSetting) {
    const CItemManager objItems;
    objItems.m_objParity->SetValue("3");
    objItems.m_objZeroStyle->SetValue("x");
    objItems.m_objFeedDirection->SetValue("?");
    objItems.m_objThresholdAdjustment_R->SetValue("41");
    objItems.m_objIpAddress2->SetValue("256");

    for (const char* strName : {"parity", "zero-code", "feed-adj", "threshold-r", "ip-address"}) {
        EXPECT_EQ(MSettingText::Show(MSettings::Get(strName), objItems), std::nullopt) << strName;
    }
    EXPECT_EQ(MSettingText::Raw(MSettings::Get("feed-adj"), objItems), "?0");
}

TEST(MSettingText, WhatMeansTheSameIsTheSame) {
    const CItemManager objOne;
    const CItemManager objOther;
    objOne.m_objDhcpClientHost->SetValue("varden");
    objOther.m_objDhcpClientHost->SetValue("varden\xFF\xFF\xFF   ");
    objOne.m_objFeedAdjustment->SetValue("007");
    objOther.m_objFeedAdjustment->SetValue(7);

    EXPECT_TRUE(MSettingText::Same(MSettings::Get("dhcp-host-name"), objOne, objOther));
    EXPECT_TRUE(MSettingText::Same(MSettings::Get("feed-adj"), objOne, objOther));
    objOther.m_objFeedDirection->SetValue("-");
    EXPECT_FALSE(MSettingText::Same(MSettings::Get("feed-adj"), objOne, objOther));
}

TEST(MSettingText, WhatCannotBeShownIsTheSameWhenItIsHeldAlike) {
    const CItemManager objOne;
    const CItemManager objOther;
    objOne.m_objParity->SetValue("7");
    EXPECT_FALSE(MSettingText::Same(MSettings::Get("parity"), objOne, objOther));
    objOther.m_objParity->SetValue("8");
    EXPECT_FALSE(MSettingText::Same(MSettings::Get("parity"), objOne, objOther));
    objOther.m_objParity->SetValue("7");
    EXPECT_TRUE(MSettingText::Same(MSettings::Get("parity"), objOne, objOther));
}

TEST(MSettingText, TellsWhatItAccepts) {
    const auto Allowed = [](const char* p_strName) {
        return MSettingText::Allowed(MSettings::Get(p_strName));
    };
    EXPECT_EQ(Allowed("dhcp"), "OFF, ON");
    EXPECT_EQ(Allowed("forward-position"), "-5.0 to 5.0");
    EXPECT_EQ(Allowed("euro-code"), "20 to FF (hexadecimal)");
    EXPECT_EQ(Allowed("subnet-mask"), "0.0.0.0 to 255.255.255.255");
    EXPECT_EQ(Allowed("dhcp-host-name"), "at most 16 characters, none of { | }");
    EXPECT_EQ(Allowed("dhcp-client-id"), "32 characters, none of { | }");
}
