#include "tests/ui/CModalAnswer.h"
#include "tests/ui/CPrinterFixture.h"

#include <QMenu>
#include <QTest>

#include <functional>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

/// LAN SET leaves the buttons enabled: what a person presses while it waits runs to its end, then
/// it goes on. The printer's answers take a while, so that the first is under way then.
class FmMainInsideLanSetTest : public CPrinterFixture {
protected:
    explicit FmMainInsideLanSetTest(Pace p_iPace = Pace::Real)
        : CPrinterFixture(p_iPace) {}

    void SetUp() override {
        CPrinterFixture::SetUp();
        StartPrinter({"--delay", "400"});
    }

    /// Presses SET and, as soon as the first command is out, does p_fnAction. Returns when both
    /// are over.
    void PressInside(const std::function<void()>& p_fnAction) {
        bool bRuns = true;
        bool bInside = false;
        QTimer objLook;
        objLook.callOnTimeout([&] {
            if (Sent().size() == 1) {
                objLook.stop();
                EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
                p_fnAction();
                bInside = bRuns;
            }
        });
        objLook.start(5);
        m_objWindow.Click("btnLanSet");
        bRuns = false;
        EXPECT_TRUE(bInside);
        m_objBoxes.Verify();
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    }

    /// All of LAN SET's commands, and behind the first those of what was pressed inside.
    static Texts LanSetWith(const Texts& p_strInside) {
        Texts strCommands = LanSetCommands();
        strCommands.insert(strCommands.begin() + 1, p_strInside.begin(), p_strInside.end());
        return strCommands;
    }

    void ExpectSent(const Texts& p_strCommands) {
        EXPECT_TRUE(m_objPrinter.WaitForCommands(p_strCommands.size(), PatienceMs));
        EXPECT_TRUE(CSimulatorProcess::WaitUntil(
            [&] { return Sent().size() >= p_strCommands.size(); }, PatienceMs));
        EXPECT_EQ(Sent(), p_strCommands);
    }
};

TEST_F(FmMainInsideLanSetTest, GetStatusIsShownAndAllFiveAreSent) {
    ConnectToPrinter();
    PressInside([this] {
        m_objWindow.Click("btnGetStatus");
        EXPECT_EQ(Shown("lblStatus"), "ON LINE");
        EXPECT_EQ(Sent(), (Texts{LanSetCommands().front(), "{WS|}"}));
    });
    ExpectSent(LanSetWith({"{WS|}"}));
}

TEST_F(FmMainInsideLanSetTest, ReadFillsItsPageAndAllFiveAreSent) {
    TeachPrinter();
    ConnectToPrinter();
    PressInside([this] {
        m_objWindow.Click("btnRead");
        MTaughtPrinter::ExpectPage(m_objWindow);
    });
    EXPECT_EQ(Sent(), LanSetWith({"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"}));
}

TEST_F(FmMainInsideLanSetTest, LanReadShowsWhatIsHalfSetAndAllFiveAreSent) {
    ConnectToPrinter();
    m_objWindow.Type("SeIpAddress4", "77");
    m_objWindow.Type("SeSocetPort", "9100");
    PressInside([this] {
        m_objWindow.Click("btnLanRead");
        EXPECT_EQ(Shown("SeIpAddress4"), "77");
        EXPECT_EQ(Shown("SeSocetPort"), "8000");
    });
    Texts strExpected = LanSetWith({"{Z5;3|}"});
    strExpected[0] = "{IP;2,192,168,010,077|}";
    strExpected[4] = "{IS;1,09100|}";
    ExpectSent(strExpected);
    m_objWindow.Click("btnLanRead");
    EXPECT_EQ(Shown("SeSocetPort"), "9100");
}

TEST_F(FmMainInsideLanSetTest, AnotherLanSetSendsAllFiveAndTheFirstNoMore) {
    ConnectToPrinter();
    PressInside([this] {
        m_objWindow.Type("SeSocetPort", "9100");
        m_objWindow.Click("btnLanSet");
    });
    Texts strExpected = LanSetCommands();
    strExpected[3] = "{IS;1,09100|}";
    strExpected.insert(strExpected.begin(), LanSetCommands().front());
    ExpectSent(strExpected);
    m_objWindow.Click("btnLanRead");
    strExpected.emplace_back("{Z5;3|}");
    ExpectSent(strExpected);
}

