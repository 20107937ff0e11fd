#include "cli/MParagraph.h"

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;

TEST(MParagraph, BreaksAtBlanks) {
    EXPECT_EQ(MParagraph::Wrap("one two three", 7), (Lines{"one two", "three"}));
    EXPECT_EQ(MParagraph::Wrap("one two three", 6), (Lines{"one", "two", "three"}));
}

TEST(MParagraph, ALongWordHasItsOwnLine) {
    EXPECT_EQ(MParagraph::Wrap("a verylongword b", 4), (Lines{"a", "verylongword", "b"}));
}

TEST(MParagraph, LinesStay) {
    EXPECT_EQ(MParagraph::Wrap("a b\nc", 80), (Lines{"a b", "c"}));
    EXPECT_EQ(MParagraph::Wrap("", 80), (Lines{""}));
}

TEST(MParagraph, WithoutAWidthNothingIsBroken) {
    EXPECT_EQ(MParagraph::Wrap("one two three", 0), (Lines{"one two three"}));
}

TEST(MParagraph, PadsByCharacters) {
    EXPECT_EQ(MParagraph::Pad("\xC3\xBC", 3), "\xC3\xBC  ");
    EXPECT_EQ(MParagraph::Pad("long", 2), "long");
}
