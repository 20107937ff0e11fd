#include "files/MParameterFile.h"

#include "model/CConversionError.h"
#include "tests/files/MSettingsFields.h"
#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

namespace {

using MSettingsFields::Field;
using MSettingsFields::Item;
using MSettingsFields::Texts;
using MSettingsFields::With;

const std::vector<std::string> Defaults = MGolden::SetCommands();

/// The adjustments with other fields of the ribbon motors.
std::string Ribbons(const char* p_strSignF, const char* p_strF, const char* p_strSignB,
                    const char* p_strB) {
    return MGolden::With(MGolden::Adjustments, {{"RibbonMotorDirection_F", p_strSignF},
                                                {"RibbonMotorAdjustment_F", p_strF},
                                                {"RibbonMotorDirection_B", p_strSignB},
                                                {"RibbonMotorAdjustment_B", p_strB}});
}

const std::string& DefaultLine(const Field& p_objField) {
    return Defaults[p_objField.m_iLine - 1];
}

TEST(MParameterFileTest, HasTwoLinesOfFixedLength) {
    EXPECT_EQ(MParameterFile::BuildLines(CItemManager()), Defaults);
}

class MParameterFileFieldTest : public ::testing::TestWithParam<Field> {};

TEST_P(MParameterFileFieldTest, IsWrittenAtItsPosition) {
    for (const char* strValue : {GetParam().m_strLowest, GetParam().m_strHighest}) {
        CItemManager objItems;
        Item(objItems, GetParam().m_strItem).SetValue(strValue);
        const std::vector<std::string> strLines = MParameterFile::BuildLines(objItems);
        EXPECT_EQ(strLines.at(GetParam().m_iLine - 1),
                  With(DefaultLine(GetParam()), GetParam().m_iPosition, strValue));
        EXPECT_EQ(strLines.at(2 - GetParam().m_iLine), Defaults.at(2 - GetParam().m_iLine));
    }
}

TEST_P(MParameterFileFieldTest, IsReadFromItsPosition) {
    for (const char* strValue : {GetParam().m_strLowest, GetParam().m_strHighest}) {
        CItemManager objItems;
        CItemManager objExpected;
        Item(objExpected, GetParam().m_strItem).SetValue(strValue);
        const std::string strLine = With(DefaultLine(GetParam()), GetParam().m_iPosition, strValue);
        EXPECT_TRUE(MParameterFile::StoreLine(strLine, objItems));
        EXPECT_EQ(Texts(objItems), Texts(objExpected));
    }
}

INSTANTIATE_TEST_SUITE_P(, MParameterFileFieldTest,
                         ::testing::ValuesIn(MSettingsFields::Parameter().begin(),
                                             MSettingsFields::Parameter().end()),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strItem; });

TEST(MParameterFileTest, ReadsFieldsAsText) {
    CItemManager objItems;
    EXPECT_TRUE(MParameterFile::StoreLine(MGolden::With(Defaults[1], {{"FeedAdjustment", "007"}}),
                                          objItems));
    EXPECT_EQ(objItems.m_objFeedAdjustment->GetValue(), CItemValue("007"));
}

TEST(MParameterFileTest, WritesAFixedDirectionAsItsDefaultWhateverWasRead) {
    CItemManager objItems;
    EXPECT_TRUE(MParameterFile::StoreLine(Ribbons("+", "07", "+", "08"), objItems));
    EXPECT_EQ(MParameterFile::BuildLines(objItems)[1], Ribbons("-", "07", "-", "08"));
}

TEST(MParameterFileTest, LeavesTheOtherGroupAlone) {
    CItemManager objItems;
    MSettingsFields::SetAll(objItems, MSettingsFields::Parameter(), &Field::m_strHighest);
    const std::vector<std::string> strBefore = MParameterFile::BuildLines(objItems);
    EXPECT_TRUE(MParameterFile::StoreLine(Defaults[1], objItems));
    EXPECT_EQ(MParameterFile::BuildLines(objItems),
              (std::vector<std::string>{strBefore[0], Defaults[1]}));
}

TEST(MParameterFileTest, FollowsTheWidthsOfTheItems) {
    CItemManager objItems;
    objItems.m_objFeedAdjustment->m_iLength = 4;
    EXPECT_FALSE(MParameterFile::StoreLine(Defaults[1], objItems));
    EXPECT_TRUE(MParameterFile::StoreLine(
        With(Defaults[1].substr(0, 7) + "0" + Defaults[1].substr(7), 7, "-0123"), objItems));
    EXPECT_EQ(objItems.m_objFeedAdjustment->GetValueString(), "0123");
    EXPECT_EQ(objItems.m_objThresholdAdjustment_T->GetValueString(), "14");
}

