#include "cli/CProgram.h"

#include "cli/MCommandTable.h"
#include "tests/cli/CCliFixture.h"

#include <CLI/CLI.hpp>

namespace {

class CProgramTest : public CCliFixture {};

TEST_F(CProgramTest, EveryCommandIsFoundByItsNameAndHasATable) {
    const CProgram objProgram(Environment());
    const auto objTables = objProgram.Tables().get_subcommands({});
    ASSERT_EQ(objTables.size(), MCommandTable::All().size());
    for (std::size_t i = 0; i < objTables.size(); ++i) {
        const MCommandTable::Row& objRow = MCommandTable::All()[i];
        EXPECT_EQ(objTables[i]->get_name(), objRow.m_strName);
        EXPECT_EQ(MCommandTable::Find(objRow.m_strName), &objRow);
    }
    EXPECT_EQ(MCommandTable::Find("no-such-command"), nullptr);
}

TEST_F(CProgramTest, TellsItsVersion) {
    EXPECT_EQ(Run({"--version"}).m_strOut, std::string("varden ") + VARDEN_VERSION + "\n");
    const Ran objRan = RunJson({"--version"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson, (Json{{"version", VARDEN_VERSION}}));
}

TEST_F(CProgramTest, TellsItsHelp) {
    const Ran objRan = Run({"--help"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_TRUE(Has(objRan.m_strOut, "Usage: varden COMMAND"));
    EXPECT_TRUE(Has(objRan.m_strOut, "Exit codes:"));
    EXPECT_EQ(RunJson({"--help"}).m_objJson["help"], objRan.m_strOut);
}

TEST_F(CProgramTest, EveryCommandHasHelpThatNamesEverythingInItsTable) {
    const CProgram objProgram(Environment());
    for (const CLI::App* const objTable : objProgram.Tables().get_subcommands({})) {
        SCOPED_TRACE(objTable->get_name());
        const Ran objRan = Run({objTable->get_name(), "--help"});
        EXPECT_EQ(objRan.m_iCode, 0);
        EXPECT_TRUE(objRan.m_strOut.starts_with(objTable->get_description() + "\n"));
        EXPECT_TRUE(Has(objRan.m_strOut, "\nUsage: varden " + objTable->get_name() + " "));
        EXPECT_TRUE(Has(objRan.m_strOut, "\nExamples:\n  "));
        for (const CLI::Option* const objOption : objTable->get_options()) {
            const std::string strName = objOption->get_positional()
                                            ? "  " + objOption->get_single_name()
                                            : "--" + objOption->get_lnames().front();
            EXPECT_TRUE(Has(objRan.m_strOut, strName)) << strName;
            EXPECT_TRUE(objOption->get_description().ends_with('.')) << strName;
        }
        EXPECT_EQ(RunJson({objTable->get_name(), "--help"}).m_objJson["help"], objRan.m_strOut);
    }
}

TEST_F(CProgramTest, NoLineOfHelpIsWiderThanATerminal) {
    std::vector<Arguments> strCalls{{"--help"}};
    for (const MCommandTable::Row& objRow : MCommandTable::All()) {
        strCalls.push_back({std::string(objRow.m_strName), "-h"});
    }
    for (const Arguments& strCall : strCalls) {
        std::istringstream objLines(Run(strCall).m_strOut);
        for (std::string strLine; std::getline(objLines, strLine);) {
            EXPECT_LE(strLine.size(), 80U) << strLine;
        }
    }
}

TEST_F(CProgramTest, JsonMayBeAskedForBeforeAndBehindTheCommand) {
    EXPECT_EQ(Run({"--json", "list", "speed"}).m_strOut, Run({"list", "speed", "--json"}).m_strOut);
}

TEST_F(CProgramTest, JsonTakesNoValueAndIsMeantWithOneAllTheSame) {
    std::ostringstream objOut;
    std::ostringstream objError;
    COutput objOutput(objOut, objError, m_objInterrupt);
    EXPECT_EQ(CProgram(Environment()).Run({"list", "--json=false"}, objOutput), MExitCode::Wrong);
    EXPECT_EQ(CJsonSchema::OfOutputs().Complaint(objOut.str()), "");
}

TEST_F(CProgramTest, BehindTheEndOfTheOptionsJsonIsAName) {
    std::ostringstream objOut;
    std::ostringstream objError;
    COutput objOutput(objOut, objError, m_objInterrupt);
    EXPECT_EQ(CProgram(Environment()).Run({"list", "--", "--json"}, objOutput), MExitCode::Wrong);
    EXPECT_EQ(objOut.str(), "");
    EXPECT_TRUE(Has(objError.str(), "There is no setting \"--json\""));
}

TEST_F(CProgramTest, WrongCommandLinesAreTold) {
    const std::vector<std::pair<Arguments, std::string>> arrCases{
        {{}, "The command is missing"},
        {{"lst"}, "There is no command \"lst\""},
        {{"--lst"}, "There is no option \"--lst\""},
        {{"list", "--lst"}, "This is no command line of varden list"},
        {{"file"}, "This is no command line of varden file"},
        {{"file", "a", "b"}, "This is no command line of varden file"},
        {{"file", "a", "--save"}, "This is no command line of varden file"},
        {{"file", "a", "--force"}, "This is no command line of varden file"},
        {{"file", "a", "--check", "--save", "b"}, "This is no command line of varden file"},
        {{"diff", "a"}, "This is no command line of varden diff"},
        {{"ports", "a"}, "This is no command line of varden ports"},
        {{"list", "diff", "a", "b"}, "There is no setting \"diff\""},
    };
    for (const auto& [strArguments, strWhat] : arrCases) {
        SCOPED_TRACE(strWhat);
        const Ran objRan = Run(strArguments);
        EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
        EXPECT_EQ(objRan.m_strOut, "");
        EXPECT_TRUE(objRan.m_strError.starts_with("varden: " + strWhat)) << objRan.m_strError;
        EXPECT_EQ(std::ranges::count(objRan.m_strError, '\n'), 1);
        Arguments strWithJson = strArguments;
        strWithJson.insert(strWithJson.begin(), "--json");
        const Ran objJson = Run(strWithJson);
        EXPECT_EQ(objJson.m_iCode, MExitCode::Wrong);
        EXPECT_EQ(objJson.m_objJson["error"]["what"], strWhat);
        EXPECT_NE(objJson.m_objJson["error"]["hint"], nullptr);
    }
}

TEST_F(CProgramTest, StandardOutputThatTakesNothingIsAFailure) {
    std::ostringstream objOut;
    std::ostringstream objError;
    objOut.setstate(std::ios::badbit);
    COutput objOutput(objOut, objError, m_objInterrupt);
    EXPECT_EQ(CProgram(Environment()).Run({"list"}, objOutput), MExitCode::Failed);
    EXPECT_TRUE(Has(objError.str(), "Standard output does not take"));
}

TEST_F(CProgramTest, WhatNobodyExpectsIsAFailureToo) {
    class CBrokenPorts : public ISerialPortLister {
    public:
        std::vector<CSerialPortEntry> SerialPorts() override { throw std::runtime_error("broken"); }
    } objBroken;
    std::ostringstream objOut;
    std::ostringstream objError;
    COutput objOutput(objOut, objError, m_objInterrupt);
    CProgram objProgram(Environment(m_objFiles, objBroken, {}));
    EXPECT_EQ(objProgram.Run({"ports", "--json"}, objOutput), MExitCode::Failed);
    EXPECT_EQ(CJsonSchema::OfOutputs().Complaint(objOut.str()), "");
    EXPECT_EQ(Json::parse(objOut.str())["error"]["cause"], "broken");
}

}  // namespace
