#include "model/MNumber.h"

#include "model/CConversionError.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <locale>
#include <sstream>

namespace {

struct Reading {
    std::string m_strText;
    double m_dNumber;
};

const Reading Readings[] = {{"0", 0},         {"7", 7},         {"-7", -7},     {"+7", 7},
                            {"007", 7},       {" 7", 7},        {"7 ", 7},      {" \t 7 \t ", 7},
                            {" -7 ", -7},     {"1.5", 1.5},     {".5", 0.5},    {"5.", 5},
                            {"-.25", -0.25},  {"+.25", 0.25},   {"1e3", 1000},  {"1E3", 1000},
                            {"1e+3", 1000},   {"25e-1", 2.5},   {".5e1", 5},    {"5.e1", 50},
                            {"-0", 0},        {"32768", 32768}, {"0.1", 0.1},   {"1e-400", 0},
                            {"1e308", 1e308}, {"0e999", 0},     {"-1e-400", 0}, {"1e00003", 1000}};

const std::string NoNumbers[] = {"",      " ",     "\t",
                                 "abc",   "--5",   "+-5",
                                 "-+5",   "++5",   "- 5",
                                 "+ 5",   "+",     "-",
                                 ".",     "-.",    "e",
                                 "e5",    ".e5",   "1e",
                                 "1e+",   "1e-",   "1e ",
                                 "1e1.5", "1e1e1", "1 2",
                                 "1. 5",  "0x10",  "&H10",
                                 "inf",   "-inf",  "infinity",
                                 "nan",   "NaN",   "1,5",
                                 "1.2.3", "1..2",  "5-",
                                 "12a",   "1e400", "-1e400",
                                 "\n5",   "5\r\n", "1'000",
                                 "0b1",   "1f",    std::string("\xA0") + "5",
                                 "\xB2",  "1d5",   std::string("5\0", 2)};

/// Writes numbers as "1,5": what breaks every reading that asks the locale.
class CCommaPunctuation : public std::numpunct<char> {
protected:
    [[nodiscard]] char do_decimal_point() const override { return ','; }
    [[nodiscard]] char do_thousands_sep() const override { return '.'; }
    [[nodiscard]] std::string do_grouping() const override { return "\3"; }
};

/// A comma-decimal locale as the global one, of C++ always and of C where the system has one.
class CCommaLocale {
public:
    CCommaLocale()
        : m_strOldC(std::setlocale(LC_ALL, nullptr))
        , m_objOld(
              std::locale::global(std::locale(std::locale::classic(), new CCommaPunctuation))) {
        for (const char* strName : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "German"}) {
            if (std::setlocale(LC_ALL, strName) != nullptr) {
                break;
            }
        }
    }
    ~CCommaLocale() {
        std::locale::global(m_objOld);
        std::setlocale(LC_ALL, m_strOldC.c_str());
    }
    CCommaLocale(const CCommaLocale&) = delete;
    CCommaLocale(CCommaLocale&&) = delete;
    CCommaLocale& operator=(const CCommaLocale&) = delete;
    CCommaLocale& operator=(CCommaLocale&&) = delete;

private:
    std::string m_strOldC;
    std::locale m_objOld;
};

/// ToDouble of a text: a string alone could also become a CItemValue.
double NumberOf(std::string_view p_strText) {
    return MNumber::ToDouble(CItemValue(std::string(p_strText)));
}

void ExpectReadings() {
    for (const Reading& objReading : Readings) {
        SCOPED_TRACE("\"" + objReading.m_strText + "\"");
        EXPECT_TRUE(MNumber::IsNumber(objReading.m_strText));
        EXPECT_NO_THROW({
            EXPECT_EQ(NumberOf(objReading.m_strText), objReading.m_dNumber);
            EXPECT_EQ(MNumber::ToDouble(CItemValue(objReading.m_strText)), objReading.m_dNumber);
        });
    }
}

