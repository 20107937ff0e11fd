#include "tests/ui/recorder/CSettingsTexts.h"

#include <gtest/gtest.h>

namespace {

/// p_strRecording with the names of all that is in it.
std::string Named(const std::string& p_strRecording) {
    CSettingsTexts objTexts;
    objTexts.Learn(p_strRecording);
    return objTexts.Short(p_strRecording);
}

TEST(CSettingsTextsTest, NamesTheFieldsOfCommandsAndAnswersInTheirOrder) {
    EXPECT_EQ(Named("LAN sends {Z2;1,0021|}\nLAN sends {Z2;2,+00|}\nend: {Z2;1,0021|}<0D><0A>\n"),
              "LAN sends {Z2;1,<s1>|}\nLAN sends {Z2;2,<s2>|}\nend: {Z2;1,<s1>|}<0D><0A>\n");
    EXPECT_EQ(Named("COM gets {4 7 |}; done {3a"), "COM gets {4<s1>|}; done {3<s2>");
}

TEST(CSettingsTextsTest, NamesTheRestOfWhatWasCutInTwo) {
    EXPECT_EQ(Named("COM sends {Z2;2,+000\npress btnSet\nCOM sends +01-00|}\n"),
              "COM sends {Z2;2,<s1>\npress btnSet\nCOM sends <s2>|}\n");
}

TEST(CSettingsTextsTest, LeavesEverythingElse) {
    for (const char* const strText :
         {"COM sends {Z5;0|}\n", "LAN gets <01><02>000000000<03><04>\n", "COM gets 00000000<03>\n",
          "COM sends 1014|}\n", "LAN sends {IP;2,192,168,010,020|}\n", "{Z2;1,|}", ""}) {
        EXPECT_EQ(Named(strText), strText);
    }
}

TEST(CSettingsTextsTest, ARunWithoutANameStaysAsItIs) {
    CSettingsTexts objTexts;
    objTexts.Learn("{0+00|}");
    EXPECT_EQ(objTexts.Short("{0+00|}{0+01|}"), "{0<s1>|}{0+01|}");
}

TEST(CSettingsTextsTest, TheTableGivesTheSameNames) {
    CSettingsTexts objTexts;
    objTexts.Learn("{0+00|}\n{3 a \"b\"  |}\n");
    EXPECT_EQ(objTexts.Table(), "s1 \"+00\"\ns2 \" a \"b\"  \"\n");
    const CSettingsTexts objAgain(objTexts.Table());
    EXPECT_EQ(objAgain.Table(), objTexts.Table());
    EXPECT_EQ(objAgain.Short("{3 a \"b\"  |}"), "{3<s2>|}");
}

}  // namespace
