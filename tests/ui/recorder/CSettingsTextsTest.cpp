#include "tests/ui/recorder/CSettingsTexts.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

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

TEST(CSettingsTextsTest, NamesTheLengthThatUsbIsAskedForAndTheFieldsInTheEnd) {
    EXPECT_EQ(Named("USB receives 54 at most; USB receives 13 at most\n"),
              "USB receives <s1> at most; USB receives 13 at most\n");
    const std::string strFields = "end: cmbA \"0\" -> \"1\"\nend: SeB \"0\" -> \"1\"\n";
    EXPECT_EQ(Named("end\n" + strFields + "end: txtC a\nend: file b\n"),
              "end\nend: <s1>\nend: file b\n");
    EXPECT_EQ(Named(strFields), strFields);
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
    const std::string strFields = "end: cmbA \"0\"\nend: SeB \"\"\nend: txtC \"s1 \"";
    const std::string strRecording = "{0+00|}\n{3 a \"b\"  |}\n" + strFields + "\n{0+00|}";
    objTexts.Learn(strRecording);
    EXPECT_EQ(objTexts.Table(),
              "s1 \"+00\"\ns2 \" a \"b\"  \"\ns3 \"" + strFields.substr(5) + "\"\n");
    const CSettingsTexts objAgain(objTexts.Table());
    EXPECT_EQ(objAgain.Table(), objTexts.Table());
    EXPECT_EQ(objAgain.Short(strRecording), "{0<s1>|}\n{3<s2>|}\nend: <s3>\n{0<s1>|}");
    EXPECT_EQ(objAgain.Long(objAgain.Short(strRecording)), strRecording);
    EXPECT_THROW((void)objAgain.Long("<s4>"), std::out_of_range);
}

}  // namespace
