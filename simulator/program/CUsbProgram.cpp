#include "simulator/program/CUsbProgram.h"

#include "simulator/program/CSignals.h"
#include "simulator/usb/CEmulatedPrinter.h"

#include <QCoreApplication>
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

CUsbProgram::CUsbProgram(CPrinter& p_objPrinter, CFaultSettings p_objFaults, CPrinterLog& p_objLog,
                         std::function<void()> p_fnDump)
    : m_objPrinter(p_objPrinter)
    , m_objFaults(std::move(p_objFaults))
    , m_objLog(p_objLog)
    , m_fnDump(std::move(p_fnDump)) {
    m_objPowerBack.setSingleShot(true);
    QObject::connect(&m_objPowerBack, &QTimer::timeout, &m_objPowerBack, [this] { ComeBack(); });
}

CUsbProgram::~CUsbProgram() = default;

int CUsbProgram::Run(const QStringList& p_strCommand) {
    PlugIn();
    m_objProgram.setProcessChannelMode(QProcess::ForwardedChannels);
    m_objProgram.setInputChannelMode(QProcess::ForwardedInputChannel);
    m_objProgram.setProcessEnvironment(InsideEnvironment());
    bool bStopped = false;
    const CSignals objSignals({[&] {
                                   bStopped = true;
                                   m_objProgram.terminate();
                               },
                               [this] { m_objDevice->Hold(m_fnDump); }, [this] { PowerCycle(); }});
    QObject::connect(&m_objProgram, &QProcess::finished, QCoreApplication::instance(),
                     [] { QCoreApplication::quit(); });
    m_objProgram.start(p_strCommand.constFirst(), p_strCommand.mid(1));
    if (!m_objProgram.waitForStarted()) {
        m_strError =
            "Cannot start " + p_strCommand.constFirst() + ": " + m_objProgram.errorString() + ".";
        return -1;
    }
    if (m_objProgram.state() != QProcess::NotRunning) {
        QCoreApplication::exec();
    }
    QCoreApplication::processEvents();  // Ctrl-C reaches both: its news may be behind the end's
    m_objDevice.reset();
    return Result(p_strCommand.constFirst(), bStopped);
}

int CUsbProgram::Result(const QString& p_strProgram, bool p_bStopped) {
    if (p_bStopped) {
        return EXIT_SUCCESS;  // it has ended as it was told, whichever way
    }
    if (m_objProgram.exitStatus() != QProcess::NormalExit) {
        m_strError = p_strProgram + " has crashed.";
        return -1;
    }
    return m_objProgram.exitCode();
}

void CUsbProgram::PlugIn() {
    m_objLog.Event(0, "plugged-in", {});
    m_objDevice = std::make_unique<CEmulatedPrinter>(m_objWorld, m_objPrinter, m_objLog,
                                                     CUsbBehaviour(), m_objFaults);
    m_objDevice->OnUnplugged([this] { Gone(); });
}

void CUsbProgram::Gone() {
    m_objLog.Event(0, "unplugged", {});
    if (m_objPrinter.IsOn()) {
        return;
    }
    m_objLog.Line(0, "! power off");
    m_objLog.Event(0, "power", CJsonObject().Flag("on", false));
    if (const auto iBack = m_objPrinter.Faults().m_iPowerBack) {
        // From the emulation's thread as well as from this one.
        QMetaObject::invokeMethod(
            &m_objPowerBack, [this, iBack] { m_objPowerBack.start(*iBack); }, Qt::QueuedConnection);
    }
}

void CUsbProgram::PowerCycle() {
    bool bOn = false;
    m_objDevice->Hold([&] {
        bOn = m_objPrinter.IsOn();
        m_objPrinter.PowerOff();
    });
    if (bOn) {
        m_objDevice->Unplug();
    }
}

void CUsbProgram::ComeBack() {
    m_objDevice.reset();
    m_objPrinter.PowerOn();
    m_objLog.Line(0, "! power on");
    m_objLog.Event(0, "power", CJsonObject().Flag("on", true));
    PlugIn();
}
