#include "tests/ui/faults/MSeeing.h"

#include <QComboBox>

#include <string_view>

namespace {

constexpr std::string_view CommandEnd = "|}";
constexpr std::string_view Sends = " sends ";

bool IsTold(std::string_view p_strLine) {
    return p_strLine.starts_with("box, ") || p_strLine.starts_with("question: ") ||
           p_strLine == "beep";
}

/// Who sends what: "COM sends {WS|}".
bool IsSent(std::string_view p_strLine) {
    return p_strLine.find(Sends) == 3 && !p_strLine.starts_with("box");
}

/// Bytes on the serial line may stand in several lines.
void TakeSent(std::string_view p_strLine, CSeen& p_objSeen) {
    p_objSeen.m_strPartly += p_strLine.substr(3 + Sends.size());
    for (std::size_t i = p_objSeen.m_strPartly.find(CommandEnd); i != std::string::npos;
         i = p_objSeen.m_strPartly.find(CommandEnd)) {
        const std::size_t iEnd = i + CommandEnd.size();
        p_objSeen.m_strSent.push_back(p_objSeen.m_strPartly.substr(0, iEnd));
        p_objSeen.m_strPartly.erase(0, iEnd);
    }
}

std::string Text(CScene& p_objScene, const char* p_strLabel) {
    return CTranscript::Printable(
        p_objScene.m_objWindow.Shown(p_strLabel).replace("\u2026", "...").toStdString());
}

/// While a list is held it says why; otherwise it has nothing to say.
bool IsHeld(const QComboBox& p_cmb) {
    return !p_cmb.toolTip().isEmpty();
}

}  // namespace

namespace MSeeing {

bool IsFailure(const std::string& p_strTold) {
    return p_strTold.starts_with("box") && p_strTold.find("HARD ERROR") == std::string::npos &&
           p_strTold.find("exceeds the useful range") == std::string::npos;
}

void Look(const std::vector<std::string>& p_strLines, CSeen& p_objSeen) {
    bool bClosing = false;
    bool bFailed = false;
    for (const std::string& strLine : p_strLines) {
        bClosing |= strLine == "closing the window";
        if (bClosing && (IsTold(strLine) || IsSent(strLine))) {
            p_objSeen.m_strBehind.push_back(strLine);
        } else if (IsTold(strLine)) {
            p_objSeen.m_strTold.push_back(strLine);
            bFailed |= IsFailure(strLine);
        } else if (IsSent(strLine)) {
            const std::size_t iBefore = p_objSeen.m_strSent.size();
            TakeSent(strLine, p_objSeen);
            p_objSeen.m_iBehindFailure +=
                bFailed ? static_cast<int>(p_objSeen.m_strSent.size() - iBefore) : 0;
        } else if (strLine.starts_with("press ")) {
            const bool bRefused = strLine.ends_with(", which is disabled");
            const bool bSetup = strLine == "press btnSetup";  // the flow's own is the other
            p_objSeen.m_iTaken += bRefused || bSetup ? 0 : 1;
            bFailed &= bRefused;  // what is pressed behind a failure is another flow
            ++(bRefused ? p_objSeen.m_iRefused : p_objSeen.m_iRunning);
        } else if (strLine.starts_with("done ")) {
            --p_objSeen.m_iRunning;
        } else if (strLine == "the window has closed") {
            p_objSeen.m_bClosed = true;
        }
    }
}

void LookAtRest(const std::vector<std::string>& p_strLines, CSeen& p_objSeen) {
    for (const std::string& strLine : p_strLines) {
        if (IsTold(strLine) && !p_objSeen.m_bClosed) {
            p_objSeen.m_strLater.push_back(strLine);
        } else if (IsTold(strLine) || IsSent(strLine)) {
            p_objSeen.m_strBehind.push_back(strLine);
        }
        p_objSeen.m_bClosed |= strLine == "the window has closed";
    }
}

void LookAtWindow(CScene& p_objScene, CSeen& p_objSeen) {
    p_objSeen.m_strStatus = Text(p_objScene, "lblStatus");
    p_objSeen.m_strHeadCheck = Text(p_objScene, "lblHeadCheck");
    p_objSeen.m_strLink = Text(p_objScene, "lblLink");
    p_objSeen.m_strDoing = Text(p_objScene, "lblDoing");
    p_objSeen.m_strPage = Text(p_objScene, "lblPage");
    p_objSeen.m_strDisabled = p_objScene.m_objWindow.DisabledButtons().join(' ').toStdString();
    p_objSeen.m_strHeld = p_objScene.m_objBoxes.Stands() ? "a box stands" : "";
    if (IsHeld(p_objScene.m_objWindow.List("cmbInterface"))) {
        p_objSeen.m_strHeld = "the interface list is held";
    }
}

}  // namespace MSeeing
