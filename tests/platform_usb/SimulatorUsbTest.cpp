#include "tests/golden/MGolden.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

constexpr int PatienceMs = 30'000;
const std::string Status = "..000000000..";
const std::string Settings0 = std::string(".0") + MGolden::Answer(0);

/// What the client is to be told for sending p_strCommand.
QString Send(const std::string& p_strCommand) {
    return "send:" + QString::fromStdString(p_strCommand);
}

/// The simulator with the client in its emulated system.
class SimulatorUsbTest : public ::testing::Test {
protected:
    /// Runs the client's steps, the simulator with these options; its exit code.
    int Run(const QStringList& p_strOptions, const QStringList& p_strSteps) {
        m_objSimulator.Launch(p_strOptions + QStringList{"--usb", VARDEN_USB_CLIENT} + p_strSteps);
        return m_objSimulator.WaitForExit(PatienceMs);
    }

    /// What the client has printed.
    [[nodiscard]] Texts ClientLines() const {
        const std::string strMark = "client: ";
        Texts strLines;
        for (const std::string& strLine : m_objSimulator.Lines()) {
            if (strLine.starts_with(strMark)) {
                strLines.push_back(strLine.substr(strMark.size()));
            }
        }
        return strLines;
    }

    [[nodiscard]] bool HasLine(const std::string& p_strText) const {
        return std::ranges::any_of(m_objSimulator.Lines(), [&](const std::string& p_strLine) {
            return p_strLine.find(p_strText) != std::string::npos;
        });
    }

    const QStringList m_strStatus{"open", "send:{WS|}", "receive:13", "close"};
    const QStringList m_strRead{"open", "send:{Z5;0|}", "close", "open", "receive:54", "close"};
    CSimulatorProcess m_objSimulator;
};

TEST_F(SimulatorUsbTest, AProgramFindsThePrinterAndGetsItsAnswers) {
    EXPECT_EQ(Run({}, m_strStatus + m_strRead), 0) << m_objSimulator.ErrorText();
    EXPECT_EQ(ClientLines(),
              (Texts{"open 0", "send 5", "receive 13 " + Status, "close 0", "open 0", "send 7",
                     "close 0", "open 0", "receive 29 " + Settings0, "close 0"}));
    EXPECT_EQ(m_objSimulator.Commands(), (Texts{"{WS|}", "{Z5;0|}"}));
    EXPECT_TRUE(HasLine("read settings: 1"));
}

TEST_F(SimulatorUsbTest, AProgramThatDoesNotCloseThePrinterEndsWell) {
    EXPECT_EQ(Run({}, {"open", "send:{WS|}"}), 0);
    EXPECT_EQ(ClientLines(), (Texts{"open 0", "send 5"}));
}

TEST_F(SimulatorUsbTest, TheStatusAsked) {
    EXPECT_EQ(Run({"--status", "14"}, m_strStatus), 0);
    EXPECT_EQ(ClientLines()[2], "receive 13 ..140000000..");
}

TEST_F(SimulatorUsbTest, ASilentPrinter) {
    EXPECT_EQ(Run({"--silent"}, m_strStatus), 0);
    EXPECT_EQ(ClientLines()[2], "receive 0 ");
    EXPECT_TRUE(HasLine("! no answer"));
}

TEST_F(SimulatorUsbTest, ALateAnswerComesWithTheNextReceive) {
    EXPECT_EQ(Run({"--delay", "1300"}, {"open", "send:{WS|}", "receive:13", "receive:13"}), 0);
    EXPECT_EQ(ClientLines()[2], "receive 0 ");
    EXPECT_EQ(ClientLines()[3], "receive 13 " + Status);
}

TEST_F(SimulatorUsbTest, AnAnswerInPieces) {
    EXPECT_EQ(Run({"--pieces", "7", "--gap", "1"}, m_strRead), 0);
    EXPECT_EQ(ClientLines()[4], "receive 29 " + Settings0);
}

TEST_F(SimulatorUsbTest, AnAnswerCutShort) {
    EXPECT_EQ(Run({"--cut", "5"}, m_strRead), 0);
    EXPECT_EQ(ClientLines()[4], "receive 5 .0{0+");
}

TEST_F(SimulatorUsbTest, JunkInPlaceOfTheAnswerAndBeforeIt) {
    EXPECT_EQ(Run({"--junk"}, m_strRead), 0);
    ASSERT_EQ(ClientLines().size(), 6U);
    EXPECT_EQ(ClientLines()[4].find(Settings0), std::string::npos);
    EXPECT_FALSE(ClientLines()[4].starts_with("receive 0"));
}

TEST_F(SimulatorUsbTest, JunkBeforeTheAnswer) {
    EXPECT_EQ(Run({"--junk-before"}, m_strRead), 0);
    ASSERT_EQ(ClientLines().size(), 6U);
    EXPECT_TRUE(ClientLines()[4].ends_with(Settings0));
    EXPECT_FALSE(ClientLines()[4].starts_with("receive 29"));
}

TEST_F(SimulatorUsbTest, APrinterThatHangsUpIsUnpluggedBehindItsAnswer) {
    EXPECT_EQ(Run({"--close-after", "1"}, m_strStatus + QStringList{"open", "receive:13", "open"}),
              0);
    EXPECT_EQ(ClientLines(), (Texts{"open 0", "send 5", "receive 13 " + Status, "close 0", "open 0",
                                    "receive -1 ", "open -1"}));
}