void ExpectRefusals() {
    for (const std::string& strText : NoNumbers) {
        SCOPED_TRACE("\"" + strText + "\"");
        EXPECT_FALSE(MNumber::IsNumber(strText));
        EXPECT_THROW(NumberOf(strText), CConversionError);
        EXPECT_THROW(MNumber::ToDouble(CItemValue(strText)), CConversionError);
        EXPECT_THROW(MNumber::ToInt16(strText), CConversionError);
        EXPECT_THROW(MNumber::ToInt32(strText), CConversionError);
    }
}

void ExpectTexts() {
    EXPECT_EQ(MNumber::ToText(1.5), "1.5");
    EXPECT_EQ(MNumber::ToText(1234567.0), "1234567");
    EXPECT_EQ(MNumber::MagnitudeDigits(-1234567.0), "1234567");
    EXPECT_EQ(MNumber::HexText(65535.0), "FFFF");
}

}  // namespace

TEST(MNumber, ReadsBlanksOneSignDigitsOnePointAndAnExponent) {
    ExpectReadings();
}

TEST(MNumber, RefusesEveryOtherText) {
    ExpectRefusals();
}

TEST(MNumber, NamesTheTextThatIsNoNumber) {
    try {
        NumberOf("12a");
        ADD_FAILURE() << "nothing was thrown";
    } catch (const CConversionError& objError) {
        EXPECT_NE(std::string(objError.what()).find("\"12a\""), std::string::npos);
    }
}

TEST(MNumber, TellsTooSmallFromTooLargeHoweverTheNumberIsWritten) {
    const std::string strManyZeros(400, '0');
    EXPECT_EQ(NumberOf("0." + strManyZeros + "1"), 0);
    EXPECT_EQ(NumberOf("-0." + strManyZeros + "1"), 0);
    EXPECT_EQ(NumberOf("1" + strManyZeros + "e-400"), 1);
    EXPECT_EQ(NumberOf("0." + strManyZeros + "1e401"), 1);
    EXPECT_EQ(NumberOf(strManyZeros + "5"), 5);
    EXPECT_EQ(NumberOf("0." + strManyZeros + "1e5"), 0);
    EXPECT_EQ(NumberOf("1" + strManyZeros + "e-99999999999999999999"), 0);
    EXPECT_FALSE(MNumber::IsNumber("1e+99999999999999999999"));
    EXPECT_FALSE(MNumber::IsNumber("1" + strManyZeros));
    EXPECT_FALSE(MNumber::IsNumber("1" + strManyZeros + "e-5"));
    EXPECT_EQ(NumberOf("0." + strManyZeros + "1e+5"), 0);
    EXPECT_FALSE(MNumber::IsNumber("0." + strManyZeros + "1e+800"));
    EXPECT_FALSE(MNumber::IsNumber("1e+309"));
}

TEST(MNumber, WritesWholeNumbersInFullAsLongAsTheyAreExact) {
    EXPECT_EQ(MNumber::ToText(999999999999999.0), "999999999999999");
    EXPECT_EQ(MNumber::ToText(1e15), "1e+15");
    EXPECT_EQ(MNumber::ToText(-1e15), "-1e+15");
    EXPECT_EQ(MNumber::ToText(1.5e15), "1.5e+15");
}

TEST(MNumber, EndsWhereItsTextEnds) {
    const std::string_view strText = "12345e+67";
    EXPECT_TRUE(MNumber::IsNumber(strText.substr(0, 2)));
    EXPECT_TRUE(MNumber::IsNumber(strText.substr(0, 5)));
    EXPECT_FALSE(MNumber::IsNumber(strText.substr(0, 6)));
    EXPECT_FALSE(MNumber::IsNumber(strText.substr(0, 7)));
    EXPECT_TRUE(MNumber::IsNumber(strText.substr(0, 8)));
    EXPECT_FALSE(MNumber::IsNumber(strText.substr(0, 0)));
    EXPECT_EQ(MNumber::ReadHex(strText.substr(0, 1)), 1U);
}

TEST(MNumber, ReadsAndWritesTheSameInACommaDecimalLocale) {
    const std::string strBefore = std::setlocale(LC_ALL, nullptr);
    {
        const CCommaLocale objLocale;
        std::ostringstream objStream;
        objStream << 1234.5;
        ASSERT_EQ(objStream.str(), "1.234,5") << "the locale is in force";

        ExpectReadings();
        ExpectRefusals();
        ExpectTexts();
    }
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), strBefore);
    ExpectTexts();
}

