#include "tests/golden/MGolden.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

// The setting tool itself, and the tour, as children of the simulator in its emulated system.

namespace {

using Texts = std::vector<std::string>;

constexpr int PatienceMs = 60'000;

const Texts Read{"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"};
const Texts Set{MGolden::Parameters,
                MGolden::With(MGolden::Adjustments, {{"FeedAdjustment", "045"}})};

Texts operator+(Texts p_strLeft, const Texts& p_strRight) {
    p_strLeft.insert(p_strLeft.end(), p_strRight.begin(), p_strRight.end());
    return p_strLeft;
}

class ToolOnUsbTest : public ::testing::Test {
protected:
    /// Has the tool's window worked by what the toolkit finds in its environment.
    explicit ToolOnUsbTest(const QByteArray& p_strSteps = {}) {
        qputenv("QT_PLUGIN_PATH", VARDEN_WINDOW_DRIVER);
        Drive(p_strSteps);
    }
    ~ToolOnUsbTest() override {
        qunsetenv("QT_PLUGIN_PATH");
        qunsetenv("QT_QPA_GENERIC_PLUGINS");
    }

    static void Drive(const QByteArray& p_strSteps) {
        qputenv("QT_QPA_GENERIC_PLUGINS", "varden-driver:" + p_strSteps);
    }

    /// Runs the tool, its window worked so, until it ends; the simulator's exit code.
    int RunTool(const QByteArray& p_strSteps, const QStringList& p_strOptions = {}) {
        Drive(p_strSteps);
        m_objSimulator.Launch(p_strOptions + QStringList{"--usb", VARDEN_SETTING_TOOL});
        return m_objSimulator.WaitForExit(PatienceMs);
    }

    /// Runs the tour until it ends; the simulator's exit code.
    int RunTour(const QStringList& p_strOptions = {}) {
        qunsetenv("QT_QPA_GENERIC_PLUGINS");
        m_objSimulator.Launch(p_strOptions + QStringList{"--usb", VARDEN_TOUR, "--usb",
                                                         "--pictures", m_objPictures.path()});
        return m_objSimulator.WaitForExit(PatienceMs);
    }

    /// The printed lines that begin so, without that.
    [[nodiscard]] Texts Lines(const std::string& p_strBegin) const {
        Texts strLines;
        for (const std::string& strLine : m_objSimulator.Lines()) {
            if (strLine.starts_with(p_strBegin)) {
                strLines.push_back(strLine.substr(p_strBegin.size()));
            }
        }
        return strLines;
    }

    QTemporaryDir m_objPictures;
    CSimulatorProcess m_objSimulator;
};

TEST_F(ToolOnUsbTest, ItStartsAndEndsWhenItsWindowIsClosed) {
    EXPECT_EQ(RunTool("show cmbInterface;close"), 0) << m_objSimulator.ErrorText();
    EXPECT_EQ(Lines("driver: "), Texts{"cmbInterface shows COM"});
    EXPECT_EQ(m_objSimulator.Commands(), Texts{});
}

TEST_F(ToolOnUsbTest, ItSetsAndReadsAndShowsTheStatus) {
    EXPECT_EQ(RunTool("choose cmbInterface 2;type SeFeedAdj 4.5;click btnSet;click btnGetStatus;"
                      "show lblStatus;show SeFeedAdj;click btnRamClear;click btnRead;"
                      "show SeFeedAdj;close"),
              0)
        << m_objSimulator.ErrorText();
    EXPECT_EQ(Lines("driver: "),
              (Texts{"lblStatus shows ON LINE", "SeFeedAdj shows 4.5", "SeFeedAdj shows 0.0"}));
    EXPECT_EQ(m_objSimulator.Commands(), (Set + Texts{"{WS|}", "{Z4;0|}"} + Read));
}

TEST_F(ToolOnUsbTest, ItGoesOnWhenThePrinterIsUnplugged) {
    EXPECT_EQ(RunTool("choose cmbInterface 2;click btnGetStatus;show lblStatus;click btnSet;"
                      "click btnDiagPrint;close",
                      {"--close-after", "1"}),
              0)
        << m_objSimulator.ErrorText();
    EXPECT_EQ(Lines("driver: "), (Texts{"lblStatus shows ON LINE", "box Device Time Out !!",
                                        "box USB Device not ready !!"}));
    EXPECT_EQ(m_objSimulator.Commands(), Texts{"{WS|}"});
}

TEST_F(ToolOnUsbTest, AStepThatCannotBeDoneIsNotTakenForSuccess) {
    EXPECT_EQ(RunTool("click btnNowhere"), 9);
    EXPECT_EQ(Lines("driver: "), Texts{"cannot click btnNowhere"});
}

TEST_F(ToolOnUsbTest, EndingTheSimulatorEndsIt) {
    Drive("show cmbInterface");
    m_objSimulator.Launch({"--usb", VARDEN_SETTING_TOOL});
    ASSERT_TRUE(m_objSimulator.WaitForLine("driver: cmbInterface shows COM", PatienceMs));
    EXPECT_TRUE(m_objSimulator.IsRunning());
    EXPECT_EQ(m_objSimulator.Stop(), 0);
    EXPECT_EQ(m_objSimulator.ErrorText().find("crashed"), std::string::npos);
    EXPECT_EQ(Lines("Commands received:"), Texts{""});
}

TEST_F(ToolOnUsbTest, TheTourGoesThroughReadSetStatusAndHeadCheck) {
    EXPECT_EQ(RunTour(), 0) << m_objSimulator.ErrorText();
    EXPECT_EQ(m_objSimulator.Commands(),
              (Read + Set + Texts{"{Z4;00|}"} + Read + Texts{"{WS|}", "{HD001,A|}", "{WS|}"}));
    EXPECT_EQ(Lines("   WRONG"), Texts{});
    EXPECT_EQ(QDir(m_objPictures.path()).entryList({"usb-*.png"}),
              (QStringList{"usb-maintenance-mode.png", "usb-read-parameter-setting.png"}));
}

TEST_F(ToolOnUsbTest, TheTourTellsWhatIsNotAsItShouldBeAndGoesOnToItsEnd) {
    EXPECT_EQ(RunTour({"--close-after", "1"}), 1);
    EXPECT_EQ(m_objSimulator.Commands(), Texts{Read.front()});
    EXPECT_NE(Lines("   WRONG"), Texts{});
    EXPECT_EQ(QDir(m_objPictures.path()).entryList({"usb-*.png"}).size(), 2);
}

}  // namespace
