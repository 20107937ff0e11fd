#include "simulator/CPrinter.h"
#include "simulator/CStreamLog.h"
#include "simulator/program/COptions.h"
#ifdef Q_OS_UNIX
#include "simulator/program/CSerialServer.h"
#endif
#include "simulator/program/CStopSignals.h"
#include "simulator/program/CTcpServer.h"
#ifdef VARDEN_EMULATED_USB
#include "simulator/program/CUsbProgram.h"
#endif

#include <QCoreApplication>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>

namespace {

std::string AddressText(const QHostAddress& p_objHost, std::uint16_t p_iPort) {
    const std::string strHost = p_objHost.toString().toStdString();
    const bool bColons = p_objHost.protocol() == QAbstractSocket::IPv6Protocol;
    return (bColons ? "[" + strHost + "]" : strHost) + ":" + std::to_string(p_iPort);
}

int Fail(const QString& p_strError) {
    std::cerr << "varden-printer-simulator: " << p_strError.toStdString() << std::endl;
    return EXIT_FAILURE;
}

void PrintManner(const COptions& p_objOptions) {
    std::cout << "status " << p_objOptions.m_strStatus
              << ", faults: " << p_objOptions.m_objFaults.Describe() << std::endl;
}

/// Runs until the program is told to end.
int Run(const CPrinter& p_objPrinter) {
    const int iResult = QCoreApplication::exec();
    std::cout << "Commands received:\n" << p_objPrinter.DescribeCounts() << std::flush;
    return iResult;
}

int ListenOnNetwork(const COptions& p_objOptions, CPrinter& p_objPrinter) {
    CStreamLog objLog(std::cout);
    CTcpServer objServer(p_objPrinter, p_objOptions.m_objFaults, objLog);
    const CStopSignals objStopSignals([] { QCoreApplication::quit(); });
    if (!objServer.Listen(p_objOptions.m_objHost, p_objOptions.m_iPort)) {
        return Fail(
            "Cannot listen on " +
            QString::fromStdString(AddressText(p_objOptions.m_objHost, p_objOptions.m_iPort)) +
            ": " + objServer.ErrorText() + ".");
    }
    std::cout << "Listening on " << AddressText(p_objOptions.m_objHost, objServer.Port()) << '\n';
    PrintManner(p_objOptions);
    return Run(p_objPrinter);
}

#ifdef Q_OS_UNIX

int ListenOnSerialLine(const COptions& p_objOptions, CPrinter& p_objPrinter) {
    CStreamLog objLog(std::cout);
    const CStopSignals objStopSignals([] { QCoreApplication::quit(); });
    CSerialServer objServer(p_objPrinter, p_objOptions.m_objFaults, objLog,
                            {[](const std::string& p_strName) {
                                 std::cout << "Listening on " << p_strName << std::endl;
                             },
                             [](const std::string& p_strError) {
                                 QCoreApplication::exit(Fail(QString::fromStdString(p_strError)));
                             }});
    objServer.Listen(p_objOptions.m_strAlias);
    PrintManner(p_objOptions);
    return Run(p_objPrinter);
}

#else

int ListenOnSerialLine(const COptions& /*p_objOptions*/, CPrinter& /*p_objPrinter*/) {
    return Fail("There are no pseudo-terminals on this system.");
}

#endif

#ifdef VARDEN_EMULATED_USB

int RunUsbProgram(const COptions& p_objOptions, CPrinter& p_objPrinter) {
    CStreamLog objLog(std::cout);
    CUsbProgram objProgram(p_objPrinter, p_objOptions.m_objFaults, objLog);
    std::cout << "Plugged in on USB of an emulated system\n";
    PrintManner(p_objOptions);
    const int iResult = objProgram.Run(p_objOptions.m_strUsbProgram);
    std::cout << "Commands received:\n" << p_objPrinter.DescribeCounts() << std::flush;
    return objProgram.ErrorText().isEmpty() ? iResult : Fail(objProgram.ErrorText());
}

#else

int RunUsbProgram(const COptions& /*p_objOptions*/, CPrinter& /*p_objPrinter*/) {
    return Fail("This build of the simulator cannot emulate USB.");
}

#endif

int Listen(const COptions& p_objOptions) {
    CPrinter objPrinter;
    objPrinter.SetStatus(p_objOptions.m_strStatus);
    if (!p_objOptions.m_strUsbProgram.isEmpty()) {
        return RunUsbProgram(p_objOptions, objPrinter);
    }
    return p_objOptions.m_bSerial ? ListenOnSerialLine(p_objOptions, objPrinter)
                                  : ListenOnNetwork(p_objOptions, objPrinter);
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
#ifdef SIGPIPE
    // A reader of our output that goes away must not take the printer with it.
    std::signal(SIGPIPE, SIG_IGN);
#endif
    try {
        const QCoreApplication objApplication(p_iCount, p_strArguments);
        QCoreApplication::setApplicationName("varden-printer-simulator");
        const COptions objOptions(QCoreApplication::arguments());
        if (objOptions.m_bHelp) {
            std::cout << COptions::HelpText().toStdString() << std::flush;
            return EXIT_SUCCESS;
        }
        if (!objOptions.m_strError.isEmpty()) {
            return Fail(objOptions.m_strError + " See --help.");
        }
        return Listen(objOptions);
    } catch (const std::exception& objError) {
        return Fail(objError.what());
    }
}
