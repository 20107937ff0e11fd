#include "tour/MUsbTour.h"

#include "tests/simulator/CSimulatorProcess.h"

#include <QCoreApplication>

#include <cstdlib>
#include <iostream>

namespace {

constexpr int PatienceMilliseconds = 120'000;

/// How a line begins that claims what has been sent.
const std::string Sent = "   sent   ";

/// What the program inside claims to have sent, each command behind a blank.
std::string Claimed(const std::vector<std::string>& p_strLines) {
    std::string strClaimed;
    for (const std::string& strLine : p_strLines) {
        if (strLine.starts_with(Sent)) {
            strClaimed += " " + strLine.substr(Sent.size());
        }
    }
    return strClaimed;
}

std::string Received(const CSimulatorProcess& p_objSimulator) {
    std::string strReceived;
    for (const std::string& strCommand : p_objSimulator.Commands()) {
        strReceived += " " + strCommand;
    }
    return strReceived;
}

/// Waits for the end and prints every line as it comes.
int Follow(CSimulatorProcess& p_objSimulator) {
    std::size_t iLine = 0;
    const auto fnPrint = [&] {
        for (; iLine < p_objSimulator.Lines().size(); ++iLine) {
            std::cout << p_objSimulator.Lines()[iLine] << std::endl;
        }
    };
    CSimulatorProcess::WaitUntil(
        [&] {
            fnPrint();
            return !p_objSimulator.IsRunning();
        },
        PatienceMilliseconds);
    const int iExitCode = p_objSimulator.WaitForExit(0);
    fnPrint();
    std::cerr << p_objSimulator.ErrorText();
    return iExitCode;
}

}  // namespace

namespace MUsbTour {

int RunInside(const QString& p_strPictures) {
    CSimulatorProcess objSimulator;
    objSimulator.Launch(
        {"--usb", QCoreApplication::applicationFilePath(), "--usb", "--pictures", p_strPictures});
    const int iExitCode = Follow(objSimulator);
    const std::string strClaimed = Claimed(objSimulator.Lines());
    const bool bSame = !strClaimed.empty() && strClaimed == Received(objSimulator);
    std::cout << "   " << (bSame ? "ok    " : "WRONG ")
              << " commands on USB:" << Received(objSimulator) << std::endl;
    return iExitCode == EXIT_SUCCESS && bSame ? EXIT_SUCCESS : EXIT_FAILURE;
}

void TellSent(const std::vector<std::string>& p_strCommands) {
    std::cout << Sent;
    for (std::size_t i = 0; i < p_strCommands.size(); ++i) {
        std::cout << (i == 0 ? "" : " ") << p_strCommands[i];
    }
    std::cout << std::endl;
}

}  // namespace MUsbTour
