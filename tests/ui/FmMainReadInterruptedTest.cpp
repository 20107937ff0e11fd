#include "tests/ui/CModalAnswer.h"
#include "tests/ui/CPrinterFixture.h"

#include <QMenu>
#include <QTest>

#include <functional>
#include <string>
#include <vector>

namespace {

const std::vector<std::string> ReadRequests{"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"};

constexpr int LookEveryMs = 5;
constexpr std::int64_t ShortOfTheLimitMs = 4500;
constexpr std::int64_t BeyondTheLimitMs = 5100;

/// READ from a printer with other settings than the page, and what a person can still do
/// meanwhile. The time stands still until the test moves it.
class FmMainReadInterruptedTest : public CPrinterFixture {
protected:
    FmMainReadInterruptedTest()
        : CPrinterFixture(Pace::ByHand) {
        m_objTicks.callOnTimeout([this] { m_objHandClock.Advance(4 * LookEveryMs); });
    }

    void SetUp() override {
        CPrinterFixture::SetUp();
        StartPrinter({"--delay", "600"});
        TeachPrinter();
        ConnectToPrinter();
    }

    /// Presses READ, and does p_fnAction as soon as p_fnReached holds.
    void Read(const std::function<bool()>& p_fnReached, const std::function<void()>& p_fnAction) {
        QTimer objLook;
        objLook.callOnTimeout([&] {
            if (p_fnReached()) {
                objLook.stop();
                p_fnAction();
            }
        });
        objLook.start(LookEveryMs);
        m_objWindow.Click("btnRead");
        m_objBoxes.Verify();
        EXPECT_FALSE(objLook.isActive()) << "READ never got there";
        EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
    }

    /// Presses READ and, while the first answer is under way, opens the About box. In it the
    /// answer arrives and so much time passes.
    void ReadWithTheAboutBoxOpenFor(std::int64_t p_iMilliseconds) {
        const CModalAnswer objAnswer("FmAbout", [&](QWidget& p_objBox) {
            EXPECT_EQ(m_objWindow.DisabledButtons(), CMainWindow::ActionButtons());
            EXPECT_TRUE(QTest::qWaitFor([this] { return FirstAnswerIsThere(); }));
            m_objHandClock.Advance(p_iMilliseconds);
            QTest::mouseClick(p_objBox.findChild<QPushButton*>("btnOk"), Qt::LeftButton);
            m_objTicks.start(LookEveryMs);
        });
        const auto fnAwaited = [this] { return Sent().size() == 1; };
        Read(fnAwaited, [this] {
            EXPECT_FALSE(FirstAnswerIsThere());
            QTest::keyClick(m_objWindow.Form().windowHandle(), Qt::Key_A, Qt::AltModifier);
            QTest::keyClick(&m_objWindow.Get<QMenu>("mmAbout"), Qt::Key_A);
        });
        EXPECT_TRUE(objAnswer.Done());
    }

    bool FirstAnswerIsThere() {
        return m_objWindow.Form().ItemManager().m_objFeedAdjustment->GetValueString() == "123";
    }

    /// The time begins to pass, slowly enough for the printer's answers.
    QTimer m_objTicks;
};

TEST_F(FmMainReadInterruptedTest, GoesOnWhenTheAboutBoxIsClosedInTime) {
    ReadWithTheAboutBoxOpenFor(ShortOfTheLimitMs);
    EXPECT_EQ(Sent(), ReadRequests);
    MTaughtPrinter::ExpectPage(m_objWindow);
    EXPECT_TRUE(m_objBoxes.Shown().empty());
}

TEST_F(FmMainReadInterruptedTest, TimesOutUnderTheAboutBoxThoughTheAnswerIsThere) {
    const auto strBefore = m_objWindow.ShownFields();
    ExpectTimeOutBox();
    m_objBoxes.WhileShown([this](const auto&) {
        EXPECT_EQ(m_objWindow.DisabledButtons(), CMainWindow::ActionButtons());
    });
    ReadWithTheAboutBoxOpenFor(BeyondTheLimitMs);
    EXPECT_EQ(m_objBoxes.BeepCount(), 1);
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    EXPECT_EQ(Sent(), std::vector<std::string>{ReadRequests.front()});
}

TEST_F(FmMainReadInterruptedTest, GoesOnAfterTheRangeBoxOfAFieldThatIsLeftInItsPause) {
    m_objBoxes.Expect("It is a value that exceeds the useful range. ");
    m_objBoxes.WhileShown([this](const auto&) {
        EXPECT_EQ(m_objWindow.DisabledButtons(), CMainWindow::ActionButtons());
    });
    Read([this] { return FirstAnswerIsThere(); },
         [this] {
             // A moment later: the pause, which lasts as long as the time stands still.
             QTimer::singleShot(10 * LookEveryMs, &m_objTicks, [this] {
                 m_objWindow.Type("SeFeedAdj", "50.1");
                 QTest::keyClick(&m_objWindow.Field("SeFeedAdj"), Qt::Key_Tab);
                 EXPECT_EQ(Shown("SeFeedAdj"), "0.0");
                 m_objTicks.start(LookEveryMs);
             });
         });
    EXPECT_EQ(Sent(), ReadRequests);
    MTaughtPrinter::ExpectPage(m_objWindow);
}

}  // namespace
