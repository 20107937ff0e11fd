#include "tests/ui/faults/MFaultLaws.h"

#include "tests/golden/MGolden.h"
#include "tests/ui/faults/MSeeing.h"
#include "tests/ui/recorder/CTranscript.h"

#include <algorithm>
#include <map>

namespace {

using Broken = std::vector<std::string>;
using Texts = std::vector<std::string>;

/// A law: adds to the list when it is broken.
using Law = void (*)(const CFaultCell&, const CSeen&, const CSeen&, Broken&);

/// No command awaits more: two seconds of sending, five for the answer, a second's pause, and what
/// boxes and a serial line take.
constexpr int HalfSecondsOfACommand = 17;
constexpr int HalfSecondsOfAHeadCheck = 10;
constexpr int HalfSecondsOfAnOpening = 4;

bool Is(const CFaultCell& p_objCell, const char* p_strButton) {
    return std::string(p_objCell.m_objFlow->m_strButton) == p_strButton;
}

/// What the link tells the moment it happens comes beside the box that the flow has: the socket's
/// own words, and that the printer on USB is gone when its answer is to be fetched.
bool IsLinksOwn(const std::string& p_strTold) {
    return p_strTold.find(": Number=") != std::string::npos ||
           p_strTold.ends_with("'USB' Open Error !!");
}

std::int64_t Count(const Texts& p_strTold, bool (*p_fnIs)(const std::string&)) {
    return std::ranges::count_if(p_strTold, p_fnIs);
}

bool Contains(const Texts& p_strTexts, const std::string& p_strText) {
    return std::ranges::find(p_strTexts, p_strText) != p_strTexts.end();
}

/// The groups that a flow asks for, in their order.
Texts GroupsOf(const CFaultCell& p_objCell) {
    if (Is(p_objCell, "btnRead")) {
        return {"0", "1", "4"};
    }
    return Is(p_objCell, "btnLanRead") ? Texts{"3"} : Texts{};
}

void NothingRuns(const CFaultCell& /*p_objCell*/, const CSeen& p_objSeen,
                 const CSeen& /*p_objSound*/, Broken& p_strBroken) {
    if (p_objSeen.m_iRunning != 0) {
        p_strBroken.emplace_back("a handler is not back");
    }
    if (!p_objSeen.m_strHeld.empty()) {
        p_strBroken.push_back(p_objSeen.m_strHeld);
    }
    if (!p_objSeen.m_strFailure.empty()) {
        p_strBroken.push_back("playing it: " + p_objSeen.m_strFailure);
    }
}

void AtRest(const CFaultCell& p_objCell, const CSeen& p_objSeen, const CSeen& /*p_objSound*/,
            Broken& p_strBroken) {
    if (!p_objSeen.m_strBehind.empty()) {
        p_strBroken.push_back("sent or told when all was over: " + p_objSeen.m_strBehind.front());
    }
    if (!p_objSeen.m_strLater.empty() && !p_objCell.m_objFault->Has(MFaults::ByItself)) {
        p_strBroken.push_back("told when all was over: " + p_objSeen.m_strLater.front());
    }
    if (p_objSeen.m_bClosed != p_objCell.m_objFault->Has(MFaults::Closes)) {
        p_strBroken.emplace_back(p_objSeen.m_bClosed ? "the window has closed"
                                                     : "the window has not closed");
    }
    if (p_objSeen.m_bClosed) {
        return;
    }
    if (!p_objSeen.m_strDisabled.empty()) {
        p_strBroken.push_back("disabled at rest: " + p_objSeen.m_strDisabled);
    }
    if (!p_objSeen.m_strDoing.empty()) {
        p_strBroken.push_back("the line says that something is done: " + p_objSeen.m_strDoing);
    }
    if (!p_objSeen.m_strAgain.empty()) {
        p_strBroken.push_back("pressed again on the sound link: " + p_objSeen.m_strAgain);
    }
}

/// Only the flow's own commands go out, byte by byte, in their order, and none is left out: but for
/// PAPER END, which does not ask what has become of its first one.
void OwnCommandsInOrder(const CFaultCell& p_objCell, const CSeen& p_objSeen,
                        const CSeen& /*p_objSound*/, Broken& p_strBroken) {
    const Texts strCommands = MFaultLaws::CommandsOf(p_objCell);
    const bool bLeavesOut =
        Is(p_objCell, "btnPaperEnd") || p_objCell.m_objFault->Has(MFaults::Presses);
    std::size_t iNext = 0;
    for (const std::string& strSent : p_objSeen.m_strSent) {
        if (!Contains(strCommands, strSent)) {
            p_strBroken.push_back("sent what is none of its commands: " + strSent);
            continue;
        }
        if (!bLeavesOut && (iNext >= strCommands.size() || strCommands[iNext] != strSent)) {
            p_strBroken.push_back("sent out of turn: " + strSent);
        }
        ++iNext;
    }
    const bool bBeginsOne = std::ranges::any_of(strCommands, [&](const std::string& p_strCommand) {
        return p_strCommand.starts_with(p_objSeen.m_strPartly);
    });
    if (!bBeginsOne) {
        p_strBroken.push_back("sent a part of none of its commands: " + p_objSeen.m_strPartly);
    }
}

/// Behind a failure that was told no command goes out.
void NothingBehindAFailure(const CFaultCell& p_objCell, const CSeen& p_objSeen,
                           const CSeen& /*p_objSound*/, Broken& p_strBroken) {
    const MFaults::Fault& objFault = *p_objCell.m_objFault;
    const std::int64_t iFailures = Count(p_objSeen.m_strTold, MSeeing::IsFailure);
    const std::int64_t iOwn = iFailures - Count(p_objSeen.m_strTold, IsLinksOwn);
    const bool bPaperEnd = Is(p_objCell, "btnPaperEnd");
    const bool bOpens = objFault.m_iStrikes == MFaults::Strikes::Opening;
    // An opening that fails is told by itself, and the flow that finds the link closed tells that.
    const std::int64_t iMost = (bPaperEnd ? 2 : 1) + (bOpens ? 1 : 0);
    if (iOwn > iMost || iFailures - iOwn > (bPaperEnd ? 2 : 1)) {
        p_strBroken.push_back(std::to_string(iFailures) + " boxes for one failure");
    }
    if (p_objSeen.m_iBehindFailure > 0 && !bPaperEnd) {
        p_strBroken.emplace_back("a command went out behind a failure that was told");
    }
}

/// What did not go out is told: in a box, and where the system has none for it in the line.
void SilentAboutNothing(const CFaultCell& p_objCell, const CSeen& p_objSeen,
                        const CSeen& /*p_objSound*/, Broken& p_strBroken) {
    const bool bAll = static_cast<int>(p_objSeen.m_strSent.size()) >= p_objCell.Commands();
    if (bAll || p_objSeen.m_bClosed) {
        return;
    }
    // The steps of the sensor adjustment show no box for what the link says of their commands.
    const bool bAsksNobody =
        Is(p_objCell, "btnReflect") || Is(p_objCell, "btnTrans") || Is(p_objCell, "btnPaperEnd");
    // Settings that come to a command which asks for none end a flow on USB without a box.
    const bool bStray = p_objCell.m_iLink == LinkKind::Usb &&
                        p_objSeen.m_strPage.find("settings came in place") != std::string::npos;
    if (p_objCell.m_iLink != LinkKind::Com && !bStray && !bAsksNobody &&
        p_objSeen.m_strTold.empty()) {
        p_strBroken.emplace_back("not everything was sent, and no box tells of it");
    }
    if (p_objSeen.m_strPage.find(" ended") == std::string::npos) {
        p_strBroken.push_back("not everything was sent, and the line says: " + p_objSeen.m_strPage);
    }
}

/// Items hold what a whole answer brought, or what they held before.
void ItemsOfWholeAnswers(const CFaultCell& p_objCell, const CSeen& p_objSeen,
                         const CSeen& /*p_objSound*/, Broken& p_strBroken) {
    const MFaults::Fault& objFault = *p_objCell.m_objFault;
    const Texts strAsked = GroupsOf(p_objCell);
    for (const std::string& strGroup : p_objSeen.m_strRead) {
        if (!Contains(strAsked, strGroup)) {
            p_strBroken.push_back("items of a group that was not asked for: " + strGroup);
        }
    }
    for (const std::string& strGroup : p_objSeen.m_strOther) {
        if (!objFault.Has(MFaults::Alters) || !Contains(strAsked, strGroup)) {
            p_strBroken.push_back("items that no answer brought, of group " + strGroup);
        }
    }
    if (objFault.Has(MFaults::NotWhole) && !strAsked.empty()) {
        const std::string& strStruck = strAsked[static_cast<std::size_t>(p_objCell.m_iCommand) - 1];
        if (Contains(p_objSeen.m_strRead, strStruck)) {
            p_strBroken.push_back("items without a whole answer, of group " + strStruck);
        }
    }
}

/// The page changes by reading alone, and whole only when all groups came.
void PagesOfWholeReads(const CFaultCell& p_objCell, const CSeen& p_objSeen,
                       const CSeen& /*p_objSound*/, Broken& p_strBroken) {
    const bool bRead = Is(p_objCell, "btnRead");
    const bool bLanRead = Is(p_objCell, "btnLanRead");
    if ((!bRead && p_objSeen.m_strParameterPage != "-") ||
        (!bLanRead && p_objSeen.m_strLanPage != "-")) {
        p_strBroken.emplace_back("a page has changed that nobody read");
    }
    const std::string& strPage = bRead ? p_objSeen.m_strParameterPage : p_objSeen.m_strLanPage;
    const bool bAll = p_objSeen.m_strRead == GroupsOf(p_objCell);
    if (strPage == "read" && !bAll) {
        p_strBroken.emplace_back("the page shows a whole reading, the items do not hold it");
    }
    if (strPage == "other" && !p_objCell.m_objFault->Has(MFaults::Alters)) {
        p_strBroken.emplace_back("the page shows what no answer brought");
    }
    const bool bSaysRead = p_objSeen.m_strPage.starts_with("as read from the printer");
    if (bSaysRead && (strPage != "read" || !bAll)) {
        p_strBroken.emplace_back("the line says that the page is as read");
    }
}

void HarmlessAsClaimed(const CFaultCell& p_objCell, const CSeen& p_objSeen, const CSeen& p_objSound,
                       Broken& p_strBroken) {
    if (!MFlows::Has(p_objCell.m_objFault->m_iHarmless, p_objCell.m_iLink)) {
        return;
    }
    CSeen objTimeless = p_objSeen;
    objTimeless.m_iHalfSeconds = p_objSound.m_iHalfSeconds;
    if (p_objCell.m_objFault->Has(MFaults::OneMore) && Is(p_objCell, "btnHeadCheck")) {
        objTimeless.m_strStatus = p_objSound.m_strStatus;  // the second one is a status again
    }
    if (objTimeless.Text() != p_objSound.Text()) {
        p_strBroken.push_back("harmless, and yet other than without a fault:\n" +
                              objTimeless.Text() + "instead of\n" + p_objSound.Text());
    }
}

void EndsInTime(const CFaultCell& p_objCell, const CSeen& p_objSeen, const CSeen& /*p_objSound*/,
                Broken& p_strBroken) {
    const int iPresses = p_objCell.m_objFault->Has(MFaults::Presses) ? 2 : 1;
    const int iMost = iPresses * (p_objCell.Commands() * HalfSecondsOfACommand) +
                      HalfSecondsOfAnOpening +
                      (Is(p_objCell, "btnHeadCheck") ? HalfSecondsOfAHeadCheck : 0);
    if (p_objSeen.m_iHalfSeconds > iMost) {
        p_strBroken.push_back("took " + std::to_string(p_objSeen.m_iHalfSeconds / 2) +
                              " s, at most " + std::to_string(iMost / 2));
    }
}

constexpr std::array<Law, 9> Laws{NothingRuns,        AtRest,
                                  OwnCommandsInOrder, NothingBehindAFailure,
                                  SilentAboutNothing, ItemsOfWholeAnswers,
                                  PagesOfWholeReads,  HarmlessAsClaimed,
                                  EndsInTime};

}  // namespace

