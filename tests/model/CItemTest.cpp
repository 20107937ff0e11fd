#include "model/CItem.h"

#include "model/CConversionError.h"

#include <gtest/gtest.h>

namespace {

constexpr auto Text = ItemDataType::Text;
constexpr auto Decimal = ItemDataType::Decimal;
constexpr auto Hexadecimal = ItemDataType::Hexadecimal;

CItem MakeItem(ItemDataType p_iDataType, std::int16_t p_iLength, const CItemValue& p_vDefault,
               bool p_bFixed = false) {
    CItem objItem;
    objItem.m_iLength = p_iLength;
    objItem.m_iDataType = p_iDataType;
    objItem.InitializeValue(p_vDefault, p_bFixed);
    return objItem;
}

struct FieldCase {
    ItemDataType m_iDataType;
    std::int16_t m_iLength;
    CItemValue m_vValue;
    const char* m_strField;
};

}  // namespace

TEST(CItem, IsEmptyAndWithoutWidthWhenCreated) {
    const CItem objItem;

    EXPECT_EQ(objItem.m_vValue, CItemValue());
    EXPECT_EQ(objItem.m_vDefaultValue, CItemValue());
    EXPECT_EQ(objItem.m_iLength, 0);
    EXPECT_EQ(objItem.m_iDataType, Text);
    EXPECT_FALSE(objItem.m_bFixedValue);
    EXPECT_EQ(objItem.GetValueString(), "");
}

TEST(CItem, NumbersItsDataTypesAsThePrinterDoes) {
    EXPECT_EQ(static_cast<int>(Text), 0);
    EXPECT_EQ(static_cast<int>(Decimal), 1);
    EXPECT_EQ(static_cast<int>(Hexadecimal), 4);
}

TEST(CItem, InitializeValueSetsValueDefaultAndFixedAndReturnsFalse) {
    CItem objItem;

    EXPECT_FALSE(objItem.InitializeValue("abc", true));
    EXPECT_EQ(objItem.m_vValue, CItemValue("abc"));
    EXPECT_EQ(objItem.m_vDefaultValue, CItemValue("abc"));
    EXPECT_TRUE(objItem.m_bFixedValue);

    EXPECT_FALSE(objItem.InitializeValue(7));
    EXPECT_EQ(objItem.m_vValue, CItemValue(7));
    EXPECT_EQ(objItem.m_vDefaultValue, CItemValue(7));
    EXPECT_FALSE(objItem.m_bFixedValue) << "fixed is false when it is not given";
}

TEST(CItem, InitializeValueKeepsANumberUnconvertedInAHexadecimalItem) {
    const CItem objItem = MakeItem(Hexadecimal, 2, 176);

    EXPECT_EQ(objItem.m_vValue, CItemValue(176));
    EXPECT_EQ(objItem.m_vDefaultValue, CItemValue(176));
    EXPECT_EQ(objItem.GetValueString(), "B0");
}

TEST(CItem, InitializeValueKeepsATextUnconvertedInAHexadecimalItem) {
    EXPECT_EQ(MakeItem(Hexadecimal, 2, "1B").m_vValue, CItemValue("1B"));
}

TEST(CItem, GivesTheDefaultWhenAskedForItEvenAfterSetValue) {
    for (const ItemDataType iDataType : {Text, Decimal, Hexadecimal}) {
        SCOPED_TRACE(static_cast<int>(iDataType));
        CItem objItem = MakeItem(iDataType, 2, 10);

        EXPECT_TRUE(objItem.SetValue("5"));

        EXPECT_EQ(objItem.GetValue(true), CItemValue(10));
        EXPECT_EQ(objItem.GetValueString(true), iDataType == Hexadecimal ? "0A" : "10");
        EXPECT_EQ(objItem.m_vDefaultValue, CItemValue(10));
        EXPECT_NE(objItem.GetValue(), CItemValue(10));
        EXPECT_EQ(objItem.GetValueString(), iDataType == Text ? "5" : "05");
    }
}

TEST(CItem, ReportsItsDefaultAlwaysWhenFixed) {
    CItem objItem = MakeItem(Text, 1, "-", true);

    EXPECT_TRUE(objItem.SetValue("+"));

    EXPECT_EQ(objItem.m_vValue, CItemValue("+")) << "stored, yet never reported";
    EXPECT_TRUE(objItem.m_bFixedValue);
    EXPECT_EQ(objItem.GetValue(), CItemValue("-"));
    EXPECT_EQ(objItem.GetValue(false), CItemValue("-"));
    EXPECT_EQ(objItem.GetValue(true), CItemValue("-"));
    EXPECT_EQ(objItem.GetValueString(), "-");
}

TEST(CItem, ReportsANewValueAgainWhenNoLongerFixed) {
    CItem objItem = MakeItem(Text, 1, "-", true);
    objItem.SetValue("+");

    objItem.m_bFixedValue = false;

    EXPECT_EQ(objItem.GetValueString(), "+");
}

