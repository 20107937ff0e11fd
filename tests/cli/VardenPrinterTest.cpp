#include "cli/CPrinterConnector.h"
#include "cli/MExitCode.h"
#include "cli/MSettingsFile.h"
#include "jobs/MCompare.h"
#include "platform/qt/CQtFileStore.h"
#include "platform/usb/CUsbPrinterLister.h"
#include "simulator/MItemNames.h"
#include "tests/cli/CFakeInterrupt.h"
#include "tests/cli/CJsonSchema.h"
#include "tests/fakes/CFakeSessionEvents.h"
#include "tests/jobs/MOtherSettings.h"
#include "tests/platform_qt/CFolder.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QProcess>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <csignal>

// The real program in front of a printer made of software.

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int PatienceMs = 30'000;

class VardenPrinterTest : public ::testing::Test {
protected:
    [[nodiscard]] QString Target() const {
        return "lan:127.0.0.1:" + QString::number(m_objSimulator.Port());
    }

    void Begin(const QStringList& p_strArguments) {
        m_objProgram.start(VARDEN_PROGRAM, p_strArguments);
    }

    /// The exit code.
    int End() {
        EXPECT_TRUE(CSimulatorProcess::WaitUntil(
            [this] { return m_objProgram.state() == QProcess::NotRunning; }, PatienceMs));
        m_strOut = m_objProgram.readAllStandardOutput().toStdString();
        m_strError = m_objProgram.readAllStandardError().toStdString();
        return m_objProgram.exitStatus() == QProcess::NormalExit ? m_objProgram.exitCode() : -1;
    }

    int Run(const QStringList& p_strArguments) {
        Begin(p_strArguments);
        return End();
    }

    /// Gives the printer settings none of which stands at its default.
    void ChangeEverything() {
        CUsbPrinterLister objUsbPrinters;
        CFakeInterrupt objInterrupt;
        CPrinterConnector objConnector(objUsbPrinters, objInterrupt);
        CFakeSessionEvents objEvents;
        const auto objPrinter = objConnector.Connect(CTarget::Parse(Target().toStdString()),
                                                     milliseconds(0), objEvents);
        for (const std::string& strCommand : MOtherSettings::Commands()) {
            EXPECT_EQ(objPrinter->Send(strCommand).m_strCode, "00") << strCommand;
        }
    }

    /// What the printer holds by its own word.
    CSnapshot Held() {
        EXPECT_TRUE(m_objSimulator.Dump(PatienceMs));
        const auto objDump = nlohmann::json::parse(m_objFolder.Content("dump"), nullptr, false);
        const auto& objSettings = objDump["printers"][0]["settings"];
        const CItemManager objItems;
        for (const CItemManager::Row& objRow : CItemManager::Rows()) {
            (objItems.*objRow.m_objSlot)
                ->SetValue(objSettings[MItemNames::Of(objRow)].get<std::string>());
        }
        return CSnapshot(objItems);
    }

    [[nodiscard]] QString Path(const std::string& p_strName) const {
        return QString::fromStdString(m_objFolder.Path(p_strName));
    }

    CFolder m_objFolder;
    CSimulatorProcess m_objSimulator;
    QProcess m_objProgram;
    std::string m_strOut;
    std::string m_strError;
};

TEST_F(VardenPrinterTest, WhatIsReadIsWhatThePrinterHolds) {
    ASSERT_TRUE(m_objSimulator.Start({"--dump", Path("dump")}));
    ChangeEverything();
    ASSERT_EQ(Run({"read", Target(), "--save", Path("a.json"), "--pause", "0", "--json"}), 0);
    EXPECT_EQ(CJsonSchema::OfOutputs().Complaint(m_strOut), "");
    CQtFileStore objFiles;
    const CFileContent objFile = MSettingsFile::Read(objFiles, m_objFolder.Path("a.json"));
    EXPECT_TRUE(objFile.m_objProblems.empty());
    const MCompare::Result objCompared = MCompare::Compare(objFile.m_objSnapshot, Held());
    EXPECT_TRUE(objCompared.m_objDifferent.empty());
    std::size_t iItems = 0;
    for (const MSettings::Row* const objRow : objCompared.m_objSame) {
        iItems += objRow->Items().size();
    }
    EXPECT_EQ(iItems, 73U);
    const auto objRead = nlohmann::json::parse(m_strOut);
    const auto objSaved = nlohmann::json::parse(m_objFolder.Content("a.json"));
    for (const auto& [strName, objValue] : objSaved["settings"].items()) {
        EXPECT_EQ(objRead["settings"][strName]["value"], objValue) << strName;
    }
    EXPECT_EQ(Run({"diff", Target(), Path("a.json")}), 0) << m_strOut;
    EXPECT_EQ(Run({"diff", Target(), "defaults"}), MExitCode::Different);
}

