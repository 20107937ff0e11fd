// Writes what is expected of the table of faults anew, or the page of it:
//
//   varden_fault_table --record FOLDER      what comes of each cell, a file a row
//   varden_fault_table --page FOLDER FILE   the command line's part of the page, of these
//   varden_fault_table --show TEXT          the cells in whose headings TEXT stands

#include "tests/cli/faults/MFaultPage.h"
#include "tests/cli/faults/MFaultRules.h"
#include "tests/cli/faults/MFaultText.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>

namespace {

int Record(const std::string& p_strFolder) {
    for (const MFaultRows::Row& objRow : MFaultRows::All()) {
        std::ofstream objFile(p_strFolder + "/" + objRow.m_strName + ".txt", std::ios::binary);
        objFile << MFaultText::File(objRow);
        if (!objFile.flush()) {
            return 1;
        }
    }
    return 0;
}

int WritePage(const std::string& p_strFolder, const std::string& p_strPath) {
    std::string strPage = MFaultPage::Content(p_strPath);
    const std::string strOld = MFaultPage::PartOf(strPage);
    if (strOld.empty()) {
        std::fprintf(stderr, "no place for it in %s\n", p_strPath.c_str());
        return 1;
    }
    strPage.replace(strPage.find(strOld), strOld.size(), MFaultPage::Part(p_strFolder));
    std::ofstream objFile(p_strPath, std::ios::binary);
    objFile << strPage;
    return objFile.flush() ? 0 : 1;
}

int Show(const std::string& p_strText) {
    for (const MFaultRows::Row& objRow : MFaultRows::All()) {
        for (const MFaults::Link iLink : objRow.m_iLinks) {
            for (const MFaultCells::Cell& objCell : MFaultCells::Of(objRow, iLink)) {
                const std::string strHeading = objRow.m_strName + ", " + objCell.Heading();
                if (strHeading.find(p_strText) != std::string::npos) {
                    const MFaultCells::Played objPlayed = MFaultCells::Play(objCell);
                    std::cout << "[" << strHeading << "]\n"
                              << MFaultText::Whole(objCell, objPlayed)
                              << objPlayed.m_objOutcome.m_strOut;
                    for (const std::string& strRule : MFaultRules::Broken(objCell, objPlayed)) {
                        std::cout << "BROKEN: " << strRule << "\n";
                    }
                }
            }
        }
    }
    return 0;
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    const std::vector<std::string> strWords(p_strArguments + 1, p_strArguments + p_iCount);
    try {
        if (strWords.size() == 2 && strWords[0] == "--record") {
            return Record(strWords[1]);
        }
        if (strWords.size() == 3 && strWords[0] == "--page") {
            return WritePage(strWords[1], strWords[2]);
        }
        if (strWords.size() == 2 && strWords[0] == "--show") {
            return Show(strWords[1]);
        }
        std::fprintf(stderr,
                     "varden_fault_table --record FOLDER | --page FOLDER FILE | --show TEXT\n");
        return 2;
    } catch (const std::exception& objFailure) {
        std::fprintf(stderr, "%s\n", objFailure.what());
        return 1;
    }
}
