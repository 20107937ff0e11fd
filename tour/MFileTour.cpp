#include "tour/MFileTour.h"

#include "tests/golden/MGolden.h"
#include "tests/platform_widgets/CFileDialogDriver.h"

#include <QApplication>
#include <QFileDialog>
#include <QTemporaryDir>

#include <fstream>
#include <iterator>
#include <string>

namespace {

/// The folder that everything is saved in, and the tour that does it.
struct Place {
    CTour& m_objTour;
    QString m_strFolder;
};

/// The file's bytes, with those that no terminal shows written as "<..>".
std::string Content(const QString& p_strPath) {
    std::ifstream objFile(p_strPath.toStdString(), std::ios::binary);
    std::string strContent;
    for (const char c : std::string(std::istreambuf_iterator<char>(objFile), {})) {
        switch (c) {
        case '\r':
            strContent += "<CR>";
            break;
        case '\n':
            strContent += "<LF>";
            break;
        case '\xFF':
            strContent += "<FF>";
            break;
        default:
            strContent += c;
        }
    }
    return strContent;
}

/// Answers the box in front, which says p_strText.
CTour::Dialog Box(CTour& p_objTour, const std::string& p_strText, const QString& p_strButton,
                  const QString& p_strPicture = {}) {
    return {IMessageBox::ProgramTitle, [&p_objTour, p_strText, p_strButton, p_strPicture] {
                p_objTour.Expect("box", p_objTour.Shown("qt_msgbox_label"), p_strText);
                if (!p_strPicture.isEmpty()) {
                    p_objTour.Picture(p_strPicture);
                }
                p_objTour.ClickCaption(p_strButton);
            }};
}

/// Goes to the folder, types the file's name there and presses Return.
CTour::Dialog File(const Place& p_objPlace, const QString& p_strTitle, const QString& p_strName,
                   const QString& p_strPicture) {
    return {p_strTitle, [p_objPlace, p_strName, p_strPicture] {
                CTour& objTour = p_objPlace.m_objTour;
                objTour.TakeKeyboard();
                CFileDialogDriver objDriver(
                    dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget()));
                objTour.Expect("its folder", objDriver.GoTo(p_objPlace.m_strFolder) ? "yes" : "no",
                               "yes");
                objDriver.Type(p_strName);
                objTour.Picture(p_strPicture);
                objDriver.Enter();
            }};
}

void Parameters(const Place& p_objPlace) {
    CTour& objTour = p_objPlace.m_objTour;
    const QString strFile = p_objPlace.m_strFolder + "/settings.dt1";
    const auto fnSave = [&] { objTour.Click("btnSave"); };
    objTour.Heading("SAVE: the name gets its extension");
    objTour.ShowTab(0);
    objTour.InDialogs({File(p_objPlace, "Save File", "settings", "save-parameter-file"),
                       Box(objTour, "Normal termination", "OK")},
                      fnSave);
    objTour.Expect("settings.dt1", Content(strFile),
                   std::string(MGolden::Parameters) + "<CR><LF>" + MGolden::Adjustments +
                       "<CR><LF>");

    objTour.Heading("Edit and SAVE again: the tool asks before it overwrites");
    objTour.Choose("cmbFontCode", "UTF-8");
    objTour.Type("SeFeedAdj", "2.5");
    objTour.InDialogs(
        {File(p_objPlace, "Save File", "settings.dt1", "save-parameter-file-again"),
         Box(objTour, "The file already exists. Do you overwrite?", "Yes", "overwrite-question"),
         Box(objTour, "Normal termination", "OK", "normal-termination")},
        fnSave);
    objTour.Expect("settings.dt1", Content(strFile),
                   MGolden::With(MGolden::Parameters, {{"FontCode", "F"}}) + "<CR><LF>" +
                       MGolden::With(MGolden::Adjustments, {{"FeedAdjustment", "025"}}) +
                       "<CR><LF>");

    objTour.Heading("Edit and LOAD: the page shows what was saved");
    objTour.Choose("cmbFontCode", "PC-1252");
    objTour.Type("SeFeedAdj", "-1.5");
    objTour.InDialogs({File(p_objPlace, "Load File", "settings.dt1", "load-parameter-file"),
                       Box(objTour, "Normal termination", "OK")},
                      [&] { objTour.Click("btnLoad"); });
    objTour.Expect("FONT CODE", objTour.Shown("cmbFontCode"), "UTF-8");
    objTour.Expect("FEED ADJ.", objTour.Shown("SeFeedAdj"), "2.5");
    objTour.Picture("loaded-parameter-setting");
}

void Lan(const Place& p_objPlace) {
    CTour& objTour = p_objPlace.m_objTour;
    objTour.Heading("SAVE of the network settings");
    objTour.ShowTab(2);
    objTour.InDialogs({File(p_objPlace, "Save File", "network", "save-lan-file"),
                       Box(objTour, "Normal termination", "OK")},
                      [&] { objTour.Click("btnLanSave"); });
    objTour.Expect("network.dt2", Content(p_objPlace.m_strFolder + "/network.dt2"),
                   "{IP;2,192,168,010,077|}<CR><LF>"
                   "{IP;3,000,000,000,001|}<CR><LF>"
                   "{IP;4,255,255,255,000|}<CR><LF>"
                   "{IS;1,09100|}<CR><LF>"
                   "{IH;1,FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF,varden-7        |}<CR><LF>");

    objTour.Heading("Edit and LOAD of the network settings: the page shows what was saved");
    objTour.Type("SeIpAddress4", "20");
    objTour.Choose("cmbDhcp", "OFF");
    objTour.InDialogs({File(p_objPlace, "Load File", "network.dt2", "load-lan-file"),
                       Box(objTour, "Normal termination", "OK")},
                      [&] { objTour.Click("btnLanLoad"); });
    objTour.Expect("IP ADDRESS 4", objTour.Shown("SeIpAddress4"), "77");
    objTour.Expect("DHCP", objTour.Shown("cmbDhcp"), "ON");
    objTour.Picture("loaded-extra-setting");
}

}  // namespace

namespace MFileTour {

void SaveAndLoad(CTour& p_objTour) {
    const QTemporaryDir objFolder;
    const Place objPlace{p_objTour, objFolder.path()};
    Parameters(objPlace);
    Lan(objPlace);
    p_objTour.Expect("buttons enabled", p_objTour.ButtonsEnabled() ? "yes" : "no", "yes");
}

}  // namespace MFileTour
