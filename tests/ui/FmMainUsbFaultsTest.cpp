#include "tests/ui/CUsbWindowFixture.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Every button against printers on USB that answer badly, or not at all.

namespace {

using std::chrono::milliseconds;
using Manner = UsbAction::Manner;
using Texts = std::vector<std::string>;

/// Counts how often a window is painted.
class CPaintCount : public QObject {
public:
    explicit CPaintCount(QWidget& p_objWindow) { p_objWindow.installEventFilter(this); }

    bool eventFilter(QObject* /*p_objWatched*/, QEvent* p_objEvent) override {
        m_iPaints += p_objEvent->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    int m_iPaints = 0;
};

class FmMainUsbFaultsTest : public CUsbWindowFixture {
protected:
    FmMainUsbFaultsTest()
        : CUsbWindowFixture(Pace::Hasty) {}

    /// Every button sends all that it has to send, and is content.
    void ExpectEveryButtonToWork() {
        for (const UsbAction& objAction : UsbAction::All()) {
            SCOPED_TRACE(objAction);
            Press(objAction);
            EXPECT_EQ(Taken(), objAction.Wire());
        }
        ExpectBeeps(0);
    }

    /// The same, and the answers come to their places.
    void ExpectEveryAnswerToBeTaken() {
        ExpectEveryButtonToWork();
        EXPECT_EQ(Shown("lblHeadCheck"), "ON LINE");
        EXPECT_EQ(Shown("lblStatus"), "ON LINE");
        TeachPrinter();
        Press("btnRead");
        MTaughtPrinter::ExpectPage(m_objWindow);
    }

    /// The same buttons, and the answers come to no place at all: only the reads tell.
    void ExpectEveryAnswerToBeLeftAlone() {
        const auto strBefore = m_objWindow.ShownFields();
        for (const UsbAction& objAction : UsbAction::All()) {
            SCOPED_TRACE(objAction);
            const bool bReads = objAction.m_iManner == Manner::Reads;
            if (bReads) {
                ExpectNoAnswer();
            }
            Press(objAction);
            m_objBoxes.Verify();
            EXPECT_EQ(Taken(), objAction.Wire(bReads ? 1 : objAction.m_strCommands.size()));
        }
        ExpectBeeps(0);
        EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
        EXPECT_EQ(Shown("lblHeadCheck"), "");
        EXPECT_EQ(Shown("lblStatus"), "");
        EXPECT_FALSE(Answers().empty());
    }

