#include "files/MLanFile.h"

#include "model/CConversionError.h"
#include "tests/files/MSettingsFields.h"
#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace {

using MSettingsFields::Field;
using MSettingsFields::Item;
using MSettingsFields::Texts;
using MSettingsFields::With;

const std::string ClientId(32, 'F');
const std::string NoHost(16, '\xFF');

const std::vector<std::string> Defaults = MGolden::LanSetCommands();

const std::string& IpLine = Defaults[0];
const std::string& PortLine = Defaults[3];
const std::string& DhcpLine = Defaults[4];
const std::string ShortDhcpLine = "{IH;1," + std::string(32, 'A') + "|}";

/// A catalogue in which no item of the file has its default.
CItemManager Filled() {
    CItemManager objItems;
    for (const Field& objField : MSettingsFields::Lan()) {
        Item(objItems, objField.m_strItem)
            .SetValue(std::string(objField.m_strHighest).size() == 1 ? "7" : "123");
    }
    objItems.m_objDhcpClientHost->SetValue("here-before");
    return objItems;
}

TEST(MLanFileTest, HasFiveLinesOfFixedLength) {
    EXPECT_EQ(MLanFile::BuildLines(CItemManager()), Defaults);
}

class MLanFileFieldTest : public ::testing::TestWithParam<Field> {};

TEST_P(MLanFileFieldTest, IsWrittenAtItsPosition) {
    for (const char* strValue : {GetParam().m_strLowest, GetParam().m_strHighest}) {
        CItemManager objItems;
        Item(objItems, GetParam().m_strItem).SetValue(strValue);
        std::vector<std::string> strExpected = Defaults;
        std::string& strLine = strExpected.at(GetParam().m_iLine - 1);
        strLine = With(strLine, GetParam().m_iPosition, strValue);
        EXPECT_EQ(MLanFile::BuildLines(objItems), strExpected);
    }
}

TEST_P(MLanFileFieldTest, IsReadFromItsPosition) {
    for (const char* strValue : {GetParam().m_strLowest, GetParam().m_strHighest}) {
        CItemManager objItems;
        CItemManager objExpected;
        Item(objExpected, GetParam().m_strItem).SetValue(strValue);
        EXPECT_TRUE(MLanFile::StoreLine(
            With(Defaults.at(GetParam().m_iLine - 1), GetParam().m_iPosition, strValue), objItems));
        EXPECT_EQ(Texts(objItems), Texts(objExpected));
    }
}

INSTANTIATE_TEST_SUITE_P(, MLanFileFieldTest,
                         ::testing::ValuesIn(MSettingsFields::Lan().begin(),
                                             MSettingsFields::Lan().end()),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strItem; });

TEST(MLanFileTest, ReadsFieldsAsText) {
    CItemManager objItems;
    EXPECT_TRUE(MLanFile::StoreLine(IpLine, objItems));
    EXPECT_EQ(objItems.m_objIpAddress3->GetValue(), CItemValue("010"));
}

struct HostCase {
    std::string m_strHost;
    std::string m_strField;
};

class MLanFileHostTest : public ::testing::TestWithParam<HostCase> {};

TEST_P(MLanFileHostTest, IsFilledUpTo16CharactersAndNeverCut) {
    CItemManager objItems;
    objItems.m_objDhcpClientHost->SetValue(GetParam().m_strHost);
    EXPECT_EQ(MLanFile::BuildLines(objItems).back(),
              "{IH;0," + ClientId + "," + GetParam().m_strField + "|}");
}

INSTANTIATE_TEST_SUITE_P(
    , MLanFileHostTest,
    ::testing::Values(HostCase{"", NoHost}, HostCase{"a", "a" + std::string(15, '\xFF')},
                      HostCase{"fifteen-letters", "fifteen-letters\xFF"},
                      HostCase{"sixteen--letters", "sixteen--letters"},
                      HostCase{"seventeen-letters", "seventeen-letters"},
                      HostCase{std::string(40, 'h'), std::string(40, 'h')},
                      HostCase{"\xE9tage", "\xE9tage" + std::string(11, '\xFF')}));

TEST(MLanFileTest, ALongHostNameMakesALineThatIsRefused) {
    CItemManager objItems;
    objItems.m_objDhcpClientHost->SetValue("seventeen-letters");
    const std::string strLine = MLanFile::BuildLines(objItems).back();
    EXPECT_EQ(strLine.size(), 58U);
    EXPECT_FALSE(MLanFile::StoreLine(strLine, objItems));
}

class MLanFileReadHostTest : public ::testing::TestWithParam<HostCase> {};

TEST_P(MLanFileReadHostTest, LosesTheFillWhereverItStands) {
    CItemManager objItems = Filled();
    EXPECT_TRUE(MLanFile::StoreLine(With(DhcpLine, 40, GetParam().m_strField), objItems));
    EXPECT_EQ(objItems.m_objDhcpClientHost->GetValue(), CItemValue(GetParam().m_strHost));
}

INSTANTIATE_TEST_SUITE_P(
    , MLanFileReadHostTest,
    ::testing::Values(HostCase{"", NoHost}, HostCase{"sixteen--letters", "sixteen--letters"},
                      HostCase{"name", "name" + std::string(12, '\xFF')},
                      HostCase{"name", std::string(12, '\xFF') + "name"},
                      HostCase{"name", "\xFFn\xFF" + std::string(10, '\xFF') + "ame"},
                      HostCase{"fifteen-letters", "fifteen\xFF-letters"},
                      HostCase{std::string(16, '\xFE'), std::string(16, '\xFE')},
                      HostCase{"a  ,|} ", "a  ,|} " + std::string(9, '\xFF')},
                      HostCase{std::string(2, '\0'), std::string(2, '\0') + NoHost.substr(2)}));

