// The fault table of the window:
//
//   varden_window_faults --write TABLE    plays every cell and writes the table of the outcomes
//   anew varden_window_faults --show TEXT      the cells in whose key TEXT stands
//   varden_window_faults --page TABLE PAGE    the window's part of the page anew, from the table

#include "tests/ui/faults/CFaultStage.h"
#include "tests/ui/faults/MFaultLaws.h"
#include "tests/ui/faults/MFaultPage.h"
#include "tests/ui/faults/MFaultRecord.h"

#include <QApplication>

#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace {

void WriteFile(const std::string& p_strPath, const std::string& p_strText) {
    std::ofstream objFile(p_strPath, std::ios::binary);
    objFile << p_strText;
    objFile.close();
    if (!objFile) {
        throw std::runtime_error("cannot write " + p_strPath);
    }
}

std::string ReadFile(const std::string& p_strPath) {
    std::ifstream objFile(p_strPath, std::ios::binary);
    if (!objFile) {
        throw std::runtime_error("cannot read " + p_strPath);
    }
    return {std::istreambuf_iterator<char>(objFile), {}};
}

/// Plays the cells in whose key p_strText stands; the broken laws are told on standard error.
MFaultRecord::Outcomes Play(const std::string& p_strText) {
    CFaultStage objStage;
    MFaultRecord::Outcomes strOutcomes;
    CSeen objSound;
    const CFaultCell* objNone = nullptr;
    const auto objCells = MFaultCells::All();
    for (const CFaultCell& objCell : objCells) {
        const bool bSound = objCell.m_objFault == &MFaults::All().front();
        objNone = bSound ? &objCell : objNone;
        if (MFaultRecord::Key(objCell).find(p_strText) == std::string::npos) {
            continue;
        }
        if (objNone != nullptr) {
            objSound = objStage.Play(*objNone);
            objNone = nullptr;
        }
        const CSeen objSeen = bSound ? objSound : objStage.Play(objCell);
        for (const std::string& strBroken : MFaultLaws::Broken(objCell, objSeen, objSound)) {
            std::fprintf(stderr, "%s: %s\n", MFaultRecord::Key(objCell).c_str(), strBroken.c_str());
        }
        strOutcomes[MFaultRecord::Key(objCell)] = MFaultRecord::Outcome(objCell, objSeen);
    }
    return strOutcomes;
}

int WritePage(const std::string& p_strTable, const std::string& p_strPage) {
    WriteFile(p_strPage,
              MFaultPage::Replace(ReadFile(p_strPage),
                                  MFaultPage::Part(MFaultRecord::FromText(ReadFile(p_strTable)))));
    return 0;
}

int Run(const std::string& p_strWhat, const std::string& p_strFirst) {
    if (p_strWhat == "--write") {
        WriteFile(p_strFirst, MFaultRecord::Text(Play("")));
        return 0;
    }
    for (const auto& [strKey, strOutcome] : Play(p_strFirst)) {
        std::printf("%s: %s\n", strKey.c_str(), strOutcome.c_str());
    }
    return 0;
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    const std::string strWhat = p_iCount > 2 ? p_strArguments[1] : "";
    if (strWhat != "--write" && strWhat != "--show" && strWhat != "--page") {
        std::fprintf(stderr,
                     "varden_window_faults --write TABLE | --show TEXT | --page TABLE PAGE\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    try {
        if (strWhat == "--page") {
            return WritePage(p_strArguments[2], p_iCount > 3 ? p_strArguments[3] : "");
        }
        QApplication objApplication(p_iCount, p_strArguments);
        return Run(strWhat, p_strArguments[2]);
    } catch (const std::exception& objException) {
        std::fprintf(stderr, "%s\n", objException.what());
        return 1;
    }
}