TEST_F(SimulatorUsbTest, APrinterThatRefusesAndStoresWrongly) {
    const QString strSet = Send(MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"},
                                                                     {"FeedAdjustment", "123"},
                                                                     {"CutPosDirection", "-"},
                                                                     {"CutPosAdjustment", "456"},
                                                                     {"BackFeedDirection", "-"}}));
    EXPECT_EQ(Run({"--refuse", "WS", "--stuck", "FeedDirection", "--half-fields", "3"},
                  m_strStatus + QStringList{"open", strSet, "receive:13", "close"} + m_strRead),
              0);
    EXPECT_EQ(ClientLines().at(2), "receive 13 ..060000000..");
    EXPECT_EQ(ClientLines().at(6), "receive 13 " + Status);
    EXPECT_EQ(ClientLines().at(12),
              "receive 29 .0" + MGolden::With(MGolden::Answer(0), {{"FeedAdjustment", "123"},
                                                                   {"CutPosDirection", "-"}}));
}

TEST_F(SimulatorUsbTest, WithoutPowerThePrinterIsUnpluggedUntilItIsBack) {
    const QString strSet = Send(
        MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}}));
    EXPECT_EQ(Run({"--power-cut", "44", "--power-back", "300"},
                  m_strStatus +
                      QStringList{"open", strSet, "receive:13", "close", "open", "wait:3000"} +
                      m_strRead),
              0);
    EXPECT_EQ(
        ClientLines(),
        (Texts{"open 0", "send 5", "receive 13 " + Status, "close 0", "open 0", "send 39",
               "receive -1 ", "close 0", "open -1", "wait ", "open 0", "send 7", "close 0",
               "open 0",
               "receive 29 .0" + MGolden::With(MGolden::Answer(0),
                                               {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}}),
               "close 0"}));
    EXPECT_TRUE(HasLine("! power off"));
    EXPECT_TRUE(HasLine("! power on"));
}

TEST_F(SimulatorUsbTest, ACommandThatThePowerCutsInTwoIsNeitherTakenNorCarriedOut) {
    EXPECT_EQ(
        Run({"--power-cut", "36", "--power-back", "0", "--forget"},
            QStringList{"open",
                        Send(MGolden::With(MGolden::Adjustments,
                                           {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}})),
                        "close", "wait:3000"} +
                m_strRead),
        0);
    EXPECT_EQ(ClientLines().at(1), "send -1");
    EXPECT_EQ(ClientLines().at(8), "receive 29 " + Settings0);
}

TEST_F(SimulatorUsbTest, ThePowerGoesAndTheSettingsAreWrittenWhenAsked) {
    const QTemporaryDir objFolder;
    const QString strDump = objFolder.filePath("dump");
    m_objSimulator.Launch(QStringList{"--power-back", "100", "--dump", strDump, "--usb",
                                      VARDEN_USB_CLIENT, "open", "send:{WS|}", "receive:13",
                                      "close", "wait:4000"} +
                          m_strRead);
    ASSERT_TRUE(m_objSimulator.WaitForLine("client: close 0", PatienceMs));
    EXPECT_TRUE(m_objSimulator.Dump(PatienceMs));
    m_objSimulator.PowerCycle();
    ASSERT_TRUE(m_objSimulator.WaitForLine("! power on", PatienceMs));
    QFile::remove(strDump);
    EXPECT_EQ(m_objSimulator.WaitForExit(PatienceMs), 0);
    EXPECT_EQ(ClientLines().back(), "close 0");
    EXPECT_TRUE(HasLine("client: receive 29 " + Settings0));
    EXPECT_TRUE(QFile::exists(strDump)) << "at the end, once more";
}

TEST_F(SimulatorUsbTest, ItEndsWithTheProgramsExitCode) {
    EXPECT_EQ(Run({}, {"nonsense"}), 2);
}

TEST_F(SimulatorUsbTest, AProgramThatCannotBeStartedIsAnError) {
    m_objSimulator.Launch({"--usb", "/no/such/program"});
    EXPECT_EQ(m_objSimulator.WaitForExit(PatienceMs), 1);
    EXPECT_NE(m_objSimulator.ErrorText().find("Cannot start /no/such/program"), std::string::npos);
}

TEST_F(SimulatorUsbTest, WrongCommandLinesAreRefused) {
    const std::vector<std::pair<QStringList, std::string>> arrCases{
        {{"--usb"}, "--usb needs a program to run."},
        {{"--serial", "--usb", "x"}, "do not go with --usb."},
        {{"--port", "1", "--usb", "x"}, "do not go with --usb."},
        {{"x"}, "There is nothing to do with \"x\"."},
    };
    for (const auto& [strArguments, strError] : arrCases) {
        SCOPED_TRACE(strError);
        CSimulatorProcess objSimulator;
        objSimulator.Launch(strArguments);
        EXPECT_EQ(objSimulator.WaitForExit(PatienceMs), 1);
        EXPECT_NE(objSimulator.ErrorText().find(strError), std::string::npos)
            << objSimulator.ErrorText();
    }
}

}  // namespace
