#include "tests/ui/faults/CFaultStage.h"

#include "tests/golden/MGolden.h"
#include "tests/ui/MGoldenPage.h"
#include "tests/ui/faults/MSeeing.h"

#include <QComboBox>
#include <QTabWidget>

#include <sstream>
#include <stdexcept>

namespace {

constexpr int Groups = 5;
constexpr int LanGroup = 3;
constexpr int MaintenancePage = 1;  // whose line tells how GET STATUS has ended
constexpr std::int64_t LookingOn = 5000;
constexpr std::int64_t LookingOnLate = 10'000;  // past all answers that are late
constexpr std::int64_t LookingOnClosed = 500;
constexpr std::int64_t LookingOnAgain = 300;  // until the answers of a serial line have come

using Known = CFaultStage::Known;

std::string ItemText(const CItem& p_objItem) {
    try {
        return p_objItem.GetValueString();
    } catch (const std::exception& objError) {
        return std::string("cannot be written: ") + objError.what();
    }
}

Known KnownOf(CScene& p_objScene) {
    Known objKnown;
    const CItemManager& objItems = p_objScene.m_objWindow.Form().ItemManager();
    for (const MGolden::Item& objItem : MGolden::Items()) {
        objKnown.m_strItems[objItem.m_strName] =
            CTranscript::Printable(ItemText(*(objItems.*objItem.m_objSlot)));
    }
    for (const auto& [strName, strText] : p_objScene.m_objWindow.ShownFields()) {
        objKnown.m_strFields[strName.toStdString()] = CTranscript::Printable(strText.toStdString());
    }
    return objKnown;
}

std::string TextOf(const Known& p_objKnown) {
    std::string strText;
    for (const auto& [strName, strValue] : p_objKnown.m_strItems) {
        strText += "item " + strName + "=" + strValue + "\n";
    }
    for (const auto& [strName, strValue] : p_objKnown.m_strFields) {
        strText += "field " + strName + "=" + strValue + "\n";
    }
    return strText;
}

Known KnownFrom(const std::string& p_strText) {
    Known objKnown;
    std::istringstream objStream(p_strText);
    for (std::string strLine; std::getline(objStream, strLine);) {
        const std::size_t iKind = strLine.find(' ');
        const std::size_t iEnd = strLine.find('=');
        if (iKind == std::string::npos || iEnd == std::string::npos) {
            throw std::runtime_error("no window to compare with: " + strLine);
        }
        auto& strValues =
            strLine.substr(0, iKind) == "item" ? objKnown.m_strItems : objKnown.m_strFields;
        strValues[strLine.substr(iKind + 1, iEnd - iKind - 1)] = strLine.substr(iEnd + 1);
    }
    return objKnown;
}

/// What has become of some values, of those that reading changes.
struct Change {
    int m_iAsBefore = 0;
    int m_iAsRead = 0;
    int m_iOther = 0;

