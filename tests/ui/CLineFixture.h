#pragma once

#include "tests/fakes/CFakeClock.h"
#include "tests/fakes/CFakeEventLoop.h"
#include "tests/fakes/CFakeFileDialog.h"
#include "tests/fakes/CFakeFileStore.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/CFakeSerialPort.h"
#include "tests/fakes/CFakeTcpClient.h"
#include "tests/fakes/CFakeUsbLibrary.h"
#include "tests/fakes/CScriptedPrinter.h"
#include "tests/golden/MGolden.h"
#include "tests/ui/CMainWindow.h"
#include "tests/ui/CModalAnswer.h"
#include "tests/ui/CNameLog.h"

#include <QTabWidget>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

/// The open window with doubles on every side, a printer behind each link that answers by script,
/// and a clock that only its waits move. What the line at the foot of the window says is at hand.
class CLineFixture : public ::testing::Test {
protected:
    static constexpr int Com = 0;
    static constexpr int Lan = 1;
    static constexpr int Usb = 2;

    CLineFixture() { Answer(Behave); }

    /// A printer with its defaults.
    static std::optional<std::string> Behave(const std::string& p_strCommand) {
        constexpr std::size_t iGroup = 4;
        return p_strCommand.starts_with("{Z5;") ? MGolden::Answer(p_strCommand[iGroup] - '0')
                                                : MWire::Status("00");
    }

    void SetUp() override { ASSERT_TRUE(m_objWindow.Open()); }

    /// Every command is answered so, on each link as it does there.
    void Answer(const CScriptedPrinter::Script& p_fnAnswer) {
        m_objPort.m_fnAnswer = p_fnAnswer;
        m_objPrinter.m_fnAnswer = p_fnAnswer;
        m_objLibrary.m_fnSent = [this, p_fnAnswer](const std::string& p_strCommand) {
            if (const auto strAnswer = p_fnAnswer(p_strCommand)) {
                m_objLibrary.m_strAnswers.push_back(
                    strAnswer->starts_with("{") ? "\x02 " + *strAnswer : *strAnswer);
            }
        };
    }

    void Choose(int p_iInterface) { m_objWindow.Choose("cmbInterface", p_iInterface); }

    /// Presses SET in Setup, with the address that stands there.
    void SetUpLink() {
        const CModalAnswer objAnswer("FmInterfaceSetup", [](QWidget& p_objDialog) {
            QTest::mouseClick(p_objDialog.findChild<QPushButton*>("btnSet"), Qt::LeftButton);
        });
        m_objWindow.Click("btnSetup");
        ASSERT_TRUE(objAnswer.Done());
        TakeKeyboard();
    }

    /// In a wait behind the setup dialog: not every platform gives the window the keyboard back.
    void TakeKeyboard() {
        m_objWindow.Form().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_objWindow.Form()));
    }

    /// Chooses the interface and opens its link, which USB needs not.
    void Use(int p_iInterface) {
        Choose(p_iInterface);
        if (p_iInterface != Usb) {
            SetUpLink();
        }
    }

    /// Runs p_fnAction so many milliseconds from now, inside a wait.
    void After(std::int64_t p_iMilliseconds, std::function<void()> p_fnAction) {
        m_objEventLoop.After(p_iMilliseconds, std::move(p_fnAction));
    }

    [[nodiscard]] std::string Link() { return m_objWindow.Shown("lblLink").toStdString(); }
    [[nodiscard]] std::string Doing() { return m_objWindow.Shown("lblDoing").toStdString(); }
    [[nodiscard]] std::string Page() { return m_objWindow.Shown("lblPage").toStdString(); }
    /// Null while there is none.
    [[nodiscard]] QToolButton* Stop() {
        return m_objWindow.Form().findChild<QToolButton*>("btnStop");
    }

    void ShowTab(int p_iTab) { m_objWindow.Get<QTabWidget>("SSTab1").setCurrentIndex(p_iTab); }

    CFakeClock m_objClock;
    CFakeEventLoop m_objEventLoop{m_objClock};
    CFakeMessageBox m_objBoxes;
    CFakeTcpClient m_objSocket{m_objEventLoop};
    CScriptedPrinter m_objPrinter{m_objEventLoop, m_objSocket};
    CFakeSerialPort m_objPort{m_objEventLoop};
    CFakeUsbLibrary m_objLibrary{m_objEventLoop};
    CFakeFileDialog m_objFileDialog;
    CFakeFileStore m_objFileStore;
    CMainWindow m_objWindow{{{m_objEventLoop, m_objClock, m_objSocket, m_objPort, m_objLibrary},
                             {m_objBoxes, m_objFileDialog, m_objFileStore, "/program"}}};
};
