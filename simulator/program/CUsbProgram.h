#pragma once

#include "simulator/CFaultSettings.h"
#include "simulator/CPrinter.h"
#include "simulator/CPrinterLog.h"
#include "simulator/usb/CUsbWorld.h"

#include <QProcess>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <memory>

class CEmulatedPrinter;

/// Runs a program in an emulated system in which the printer is plugged in on USB.
///
/// Without power the printer is unplugged, and plugged in again when the power is back.
class CUsbProgram {
public:
    /// The printer and the log are not owned and must outlive this. The log is called on a thread
    /// of the emulation's own, never at the same time as on the caller's.
    /// @param p_fnDump called when the system asks for the settings (SIGUSR1), while nothing else
    ///        uses the printer.
    CUsbProgram(CPrinter& p_objPrinter, CFaultSettings p_objFaults, CPrinterLog& p_objLog,
                std::function<void()> p_fnDump);
    ~CUsbProgram();
    CUsbProgram(const CUsbProgram&) = delete;
    CUsbProgram& operator=(const CUsbProgram&) = delete;

    /// Runs the program with its arguments. Ctrl-C, and the system's request to end, end it;
    /// SIGUSR2 takes the printer's power for a while.
    /// @return its exit code, 0 when it was ended so; -1 when it cannot be started or has crashed.
    int Run(const QStringList& p_strCommand);

    /// Why Run has given -1.
    [[nodiscard]] const QString& ErrorText() const { return m_strError; }

private:
    void PlugIn();
    void Gone();
    void ComeBack();
    void PowerCycle();
    int Result(const QString& p_strProgram, bool p_bStopped);

    CPrinter& m_objPrinter;
    CFaultSettings m_objFaults;
    CPrinterLog& m_objLog;
    std::function<void()> m_fnDump;
    QString m_strError;
    CUsbWorld m_objWorld;
    QProcess m_objProgram;
    QTimer m_objPowerBack;
    std::unique_ptr<CEmulatedPrinter> m_objDevice;
};