namespace MFaultLaws {

std::vector<std::string> Broken(const CFaultCell& p_objCell, const CSeen& p_objSeen,
                                const CSeen& p_objSound) {
    ::Broken strBroken;
    for (const Law fnLaw : Laws) {
        fnLaw(p_objCell, p_objSeen, p_objSound, strBroken);
    }
    return strBroken;
}

std::vector<std::string> CommandsOf(const CFaultCell& p_objCell) {
    static const std::map<std::string, Texts> strOthers{
        {"btnGetStatus", {"{WS|}"}},
        {"btnRead", {"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"}},
        {"btnDiagPrint", {"{Z10|}"}},
        {"btnTestPrint", {"{Z3;007600730105700010000|}"}},
        {"btnReflect", {"{Z6;0|}"}},
        {"btnTrans", {"{Z6;1|}"}},
        {"btnPaperEnd", {"{Z6;01|}", "{Z6;11|}"}},
        {"btnThresholdCalib", {"{WT;1000,1|}"}},
        {"btnRamClear", {"{Z4;0|}"}},
        {"btnLanRead", {"{Z5;3|}"}},
    };
    Texts strCommands;
    if (Is(p_objCell, "btnSet")) {
        strCommands = MGolden::SetCommands();
    } else if (Is(p_objCell, "btnLanSet")) {
        strCommands = MGolden::LanSetCommands();
    } else if (Is(p_objCell, "btnHeadCheck")) {
        strCommands =
            p_objCell.m_iLink == LinkKind::Usb ? Texts{"{HD001,A|}", "{WS|}"} : Texts{"{HD001,A|}"};
    } else {
        strCommands = strOthers.at(p_objCell.m_objFlow->m_strButton);
    }
    for (std::string& strCommand : strCommands) {
        strCommand = CTranscript::Printable(strCommand);
    }
    return strCommands;
}

}  // namespace MFaultLaws