    void Count(const std::string& p_strBefore, const std::string& p_strRead,
               const std::string& p_strNow) {
        if (p_strNow == p_strBefore) {
            m_iAsBefore += p_strBefore != p_strRead ? 1 : 0;
        } else if (p_strNow == p_strRead) {
            ++m_iAsRead;
        } else {
            ++m_iOther;
        }
    }
};

std::string PageWord(const Change& p_objChange) {
    if (p_objChange.m_iOther > 0) {
        return "other";
    }
    if (p_objChange.m_iAsRead == 0) {
        return "-";
    }
    return p_objChange.m_iAsBefore == 0 ? "read" : "part";
}

int HalfSeconds(std::int64_t p_iMilliseconds) {
    return static_cast<int>((p_iMilliseconds + 250) / 500);
}

/// The group whose answer has the item that the field of the parameter page shows; empty: none has.
std::string GroupOfField(const std::string& p_strField) {
    static const std::map<std::string, std::string> strGroups = [] {
        std::map<std::string, std::string> strAll;
        for (const MGoldenPage::Control& objControl : MGoldenPage::Parameter()) {
            for (int iGroup = 0; iGroup < Groups; ++iGroup) {
                for (const MGolden::Answered& objAnswered : MGolden::Answers(iGroup)) {
                    if (objAnswered.m_objSlot == objControl.m_objItem) {
                        strAll[objControl.m_strName] = std::to_string(iGroup);
                    }
                }
            }
        }
        return strAll;
    }();
    const auto objGroup = strGroups.find(p_strField);
    return objGroup != strGroups.end() ? objGroup->second : "";
}

/// The link is opened again where it is not, and what a former command or answer has left is gone.
void Repair(CScene& p_objScene) {
    p_objScene.MakeSound();
    p_objScene.m_objPort.ForgetCommand();
    p_objScene.m_objLibrary.m_strAnswers.clear();
    p_objScene.Choose(p_objScene.Link());
    const bool bOpen = p_objScene.Link() == LinkKind::Usb ||
                       (p_objScene.Link() == LinkKind::Lan ? p_objScene.m_objSocket.IsConnected()
                                                           : p_objScene.m_objPort.IsOpen());
    if (!bOpen) {
        p_objScene.Press("btnSetup");
    }
}

}  // namespace

CFaultStage::CFaultStage()
    : m_objNew(After(nullptr))
    , m_objRead(After("btnRead"))
    , m_objLanRead(After("btnLanRead")) {}

Known CFaultStage::After(const char* p_strButton) {
    const CCell objCell{"", "btnRead", LinkKind::Lan, true, [p_strButton](CScene& p_objScene) {
                            if (p_strButton != nullptr) {
                                p_objScene.Press(p_strButton);
                            }
                        }};
    return KnownFrom(
        m_objStage.Play(objCell, [](CScene& p_objScene) { return TextOf(KnownOf(p_objScene)); }));
}

std::vector<std::string> CFaultStage::SentBehindReading() {
    const CCell objCell{"", "btnRead", LinkKind::Lan, true, [](CScene& p_objScene) {
                            p_objScene.Press("btnRead");
                            p_objScene.Press("btnLanRead");
                            p_objScene.m_objSocket.m_strSent.clear();
                            p_objScene.Press("btnSet");
                            p_objScene.Press("btnLanSet");
                        }};
    std::istringstream objSent(m_objStage.Play(objCell, [](CScene& p_objScene) {
        std::string strLines;
        for (const std::string& strSent : p_objScene.m_objSocket.m_strSent) {
            strLines += strSent + "\n";
        }
        return strLines;
    }));
    std::vector<std::string> strSent;
    for (std::string strLine; std::getline(objSent, strLine);) {
        strSent.push_back(strLine);
    }
    return strSent;
}

void CFaultStage::Compare(CScene& p_objScene, CSeen& p_objSeen) const {
    const Known objNow = KnownOf(p_objScene);
    for (int iGroup = 0; iGroup < Groups; ++iGroup) {
        Change objChange;
        const Known& objRead = iGroup == LanGroup ? m_objLanRead : m_objRead;
        for (const MGolden::Answered& objAnswered : MGolden::Answers(iGroup)) {
            const std::string strName = MGolden::Of(objAnswered.m_objSlot).m_strName;
            objChange.Count(m_objNew.m_strItems.at(strName), objRead.m_strItems.at(strName),
                            objNow.m_strItems.at(strName));
        }
        if (objChange.m_iOther > 0 || (objChange.m_iAsRead > 0 && objChange.m_iAsBefore > 0)) {
            p_objSeen.m_strOther.push_back(std::to_string(iGroup));
        } else if (objChange.m_iAsRead > 0) {
            p_objSeen.m_strRead.push_back(std::to_string(iGroup));
        }
    }
    ComparePages(objNow, p_objSeen);
}