    CUsbBehaviour m_objBehaviour;
    CFaultSettings m_objFaults;
};

TEST_F(FmMainUsbFaultsTest, EachButtonSendsItsCommandsToAPrinterThatBehaves) {
    Plug();
    ExpectEveryAnswerToBeTaken();
}

TEST_F(FmMainUsbFaultsTest, LateAnswersInPiecesAreTaken) {
    m_objFaults.m_iDelay = milliseconds(50);
    // Two of a status, ten of the longest answer: it has a second for all of them, and on a busy
    // machine each takes its time.
    m_objFaults.m_iPieces = 10;
    m_objFaults.m_iGap = milliseconds(1);
    Plug({}, m_objFaults);
    ExpectEveryAnswerToBeTaken();
}

TEST_F(FmMainUsbFaultsTest, ASlowPrinterThatTakesAFewBytesAtATimeGetsThemAll) {
    m_objBehaviour.m_iMostTaken = 10;
    m_objBehaviour.m_iSlow = milliseconds(5);
    Plug(m_objBehaviour);
    for (const UsbAction& objAction : UsbAction::All()) {
        if (objAction.Wire().size() > m_objBehaviour.m_iMostTaken) {
            Press(objAction);
            EXPECT_EQ(Taken(), objAction.Wire()) << objAction;
        }
    }
    ExpectBeeps(0);
}

TEST_F(FmMainUsbFaultsTest, AnEmptyPacketIsNoAnswer) {
    m_objBehaviour.m_bEmptyBeforeAnswer = true;
    Plug(m_objBehaviour);
    TeachPrinter();
    Press("btnRead");
    EXPECT_EQ(Taken(), "{Z5;0|}{Z5;1|}{Z5;4|}");
    MTaughtPrinter::ExpectPage(m_objWindow);
}

TEST_F(FmMainUsbFaultsTest, OfASilentPrinterOnlyTheReadsTell) {
    m_objFaults.m_bSilent = true;
    Plug({}, m_objFaults);
    const auto strBefore = m_objWindow.ShownFields();
    for (const UsbAction& objAction : UsbAction::All()) {
        SCOPED_TRACE(objAction);
        const bool bReads = objAction.m_iManner == Manner::Reads;
        const std::size_t iSent = bReads ? 1 : objAction.m_strCommands.size();
        if (bReads) {
            ExpectNoAnswer();
        }
        Press(objAction);
        m_objBoxes.Verify();
        EXPECT_EQ(Taken(), objAction.Wire(iSent));
        ExpectBeeps(static_cast<int>(iSent));
    }
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    EXPECT_EQ(Shown("lblHeadCheck"), "");
    EXPECT_EQ(Shown("lblStatus"), "");
}

TEST_F(FmMainUsbFaultsTest, AnAnswerThatComesTooLateIsNobodys) {
    m_objFaults.m_iDelay = milliseconds(2500);  // and a second of waiting may take a little longer
    Plug({}, m_objFaults);
    TeachPrinter();
    const auto strBefore = m_objWindow.ShownFields();
    Press("btnGetStatus");
    QTest::qWait(1700);
    ExpectNoAnswer();
    Press("btnRead");
    EXPECT_EQ(Taken(), "{WS|}{Z5;0|}");
    EXPECT_EQ(Shown("lblStatus"), "");
    EXPECT_EQ(m_objWindow.ShownFields(), strBefore);
    ExpectBeeps(2);
}

TEST_F(FmMainUsbFaultsTest, JunkIsAnAnswerAndGoesNowhere) {
    m_objFaults.m_bJunk = true;
    Plug({}, m_objFaults);
    ExpectEveryAnswerToBeLeftAlone();
}

TEST_F(FmMainUsbFaultsTest, AnAnswerBehindJunkGoesNowhere) {
    m_objFaults.m_bJunkBefore = true;
    Plug({}, m_objFaults);
    ExpectEveryAnswerToBeLeftAlone();
}

TEST_F(FmMainUsbFaultsTest, AnAnswerCutShortGoesNowhere) {
    m_objFaults.m_iCut = 3;
    Plug({}, m_objFaults);
    ExpectEveryAnswerToBeLeftAlone();
}

TEST_F(FmMainUsbFaultsTest, EachStatusCodeIsShownInItsWords) {
    Plug();
    for (const auto& [strCode, strText] :
         {std::pair{"06", "Command Error"}, {"15", "Head Open Error"}, {"40", ""}, {"03", ""}}) {
        SCOPED_TRACE(strCode);
        m_objPrinter.SetStatus(strCode);
        Press("btnGetStatus");
        EXPECT_EQ(Shown("lblStatus"), strText);
        EXPECT_EQ(Answers(), Texts{"<01><02>" + std::string(strCode) + "0000000<03><04>"});
        Press("btnHeadCheck");
        EXPECT_EQ(Shown("lblHeadCheck"), strText);
        Answers();
    }
}

TEST_F(FmMainUsbFaultsTest, AWriteThatIsNotTakenIsGivenUpAfterFiveSeconds) {
    m_objBehaviour.m_bTakesNothing = true;
    Plug(m_objBehaviour);
    m_objBoxes.Expect("Device Time Out !!", MessageIcon::Critical);
    QElapsedTimer objTime;
    objTime.start();
    Press("btnSet");
    EXPECT_GE(objTime.elapsed(), 4900);
    EXPECT_EQ(Taken(), "");
    ExpectBeeps(0);
}

TEST_F(FmMainUsbFaultsTest, TheWindowIsPaintedWhileAnAnswerIsAwaited) {
    m_objFaults.m_bSilent = true;
    Plug({}, m_objFaults);
    QTimer objTimer;
    QObject::connect(&objTimer, &QTimer::timeout, [this] { m_objWindow.Form().update(); });
    objTimer.start(20);
    const CPaintCount objCount(m_objWindow.Form());
    Press("btnDiagPrint");
    EXPECT_GE(objCount.m_iPaints, 15);
}

TEST_F(FmMainUsbFaultsTest, ClosingTheWindowEndsTheWaitForAnAnswer) {
    m_objFaults.m_bSilent = true;
    Plug({}, m_objFaults);
    QTimer::singleShot(200, [this] { m_objWindow.Form().close(); });
    QElapsedTimer objTime;
    objTime.start();
    m_objWindow.Click("btnRead");
    EXPECT_LT(objTime.elapsed(), 900);
    EXPECT_EQ(Taken(), "{Z5;0|}");
    ExpectBeeps(0);
}

}  // namespace
