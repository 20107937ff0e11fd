#include "simulator/CPrinter.h"
#include "simulator/program/CFleet.h"
#include "simulator/program/COptions.h"
#include "simulator/program/COutlets.h"
#include "simulator/program/CSignals.h"
#include "simulator/program/MOpenFiles.h"
#ifdef Q_OS_UNIX
#include "simulator/program/CSerialServer.h"
#endif
#ifdef VARDEN_EMULATED_USB
#include "simulator/program/CUsbProgram.h"
#endif

#include <QCoreApplication>

#include <csignal>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>

namespace {

void Tell(const std::string& p_strText) {
    std::cerr << "varden-printer-simulator: " << p_strText << std::endl;
}

int Fail(const std::string& p_strError) {
    Tell(p_strError);
    return EXIT_FAILURE;
}

void PrintManner(const COptions& p_objOptions) {
    std::cout << "status " << p_objOptions.m_strStatus
              << ", faults: " << p_objOptions.DescribeFaults() << std::endl;
}

void Dump(COutlets& p_objOutlets, const COptions& p_objOptions) {
    if (!p_objOutlets.Dump()) {
        Tell("Cannot write " + p_objOptions.m_strDump + ".");
    }
}

/// What is told at the end.
int End(int p_iResult, const CCommandCounts& p_objCounts, COutlets& p_objOutlets,
        const COptions& p_objOptions) {
    std::cout << "Commands received:\n" << p_objCounts.Describe() << std::flush;
    return p_objOutlets.Dump() ? p_iResult : Fail("Cannot write " + p_objOptions.m_strDump + ".");
}

/// How many connections so many printers can have at a time; none when there is no room for the
/// printers themselves. Tells what is wrong.
std::size_t RoomBeside(std::size_t p_iPrinters) {
    // A connection takes one open file, as listening does; some are the program's own.
    constexpr std::size_t iOwn = 32;
    const std::size_t iFiles = MOpenFiles::Raise();
    const std::string strAllows = "The system allows this program " + std::to_string(iFiles) +
                                  " open files (see ulimit -n): ";
    if (iFiles <= p_iPrinters + iOwn) {
        Tell(strAllows + "too few for " + std::to_string(p_iPrinters) + " printers.");
        return 0;
    }
    const std::size_t iConnections = iFiles - p_iPrinters - iOwn;
    if (iConnections < p_iPrinters) {
        Tell(strAllows + "not more than " + std::to_string(iConnections) +
             " connections at a time.");
    }
    return iConnections;
}

int ListenOnNetwork(const COptions& p_objOptions, COutlets& p_objOutlets) {
    const std::size_t iConnections = RoomBeside(p_objOptions.m_iPrinters);
    if (iConnections == 0) {
        return EXIT_FAILURE;
    }
    CFleet objFleet(p_objOptions, p_objOutlets, iConnections);
    const CSignals objSignals({[] { QCoreApplication::quit(); },
                               [&] { Dump(p_objOutlets, p_objOptions); },
                               [&] { objFleet.PowerCycle(); }});
    if (!objFleet.Listen()) {
        return Fail(objFleet.ErrorText());
    }
    for (const std::string& strAddress : objFleet.Addresses()) {
        std::cout << "Listening on " << strAddress << '\n';
    }
    PrintManner(p_objOptions);
    const int iResult = QCoreApplication::exec();
    return End(iResult, objFleet.Counts(), p_objOutlets, p_objOptions);
}

#ifdef Q_OS_UNIX

int ListenOnSerialLine(const COptions& p_objOptions, COutlets& p_objOutlets) {
    CPrinter objPrinter;
    p_objOptions.Prepare(objPrinter, 1);
    CPrinterLog objLog({1, true, "com"}, p_objOutlets.Lines(), p_objOutlets.Events());
    p_objOutlets.Watch(objPrinter, objLog);
    CSerialServer objServer(
        objPrinter, p_objOptions.m_objFaults, objLog,
        {[&](const std::string& p_strName) {
             objLog.SetAddress(p_strName);
             std::cout << "Listening on " << p_strName << std::endl;
         },
         [](const std::string& p_strError) { QCoreApplication::exit(Fail(p_strError)); }});
    const CSignals objSignals({[] { QCoreApplication::quit(); },
                               [&] { Dump(p_objOutlets, p_objOptions); },
                               [&] { objServer.PowerCycle(); }});
    objServer.Listen(p_objOptions.m_strAlias);
    PrintManner(p_objOptions);
    const int iResult = QCoreApplication::exec();
    return End(iResult, objPrinter.Counts(), p_objOutlets, p_objOptions);
}

#else

int ListenOnSerialLine(const COptions& /*p_objOptions*/, COutlets& /*p_objOutlets*/) {
    return Fail("There are no pseudo-terminals on this system.");
}

#endif

#ifdef VARDEN_EMULATED_USB

int RunUsbProgram(const COptions& p_objOptions, COutlets& p_objOutlets) {
    CPrinter objPrinter;
    p_objOptions.Prepare(objPrinter, 1);
    CPrinterLog objLog({1, true, "usb"}, p_objOutlets.Lines(), p_objOutlets.Events());
    p_objOutlets.Watch(objPrinter, objLog);
    CUsbProgram objProgram(objPrinter, p_objOptions.m_objFaults, objLog,
                           [&] { Dump(p_objOutlets, p_objOptions); });
    std::cout << "Plugged in on USB of an emulated system\n";
    PrintManner(p_objOptions);
    const int iResult = objProgram.Run(p_objOptions.m_strUsbProgram);
    const int iEnd = End(iResult, objPrinter.Counts(), p_objOutlets, p_objOptions);
    return objProgram.ErrorText().isEmpty() ? iEnd : Fail(objProgram.ErrorText().toStdString());
}

#else

int RunUsbProgram(const COptions& /*p_objOptions*/, COutlets& /*p_objOutlets*/) {
    return Fail("This build of the simulator cannot emulate USB.");
}

#endif

int Run(const COptions& p_objOptions) {
    COutlets objOutlets(std::cout, p_objOptions.m_strEvents, p_objOptions.m_strDump);
    if (!p_objOptions.m_strUsbProgram.isEmpty()) {
        return RunUsbProgram(p_objOptions, objOutlets);
    }
    return p_objOptions.m_bSerial ? ListenOnSerialLine(p_objOptions, objOutlets)
                                  : ListenOnNetwork(p_objOptions, objOutlets);
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
            return Fail((objOptions.m_strError + " See --help.").toStdString());
        }
        return Run(objOptions);
    } catch (const std::exception& objError) {
        return Fail(objError.what());
    }
}
