#include "cli/CCommandLines.h"

#include "files/MLanFile.h"
#include "files/MParameterFile.h"
#include "model/MSettingText.h"
#include "tests/files/MSettingsFields.h"
#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::string>;
using MSettingsFields::With;

constexpr CSettingsFile::Format Dt1{&MParameterFile::BuildLines, &MParameterFile::StoreLine};
constexpr CSettingsFile::Format Dt2{&MLanFile::BuildLines, &MLanFile::StoreLine};

// Files at their defaults, line by line.
const std::string Parameters = MGolden::Parameters;
const std::string Adjustments = MGolden::Adjustments;
const std::string Port = MGolden::SocketPort;
const std::string Dhcp = MGolden::Dhcp;

CFileContent Read(const CSettingsFile::Format& p_objFormat, const Texts& p_strLines) {
    std::string strBytes;
    for (const std::string& strLine : p_strLines) {
        strBytes += strLine + "\r\n";
    }
    return CCommandLines(p_objFormat).Read(strBytes);
}

Texts Problems(const CFileContent& p_objContent) {
    Texts strTexts;
    for (const CFileProblem& objProblem : p_objContent.m_objProblems) {
        strTexts.push_back(objProblem.Text());
    }
    return strTexts;
}

Texts ProblemsOf(const CSettingsFile::Format& p_objFormat, const Texts& p_strLines) {
    return Problems(Read(p_objFormat, p_strLines));
}

std::string Length(const std::string& p_strLine) {
    return std::to_string(p_strLine.size()) + " characters";
}

std::string Value(const CFileContent& p_objContent, const char* p_strName) {
    const MSettings::Row& objRow = MSettings::Get(p_strName);
    if (!p_objContent.m_objSnapshot.IsKnown(objRow)) {
        return "(not known)";
    }
    return MSettingText::Show(objRow, p_objContent.m_objSnapshot.Items()).value_or("(none)");
}

}  // namespace

TEST(CCommandLines, EveryFileThatTheWindowSavesIsRight) {
    for (const char* const strName :
         {"golden/parameter-default.dt1", "golden/parameter-highest.dt1",
          "golden/parameter-lowest.dt1"}) {
        EXPECT_EQ(Problems(CCommandLines(Dt1).Read(MSettingsFields::Content(strName))), Texts{})
            << strName;
    }
    for (const char* const strName : {"golden/lan-default.dt2", "golden/lan-highest.dt2"}) {
        EXPECT_EQ(Problems(CCommandLines(Dt2).Read(MSettingsFields::Content(strName))), Texts{})
            << strName;
    }
}

TEST(CCommandLines, EveryFileThatTheWindowRefusesIsWrong) {
    for (const std::string& strName : MSettingsFields::BrokenFiles(".dt1")) {
        EXPECT_NE(Problems(CCommandLines(Dt1).Read(MSettingsFields::Content(strName))), Texts{})
            << strName;
    }
    for (const std::string& strName : MSettingsFields::BrokenFiles(".dt2")) {
        EXPECT_NE(Problems(CCommandLines(Dt2).Read(MSettingsFields::Content(strName))), Texts{})
            << strName;
    }
}

TEST(CCommandLines, ReadsTheValues) {
    const CFileContent objContent =
        Read(Dt1, {With(Parameters, 19, "0F"), With(Adjustments, 7, "-015")});
    EXPECT_EQ(Problems(objContent), Texts{});
    EXPECT_EQ(Value(objContent, "code-1"), "0F");
    EXPECT_EQ(Value(objContent, "feed-adj"), "-1.5");
    EXPECT_EQ(Value(objContent, "euro-code"), "B0");
    EXPECT_EQ(Value(objContent, "country"), "(not known)");
    EXPECT_EQ(Value(objContent, "ip-address"), "(not known)");
}

TEST(CCommandLines, OnlyWhatALineHoldsIsKnown) {
    const CFileContent objContent = Read(Dt1, {Adjustments});
    EXPECT_EQ(Problems(objContent), Texts{});
    EXPECT_EQ(Value(objContent, "feed-adj"), "0.0");
    EXPECT_EQ(Value(objContent, "speed"), "(not known)");
    const CFileContent objLan = Read(Dt2, {Port});
    EXPECT_EQ(Value(objLan, "socket-port"), "8000");
    EXPECT_EQ(Value(objLan, "dhcp"), "(not known)");
}

TEST(CCommandLines, TheShortFormHasNoHostName) {
    const CFileContent objContent = Read(Dt2, {Dhcp.substr(0, 38) + "|}"});
    EXPECT_EQ(Problems(objContent), Texts{});
    EXPECT_EQ(Value(objContent, "dhcp-client-id"), std::string(32, 'F'));
    EXPECT_EQ(Value(objContent, "dhcp-host-name"), "(not known)");
}

TEST(CCommandLines, AHostNameMayHaveLettersBeyondAscii) {
    const CFileContent objContent = Read(Dt2, {With(Dhcp, 40, "M\xFCller")});
    EXPECT_EQ(Problems(objContent), Texts{});
    EXPECT_EQ(Value(objContent, "dhcp-host-name"), "M\xFCller");
}

TEST(CCommandLines, AHostNameThatBreaksACommandIsWrong) {
    EXPECT_EQ(
        ProblemsOf(Dt2, {With(Dhcp, 40, "a|}b")}),
        (Texts{"line 1: dhcp-host-name: \"a|}b\" is none of its values (at most 16 characters, "
               "none of { | })"}));
}

