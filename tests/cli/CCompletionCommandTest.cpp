#include "cli/CWordTable.h"
#include "cli/MArgumentKind.h"
#include "cli/MCompletionScript.h"
#include "tests/cli/CCliFixture.h"

#include <CLI/CLI.hpp>

#include <array>
#include <cstdio>

namespace {

/// What a shell prints that runs p_strScript, line by line.
std::vector<std::string> Shell(const std::string& p_strCommand) {
    std::vector<std::string> strLines;
    std::FILE* const objPipe = ::popen((p_strCommand + " 2>&1").c_str(), "r");
    std::array<char, 1024> arrLine{};
    while (std::fgets(arrLine.data(), static_cast<int>(arrLine.size()), objPipe) != nullptr) {
        std::string strLine = arrLine.data();
        strLine.erase(strLine.find_last_not_of("\r\n") + 1);
        strLines.push_back(strLine);
    }
    EXPECT_EQ(::pclose(objPipe), 0) << ::testing::PrintToString(strLines);
    return strLines;
}

class CCompletionCommandTest : public CCliFixture {
protected:
    using Words = std::vector<std::string>;

    std::string Script(const std::string& p_strShell) {
        return Run({"completion", p_strShell}).m_strOut;
    }

    /// What bash offers for the last word.
    Words Bash(const std::string& p_strScript, const Words& p_strWords) {
        Make("script", p_strScript);
        std::string strWords;
        for (const std::string& strWord : p_strWords) {
            strWords += " '" + strWord + "'";
        }
        Make("run",
             "source ./script\nCOMP_WORDS=(varden" + strWords +
                 ")\nCOMP_CWORD=" + std::to_string(p_strWords.size()) +
                 "\n_varden\n((${#COMPREPLY[@]} == 0)) || printf '%s\\n' \"${COMPREPLY[@]}\"\n");
        return Shell("cd " + m_objFolder.Path() + " && bash -u ./run");
    }
    Words Bash(const Words& p_strWords) { return Bash(Script("bash"), p_strWords); }

    /// What fish offers for a line's last word, without its meanings.
    Words Fish(const std::string& p_strScript, const std::string& p_strLine) {
        Make("script", p_strScript);
        Make("run", "source ./script\ncomplete -C '" + p_strLine + "'\n");
        Words strOffered = Shell("cd " + m_objFolder.Path() + " && HOME=" + m_objFolder.Path() +
                                 " fish --no-config ./run");
        for (std::string& strWord : strOffered) {
            strWord.erase(std::min(strWord.find('\t'), strWord.size()));
        }
        return strOffered;
    }
    Words Fish(const std::string& p_strLine) { return Fish(Script("fish"), p_strLine); }