TEST(CItem, WritesItsFieldByItsDataType) {
    // clang-format off
    const FieldCase arrCases[] = {
        {Decimal, 2, 5, "05"},
        {Decimal, 2, -15, "15"},
        {Decimal, 2, 100, "100"},
        {Decimal, 3, -7, "007"},
        {Decimal, 3, 1234, "1234"},
        {Decimal, 3, 0, "000"},
        {Decimal, 3, "12", "012"},
        {Decimal, 3, "-12", "012"},
        {Decimal, 3, " 9 ", "009"},
        {Decimal, 5, 8000, "08000"},
        {Decimal, 1, CItemValue(), "0"},
        {Decimal, 2, 2.5, "02"},
        {Decimal, 2, 3.5, "04"},
        {Decimal, 2, -0.4, "00"},
        {Decimal, 0, 7, "7"},
        {Decimal, 0, -7, "7"},
        {Decimal, 0, 2.5, "2.5"},
        {Decimal, 0, 0.5, "0.5"},
        {Decimal, 1, 1e6, "1000000"},
        {Decimal, 1, 2.6, "3"},
        {Hexadecimal, 2, 10, "0A"},
        {Hexadecimal, 2, 27, "1B"},
        {Hexadecimal, 2, 0, "00"},
        {Hexadecimal, 2, 255, "FF"},
        {Hexadecimal, 2, 4096, "1000"},
        {Hexadecimal, 1, 15, "F"},
        {Hexadecimal, 0, 171, "AB"},
        {Hexadecimal, 4, CItemValue(), "0000"},
        {Text, 16, "", ""},
        {Text, 16, "host", "host"},
        {Text, 2, "longer than 2", "longer than 2"},
        {Text, 4, "a  ", "a  "},
        {Text, 3, 5, "5"},
        {Text, 3, -2.5, "-2.5"},
        {Text, 3, CItemValue(), ""},
    };
    // clang-format on
    for (const FieldCase& objCase : arrCases) {
        SCOPED_TRACE(objCase.m_strField);
        const CItem objItem = MakeItem(objCase.m_iDataType, objCase.m_iLength, objCase.m_vValue);
        EXPECT_EQ(objItem.GetValueString(), objCase.m_strField);
    }
}

TEST(CItem, TreatsEveryOtherDataTypeCodeAsText) {
    for (const std::int16_t iCode : std::initializer_list<std::int16_t>{2, 3, 5, -1}) {
        SCOPED_TRACE(iCode);
        CItem objItem = MakeItem(static_cast<ItemDataType>(iCode), 4, 7);
        EXPECT_EQ(objItem.GetValueString(), "7");

        EXPECT_TRUE(objItem.SetValue("B0 not hexadecimal"));
        EXPECT_EQ(objItem.GetValue(), CItemValue("B0 not hexadecimal"));
        EXPECT_EQ(objItem.GetValueString(), "B0 not hexadecimal");
    }
}

TEST(CItem, ReadsWhatIsStoredInAHexadecimalItemAsHexadecimal) {
    struct HexCase {
        CItemValue m_vStored;
        double m_dNumber;
        const char* m_strField;
    };
    const HexCase arrCases[] = {
        {"1B", 27, "1B"},        {"", 0, "00"},     {"ZZ", 0, "00"},
        {"1G", 1, "01"},         {"b0", 176, "B0"}, {"1 B", 27, "1B"},
        {"FFFF", 65535, "FFFF"}, {10, 16, "10"},    {"FFFFFFFF", 4294967295.0, "FFFFFFFF"},
    };
    for (const HexCase& objCase : arrCases) {
        SCOPED_TRACE(objCase.m_strField);
        CItem objItem = MakeItem(Hexadecimal, 2, 176);

        EXPECT_TRUE(objItem.SetValue(objCase.m_vStored));

        EXPECT_EQ(objItem.m_vValue, CItemValue(objCase.m_dNumber));
        EXPECT_EQ(objItem.GetValueString(), objCase.m_strField);
    }
}

TEST(CItem, KeepsATextAsTextInADecimalItem) {
    CItem objItem = MakeItem(Decimal, 3, 0);

    EXPECT_TRUE(objItem.SetValue("007"));

    EXPECT_EQ(objItem.GetValue(), CItemValue("007"));
}

TEST(CItem, FailsOnlyWhenTheFieldOfATextThatIsNoNumberIsMade) {
    CItem objDecimal = MakeItem(Decimal, 3, 1);
    EXPECT_TRUE(objDecimal.SetValue("abc"));
    EXPECT_EQ(objDecimal.GetValue(), CItemValue("abc"));
    EXPECT_THROW((void)objDecimal.GetValueString(), CConversionError);
    EXPECT_EQ(objDecimal.GetValueString(true), "001");

    const CItem objHexadecimal = MakeItem(Hexadecimal, 2, "not a number");
    EXPECT_THROW((void)objHexadecimal.GetValueString(), CConversionError);
}
