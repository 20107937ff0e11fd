#include "cli/CDefaultsSource.h"
#include "cli/CFileSource.h"
#include "cli/CInterrupt.h"
#include "cli/COutput.h"
#include "cli/CPrinterConnector.h"
#include "cli/CProgram.h"
#include "cli/CTargetSource.h"
#include "cli/CTerminal.h"
#include "platform/qt/CDeviceAccess.h"
#include "platform/qt/CQtFileStore.h"
#include "platform/qt/CQtSerialPortLister.h"
#include "platform/qt/CStateFolder.h"
#include "platform/usb/CUsbPrinterLister.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#ifndef _WIN32
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace {

/// How wide the terminal on a standard stream is; 0 when there is none, or it does not tell.
std::size_t TerminalWidth([[maybe_unused]] std::FILE* p_objStream) {
#ifndef _WIN32
    const int iStream = ::fileno(p_objStream);
    winsize objSize{};
    if (::isatty(iStream) != 0 && ::ioctl(iStream, TIOCGWINSZ, &objSize) == 0) {
        return objSize.ws_col;
    }
#endif
    return 0;
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    CInterrupt objInterrupt;
    CQtFileStore objFiles;
    CQtSerialPortLister objSerialPorts;
    CUsbPrinterLister objUsbPrinters;
    const CDeviceAccess objAccess;
    CDefaultsSource objDefaults;
    CFileSource objFileSource(objFiles);
    CPrinterConnector objPrinters(objUsbPrinters, objInterrupt);
    CTerminal objTerminal(objInterrupt);
    CTargetSource objTargets(objPrinters, objAccess);
    CProgram objProgram({objFiles,
                         objSerialPorts,
                         objUsbPrinters,
                         objAccess,
                         objPrinters,
                         objTerminal,
                         {&objDefaults, &objTargets, &objFileSource},
                         [](const std::string& p_strFolder) {
                             return std::make_unique<CStateFolder>(
                                 p_strFolder.empty() ? CStateFolder::Default() : p_strFolder);
                         }});
    COutput objOutput(std::cout, std::cerr, objInterrupt, TerminalWidth(stdout),
                      TerminalWidth(stderr));
    const int iCode =
        objProgram.Run(std::vector<std::string>(p_strArguments + (p_iCount > 0 ? 1 : 0),
                                                p_strArguments + p_iCount),
                       objOutput);
    // All is printed, written and closed. What the toolkit may still be looking up, on a thread of
    // its own, must not hold the program's end back.
    std::cout.flush();
    std::cerr.flush();
    std::_Exit(iCode);
}
