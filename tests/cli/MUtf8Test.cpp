#include "cli/MUtf8.h"

#include <gtest/gtest.h>

TEST(MUtf8, EveryByteOfLatin1ComesBack) {
    std::string strBytes;
    for (int i = 0; i < 256; ++i) {
        strBytes += static_cast<char>(i);
    }
    EXPECT_EQ(MUtf8::ToLatin1(MUtf8::FromLatin1(strBytes)), strBytes);
}

TEST(MUtf8, ALetterBeyondAsciiHasTwoBytes) {
    EXPECT_EQ(MUtf8::FromLatin1("M\xFC"), "M\xC3\xBC");
    EXPECT_EQ(MUtf8::ToLatin1("M\xC3\xBC"), "M\xFC");
}

TEST(MUtf8, WhatHasNoByteIsRefused) {
    EXPECT_EQ(MUtf8::ToLatin1("\u20AC"), std::nullopt);
    EXPECT_EQ(MUtf8::ToLatin1("\U0001F600"), std::nullopt);
}

TEST(MUtf8, WhatIsNoUtf8IsRefused) {
    for (const char* const strText : {"\xFC", "\xC3", "\xC3(", "\x80", "\xC0\x80", "\xE2\x82",
                                      "\xED\xA0\x80", "\xF8\x88\x80\x80\x80", "\xF4\x90\x80\x80"}) {
        EXPECT_EQ(MUtf8::ToLatin1(strText), std::nullopt) << strText;
    }
}

TEST(MUtf8, LengthCountsCharacters) {
    EXPECT_EQ(MUtf8::Length(""), 0U);
    EXPECT_EQ(MUtf8::Length("M\xC3\xBCller"), 6U);
    EXPECT_EQ(MUtf8::Length("\u20AC\U0001F600"), 2U);
    EXPECT_EQ(MUtf8::Length("\xFCx"), 2U);
}

TEST(MUtf8, NothingThatSteersATerminalIsPrinted) {
    EXPECT_EQ(MUtf8::Printable("a\x1B[31mb"), "a<1B>[31mb");
    EXPECT_EQ(MUtf8::Printable("a\nb\x7F"), "a<0A>b<7F>");
    EXPECT_EQ(MUtf8::Printable("\xC2\x9B"), "<9B>");
    EXPECT_EQ(MUtf8::Printable("\xFF"), "<FF>");
    EXPECT_EQ(MUtf8::Printable("M\xC3\xBCller \u20AC"), "M\xC3\xBCller \u20AC");
}