TEST_F(VardenPrinterTest, AFunctionIsCarriedOutWhenItsNameIsTypedAtATerminal) {
    ASSERT_TRUE(m_objSimulator.Start());
    EXPECT_EQ(Run({"maintain", Target(), "test-print"}), MExitCode::Wrong) << "nobody can be asked";
    const auto fnType = [this](const std::string& p_strTyped) {
        const QString strCommand = "exec " + QString(VARDEN_PROGRAM) + " maintain " + Target() +
                                   " test-print cut=peel-off";
        m_objProgram.start("script", {"-qec", strCommand, "/dev/null"});
        m_objProgram.write((p_strTyped + "\n").c_str());
        return End();
    };
    EXPECT_EQ(fnType("yes"), MExitCode::Wrong);
    EXPECT_NE(m_strOut.find("Type \"test-print\" to have it done: "), std::string::npos)
        << m_strOut;
    EXPECT_EQ(m_objSimulator.Commands(), std::vector<std::string>{});
    EXPECT_EQ(fnType("test-print"), 0);
    EXPECT_NE(m_strOut.find("00 ON LINE"), std::string::npos) << m_strOut;
    EXPECT_TRUE(m_objSimulator.WaitForCommands(1, PatienceMs));
    EXPECT_EQ(m_objSimulator.Commands(), std::vector<std::string>{"{Z3;007600730105700010020|}"});
}

TEST_F(VardenPrinterTest, ASensorIsAdjustedInTwoPassesAndASecond) {
    ASSERT_TRUE(m_objSimulator.Start());
    const auto iStart = steady_clock::now();
    EXPECT_EQ(Run({"maintain", Target(), "sensor-adjust", "step=paper-end", "--yes", "--json"}), 0);
    EXPECT_GE(steady_clock::now() - iStart, milliseconds(1000));
    EXPECT_EQ(CJsonSchema::OfOutputs().Complaint(m_strOut), "");
    EXPECT_TRUE(m_objSimulator.WaitForCommands(3, PatienceMs));
    EXPECT_EQ(m_objSimulator.Commands(),
              (std::vector<std::string>{"{Z6;01|}", "{Z6;11|}", "{WS|}"}));
}

TEST_F(VardenPrinterTest, WhoIsAskedMayAnswerWithCtrlC) {
    ASSERT_TRUE(m_objSimulator.Start());
    const QString strCommand =
        "exec " + QString(VARDEN_PROGRAM) + " maintain " + Target() + " diag-print";
    m_objProgram.start("script", {"-qec", strCommand, "/dev/null"});
    ASSERT_TRUE(CSimulatorProcess::WaitUntil(
        [this] {
            m_strOut += m_objProgram.readAllStandardOutput().toStdString();
            return m_strOut.find("have it done") != std::string::npos;
        },
        PatienceMs));
    m_objProgram.write("\x03");
    EXPECT_EQ(End(), MExitCode::Interrupted);
    EXPECT_EQ(m_objSimulator.Commands(), std::vector<std::string>{});
}

TEST_F(VardenPrinterTest, CtrlCEndsItAtOnceAndClosesTheLink) {
    ASSERT_TRUE(m_objSimulator.Start({"--silent", "--log", Path("log")}));
    Begin({"read", Target(), "--json", "--save", Path("a.json")});
    ASSERT_TRUE(m_objSimulator.WaitForCommands(1, PatienceMs));
    const auto iStart = steady_clock::now();
    ::kill(static_cast<pid_t>(m_objProgram.processId()), SIGINT);
    EXPECT_EQ(End(), MExitCode::Interrupted);
    // It takes a few milliseconds; the rest is for a busy machine, and below every other limit.
    EXPECT_LT(steady_clock::now() - iStart, milliseconds(1000));
    EXPECT_EQ(CJsonSchema::OfOutputs().Complaint(m_strOut), "");
    EXPECT_EQ(nlohmann::json::parse(m_strOut)["error"]["what"], "Interrupted");
    EXPECT_TRUE(CSimulatorProcess::WaitUntil(
        [this] {
            return m_objFolder.Content("log").find(R"("event": "closed")") != std::string::npos;
        },
        PatienceMs));
    EXPECT_EQ(m_objFolder.Names(), std::vector<std::string>{"log"});
}

TEST_F(VardenPrinterTest, OnlyATerminalIsToldHowFarItIs) {
    ASSERT_TRUE(m_objSimulator.Start());
    EXPECT_EQ(Run({"read", Target(), "speed", "--pause", "0"}), 0);
    EXPECT_EQ(m_strError, "");
    const QString strCommand =
        "stty cols 80; exec " + QString(VARDEN_PROGRAM) + " read " + Target() + " speed --pause 0";
    m_objProgram.start("script", {"-qec", strCommand, "/dev/null"});
    EXPECT_EQ(End(), 0);
    const std::string strLine = Target().toStdString() + ": reading 1 of 1 ...";
    EXPECT_NE(m_strOut.find("\r" + std::string(strLine.size(), ' ') + "\rNAME"), std::string::npos)
        << m_strOut;
    EXPECT_NE(m_strOut.find(strLine), std::string::npos) << m_strOut;
    EXPECT_EQ(m_strOut.find('\x1B'), std::string::npos) << "no colours";
}

}  // namespace