TEST(CCommandLines, ValuesThatAreNoneAreToldWithTheirLineAndSetting) {
    EXPECT_EQ(
        ProblemsOf(Dt1, {With(Parameters, 9, "9"), With(With(Adjustments, 7, "?"), 34, "41")}),
        (Texts{"line 2: feed-adj: \"?000\" is none of its values (-50.0 to 50.0)",
               "line 2: threshold-r: \"41\" is none of its values (0.0 to 4.0)",
               "line 1: speed: \"9\" is none of its values (2400bps, 4800bps, 9600bps, "
               "19200bps, 38400bps, 115200bps)"}));
    EXPECT_EQ(ProblemsOf(Dt2, {"{IP;2,192,168,010,256|}"}),
              (Texts{"line 1: ip-address: \"192.168.010.256\" is none of its values (0.0.0.0 to "
                     "255.255.255.255)"}));
}

TEST(CCommandLines, ADigitThatIsReadOverIsTold) {
    EXPECT_EQ(ProblemsOf(Dt1, {With(Parameters, 20, "G")}),
              (Texts{"line 1: code-1: \"1G\" is read as 01"}));
    EXPECT_EQ(ProblemsOf(Dt1, {With(Adjustments, 8, " 05")}),
              (Texts{"line 1: feed-adj: \"+ 05\" is read as 0.5"}));
    EXPECT_EQ(ProblemsOf(Dt1, {With(Adjustments, 28, "+05")}),
              (Texts{"line 1: ribbon-adj-fw: \"+05\" is read as -5"}));
}

TEST(CCommandLines, LowerCaseDigitsAreRight) {
    EXPECT_EQ(ProblemsOf(Dt1, {With(Parameters, 20, "b")}), Texts{});
}

TEST(CCommandLines, SeparatorsAndEndsAreLookedAt) {
    const std::size_t iEnd = Adjustments.size() - 1;
    EXPECT_EQ(ProblemsOf(Dt1, {With(Parameters, 6, ";"), With(Adjustments, iEnd, "}}")}),
              (Texts{"line 1: column 6 has \";\" where \",\" belongs",
                     "line 2: column " + std::to_string(iEnd) + " has \"}\" where \"|\" belongs"}));
    EXPECT_EQ(ProblemsOf(Dt2, {"{IP;3.000,000,000,000|}"}),
              (Texts{"line 1: column 6 has \".\" where \",\" belongs"}));
    EXPECT_EQ(ProblemsOf(Dt2, {Dhcp.substr(0, 38) + "??"}),
              (Texts{"line 1: column 39 has \"?\" where \"|\" belongs",
                     "line 1: column 40 has \"?\" where \"}\" belongs"}));
}

TEST(CCommandLines, AWrongValueHidesNothingElseInItsLine) {
    EXPECT_EQ(ProblemsOf(Dt1, {With(With(Parameters, 6, ";"), 9, "x")}),
              (Texts{"line 1: column 6 has \";\" where \",\" belongs",
                     "line 1: speed: \"x\" is none of its values (2400bps, 4800bps, 9600bps, "
                     "19200bps, 38400bps, 115200bps)"}));
}

TEST(CCommandLines, LinesThatAreNoneAreTold) {
    EXPECT_EQ(
        ProblemsOf(Dt1, {Parameters + "x", "", "{IP;2,192,168,010,020|}", With(Adjustments, 5, "3"),
                         Adjustments.substr(0, 20), "{Z"}),
        (Texts{"line 1: it has " + Length(Parameters + "x") + " in place of " +
                   std::to_string(Parameters.size()),
               "line 2: it is empty", "line 3: no line of such a file begins with \"{IP;\"",
               "line 4: no line of such a file begins with \"{Z2;3\"",
               "line 5: it has 20 characters in place of " + std::to_string(Adjustments.size()),
               "line 6: no line of such a file begins with \"{Z\""}));
    EXPECT_EQ(ProblemsOf(Dt2, {Dhcp + "x", "{IP;2,1|}"}),
              (Texts{"line 1: it has 58 characters in place of 57",
                     "line 2: it has 9 characters in place of 23"}));
}

TEST(CCommandLines, SettingsThatStandTwiceAreTold) {
    const CFileContent objContent = Read(Dt1, {Adjustments, With(Adjustments, 8, "005")});
    EXPECT_EQ(Problems(objContent), (Texts{"line 2: its settings stand in an earlier line, too"}));
    EXPECT_EQ(Value(objContent, "feed-adj"), "0.5");
}

TEST(CCommandLines, AnEmptyFileIsWrong) {
    EXPECT_EQ(ProblemsOf(Dt1, {}), (Texts{"the file is empty"}));
}

TEST(CCommandLines, AnEndlessLineEndsTheReading) {
    const Texts strProblems = Problems(CCommandLines(Dt1).Read(std::string(1'000'000, 'x')));
    EXPECT_EQ(strProblems, (Texts{"line 1: no line of such a file begins with \"xxxx\""}));
}

TEST(CCommandLines, AfterManyProblemsTheRestIsLeft) {
    const Texts strProblems = ProblemsOf(Dt1, Texts(10'000, "x"));
    EXPECT_EQ(strProblems.size(), CCommandLines::MostProblems + 1);
    EXPECT_EQ(strProblems.back(), "what follows was not looked at");
}
