#include "tour/MWalk.h"

#include "link/CInterface.h"
#include "tests/platform_qt/CUnreachablePort.h"
#include "tests/simulator/CSimulatorProcess.h"
#include "tour/CTour.h"
#include "tour/CWalk.h"

#include <QCoreApplication>

#include <cstdlib>
#include <iostream>

namespace {

constexpr const char* Address = "127.0.10.20";
constexpr const char* NextAddress = "127.0.10.77";
constexpr const char* WrongAddress = "127.0.10.21";
constexpr int PrinterPort = 8000;
constexpr int InSecondRead = 1500;
constexpr int WhileConnecting = 1000;
constexpr int WhileSilent = 3300;
constexpr int PatienceMilliseconds = 120'000;

const QStringList Listen{"--host", Address, "--port", QString::number(PrinterPort)};
const QStringList Silent = Listen + QStringList{"--silent"};
const QStringList Moving = Listen + QStringList{"--own-address", "--moves", "at-once"};

/// On USB: the power goes in the middle of the second READ, behind three requests of seven bytes.
const QStringList Failing{"--power-cut", "25", "--power-back", "8000"};

void Launch(CTour& p_objTour, CSimulatorProcess& p_objPrinter, const QStringList& p_strArguments) {
    p_objPrinter.Launch(p_strArguments);
    const bool bListens = p_objPrinter.WaitForLine("Listening on ", PatienceMilliseconds);
    p_objTour.Expect("the printer listens", bListens ? "yes" : p_objPrinter.ErrorText(), "yes");
}

void ChangeThree(CTour& p_objTour) {
    p_objTour.ShowTab(0);
    p_objTour.Type("SeFeedAdj", "4.5");
    p_objTour.Choose("cmbFeedKey", "PRINT");
    p_objTour.Choose("cmbKanji", "TYPE2");
}

void WalkSerial(CTour& p_objTour, CWalk& p_objWalk) {
    p_objWalk.Section("COM", "com");
    p_objWalk.Stop("The tool has started");
    p_objWalk.SetUp({});
    p_objWalk.Stop("Setup and SET, before the adapter is plugged in");
    {
        CSimulatorProcess objPrinter;
        Launch(p_objTour, objPrinter, {"--serial", "--alias", p_objTour.DeviceFile("com1")});
        p_objWalk.SetUp({});
        p_objWalk.Stop("Setup and SET, with the adapter in");
        p_objWalk.PressAndLook("btnRead", InSecondRead, "READ, while it runs");
        p_objWalk.Stop("READ is over");
        ChangeThree(p_objTour);
        p_objWalk.Stop("Three fields are changed");
    }
    p_objWalk.AwaitLink("COM1: pulled out");
    p_objWalk.Stop("The adapter is pulled out");
    p_objWalk.Press("btnSet");
    p_objWalk.Stop("SET, which says nothing");
    CSimulatorProcess objPrinter;
    Launch(p_objTour, objPrinter, {"--serial", "--alias", p_objTour.DeviceFile("com1")});
    p_objWalk.SetUp({});
    p_objWalk.Stop("It is back: Setup and SET");
    p_objWalk.Press("btnSet");
    p_objWalk.Stop("SET");
}

/// An address at which nobody answers, one that refuses, and the printer's.
void ConnectLan(CTour& p_objTour, CWalk& p_objWalk) {
    CInterface& objInterface = p_objTour.Window().Interface();
    p_objTour.Choose("cmbInterface", "LAN");
    p_objWalk.Stop("LAN is chosen");
    {
        const CUnreachablePort objPort;
        objInterface.m_objSocketPort->SetValue(objPort.Number());
        p_objWalk.SetUp("127.0.0.1", WhileConnecting, "Setup and SET, and nobody answers there",
                        [&] { p_objTour.ClickCaption("Stop"); });
        p_objWalk.Stop("Stop is pressed");
    }
    objInterface.m_objSocketPort->SetValue(PrinterPort);
    p_objWalk.SetUp(WrongAddress);
    p_objWalk.Stop("Setup and SET with the address of something else");
}

void ReadLan(CTour& p_objTour, CWalk& p_objWalk) {
    {
        CSimulatorProcess objPrinter;
        Launch(p_objTour, objPrinter, Listen);
        p_objWalk.SetUp(Address);
        p_objWalk.Stop("Setup and SET with the printer's address");
        p_objTour.ShowTab(0);
        p_objWalk.PressAndLook("btnRead", InSecondRead, "READ, while it runs");
        p_objWalk.Stop("READ is over");
    }
    p_objWalk.AwaitLink("LAN closed by the printer");
    p_objWalk.Stop("The printer is switched off");
    {
        CSimulatorProcess objPrinter;
        Launch(p_objTour, objPrinter, Silent);
        p_objWalk.SetUp(Address);
        p_objWalk.PressAndLook("btnRead", WhileSilent,
                               "It is back and connected, and READ gets no answer");
        p_objWalk.Stop("The five seconds are over");
    }
    p_objWalk.AwaitLink("LAN closed by the printer");
}

void WriteLan(CTour& p_objTour, CWalk& p_objWalk) {
    CSimulatorProcess objPrinter;
    Launch(p_objTour, objPrinter, Moving);
    p_objWalk.SetUp(Address);
    p_objTour.ShowTab(2);
    p_objWalk.Press("btnLanRead");
    p_objWalk.Stop("It answers again: Setup, SET, and READ in Extra Setting");
    p_objTour.Type("SeIpAddress4", "77");
    p_objWalk.Stop("Another address is typed");
    p_objWalk.Press("btnLanSet");
    p_objWalk.Stop("SET, and the printer moves behind the first command");
    p_objWalk.SetUp(NextAddress);
    p_objWalk.Stop("Setup and SET with the new address");
    p_objWalk.Press("btnLanSet");
    p_objWalk.Stop("SET, for what was left");
}

void WalkUsb(CTour& p_objTour, CWalk& p_objWalk) {
    p_objWalk.Section("USB", "usb");
    p_objTour.Choose("cmbInterface", "USB");
    p_objWalk.Stop("USB is chosen: there is nothing to set up");
    p_objWalk.PressAndLook("btnRead", InSecondRead, "READ, while it runs");
    p_objWalk.Stop("READ is over");
    p_objWalk.Press("btnRead");
    p_objWalk.Stop("READ once more, and the printer is switched off meanwhile");
    p_objWalk.Press("btnRead");
    p_objWalk.Stop("READ while it is off");
    constexpr int iBack = 10'000;
    CSimulatorProcess::WaitUntil([] { return false; }, iBack);
    p_objWalk.Press("btnRead");
    p_objWalk.Stop("It is on again: READ");
    ChangeThree(p_objTour);
    p_objWalk.Stop("Three fields are changed");
    p_objWalk.Press("btnSet");
    p_objWalk.Stop("SET");
}

int Ending(const CTour& p_objTour) {
    return p_objTour.FailureCount() == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

namespace MWalk {

int Run(const QString& p_strFolder) {
    CWalk::Begin(p_strFolder);
    int iResult = EXIT_FAILURE;
    {
        CTour objTour(p_strFolder);
        CWalk objWalk(objTour, p_strFolder);
        WalkSerial(objTour, objWalk);
        objWalk.Section("LAN", "lan");
        ConnectLan(objTour, objWalk);
        ReadLan(objTour, objWalk);
        WriteLan(objTour, objWalk);
        iResult = Ending(objTour);
    }
    CSimulatorProcess objUsb;
    objUsb.Launch(Failing + QStringList{"--usb", QCoreApplication::applicationFilePath(),
                                        "--walk-usb", p_strFolder});
    const int iOnUsb = objUsb.WaitForExit(PatienceMilliseconds);
    for (const std::string& strLine : objUsb.Lines()) {
        std::cout << strLine << std::endl;
    }
    std::cerr << objUsb.ErrorText();
    return iResult != EXIT_SUCCESS ? iResult : iOnUsb;
}

int RunOnUsb(const QString& p_strFolder) {
    CTour objTour(p_strFolder);
    CWalk objWalk(objTour, p_strFolder);
    WalkUsb(objTour, objWalk);
    return Ending(objTour);
}

}  // namespace MWalk
