#include "tour/CTour.h"
#include "tour/MFileTour.h"
#include "tour/MLanTour.h"
#include "tour/MLinkTour.h"
#include "tour/MLooksTour.h"
#include "tour/MUsbTour.h"
#include "tour/MWalk.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>

#include <cstdlib>
#include <exception>
#include <iostream>

namespace {

int Summary(const CTour& p_objTour) {
    std::cout << "\n"
              << p_objTour.FailureCount() << " things are not as they should be" << std::endl;
    return p_objTour.FailureCount() == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

int TravelOnUsb(const QString& p_strPictures) {
    CTour objTour(p_strPictures);
    MLinkTour::Usb(objTour);
    return Summary(objTour);
}

int Travel(const QString& p_strPictures) {
    CSimulatorProcess objSimulator;
    if (!objSimulator.Start()) {
        std::cerr << "The simulator does not start.\n" << objSimulator.ErrorText() << std::endl;
        return EXIT_FAILURE;
    }
    CTour objTour(p_strPictures);
    MLanTour::LookAround(objTour);
    CWire objWire(objTour, objSimulator);
    MLanTour::Connect(objTour, objWire, objSimulator.Port());
    MLanTour::ReadEditSet(objTour, objWire);
    MLanTour::LanReadEditSet(objTour, objWire);
    MLanTour::Maintain(objTour, objWire);
    MFileTour::SaveAndLoad(objTour);
    MLinkTour::Serial(objTour);
    objTour.Expect("the simulator's exit code", std::to_string(objSimulator.Stop()), "0");
    return Summary(objTour);
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    QApplication objApplication(p_iCount, p_strArguments);
    QCommandLineParser objParser;
    objParser.setApplicationDescription(
        "Works the setting tool's window against the printer simulator and shows what happens.");
    objParser.addHelpOption();
    const QCommandLineOption objPictures("pictures", "Where the pictures go.", "folder",
                                         "pictures");
    const QCommandLineOption objUsb(
        "usb", "Only the stops on USB, as the program that varden-printer-simulator --usb runs.");
    const QCommandLineOption objWalk(
        "walk", "Nothing of the tour: writes walk-through.md and its pictures.", "folder");
    const QCommandLineOption objWalkUsb("walk-usb", "The part of that on USB, as with --usb.",
                                        "folder");
    const QCommandLineOption objLooks(
        "looks",
        "Only the pictures of every tab and dialog, at the scale that the program runs at.",
        "scale");
    objParser.addOptions({objPictures, objUsb, objWalk, objWalkUsb, objLooks});
    objParser.process(objApplication);
    const QString strPictures = objParser.value(objPictures);
    try {
        if (objParser.isSet(objWalk)) {
            return MWalk::Run(objParser.value(objWalk));
        }
        if (objParser.isSet(objWalkUsb)) {
            return MWalk::RunOnUsb(objParser.value(objWalkUsb));
        }
        QDir().mkpath(strPictures);
        if (objParser.isSet(objLooks)) {
            CTour objTour(strPictures);
            MLooksTour::TakePictures(objTour, objParser.value(objLooks));
            return Summary(objTour);
        }
        if (objParser.isSet(objUsb)) {
            return TravelOnUsb(strPictures);
        }
        const int iResult = Travel(strPictures);
        const int iOnUsb = MUsbTour::RunInside(strPictures);
        const int iLooks = MLooksTour::RunAtEachScale(strPictures);
        return iResult != EXIT_SUCCESS ? iResult : iOnUsb != EXIT_SUCCESS ? iOnUsb : iLooks;
    } catch (const std::exception& objError) {
        std::cerr << "The tour ends early: " << objError.what() << std::endl;
        return EXIT_FAILURE;
    }
}
