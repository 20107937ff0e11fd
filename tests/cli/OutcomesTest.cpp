#include "tests/cli/CJsonSchema.h"
#include "tests/cli/MOutcomes.h"
#include "tests/platform_qt/CFolder.h"
#include "tests/platform_qt/CRefusedPort.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QProcess>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <sstream>
#include <tuple>

// The table of outcomes, tried with the real program and a printer made of software.

namespace {

using Json = nlohmann::json;
using MOutcomes::Fault;
using MOutcomes::Outcome;

constexpr int PatienceMs = 60'000;
const std::string Target = "TARGET";

class OutcomesTest
    : public ::testing::TestWithParam<std::tuple<Fault, MOutcomes::Command, MOutcomes::Link>> {
protected:
    /// Runs the command; its exit code.
    int Run(const Fault& p_objFault, MOutcomes::Command p_iCommand, MOutcomes::Link p_iLink) {
        QStringList strOptions{"--log", Path("log")};
        for (const std::string& strOption : p_objFault.m_strOptions) {
            strOptions << QString::fromStdString(strOption);
        }
        if (p_iLink == MOutcomes::Usb) {
            m_strTarget = p_objFault.m_bNobody ? "usb:9-9" : "usb";
            return RunOnUsb(strOptions, p_iCommand);
        }
        const bool bLan = p_iLink == MOutcomes::Lan;
        // An address of its own can be told on the network alone.
        strOptions.removeAll(bLan ? "" : "--own-address");
        EXPECT_TRUE(bLan ? m_objSimulator.Start(strOptions)
                         : m_objSimulator.StartSerial(strOptions));
        const CRefusedPort objNobody;
        const std::uint16_t iPort =
            p_objFault.m_bNobody ? objNobody.Number() : m_objSimulator.Port();
        const std::string strDevice =
            p_objFault.m_bNobody ? "/dev/there-is-none" : m_objSimulator.Name();
        m_strTarget = bLan ? "lan:127.0.0.1:" + std::to_string(iPort) : "com:" + strDevice;
        return RunBeside(p_iCommand);
    }

    /// The requests that the printer has received whole.
    std::vector<std::string> Requests() {
        m_objSimulator.Stop();  // everything is in its log then
        std::vector<std::string> strRequests;
        std::istringstream objLines(m_objFolder.Content("log"));
        for (std::string strLine; std::getline(objLines, strLine);) {
            const Json objEvent = Json::parse(strLine);
            if (objEvent["event"] == "received") {
                strRequests.push_back(objEvent["command"]);
            }
        }
        return strRequests;
    }

    [[nodiscard]] std::string Filled(std::string p_strText) const {
        const std::size_t iPlace = p_strText.find(Target);
        return iPlace == std::string::npos ? p_strText
                                           : p_strText.replace(iPlace, Target.size(), m_strTarget);
    }

    CFolder m_objFolder;
    CSimulatorProcess m_objSimulator;
    std::string m_strTarget;
    std::string m_strOut;

private:
    [[nodiscard]] QString Path(const std::string& p_strName) const {
        return QString::fromStdString(m_objFolder.Path(p_strName));
    }

    [[nodiscard]] QStringList Arguments(MOutcomes::Command p_iCommand) const {
        QStringList strArguments;
        for (const std::string& strWord : MOutcomes::Words(p_iCommand)) {
            strArguments << QString::fromStdString(strWord == Target ? m_strTarget : strWord);
        }
        return strArguments;
    }

    /// The simulator is another process.
    int RunBeside(MOutcomes::Command p_iCommand) {
        QProcess objProgram;
        objProgram.setStandardErrorFile(Path("errors"));
        objProgram.start(VARDEN_PROGRAM, Arguments(p_iCommand));
        EXPECT_TRUE(CSimulatorProcess::WaitUntil(
            [&] { return objProgram.state() == QProcess::NotRunning; }, PatienceMs));
        m_strOut = objProgram.readAllStandardOutput().toStdString();
        return objProgram.exitStatus() == QProcess::NormalExit ? objProgram.exitCode() : -1;
    }

    /// The simulator runs the program in a system of its own.
    int RunOnUsb(const QStringList& p_strOptions, MOutcomes::Command p_iCommand) {
        QStringList strOptions = p_strOptions;
        strOptions.removeAll("--own-address");
        m_objSimulator.Launch(strOptions +
                              QStringList{"--usb", "sh", "-c", R"(exec "$@" >"$0" 2>/dev/null)",
                                          Path("out"), VARDEN_PROGRAM} +
                              Arguments(p_iCommand));
        const int iCode = m_objSimulator.WaitForExit(PatienceMs);
        m_strOut = m_objFolder.Content("out");
        return iCode;
    }
};

TEST_P(OutcomesTest, IsWhatTheTableSays) {
    const auto& [objFault, iCommand, iLink] = GetParam();
    const Outcome& objOutcome = objFault.m_objOutcomes.at(iLink).at(iCommand);
    EXPECT_EQ(Run(objFault, iCommand, iLink), objOutcome.m_iCode) << m_strOut;
    EXPECT_EQ(CJsonSchema::OfOutputs().Complaint(m_strOut), "");
    const Json objJson = Json::parse(m_strOut, nullptr, false);
    const bool bFailed = !objOutcome.m_strWhat.empty();
    ASSERT_EQ(objJson.contains("error"), bFailed) << m_strOut;
    if (bFailed) {
        EXPECT_EQ(objJson["error"]["what"], Filled(objOutcome.m_strWhat));
        EXPECT_EQ(objJson["error"]["target"], m_strTarget);
    }
    if (iCommand == MOutcomes::Read && objJson.contains("complete")) {
        EXPECT_EQ(objJson["complete"], !bFailed);
    }
    if (!objOutcome.m_strStatus.empty()) {
        EXPECT_EQ(objJson["code"], objOutcome.m_strStatus);
    }
    std::vector<std::string> strExpected = MOutcomes::Requests(iCommand);
    strExpected.resize(objOutcome.m_iRequests);
    EXPECT_EQ(Requests(), strExpected);
}

INSTANTIATE_TEST_SUITE_P(
    Every, OutcomesTest,
    ::testing::Combine(::testing::ValuesIn(MOutcomes::Faults().begin(), MOutcomes::Faults().end()),
                       ::testing::Values(MOutcomes::Read, MOutcomes::Status, MOutcomes::Diff,
                                         MOutcomes::Maintain),
                       ::testing::Values(MOutcomes::Lan, MOutcomes::Com, MOutcomes::Usb)),
    [](const auto& p_objInfo) {
        return std::get<0>(p_objInfo.param).m_strName + "_" +
               MOutcomes::Name(std::get<1>(p_objInfo.param)) + "_" +
               MOutcomes::Name(std::get<2>(p_objInfo.param));
    });

TEST(OutcomesPage, IsMadeOfTheTable) {
    std::ifstream objPage(VARDEN_OUTCOMES_PAGE);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(objPage), {}), MOutcomes::Page())
        << "cmake --build build/dev --target write-outcomes";
}

}  // namespace