TEST(MLanFileTest, AClientIdentifierKeepsItsFill) {
    CItemManager objItems;
    EXPECT_TRUE(MLanFile::StoreLine(With(DhcpLine, 7, std::string(32, '\xFF')), objItems));
    EXPECT_EQ(objItems.m_objDhcpClientId->GetValue(), CItemValue(std::string(32, '\xFF')));
}

TEST(MLanFileTest, AShortDhcpLineKeepsTheHostName) {
    CItemManager objItems = Filled();
    EXPECT_EQ(ShortDhcpLine.size(), 40U);
    EXPECT_TRUE(MLanFile::StoreLine(ShortDhcpLine, objItems));
    EXPECT_EQ(objItems.m_objDhcpSetting->GetValueString(), "1");
    EXPECT_EQ(objItems.m_objDhcpClientId->GetValueString(), std::string(32, 'A'));
    EXPECT_EQ(objItems.m_objDhcpClientHost->GetValueString(), "here-before");
}

TEST(MLanFileTest, AcceptsDotsInsideAnAddress) {
    CItemManager objItems;
    EXPECT_TRUE(MLanFile::StoreLine("{IP;2,1.2,...,.34,5. |}", objItems));
    EXPECT_EQ(objItems.m_objIpAddress1->GetValue(), CItemValue("1.2"));
    EXPECT_EQ(objItems.m_objIpAddress2->GetValue(), CItemValue("..."));
    EXPECT_EQ(objItems.m_objIpAddress3->GetValue(), CItemValue(".34"));
    EXPECT_EQ(objItems.m_objIpAddress4->GetValue(), CItemValue("5. "));
    EXPECT_THROW(MLanFile::BuildLines(objItems), CConversionError);
}

struct LineCase {
    const char* m_strName;
    std::string m_strLine;
    std::string m_strUsual;
};

void PrintTo(const LineCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

class MLanFileAcceptedTest : public ::testing::TestWithParam<LineCase> {};

TEST_P(MLanFileAcceptedTest, TakesTheLineForTheSameAsTheUsualOne) {
    const CItemManager objItems = Filled();
    const CItemManager objExpected = Filled();
    EXPECT_TRUE(MLanFile::StoreLine(GetParam().m_strUsual, objExpected));
    EXPECT_TRUE(MLanFile::StoreLine(GetParam().m_strLine, objItems));
    EXPECT_EQ(Texts(objItems), Texts(objExpected));
}

INSTANTIATE_TEST_SUITE_P(
    , MLanFileAcceptedTest,
    ::testing::Values(
        LineCase{"DotsForTheCommas", "{IP;2.192.168.010.020|}", IpLine},
        LineCase{"AnyClosingOfAnAddress", "{IP;2,192,168,010,020xy", IpLine},
        LineCase{"SemicolonInAPort", "{IS;1;08000|}", PortLine},
        LineCase{"AnyClosingOfAPort", "{IS;1,08000  ", PortLine},
        LineCase{"OtherCommasInDhcp", With(With(DhcpLine, 6, "x"), 39, "y"), DhcpLine},
        LineCase{"AnyClosingOfDhcp", With(DhcpLine, 56, "xy"), DhcpLine},
        LineCase{"AnyClosingOfShortDhcp", With(ShortDhcpLine, 39, ",x"), ShortDhcpLine}),
    [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

class MLanFileRefusedTest : public ::testing::TestWithParam<LineCase> {};

TEST_P(MLanFileRefusedTest, StoresNothing) {
    const CItemManager objItems = Filled();
    const std::vector<std::string> strBefore = Texts(objItems);
    EXPECT_FALSE(MLanFile::StoreLine(GetParam().m_strLine, objItems));
    EXPECT_EQ(Texts(objItems), strBefore);
}

INSTANTIATE_TEST_SUITE_P(
    , MLanFileRefusedTest,
    ::testing::Values(
        LineCase{"Empty", "", ""}, LineCase{"PartOfAHead", "{IP", ""},
        LineCase{"AddressHeadAlone", "{IP;", ""}, LineCase{"PortHeadAlone", "{IS;", ""},
        LineCase{"DhcpHeadAlone", "{IH;", ""}, LineCase{"OtherHead", With(IpLine, 1, "{IX;"), ""},
        LineCase{"LowerCaseHead", With(IpLine, 1, "{ip;"), ""},
        LineCase{"ParameterHead", With(IpLine, 1, "{Z2;"), ""},
        LineCase{"Address1", With(IpLine, 5, "1"), ""},
        LineCase{"Address5", With(IpLine, 5, "5"), ""},
        LineCase{"AddressWithoutDigit", With(IpLine, 5, ","), ""},
        LineCase{"AddressOf22", IpLine.substr(0, 22), ""},
        LineCase{"AddressOf24", IpLine + "}", ""}, LineCase{"PortOf12", PortLine.substr(0, 12), ""},
        LineCase{"PortOf14", PortLine + "}", ""}, LineCase{"DhcpOf39", DhcpLine.substr(0, 39), ""},
        LineCase{"DhcpOf41", DhcpLine.substr(0, 41), ""},
        LineCase{"DhcpOf56", DhcpLine.substr(0, 56), ""}, LineCase{"DhcpOf58", DhcpLine + "}", ""},
        LineCase{"BlankInFront", " " + IpLine.substr(0, 22), ""}),
    [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

}  // namespace
