#include "tests/ui/recorder/MRecording.h"

#include "tests/ui/recorder/MFileCells.h"
#include "tests/ui/recorder/MInsideCells.h"
#include "tests/ui/recorder/MSetupCells.h"
#include "tests/ui/recorder/MTalkingCells.h"

#include <algorithm>
#include <map>
#include <sstream>
#include <utility>

namespace {

constexpr const char* HeadingMark = "== ";

/// A heading and the text under it.
using Section = std::pair<std::string, std::string>;

std::vector<Section> Sections(const std::string& p_strRecording) {
    std::vector<Section> objSections;
    std::istringstream objStream(p_strRecording);
    for (std::string strLine; std::getline(objStream, strLine);) {
        if (strLine.starts_with(HeadingMark) || objSections.empty()) {
            objSections.push_back({strLine, {}});
        } else {
            objSections.back().second += strLine + "\n";
        }
    }
    return objSections;
}

std::string FirstDifferentLine(const std::string& p_strBefore, const std::string& p_strNow) {
    std::istringstream objBefore(p_strBefore);
    std::istringstream objNow(p_strNow);
    std::string strBefore;
    std::string strNow;
    for (int iLine = 1;; ++iLine) {
        const bool bBefore = static_cast<bool>(std::getline(objBefore, strBefore));
        const bool bNow = static_cast<bool>(std::getline(objNow, strNow));
        if (bBefore != bNow || strBefore != strNow || !bBefore) {
            return "line " + std::to_string(iLine) +
                   "\n  before: " + (bBefore ? strBefore : "(the cell has ended)") +
                   "\n  now:    " + (bNow ? strNow : "(the cell has ended)") + "\n";
        }
    }
}

}  // namespace

namespace MRecording {

const std::vector<std::string>& Names() {
    static const std::vector<std::string> strNames = [] {
        std::vector<std::string> strAll;
        for (const QString& strButton : CMainWindow::ActionButtons()) {
            strAll.push_back(strButton.toStdString());
        }
        strAll.insert(strAll.end(), {"insideHeadCheck", "insideLanSet"});
        return strAll;
    }();
    return strNames;
}

Cells CellsOf(const std::string& p_strName) {
    static const std::map<std::string, Cells (*)()> objOthers{
        {"btnSetup", MSetupCells::All},
        {"btnSave", [] { return MFileCells::OfSave(MFiles::Parameters()); }},
        {"btnLoad", [] { return MFileCells::OfLoad(MFiles::Parameters()); }},
        {"btnLanSave", [] { return MFileCells::OfSave(MFiles::Lan()); }},
        {"btnLanLoad", [] { return MFileCells::OfLoad(MFiles::Lan()); }},
        {"insideHeadCheck", MInsideCells::InsideHeadCheck},
        {"insideLanSet", MInsideCells::InsideLanSet},
    };
    const auto objOther = objOthers.find(p_strName);
    if (objOther != objOthers.end()) {
        return objOther->second();
    }
    return MTalkingCells::Of(
        *std::ranges::find(MFlows::Talking(), p_strName, &MFlows::Flow::m_strButton));
}

std::string Make(CStage& p_objStage, const std::string& p_strName) {
    std::string strText;
    for (const CCell& objCell : CellsOf(p_strName)) {
        strText += HeadingMark + objCell.m_strHeading + "\n" + p_objStage.Play(objCell);
    }
    return strText;
}

std::string Difference(const std::string& p_strBefore, const std::string& p_strNow) {
    const std::vector<Section> objBefore = Sections(p_strBefore);
    const std::vector<Section> objNow = Sections(p_strNow);
    const std::map<std::string, std::string> strBefore(objBefore.begin(), objBefore.end());
    const std::map<std::string, std::string> strNow(objNow.begin(), objNow.end());
    std::string strFirst;
    int iDifferent = 0;
    for (const auto& [strHeading, strText] : objNow) {
        const auto objFound = strBefore.find(strHeading);
        if (objFound != strBefore.end() && objFound->second == strText) {
            continue;
        }
        if (++iDifferent == 1) {
            const std::string strOld =
                objFound != strBefore.end() ? objFound->second : "(no such cell)\n";
            strFirst = strHeading + "\n" + FirstDifferentLine(strOld, strText) + "--- before\n" +
                       strOld + "--- now\n" + strText;
        }
    }
    for (const auto& [strHeading, strText] : objBefore) {
        if (!strNow.contains(strHeading) && ++iDifferent == 1) {
            strFirst = strHeading + "\nis not there any more\n";
        }
    }
    if (iDifferent == 0) {
        return p_strBefore == p_strNow ? "" : "the same cells in another order\n";
    }
    return std::to_string(iDifferent) + " of " + std::to_string(objNow.size()) +
           " cells differ; the first:\n" + strFirst;
}

}  // namespace MRecording