void CFaultStage::ComparePages(const Known& p_objNow, CSeen& p_objSeen) const {
    Change objParameters;
    Change objLan;
    std::map<std::string, Change> objGroups;
    for (const auto& [strName, strNow] : p_objNow.m_strFields) {
        const std::string& strNew = m_objNew.m_strFields.at(strName);
        const std::string& strRead = m_objRead.m_strFields.at(strName);
        const std::string& strLanRead = m_objLanRead.m_strFields.at(strName);
        if (strLanRead != strNew) {
            objLan.Count(strNew, strLanRead, strNow);
            continue;
        }
        objParameters.Count(strNew, strRead, strNow);
        objGroups[GroupOfField(strName)].Count(strNew, strRead, strNow);
    }
    p_objSeen.m_strParameterPage = PageWord(objParameters);
    p_objSeen.m_strLanPage = PageWord(objLan);
    for (const auto& [strGroup, objChange] : objGroups) {
        if (const std::string strWord = PageWord(objChange); strWord != "-") {
            p_objSeen.m_strShown.push_back(strGroup + (strWord == "read" ? "" : " " + strWord));
        }
    }
}

CSeen CFaultStage::Again(CScene& p_objScene, const CFaultCell& p_objCell) const {
    Repair(p_objScene);
    p_objScene.m_objTranscript.Take();
    CSeen objAgain;
    const std::int64_t iStart = p_objScene.m_objEventLoop.Elapsed();
    p_objScene.Press(p_objCell.m_objFlow->m_strButton);
    objAgain.m_iHalfSeconds = HalfSeconds(p_objScene.m_objEventLoop.Elapsed() - iStart);
    MSeeing::Look(p_objScene.m_objTranscript.Take(), objAgain);
    p_objScene.m_objEventLoop.Idle(LookingOnAgain);
    MSeeing::LookAtRest(p_objScene.m_objTranscript.Take(), objAgain);
    Compare(p_objScene, objAgain);
    MSeeing::LookAtWindow(p_objScene, objAgain);
    return objAgain;
}

CSeen CFaultStage::Play(const CFaultCell& p_objCell) {
    const std::string strButton = p_objCell.m_objFlow->m_strButton;
    const bool bOpens = p_objCell.m_objFault->m_iStrikes == MFaults::Strikes::Opening;
    CSeen objSeen;
    const auto fnAct = [&](CScene& p_objScene) {
        if (strButton == "btnGetStatus") {
            p_objScene.m_objWindow.Get<QTabWidget>("SSTab1").setCurrentIndex(MaintenancePage);
        }
        p_objCell.m_objFault->m_fnPrepare(p_objScene, p_objCell.m_iCommand);
        const std::int64_t iStart = p_objScene.m_objEventLoop.Elapsed();
        if (bOpens) {
            p_objScene.Press("btnSetup");
        }
        const int iPresses = p_objCell.m_objFault->Has(MFaults::Twice) ? 2 : 1;
        for (int i = 0; i < iPresses && !p_objScene.m_objEventLoop.IsClosing(); ++i) {
            p_objScene.Press(strButton);
        }
        objSeen.m_iHalfSeconds = HalfSeconds(p_objScene.m_objEventLoop.Elapsed() - iStart);
        MSeeing::Look(p_objScene.m_objTranscript.Take(), objSeen);
    };
    const auto fnEnd = [&](CScene& p_objScene) {
        const bool bLate = p_objCell.m_objFault->Has(MFaults::Late);
        p_objScene.m_objEventLoop.Idle(p_objScene.m_objEventLoop.IsClosing() ? LookingOnClosed
                                       : bLate                               ? LookingOnLate
                                                                             : LookingOn);
        MSeeing::LookAtRest(p_objScene.m_objTranscript.Take(), objSeen);
        Compare(p_objScene, objSeen);
        MSeeing::LookAtWindow(p_objScene, objSeen);
        if (!p_objScene.m_objEventLoop.IsClosing()) {
            objSeen.SetAgain(Again(p_objScene, p_objCell));
        }
        return objSeen.Text();
    };
    return CSeen::FromText(m_objStage.Play(
        {p_objCell.Heading(), strButton, p_objCell.m_iLink, !bOpens, fnAct}, fnEnd));
}
