#include "cli/MExitCode.h"
#include "tests/cli/CCliFixture.h"

#include <CLI/CLI.hpp>

#include <fstream>

namespace {

class ManPageTest : public CCliFixture {
protected:
    ManPageTest() {
        std::ifstream objFile(VARDEN_MAN_PAGE);
        m_strPage.assign(std::istreambuf_iterator<char>(objFile), {});
    }

    /// The part of the page below a heading, up to the next one of its rank.
    [[nodiscard]] std::string Below(const std::string& p_strHeading) const {
        const std::size_t iBegin = m_strPage.find("\n" + p_strHeading + "\n");
        EXPECT_NE(iBegin, std::string::npos) << p_strHeading;
        const std::string strRank = p_strHeading.substr(0, p_strHeading.find(' ') + 1);
        const std::size_t iEnd = std::min(m_strPage.find("\n" + strRank, iBegin + 1),
                                          m_strPage.find("\n# ", iBegin + 1));
        return m_strPage.substr(iBegin, iEnd - iBegin);
    }

    /// Every option of a table and every argument has its place in p_strPart.
    static void ExpectAll(const CLI::App& p_objTable, const std::string& p_strPart) {
        for (const CLI::Option* const objOption : p_objTable.get_options()) {
            const std::string strName = objOption->get_positional()
                                            ? "_" + objOption->get_single_name() + "_"
                                            : "*--" + objOption->get_lnames().front() + "*";
            EXPECT_TRUE(Has(p_strPart, strName)) << p_objTable.get_name() << " " << strName;
        }
    }

    std::string m_strPage;
};

TEST_F(ManPageTest, EveryCommandAndEveryOptionStandsInIt) {
    const CProgram objProgram(Environment());
    const std::string strCommon = Below("# OPTIONS");
    ExpectAll(objProgram.Tables(), strCommon);
    for (const CLI::App* const objTable : objProgram.Tables().get_subcommands({})) {
        ExpectAll(*objTable, Below("## varden " + objTable->get_name()) + strCommon);
    }
}

TEST_F(ManPageTest, EveryExitCodeStandsInIt) {
    const std::string strCodes = Below("# EXIT STATUS");
    for (const int iCode :
         {MExitCode::Done, MExitCode::Failed, MExitCode::Wrong, MExitCode::NotReachable,
          MExitCode::Different, MExitCode::Interrupted}) {
        EXPECT_TRUE(Has(strCodes, "*" + std::to_string(iCode) + "*")) << iCode;
    }
}

}  // namespace
