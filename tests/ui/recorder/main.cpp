// Writes the recordings of the window anew, or shows cells of them:
//
//   varden_window_recording --write FOLDER    every recording as a file in FOLDER, and their
//   settings varden_window_recording --show TEXT       the cells in whose heading TEXT stands

#include "tests/ui/recorder/CSettingsTexts.h"
#include "tests/ui/recorder/MRecording.h"

#include <QApplication>

#include <cstdio>
#include <exception>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>

namespace {

void WriteFile(const std::string& p_strFolder, const std::string& p_strName,
               const std::string& p_strText) {
    std::ofstream objFile(p_strFolder + "/" + p_strName + ".txt", std::ios::binary);
    objFile << p_strText;
    objFile.close();
    if (!objFile) {
        throw std::runtime_error("cannot write into " + p_strFolder);
    }
}

int Write(CStage& p_objStage, const std::string& p_strFolder) {
    CSettingsTexts objTexts;
    std::map<std::string, std::string> strRecordings;
    for (const std::string& strName : MRecording::Names()) {
        strRecordings[strName] = MRecording::Make(p_objStage, strName);
        objTexts.Learn(strRecordings[strName]);
    }
    for (const auto& [strName, strText] : strRecordings) {
        WriteFile(p_strFolder, strName, objTexts.Short(strText));
    }
    WriteFile(p_strFolder, MRecording::SettingsName, objTexts.Table());
    return 0;
}

int Show(CStage& p_objStage, const std::string& p_strText) {
    for (const std::string& strName : MRecording::Names()) {
        for (const CCell& objCell : MRecording::CellsOf(strName)) {
            if (objCell.m_strHeading.find(p_strText) != std::string::npos) {
                std::printf("== %s\n%s", objCell.m_strHeading.c_str(),
                            p_objStage.Play(objCell).c_str());
            }
        }
    }
    return 0;
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    const std::string strWhat = p_iCount == 3 ? p_strArguments[1] : "";
    if (strWhat != "--write" && strWhat != "--show") {
        std::fprintf(stderr, "varden_window_recording --write FOLDER | --show TEXT\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    try {
        QApplication objApplication(p_iCount, p_strArguments);
        CStage objStage;
        return strWhat == "--write" ? Write(objStage, p_strArguments[2])
                                    : Show(objStage, p_strArguments[2]);
    } catch (const std::exception& objException) {
        std::fprintf(stderr, "%s\n", objException.what());
        return 1;
    }
}