    /// What zsh makes of a line when the tabulator is pressed behind it.
    std::string Zsh(const std::string& p_strScript, const std::string& p_strLine) {
        Make("script", p_strScript);
        Make("rc",
             "PS1=\nautoload -Uz compinit\ncompinit -D -u\nsource ./script\n"
             "bindkey '^I' complete-word\n"
             "show() { print -r -- \"[[$BUFFER]]\"; exit }\nzle -N show\nbindkey '^X' show\n");
        Make("run",
             "zmodload zsh/zpty\nzpty shell zsh -f -i\nzpty -w shell 'source ./rc; print ready'\n"
             "zpty -r -m shell line '*ready*ready*'\nzpty -w -n shell $'" +
                 p_strLine +
                 "\\t\\x18'\nzpty -r -m shell line '*[[][[]*]]*'\nprint -r -- \"$line\"\n");
        for (const std::string& strLine :
             Shell("cd " + m_objFolder.Path() + " && TERM=dumb zsh -f ./run")) {
            const std::size_t iBegin = strLine.find("[[");
            if (iBegin != std::string::npos) {
                return strLine.substr(iBegin + 2, strLine.find("]]", iBegin) - iBegin - 2);
            }
        }
        return "(nothing)";
    }
    std::string Zsh(const std::string& p_strLine) { return Zsh(Script("zsh"), p_strLine); }
};

TEST_F(CCompletionCommandTest, EveryWordOfTheTablesStandsInEveryScript) {
    const CProgram objProgram(Environment());
    for (const std::string& strShell : MCompletionScript::Shells()) {
        const std::string strScript = Script(strShell);
        for (const CLI::App* const objTable : objProgram.Tables().get_subcommands({})) {
            EXPECT_TRUE(Has(strScript, objTable->get_name())) << strShell;
            for (const CLI::Option* const objOption : objTable->get_options()) {
                for (const std::string& strName : objOption->get_lnames()) {
                    SCOPED_TRACE(strShell + " " + objTable->get_name() + " --" + strName);
                    if (strShell == "fish") {
                        EXPECT_TRUE(Has(strScript, "'__varden_at " + objTable->get_name() + "'" +
                                                       (strName == "help" ? " -s h" : "") + " -l " +
                                                       strName));
                    } else if (strShell == "zsh") {
                        const std::size_t iBegin =
                            strScript.find("_varden_command_" + objTable->get_name() + "()");
                        EXPECT_TRUE(
                            Has(strScript.substr(iBegin, strScript.find("\n}\n", iBegin) - iBegin),
                                "'--" + strName + "["));
                    }
                }
            }
        }
    }
}

TEST_F(CCompletionCommandTest, BashOffersEveryOptionOfEveryCommand) {
    const CProgram objProgram(Environment());
    for (const CLI::App* const objTable : objProgram.Tables().get_subcommands({})) {
        Words strExpected;
        for (const CLI::Option* const objOption : objTable->get_options()) {
            for (const std::string& strName : objOption->get_lnames()) {
                strExpected.push_back("--" + strName);
            }
        }
        EXPECT_EQ(Bash({objTable->get_name(), "--"}), strExpected) << objTable->get_name();
    }
}

TEST_F(CCompletionCommandTest, BashCompletesCommandsSettingsAndValues) {
    EXPECT_EQ(Bash({"li"}), Words{"list"});
    EXPECT_EQ(Bash({"--json", "li"}), Words{"list"});
    EXPECT_EQ(Bash({"list", "spe"}), Words{"speed"});
    EXPECT_EQ(Bash({"list", "speed", "dhcp-h"}), Words{"dhcp-host-name"});
    EXPECT_EQ(Bash({"completion", ""}), (Words{"bash", "zsh", "fish"}));
    EXPECT_EQ(Bash({"completion", "bash", ""}), Words{});
    Make("shop.dt1", "");
    EXPECT_EQ(Bash({"file", "sh"}), Words{"shop.dt1"});
    EXPECT_EQ(Bash({"file", "--save", "sh"}), Words{"shop.dt1"});
    EXPECT_EQ(Bash({"file", "--save", "x.json", "sh"}), Words{"shop.dt1"});
    EXPECT_EQ(Bash({"file", "x.json", "sh"}), Words{});
    EXPECT_EQ(Bash({"diff", "def"}), Words{"defaults"});
    EXPECT_EQ(Bash({"diff", "defaults", "sh"}), Words{"shop.dt1"});
}

TEST_F(CCompletionCommandTest, FishCompletesCommandsSettingsAndValues) {
    EXPECT_EQ(Fish("varden li"), Words{"list"});
    EXPECT_EQ(Fish("varden list spe"), Words{"speed"});
    EXPECT_EQ(Fish("varden file --sa"), Words{"--save"});
    EXPECT_EQ(Fish("varden completion b"), Words{"bash"});
    EXPECT_EQ(Fish("varden completion bash z"), Words{});
    Make("shop.dt1", "");
    EXPECT_EQ(Fish("varden file sh"), Words{"shop.dt1"});
    EXPECT_EQ(Fish("varden file --save x.json sh"), Words{"shop.dt1"});
    EXPECT_EQ(Fish("varden diff def"), Words{"defaults"});
}

TEST_F(CCompletionCommandTest, ZshCompletesCommandsSettingsAndValues) {
    EXPECT_EQ(Zsh("varden li"), "varden list ");
    EXPECT_EQ(Zsh("varden list spe"), "varden list speed ");
    EXPECT_EQ(Zsh("varden file --sa"), "varden file --save ");
    EXPECT_EQ(Zsh("varden completion b"), "varden completion bash ");
    Make("shop.dt1", "");
    EXPECT_EQ(Zsh("varden file sho"), "varden file shop.dt1 ");
    EXPECT_EQ(Zsh("varden diff def"), "varden diff defaults ");
}

TEST_F(CCompletionCommandTest, APrintersNameBeginsWithItsLink) {
    EXPECT_EQ(Bash({"read", ""}), (Words{"lan:", "com:", "usb", "usb:"}));
    EXPECT_EQ(Bash({"status", "l"}), Words{"lan:"});
    EXPECT_EQ(Bash({"diff", "defaults", "c"}), Words{"com:"});
    EXPECT_EQ(Bash({"read", "usb", "spe"}), Words{"speed"});
    EXPECT_EQ(Bash({"read", "usb", "--pause", ""}), Words{});
    EXPECT_EQ(Fish("varden read l"), Words{"lan:"});
    EXPECT_EQ(Fish("varden read usb spe"), Words{"speed"});
    EXPECT_EQ(Zsh("varden read l"), "varden read lan:");
    EXPECT_EQ(Zsh("varden read usb spe"), "varden read usb speed ");
}

TEST_F(CCompletionCommandTest, BashCutsAPrintersNameAtItsColons) {
    EXPECT_EQ(Bash({"read", "lan", ":", "par"}), Words{});
    EXPECT_EQ(Bash({"read", "lan", ":", "host", "spe"}), Words{"speed"});
    EXPECT_EQ(Bash({"read", "lan", ":", "host", ":", "8000", "spe"}), Words{"speed"});
    EXPECT_EQ(Bash({"diff", "lan", ":", "host", "def"}), Words{"defaults"});
    EXPECT_EQ(Bash({"status", "lan", ":", "host", ""}), Words{});
}

TEST_F(CCompletionCommandTest, AFunctionsFieldsAreCompletedWithTheirValues) {
    EXPECT_EQ(Bash({"maintain", "usb", "ram"}), Words{"ram-clear"});
    EXPECT_EQ(Bash({"maintain", "usb", "ram-clear", "dest"}),
              (Words{"destination=ja", "destination=cn", "destination=qp", "destination=qq"}));
    EXPECT_EQ(Bash({"maintain", "usb", "test-print", "iss"}), Words{"issue-count="});
    EXPECT_EQ(Fish("varden maintain usb ram"), Words{"ram-clear"});
    EXPECT_EQ(Fish("varden maintain usb ram-clear mode=p"), Words{"mode=parameter"});
    EXPECT_EQ(Zsh("varden maintain usb ram"), "varden maintain usb ram-clear ");
    EXPECT_EQ(Zsh("varden maintain usb ram-clear mode=p"),
              "varden maintain usb ram-clear mode=parameter ");
    EXPECT_EQ(Zsh("varden maintain usb test-print iss"),
              "varden maintain usb test-print issue-count=");
}

TEST_F(CCompletionCommandTest, ASettingToBeWrittenIsCompletedUpToItsSign) {
    EXPECT_EQ(Bash({"write", "usb", "spe"}), Words{"speed="});
    EXPECT_EQ(Fish("varden write usb spe"), Words{"speed="});
    EXPECT_EQ(Zsh("varden write usb spe"), "varden write usb speed=");
}

TEST_F(CCompletionCommandTest, BashCutsAFieldAtItsSign) {
    EXPECT_EQ(Bash({"maintain", "usb", "ram-clear", "mode", "="}),
              (Words{"parameter", "mante-cnt"}));
    EXPECT_EQ(Bash({"maintain", "usb", "ram-clear", "mode", "=", "p"}), Words{"parameter"});
    EXPECT_EQ(Bash({"maintain", "lan", ":", "a", "ram-clear", "mode", "=", "parameter", "dest"}),
              (Words{"destination=ja", "destination=cn", "destination=qp", "destination=qq"}));
}

TEST_F(CCompletionCommandTest, AsJsonTheScriptIsAText) {
    const Ran objRan = RunJson({"completion", "fish"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["completion"]["shell"], "fish");
    EXPECT_EQ(objRan.m_objJson["completion"]["script"], Script("fish"));
}

TEST_F(CCompletionCommandTest, AnotherShellIsRefused) {
    const Ran objRan = RunJson({"completion", "csh"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Wrong);
    EXPECT_EQ(objRan.m_objJson["error"]["hint"], "there is one for bash, zsh, fish");
}

TEST_F(CCompletionCommandTest, EveryKindOfArgumentIsKnown) {
    const CProgram objProgram(Environment());
    for (const std::string& strKind : CWordTable(objProgram.Tables()).Kinds()) {
        EXPECT_EQ(MArgumentKind::Get(strKind).m_strName, strKind);
    }
    EXPECT_THROW(MArgumentKind::Get("NONSENSE"), std::logic_error);
}

}  // namespace
