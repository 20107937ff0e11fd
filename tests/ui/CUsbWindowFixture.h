#pragma once

#include "platform/widgets/CQtPlatform.h"
#include "simulator/usb/CEmulatedPrinter.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/CHastyClock.h"
#include "tests/ui/CMainWindow.h"
#include "tests/ui/MTaughtPrinter.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

/// A button, the commands that it sends when nothing has been changed, and how it takes failures.
struct UsbAction {
    enum class Manner : std::uint8_t {
        Reads,   ///< an answer that does not come is a failure; the first one ends it
        Writes,  ///< the first command that does not go out ends it
        Silent,  ///< no failure is told, the next command sent all the same
    };

    const char* m_strButton;
    std::vector<std::string> m_strCommands;
    Manner m_iManner;

    /// The first p_iCount of the commands as they stand on the wire.
    [[nodiscard]] std::string Wire(std::size_t p_iCount) const;
    [[nodiscard]] std::string Wire() const { return Wire(m_strCommands.size()); }

    /// Every button that talks to the printer.
    static const std::vector<UsbAction>& All();

    friend std::ostream& operator<<(std::ostream& p_objStream, const UsbAction& p_objAction) {
        return p_objStream << p_objAction.m_strButton;
    }
};

/// The open main window on the real platform, USB chosen, and a bus that holds what the test plugs
/// in. Only the message boxes are scripted. The program must have been started with the bus's
/// library preloaded.
class CUsbWindowFixture : public ::testing::Test {
protected:
    /// How fast the time passes that the window's pauses are measured by. The USB library's own
    /// waits have their real length in either case.
    enum class Pace : std::uint8_t { Real, Hasty };

    explicit CUsbWindowFixture(Pace p_iPace);

    void SetUp() override;
    void TearDown() override;

    /// Gives the printer other settings than the defaults.
    void TeachPrinter();

    /// Plugs a device in after those that are there.
    CEmulatedPrinter& Plug(const CUsbBehaviour& p_objBehaviour = {},
                           const CFaultSettings& p_objFaults = {});
    /// Takes every device off the bus.
    void UnplugAll();

    /// Presses the button and expects every button to be enabled when it is done.
    void Press(const UsbAction& p_objAction) { Press(p_objAction.m_strButton); }
    void Press(const char* p_strButton);

    /// Presses "Setup", and "SET" in its dialog. With COM chosen no port is found.
    void PressSetup();

    /// The bytes that the device plugged in last has taken since the last call.
    std::string Taken();
    /// The answers that were sent since the last call, "<02>" for a byte that cannot be printed.
    std::vector<std::string> Answers();

    void ExpectOpenError() { m_objBoxes.Expect("'USB' Open Error !!", MessageIcon::Critical); }
    void ExpectNoAnswer() {
        m_objBoxes.Expect("Please confirm the connection of USB.", MessageIcon::Exclamation);
    }
    void ExpectNotReady() {
        m_objBoxes.Expect("USB Device not ready !!", MessageIcon::Exclamation);
    }

    /// Expects, and forgets, so many beeps.
    void ExpectBeeps(int p_iCount);

    QString Shown(const QString& p_strName) { return m_objWindow.Shown(p_strName); }

    /// Keeps the answers; written to on the bus's thread.
    class CAnswerLog : public ISimulatorLog {
    public:
        void Line(std::size_t p_iConnection, std::string_view p_strLine) override;
        std::vector<std::string> Take();

    private:
        std::mutex m_objMutex;
        std::vector<std::string> m_strAnswers;
    };

    CPrinter m_objPrinter;
    CAnswerLog m_objLog;
    CUsbWorld m_objWorld;
    std::vector<std::unique_ptr<CEmulatedPrinter>> m_objDevices;
    QTemporaryDir m_objNoPorts;
    CQtPlatform m_objPlatform{m_objNoPorts.path().toStdString()};  // this computer's stay alone
    CHastyClock m_objHastyClock{50};
    CFakeMessageBox m_objBoxes;
    CMainWindow m_objWindow;

private:
    CPlatform Platform(Pace p_iPace);

    std::size_t m_iTaken = 0;
    int m_iBeeps = 0;
};
