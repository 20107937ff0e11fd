#include "tour/MLooksTour.h"

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>

#include <cstdlib>
#include <iostream>

namespace {

constexpr int PatienceMilliseconds = 120'000;

struct Scale {
    const char* m_strFactor;
    const char* m_strName;
};

constexpr Scale Scales[] = {{"1", "100"}, {"1.5", "150"}, {"2", "200"}};

/// Pictures of what is in front, in both kinds of colours.
void Both(CTour& p_objTour, const QString& p_strName, const QString& p_strScale) {
    p_objTour.Picture("look-" + p_strScale + "-" + p_strName);
    p_objTour.DarkPicture("look-" + p_strScale + "-" + p_strName + "-dark");
}

void Tabs(CTour& p_objTour, const QString& p_strScale) {
    p_objTour.ShowTab(2);
    p_objTour.Type("SeIpAddress4", "77");
    Both(p_objTour, "extra-setting", p_strScale);
    p_objTour.ShowTab(1);
    Both(p_objTour, "maintenance-mode", p_strScale);
    p_objTour.ShowTab(0);
    p_objTour.Choose("cmbSpeed", "115200bps");
    p_objTour.Type("SeFeedAdj", "1.5");
    p_objTour.TypeOnly("SeThresholdT", "9.9");
    Both(p_objTour, "parameter-setting", p_strScale);
    p_objTour.TypeOnly("SeThresholdT", "1.4");
}

void Dialogs(CTour& p_objTour, const QString& p_strScale) {
    for (const QString strInterface : {"COM", "LAN"}) {
        p_objTour.Choose("cmbInterface", strInterface);
        p_objTour.InDialog(
            "Interface Setup", [&] { p_objTour.Click("btnSetup"); },
            [&] {
                Both(p_objTour, "interface-setup-" + strInterface.toLower(), p_strScale);
                p_objTour.Click("btnCancel");
            });
    }
    p_objTour.InDialog(
        "Varden Setting Tool", [&] { p_objTour.TriggerMenu("smAbout"); },
        [&] {
            Both(p_objTour, "about", p_strScale);
            p_objTour.Click("btnOk");
        });
    for (const char* const strButton : {"btnSave", "btnLoad"}) {
        p_objTour.InAnyDialog([&] { p_objTour.Click(strButton); },
                              [&] {
                                  Both(p_objTour, QString(strButton).mid(3).toLower(), p_strScale);
                                  p_objTour.ClickCaption("Cancel");
                              });
    }
    p_objTour.TypeOnly("SeFeedAdj", "99");
    p_objTour.InAnyDialog([&] { p_objTour.Click("btnSet"); },
                          [&] {
                              Both(p_objTour, "range-box", p_strScale);
                              p_objTour.ClickCaption("OK");
                          });
}

}  // namespace

namespace MLooksTour {

void TakePictures(CTour& p_objTour, const QString& p_strScale) {
    p_objTour.Heading("Every tab and dialog at " + p_strScale.toStdString() + " %");
    Tabs(p_objTour, p_strScale);
    Dialogs(p_objTour, p_strScale);
}

int RunAtEachScale(const QString& p_strPictures) {
    int iResult = EXIT_SUCCESS;
    for (const Scale& objScale : Scales) {
        QProcess objProgram;
        QProcessEnvironment objEnvironment = QProcessEnvironment::systemEnvironment();
        objEnvironment.insert("QT_SCALE_FACTOR", objScale.m_strFactor);
        objProgram.setProcessEnvironment(objEnvironment);
        objProgram.setProcessChannelMode(QProcess::ForwardedChannels);
        objProgram.start(QCoreApplication::applicationFilePath(),
                         {"--looks", objScale.m_strName, "--pictures", p_strPictures});
        if (!objProgram.waitForFinished(PatienceMilliseconds) ||
            objProgram.exitStatus() != QProcess::NormalExit ||
            objProgram.exitCode() != EXIT_SUCCESS) {
            std::cout << "   WRONG  no pictures at " << objScale.m_strName << " %" << std::endl;
            iResult = EXIT_FAILURE;
        }
    }
    return iResult;
}

}  // namespace MLooksTour
