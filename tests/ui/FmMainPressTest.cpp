#include "platform/widgets/CQtMessageBox.h"
#include "tests/platform_widgets/CModalPerson.h"
#include "tests/ui/CFormFixture.h"

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QStyleHints>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <functional>

namespace {

constexpr int Com = 0;

/// Presses of the mouse that were not meant for the button that they come upon.
class FmMainPressTest : public CFormFixture {
protected:
    void SetUp() override {
        CFormFixture::SetUp();
        m_objWindow.Form().resize(1024, 740);  // everything is in sight
        QCoreApplication::processEvents();
    }

    /// Opens the serial port, on which a command is sent without a wait for the answer.
    void OpenPort() {
        m_objWindow.Choose("cmbInterface", Com);
        const CModalPerson objPerson([](QWidget& p_objDialog) {
            QTest::mouseClick(p_objDialog.findChild<QPushButton*>("btnSet"), Qt::LeftButton);
        });
        m_objWindow.Click("btnSetup");
        m_objWindow.Form().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_objWindow.Form()));
        m_objCalls.Forget();
    }

    static QPoint Centre(const QWidget& p_objControl) {
        return p_objControl.mapTo(p_objControl.window(), p_objControl.rect().center());
    }

    /// Clicks a control where it stands in its window, through the toolkit's own way from there.
    static void ClickInWindow(const QWidget& p_objControl, QPoint p_objBeside = {}) {
        QTest::mouseClick(p_objControl.window()->windowHandle(), Qt::LeftButton, {},
                          Centre(p_objControl) + p_objBeside);
    }

    /// Makes the next press come so many milliseconds after the last click.
    static void BePunctual(int p_iMilliseconds) {
        QTest::lastMouseTimestamp -= QTest::mouseDoubleClickInterval;
        QTest::lastMouseTimestamp += p_iMilliseconds;
    }

    /// How many commands have been sent.
    std::ptrdiff_t Sent() {
        const auto strCalls = m_objCalls.All();
        return std::ranges::count_if(
            strCalls, [](const std::string& p_strCall) { return p_strCall == "COM send"; });
    }

    /// Moves the dialog so that p_objIn stands over the button of the window.
    void MoveOver(QWidget& p_objDialog, const QWidget& p_objIn, const QString& p_strButton) {
        const auto Way = [&] {
            const QPushButton& btn = m_objWindow.Button(p_strButton);
            return btn.mapToGlobal(btn.rect().center()) -
                   p_objIn.mapToGlobal(p_objIn.rect().center());
        };
        p_objDialog.move(p_objDialog.pos() + Way());
        ASSERT_TRUE(QTest::qWaitFor([&] { return Way().isNull(); }));
    }

    /// What is opened by p_fnOpen is closed by a double click on p_fnFind's button, which stands
    /// over DIAG PRINT's SEND.
    void ExpectDoubleClickToSendNothing(const std::function<void()>& p_fnOpen,
                                        const std::function<QPushButton*(QWidget&)>& p_fnFind) {
        m_objWindow.BringToFront("btnDiagPrint");
        m_objCalls.Forget();
        const CModalPerson objPerson([&](QWidget& p_objDialog) {
            const QPushButton* const btn = p_fnFind(p_objDialog);
            ASSERT_NE(btn, nullptr);
            MoveOver(p_objDialog, *btn, "btnDiagPrint");
            ClickInWindow(*btn);
        });
        p_fnOpen();
        ASSERT_EQ(objPerson.Count(), 1);
        BePunctual(QGuiApplication::styleHints()->mouseDoubleClickInterval() - 50);
        ClickInWindow(m_objWindow.Button("btnDiagPrint"));
        EXPECT_EQ(Sent(), 0);
        ClickInWindow(m_objWindow.Button("btnDiagPrint"));  // a moment later
        EXPECT_EQ(Sent(), 1);
    }
};

TEST_F(FmMainPressTest, TheSecondPressOfADoubleClickReachesNoneOfTheEighteenButtons) {
    for (const QString& strName : CMainWindow::ActionButtons()) {
        SCOPED_TRACE(strName.toStdString());
        m_objWindow.BringToFront(strName);
        QPushButton& btn = m_objWindow.Button(strName);
        QTest::mousePress(&btn, Qt::LeftButton);
        EXPECT_TRUE(btn.isDown());
        btn.setDown(false);
        QTest::mouseDClick(&btn, Qt::LeftButton);  // the toolkit takes it for a double click
        EXPECT_FALSE(btn.isDown());
        QTest::mousePress(&btn, Qt::LeftButton);  // or, between two windows, for a press
        EXPECT_FALSE(btn.isDown());
        QTest::mouseRelease(&btn, Qt::LeftButton);
    }
}