TEST(MNumber, TakesAHeldNumberAsItIsAndAnEmptyValueAsZero) {
    EXPECT_EQ(MNumber::ToDouble(CItemValue(2.25)), 2.25);
    EXPECT_EQ(MNumber::ToDouble(CItemValue(-3)), -3);
    EXPECT_EQ(MNumber::ToDouble(CItemValue()), 0);
    EXPECT_EQ(MNumber::ToInt16(CItemValue()), 0);
    EXPECT_EQ(MNumber::ToInt32(CItemValue()), 0);
    EXPECT_EQ(MNumber::ToText(CItemValue()), "");
    EXPECT_EQ(MNumber::ToText(CItemValue(" as it stands ")), " as it stands ");
    EXPECT_EQ(MNumber::ToText(CItemValue(-3)), "-3");
}

TEST(MNumber, RoundsTiesToEven) {
    const struct {
        double m_dNumber;
        int m_iWhole;
        const char* m_strMagnitude;
    } arrCases[] = {
        {0.5, 0, "0"},   {1.5, 2, "2"},   {2.5, 2, "2"},  {3.5, 4, "4"},  {-0.5, 0, "0"},
        {-1.5, -2, "2"}, {-2.5, -2, "2"}, {2.49, 2, "2"}, {2.51, 3, "3"}, {-2.51, -3, "3"},
    };
    for (const auto& objCase : arrCases) {
        SCOPED_TRACE(objCase.m_dNumber);
        EXPECT_EQ(MNumber::ToInt16(objCase.m_dNumber), objCase.m_iWhole);
        EXPECT_EQ(MNumber::ToInt32(objCase.m_dNumber), objCase.m_iWhole);
        EXPECT_EQ(MNumber::RoundToInt32(objCase.m_dNumber), objCase.m_iWhole);
        EXPECT_EQ(MNumber::MagnitudeDigits(objCase.m_dNumber), objCase.m_strMagnitude);
    }
    EXPECT_EQ(MNumber::ToInt16("2.5"), 2);
    EXPECT_EQ(MNumber::ToInt32("3.5"), 4);
    EXPECT_EQ(MNumber::HexText(10.5), "A");
    EXPECT_EQ(MNumber::HexText(11.5), "C");
}

TEST(MNumber, HoldsSixteenBitsExactly) {
    EXPECT_EQ(MNumber::ToInt16("32767"), 32767);
    EXPECT_EQ(MNumber::ToInt16("-32768"), -32768);
    EXPECT_EQ(MNumber::ToInt16("32767.4"), 32767);
    EXPECT_EQ(MNumber::ToInt16("-32768.5"), -32768);
    for (const char* strText : {"32768", "-32769", "32767.5", "-32768.6", "65535", "1e10"}) {
        EXPECT_THROW(MNumber::ToInt16(strText), CConversionError) << strText;
    }
}

