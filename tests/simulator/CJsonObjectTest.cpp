#include "simulator/CJsonObject.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace {

TEST(JsonObjectTest, HasItsMembersInTheOrderInWhichTheyAreAdded) {
    CJsonObject objInner;
    objInner.Flag("yes", true).Flag("no", false);
    CJsonObject objObject;
    EXPECT_EQ(objObject.Written(), "{}");
    objObject.Text("b", "x").Number("a", 12).Object("o", objInner).Texts("t", {"1", "2"});
    EXPECT_EQ(objObject.Written(),
              R"({"b": "x", "a": 12, "o": {"yes": true, "no": false}, "t": ["1", "2"]})");
}

TEST(JsonObjectTest, TakesTheMembersOfAnother) {
    CJsonObject objObject;
    objObject.Append(CJsonObject());
    EXPECT_EQ(objObject.Written(), "{}");
    objObject.Append(CJsonObject().Number("a", 1));
    EXPECT_EQ(objObject.Written(), R"({"a": 1})");
    objObject.Append(CJsonObject()).Append(CJsonObject().Number("b", 2));
    EXPECT_EQ(objObject.Written(), R"({"a": 1, "b": 2})");
    EXPECT_EQ(CJsonObject().Texts("none", {}).Written(), R"({"none": []})");
}

TEST(JsonObjectTest, ATextsBytesCanBeReadBackFromIt) {
    struct Row {
        std::string m_strBytes;
        const char* m_strText;
    };
    for (const Row& objRow :
         {Row{"{Z5;0|} ~", R"({"t": "{Z5;0|} ~"})"}, Row{R"(a"b\c)", R"({"t": "a\"b\\c"})"},
          Row{std::string("\0\x01\n\x1F\x7F\x80\xE4\xFF", 8),
              R"({"t": "\u0000\u0001\u000a\u001f\u007f\u0080\u00e4\u00ff"})"}}) {
        EXPECT_EQ(CJsonObject().Text("t", objRow.m_strBytes).Written(), objRow.m_strText);
    }
}

TEST(JsonObjectTest, ATimeHasSixDecimals) {
    using std::chrono::microseconds;
    const auto strWritten = [](microseconds p_iTime) {
        return CJsonObject().Seconds("s", p_iTime).Written();
    };
    EXPECT_EQ(strWritten(microseconds(0)), R"({"s": 0.000000})");
    EXPECT_EQ(strWritten(microseconds(5)), R"({"s": 0.000005})");
    EXPECT_EQ(strWritten(microseconds(12'034'567)), R"({"s": 12.034567})");
}

}  // namespace