TEST(MParameterFileTest, CannotBeWrittenFromAnItemThatIsNoNumber) {
    CItemManager objItems;
    objItems.m_objFeedAdjustment->SetValue("abc");
    EXPECT_THROW(MParameterFile::BuildLines(objItems), CConversionError);
}

struct LineCase {
    const char* m_strName;
    std::string m_strLine;
};

void PrintTo(const LineCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

class MParameterFileAcceptedTest : public ::testing::TestWithParam<LineCase> {};

TEST_P(MParameterFileAcceptedTest, TakesTheLineForTheSameAsTheUsualOne) {
    const std::string& strLine = GetParam().m_strLine;
    CItemManager objItems;
    MSettingsFields::SetAll(objItems, MSettingsFields::Parameter(), &Field::m_strHighest);
    CItemManager objExpected;
    MSettingsFields::SetAll(objExpected, MSettingsFields::Parameter(), &Field::m_strHighest);
    EXPECT_TRUE(MParameterFile::StoreLine(Defaults[strLine[4] == '1' ? 0 : 1], objExpected));
    EXPECT_TRUE(MParameterFile::StoreLine(strLine, objItems));
    EXPECT_EQ(Texts(objItems), Texts(objExpected));
}

INSTANTIATE_TEST_SUITE_P(
    , MParameterFileAcceptedTest,
    ::testing::Values(
        LineCase{"SemicolonForTheComma", With(Defaults[0], 6, ";")},
        LineCase{"NulForTheComma", With(Defaults[1], 6, std::string(1, '\0'))},
        LineCase{"AnyClosingCharacters", Defaults[0].substr(0, Defaults[0].size() - 2) + "xy"},
        LineCase{"BlanksForTheClosing", Defaults[1].substr(0, Defaults[1].size() - 2) + "  "}),
    [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

/// Without its last character.
std::string Short(const std::string& p_strLine) {
    return p_strLine.substr(0, p_strLine.size() - 1);
}

class MParameterFileRefusedTest : public ::testing::TestWithParam<LineCase> {};

TEST_P(MParameterFileRefusedTest, StoresNothing) {
    CItemManager objItems;
    MSettingsFields::SetAll(objItems, MSettingsFields::Parameter(), &Field::m_strHighest);
    const std::vector<std::string> strBefore = Texts(objItems);
    EXPECT_FALSE(MParameterFile::StoreLine(GetParam().m_strLine, objItems));
    EXPECT_EQ(Texts(objItems), strBefore);
}

INSTANTIATE_TEST_SUITE_P(
    , MParameterFileRefusedTest,
    ::testing::Values(LineCase{"Empty", ""}, LineCase{"PartOfTheHead", "{Z2"},
                      LineCase{"HeadAlone", "{Z2;"}, LineCase{"HeadAndDigit", "{Z2;1"},
                      LineCase{"Digit0", With(Defaults[0], 5, "0")},
                      LineCase{"Digit3", With(Defaults[0], 5, "3")},
                      LineCase{"Digit3InTheOtherLength", With(Defaults[1], 5, "3")},
                      LineCase{"NoDigit", With(Defaults[0], 5, ",")},
                      LineCase{"Line1WithoutItsEnd", Short(Defaults[0])},
                      LineCase{"Line1AndMore", Defaults[0] + "}"},
                      LineCase{"Line2WithoutItsEnd", Short(Defaults[1])},
                      LineCase{"Line2AndMore", Defaults[1] + "}"},
                      LineCase{"Group1InTheLengthOfGroup2", With(Defaults[1], 5, "1")},
                      LineCase{"Group2InTheLengthOfGroup1", With(Defaults[0], 5, "2")},
                      LineCase{"OtherHead", With(Defaults[0], 1, "{Z5;")},
                      LineCase{"LowerCaseHead", With(Defaults[0], 1, "{z2;")},
                      LineCase{"BlankInFront", " " + Short(Defaults[0])}),
    [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(MParameterFileTest, AGroupThatIsNoneHasNoLine) {
    const CItemManager objItems;
    EXPECT_FALSE(MParameterFile::StoreLine("{Z2;3,|}", objItems));
    EXPECT_FALSE(MParameterFile::StoreLine("{Z2;", objItems));
    EXPECT_FALSE(MParameterFile::StoreLine("", objItems));
}

}  // namespace
