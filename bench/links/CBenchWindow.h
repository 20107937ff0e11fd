#pragma once

#include "platform/IFileDialog.h"
#include "platform/IMessageBox.h"
#include "platform/qt/CFixedTcpClient.h"
#include "platform/widgets/CQtPlatform.h"
#include "ui/FmMain.h"

#include <cstdint>
#include <string>

/// Boxes that nobody has to answer.
class CPassingBoxes : public IMessageBox {
public:
    using IMessageBox::Show;
    void Show(const std::string& /*p_strText*/, MessageIcon /*p_iIcon*/,
              const std::string& /*p_strTitle*/) override {
        ++m_iShown;
    }
    bool AskYesNo(const std::string& /*p_strText*/) override { return true; }
    void Beep() override {}

    int m_iShown = 0;
};

/// The tool's window as its program has it, but that its network printer is the one of a port of
/// this computer, and that nobody has to answer its boxes.
class CBenchWindow {
public:
    /// What passes while something runs: all of it, and what of it the processor worked for this
    /// thread.
    struct Spent {
        double m_dWall = 0;       ///< in milliseconds
        double m_dProcessor = 0;  ///< likewise
    };

    /// @param p_strDevices the folder of the serial ports.
    CBenchWindow(std::uint16_t p_iPort, const std::string& p_strDevices);

    /// Chooses an entry of the interface list and opens the link with the setup dialog's SET.
    void Open(int p_iInterface);

    /// Presses a button, and is back when its handler is.
    Spent Press(const char* p_strButton);

    /// Lets the window be for so long.
    Spent Wait(double p_dSeconds);

    [[nodiscard]] int Boxes() const { return m_objBoxes.m_iShown; }

private:
    CQtPlatform m_objPlatform;
    CFixedTcpClient m_objTcpClient;
    CPassingBoxes m_objBoxes;
    FmMain m_objWindow;
};
