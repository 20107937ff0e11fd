#pragma once

#include "simulator/CFaultSettings.h"
#include "simulator/CPrinter.h"
#include "simulator/ISimulatorLog.h"

#include <QStringList>

/// Runs a program in an emulated system in which the printer is plugged in on USB.
class CUsbProgram {
public:
    /// The printer and the log are not owned and must outlive this. The log is called on a thread
    /// of the emulation's own.
    CUsbProgram(CPrinter& p_objPrinter, CFaultSettings p_objFaults, ISimulatorLog& p_objLog);

    /// Runs the program with its arguments. Ctrl-C, and the system's request to end, end it.
    /// @return its exit code, 0 when it was ended so; -1 when it cannot be started or has crashed.
    int Run(const QStringList& p_strCommand);

    /// Why Run has given -1.
    [[nodiscard]] const QString& ErrorText() const { return m_strError; }

private:
    CPrinter& m_objPrinter;
    CFaultSettings m_objFaults;
    ISimulatorLog& m_objLog;
    QString m_strError;
};
