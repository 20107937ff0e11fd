#pragma once

#include "platform/qt/CQtClock.h"
#include "platform/qt/CQtEventLoop.h"
#include "platform/qt/CQtFileStore.h"
#include "platform/qt/CQtTcpClient.h"
#include "platform/widgets/CQtFileDialog.h"
#include "tests/fakes/CAbsentSerialPort.h"
#include "tests/fakes/CAbsentUsbLibrary.h"
#include "tests/fakes/CFakeClock.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/CHastyClock.h"
#include "tests/golden/MGolden.h"
#include "tests/simulator/CSimulatorProcess.h"
#include "tests/ui/CMainWindow.h"
#include "tests/ui/MTaughtPrinter.h"

#include <QElapsedTimer>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

/// The open main window and a printer made of software in its own process, over real TCP, in real
/// time unless the test has it pass otherwise. Only the message boxes are scripted.
class CPrinterFixture : public ::testing::Test {
protected:
    /// Both send it when nothing was changed.
    static inline const std::string DefaultParameters = MGolden::Parameters;
    static inline const std::string DefaultAdjustments = MGolden::Adjustments;

    /// How the time passes that the window measures its waits and pauses by.
    enum class Pace : std::uint8_t {
        Real,
        Hasty,   ///< ten times as fast
        ByHand,  ///< only when the test moves m_objHandClock
    };

    explicit CPrinterFixture(Pace p_iPace = Pace::Real);

    /// What LAN SET sends when nothing was changed.
    static const std::vector<std::string>& LanSetCommands();

    void SetUp() override { ASSERT_TRUE(m_objWindow.Open()); }

    /// Starts the printer with its program's options.
    void StartPrinter(const QStringList& p_strOptions = {});

    /// Gives the printer other settings than the defaults, over connections of its own.
    void TeachPrinter();

    /// Chooses LAN and connects to the printer as a person does.
    void ConnectToPrinter();

    /// The commands that the window has sent.
    [[nodiscard]] std::vector<std::string> Sent() const;

    /// How many status answers the printer has sent.
    [[nodiscard]] std::size_t AnswerCount() const;

    /// Notes from now on when commands arrive.
    void WatchArrivals();

    /// Milliseconds between each command and the one before it.
    [[nodiscard]] std::vector<qint64> Gaps() const;

    void ExpectTimeOutBox() {
        m_objBoxes.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    }
    void ExpectSendErrorBox() {
        m_objBoxes.Expect("'LAN' Send Error !!", MessageIcon::Exclamation);
    }

    QString Shown(const QString& p_strName) { return m_objWindow.Shown(p_strName); }

    static constexpr int PatienceMs = 20'000;

    CSimulatorProcess m_objPrinter;
    CQtEventLoop m_objEventLoop;
    CQtClock m_objClock;
    CHastyClock m_objHastyClock{10};
    CFakeClock m_objHandClock;
    CFakeMessageBox m_objBoxes;
    CQtTcpClient m_objNetwork;
    CAbsentSerialPort m_objSerialPort;
    CAbsentUsbLibrary m_objUsbLibrary;
    CQtFileDialog m_objFileDialog{m_objEventLoop};
    CQtFileStore m_objFileStore;
    CMainWindow m_objWindow;

private:
    [[nodiscard]] const IClock& Clock(Pace p_iPace) const;
    CPlatform Platform(Pace p_iPace);

    QTimer m_objWatch;
    QElapsedTimer m_objTime;
    std::vector<qint64> m_iArrivals;
    std::size_t m_iTaught = 0;
};
