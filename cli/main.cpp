#include "cli/CDefaultsSource.h"
#include "cli/CFileSource.h"
#include "cli/CInterrupt.h"
#include "cli/COutput.h"
#include "cli/CProgram.h"
#include "platform/qt/CDeviceAccess.h"
#include "platform/qt/CQtFileStore.h"
#include "platform/qt/CQtSerialPortLister.h"
#include "platform/usb/CUsbPrinterLister.h"

#include <iostream>
#include <string>
#include <vector>

#ifndef _WIN32
#include <sys/ioctl.h>
#include <unistd.h>
#endif

namespace {

/// How wide the terminal on standard output is; 0 when there is none.
std::size_t TerminalWidth() {
#ifndef _WIN32
    winsize objSize{};
    if (::isatty(STDOUT_FILENO) != 0 && ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &objSize) == 0) {
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
    CProgram objProgram(
        {objFiles, objSerialPorts, objUsbPrinters, objAccess, {&objDefaults, &objFileSource}});
    COutput objOutput(std::cout, std::cerr, objInterrupt, TerminalWidth());
    return objProgram.Run(std::vector<std::string>(p_strArguments + (p_iCount > 0 ? 1 : 0),
                                                   p_strArguments + p_iCount),
                          objOutput);
}