TEST_F(FmMainInsideLanSetTest, AnotherLanSetThatIsRefusedLeavesTheFirstAlone) {
    ConnectToPrinter();
    PressInside([this] {
        m_objWindow.Type("txtDhcpName", "a-name-of-17-char");
        m_objWindow.Click("btnLanSet");
    });
    ExpectSent(LanSetCommands());
}

TEST_F(FmMainInsideLanSetTest, SetupThatConnectsAnewEndsItWithTheLinksOwnWords) {
    ConnectToPrinter();
    ExpectSendErrorBox();
    PressInside([this] { EXPECT_TRUE(m_objWindow.SetUp("127.0.0.1")); });
    m_objWindow.Click("btnGetStatus");
    EXPECT_EQ(Shown("lblStatus"), "ON LINE");
    ExpectSent({LanSetCommands().front(), "{WS|}"});
}

TEST_F(FmMainInsideLanSetTest, SetupThatConnectsToAnotherPrinterSendsItNothing) {
    ConnectToPrinter();
    CSimulatorProcess objOther;
    ASSERT_TRUE(objOther.Start());
    ExpectSendErrorBox();
    PressInside([&] {
        m_objWindow.Form().Interface().m_objSocketPort->SetValue(objOther.Port());
        EXPECT_TRUE(m_objWindow.SetUp("127.0.0.1"));
    });
    ExpectSent({LanSetCommands().front()});
    m_objWindow.Click("btnGetStatus");
    EXPECT_EQ(objOther.Commands(), Texts{"{WS|}"});
}

TEST_F(FmMainInsideLanSetTest, AHostNameThatHasNoPlaceIsNotSentAndNeitherIsTheRest) {
    ConnectToPrinter();
    m_objWindow.Type("txtDhcpName", "a-name-of-17-char");
    m_objWindow.Click("btnLanSet");
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    m_objWindow.Type("txtDhcpName", "");
    m_objWindow.Click("btnLanSet");
    ExpectSent(LanSetCommands());
}

/// What stands in front of the window for longer than any wait, while the answer comes.
class FmMainInsideLanSetStandingTest : public FmMainInsideLanSetTest {
protected:
    FmMainInsideLanSetStandingTest()
        : FmMainInsideLanSetTest(Pace::ByHand) {}

    void LetTimePass() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return AnswerCount() == 1; }));
        m_objHandClock.Advance(6000);
    }
};

TEST_F(FmMainInsideLanSetStandingTest, SetupWithCancelTakesItsTimeAndAllFiveAreSent) {
    ConnectToPrinter();
    PressInside([this] {
        const CModalAnswer objAnswer("FmInterfaceSetup", [this](QWidget& p_objDialog) {
            LetTimePass();
            QTest::mouseClick(p_objDialog.findChild<QPushButton*>("btnCancel"), Qt::LeftButton);
        });
        m_objWindow.Click("btnSetup");
        EXPECT_TRUE(objAnswer.Done());
    });
    ExpectSent(LanSetCommands());
}

TEST_F(FmMainInsideLanSetStandingTest, TheAboutBoxTakesItsTimeAndAllFiveAreSent) {
    ConnectToPrinter();
    PressInside([this] {
        const CModalAnswer objAnswer("FmAbout", [this](QWidget& p_objBox) {
            LetTimePass();
            QTest::mouseClick(p_objBox.findChild<QPushButton*>("btnOk"), Qt::LeftButton);
        });
        QTest::keyClick(m_objWindow.Form().windowHandle(), Qt::Key_A, Qt::AltModifier);
        QTest::keyClick(&m_objWindow.Get<QMenu>("mmAbout"), Qt::Key_A);
        EXPECT_TRUE(objAnswer.Done());
    });
    ExpectSent(LanSetCommands());
}

}  // namespace
