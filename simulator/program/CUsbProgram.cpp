#include "simulator/program/CUsbProgram.h"

#include "simulator/program/CStopSignals.h"
#include "simulator/usb/CEmulatedPrinter.h"

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>

#include <cstdlib>
#include <utility>

namespace {

/// This program's environment as it is now, with the emulation preloaded behind whatever is
/// preloaded already.
QProcessEnvironment InsideEnvironment() {
    const QString strVariable = "LD_PRELOAD";
    QProcessEnvironment objEnvironment = QProcessEnvironment::systemEnvironment();
    QStringList strLibraries = objEnvironment.value(strVariable).split(':', Qt::SkipEmptyParts);
    if (!strLibraries.contains(CUsbWorld::PreloadLibrary)) {
        strLibraries.append(CUsbWorld::PreloadLibrary);
    }
    objEnvironment.insert(strVariable, strLibraries.join(':'));
    return objEnvironment;
}

}  // namespace

CUsbProgram::CUsbProgram(CPrinter& p_objPrinter, CFaultSettings p_objFaults,
                         ISimulatorLog& p_objLog)
    : m_objPrinter(p_objPrinter)
    , m_objFaults(std::move(p_objFaults))
    , m_objLog(p_objLog) {}

int CUsbProgram::Run(const QStringList& p_strCommand) {
    CUsbWorld objWorld;
    const CEmulatedPrinter objDevice(objWorld, m_objPrinter, m_objLog, {}, m_objFaults);
    QProcess objProgram;
    objProgram.setProcessChannelMode(QProcess::ForwardedChannels);
    objProgram.setInputChannelMode(QProcess::ForwardedInputChannel);
    objProgram.setProcessEnvironment(InsideEnvironment());
    bool bStopped = false;
    const CStopSignals objStopSignals([&] {
        bStopped = true;
        objProgram.terminate();
    });
    QObject::connect(&objProgram, &QProcess::finished, QCoreApplication::instance(),
                     [] { QCoreApplication::quit(); });
    objProgram.start(p_strCommand.constFirst(), p_strCommand.mid(1));
    if (!objProgram.waitForStarted()) {
        m_strError =
            "Cannot start " + p_strCommand.constFirst() + ": " + objProgram.errorString() + ".";
        return -1;
    }
    if (objProgram.state() != QProcess::NotRunning) {
        QCoreApplication::exec();
    }
    QCoreApplication::processEvents();  // Ctrl-C reaches both: its news may be behind the end's
    if (bStopped) {
        return EXIT_SUCCESS;  // it has ended as it was told, whichever way
    }
    if (objProgram.exitStatus() != QProcess::NormalExit) {
        m_strError = p_strCommand.constFirst() + " has crashed.";
        return -1;
    }
    return objProgram.exitCode();
}