TEST(MNumber, HoldsThirtyTwoBitsExactly) {
    EXPECT_EQ(MNumber::ToInt32("2147483647"), 2147483647);
    EXPECT_EQ(MNumber::ToInt32("-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(MNumber::ToInt32("2147483647.4"), 2147483647);
    for (const char* strText : {"2147483648", "-2147483649", "2147483647.5", "1e300", "-1e300"}) {
        EXPECT_THROW(MNumber::ToInt32(strText), CConversionError) << strText;
    }
    EXPECT_EQ(MNumber::RoundToInt32(2147483647.0), 2147483647);
    EXPECT_THROW(MNumber::RoundToInt32(2147483648.0), CConversionError);
    EXPECT_THROW(MNumber::RoundToInt32(std::numeric_limits<double>::quiet_NaN()), CConversionError);
    EXPECT_THROW(MNumber::RoundToInt32(std::numeric_limits<double>::infinity()), CConversionError);
}

TEST(MNumber, ReadsHexadecimalDigitsUpToTheFirstThatIsNone) {
    const struct {
        const char* m_strText;
        std::uint32_t m_iNumber;
    } arrCases[] = {
        {"B0", 176},
        {"b0", 176},
        {"", 0},
        {"1G", 1},
        {"ZZ", 0},
        {"1B", 27},
        {" 1B", 27},
        {"1 B", 27},
        {"1B ", 27},
        {"\t1\tB", 27},
        {"FFFF", 65535},
        {"7FFF", 32767},
        {"8000", 32768},
        {"0x10", 0},
        {"-5", 0},
        {"A.5", 10},
        {"0000000B0", 176},
        {"FFFFFFFF", 4294967295U},
        {"100000000", 4294967295U},
        {"FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF", 4294967295U},
        {"abcdef", 0xABCDEF},
        {"ABCDEF", 0xABCDEF},
        {"g", 0},
        {"@", 0},
        {"`", 0},
    };
    for (const auto& objCase : arrCases) {
        EXPECT_EQ(MNumber::ReadHex(objCase.m_strText), objCase.m_iNumber) << objCase.m_strText;
    }
}

TEST(MNumber, WritesAWholeNumberWithoutAPointAndAnyOtherInItsShortestForm) {
    const struct {
        double m_dNumber;
        const char* m_strText;
    } arrCases[] = {
        {0, "0"},
        {-0.0, "0"},
        {5, "5"},
        {-5, "-5"},
        {100, "100"},
        {1e6, "1000000"},
        {65535, "65535"},
        {123456789012345, "123456789012345"},
        {0.1, "0.1"},
        {-2.5, "-2.5"},
        {1.0 / 3, "0.3333333333333333"},
        {1e300, "1e+300"},
    };
    for (const auto& objCase : arrCases) {
        EXPECT_EQ(MNumber::ToText(objCase.m_dNumber), objCase.m_strText);
    }
}

TEST(MNumber, WritesTheMagnitudeAsDigitsAlone) {
    EXPECT_EQ(MNumber::MagnitudeDigits(0), "0");
    EXPECT_EQ(MNumber::MagnitudeDigits(-15), "15");
    EXPECT_EQ(MNumber::MagnitudeDigits(1e20), "100000000000000000000");
    EXPECT_EQ(MNumber::MagnitudeDigits(std::numeric_limits<double>::max()).size(), 309U);
}

TEST(MNumber, WritesUpperCaseHexadecimalWithoutPrefix) {
    EXPECT_EQ(MNumber::HexText(0), "0");
    EXPECT_EQ(MNumber::HexText(10), "A");
    EXPECT_EQ(MNumber::HexText(27), "1B");
    EXPECT_EQ(MNumber::HexText(176), "B0");
    EXPECT_EQ(MNumber::HexText(0xABCDEF), "ABCDEF");
    EXPECT_EQ(MNumber::HexText(4294967295.0), "FFFFFFFF");
    EXPECT_EQ(MNumber::HexText(-1), "FFFFFFFF");
    EXPECT_EQ(MNumber::HexText(-2147483648.0), "80000000");
    EXPECT_THROW(MNumber::HexText(4294967296.0), CConversionError);
    EXPECT_THROW(MNumber::HexText(-2147483649.0), CConversionError);
    EXPECT_THROW(MNumber::HexText(std::numeric_limits<double>::quiet_NaN()), CConversionError);
}

TEST(MNumber, GivesTheSignOfANumberOrOfItsText) {
    EXPECT_EQ(MNumber::SignOf(0), "+");
    EXPECT_EQ(MNumber::SignOf(-0.5), "-");
    EXPECT_EQ(MNumber::SignOf(3), "+");
    EXPECT_EQ(MNumber::SignOf(-3), "-");
    EXPECT_EQ(MNumber::SignOf("-0"), "+");
    EXPECT_EQ(MNumber::SignOf("-7"), "-");
    EXPECT_EQ(MNumber::SignOf("7"), "+");
    EXPECT_EQ(MNumber::SignOf(CItemValue()), "+");
    EXPECT_THROW(MNumber::SignOf("-"), CConversionError);
    EXPECT_THROW(MNumber::SignOf("minus"), CConversionError);
}