TEST_F(FmMainPressTest, PressesApartInTimeOrPlaceArePresses) {
    const QStyleHints& objHints = *QGuiApplication::styleHints();
    QPushButton& btn = m_objWindow.Button("btnRead");
    const QPoint objPlace = btn.rect().center();
    const auto IsTaken = [&](const QPoint& p_objPlace, int p_iMilliseconds) {
        btn.setDown(false);
        QTest::lastMouseTimestamp += p_iMilliseconds - 1;  // the press adds one
        QTest::mousePress(&btn, Qt::LeftButton, {}, p_objPlace);
        return btn.isDown();
    };
    const int iTime = objHints.mouseDoubleClickInterval();
    const QPoint objBeside(objHints.mouseDoubleClickDistance() + 1, 0);
    EXPECT_TRUE(IsTaken(objPlace, 1000));
    EXPECT_FALSE(IsTaken(objPlace, iTime - 1));
    EXPECT_FALSE(IsTaken(objPlace, iTime - 1)) << "one more in the same row";
    EXPECT_TRUE(IsTaken(objPlace, iTime));
    EXPECT_TRUE(IsTaken(objPlace + objBeside, 1));
    EXPECT_FALSE(IsTaken(objPlace + QPoint(1, 0) + objBeside - QPoint(2, 0), 1));
    btn.setDown(false);
    QTest::mouseRelease(&btn, Qt::LeftButton, {}, QPoint(-50, -50));
}

TEST_F(FmMainPressTest, ADoubleClickOnSendSendsOnce) {
    OpenPort();
    for (const char* strName : {"btnDiagPrint", "btnRamClear", "btnThresholdCalib"}) {
        m_objCalls.Forget();
        m_objWindow.BringToFront(strName);
        const QPushButton& btn = m_objWindow.Button(strName);
        QTest::mouseDClick(btn.window()->windowHandle(), Qt::LeftButton, {}, Centre(btn));
        EXPECT_EQ(Sent(), 1) << strName;
        ClickInWindow(btn);
        ClickInWindow(btn);
        EXPECT_EQ(Sent(), 3) << strName << ": two clicks with time between them";
    }
}

TEST_F(FmMainPressTest, ADoubleClickOnTwoButtonsSideBySideIsOnePressEach) {
    OpenPort();
    m_objWindow.BringToFront("btnRamClear");
    ClickInWindow(m_objWindow.Button("btnRamClear"));
    BePunctual(10);
    ClickInWindow(m_objWindow.Button("btnThresholdCalib"));
    EXPECT_EQ(Sent(), 2);
}

TEST_F(FmMainPressTest, ADoubleClickOnSetInTheSetupReachesNothingUnderIt) {
    m_objWindow.Choose("cmbInterface", Com);
    ExpectDoubleClickToSendNothing(
        [this] {
            m_objWindow.Button("btnSetup").setFocus();
            QTest::keyClick(&m_objWindow.Button("btnSetup"), Qt::Key_Space);
        },
        [](QWidget& p_objDialog) { return p_objDialog.findChild<QPushButton*>("btnSet"); });
}

TEST_F(FmMainPressTest, ADoubleClickOnOkInTheAboutBoxReachesNothingUnderIt) {
    OpenPort();
    ExpectDoubleClickToSendNothing(
        [this] { m_objWindow.Get<QAction>("smAbout").trigger(); },
        [](QWidget& p_objDialog) { return p_objDialog.findChild<QPushButton*>("btnOk"); });
}

TEST_F(FmMainPressTest, ADoubleClickOnOkInAMessageBoxReachesNothingUnderIt) {
    OpenPort();
    CQtMessageBox objBoxes(m_objEventLoop);
    ExpectDoubleClickToSendNothing(
        [&] { objBoxes.Show("Device Time Out !!", MessageIcon::Critical, "Failure"); },
        [](QWidget& p_objDialog) {
            return qobject_cast<QPushButton*>(
                dynamic_cast<QMessageBox&>(p_objDialog).button(QMessageBox::Ok));
        });
}

TEST_F(FmMainPressTest, ADoubleClickInTheFileDialogReachesNothingUnderIt) {
    OpenPort();
    ExpectDoubleClickToSendNothing(
        [this] {
            CFileDialogRecord objRecord;
            m_objFileDialog.GetOpenFileName(objRecord);
        },
        [](QWidget& p_objDialog) {
            return p_objDialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel);
        });
}

}  // namespace
