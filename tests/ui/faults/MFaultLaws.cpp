#include "tests/ui/faults/MFaultLaws.h"

#include "tests/golden/MGolden.h"
#include "tests/ui/faults/MFaultTold.h"
#include "tests/ui/recorder/CTranscript.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <regex>

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
constexpr int HalfSecondsOfADelay = 7;  // the longest one that is harmless takes three seconds

bool Is(const CFaultCell& p_objCell, const char* p_strButton) {
    return std::string(p_objCell.m_objFlow->m_strButton) == p_strButton;
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
    // What tells of itself whenever it happens tells no more than that.
    const std::string strLater = MFaultTold::Letters(p_objSeen.m_strLater);
    if (!strLater.empty() &&
        (!p_objCell.m_objFault->Has(MFaults::ByItself) || strLater.size() > 1)) {
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
}

/// On the sound link the flow goes as one that has never met a fault: the same bytes, boxes, items,
/// page, labels and buttons.
void SoundAgain(const CFaultCell& p_objCell, const CSeen& p_objSeen, const CSeen& p_objSound,
                Broken& p_strBroken) {
    if (p_objSeen.m_bClosed) {
        return;
    }
    CSeen objAgain = p_objSeen.Again();
    CSeen objSound = p_objSound;
    objSound.m_strAgain.clear();
    if (p_objCell.m_objFlow->m_bReads) {
        objSound.m_strStatus = p_objSeen.m_strStatus;  // of which a reading says nothing
    }
    if (std::abs(objAgain.m_iHalfSeconds - objSound.m_iHalfSeconds) <= 1) {
        objAgain.m_iHalfSeconds = objSound.m_iHalfSeconds;
    }
    if (objAgain.Text() != objSound.Text()) {
        p_strBroken.push_back("pressed again on the sound link:\n" + objAgain.Text() +
                              "instead of\n" + objSound.Text());
    }
}

int PressesOf(const CFaultCell& p_objCell) {
    const MFaults::Fault& objFault = *p_objCell.m_objFault;
    return objFault.Has(MFaults::Presses) || objFault.Has(MFaults::Twice) ? 2 : 1;
}

/// The button is enabled while its flow runs: always that of LAN SET, and that of HEAD CHECK when
/// its command is over and it pauses, which on USB is part of the command.
bool IsEnabledInside(const CFaultCell& p_objCell) {
    const MFaults::Fault& objFault = *p_objCell.m_objFault;
    const bool bPauses = objFault.Has(MFaults::InPause) ||
                         (objFault.Has(MFaults::Behind) && p_objCell.m_iLink == LinkKind::Com);
    return Is(p_objCell, "btnLanSet") ||
           (Is(p_objCell, "btnHeadCheck") && p_objCell.m_iLink != LinkKind::Usb && bPauses);
}

/// Who presses the button in the middle finds it disabled, or begins the flow anew.
void PressedAsItShould(const CFaultCell& p_objCell, const CSeen& p_objSeen,
                       const CSeen& /*p_objSound*/, Broken& p_strBroken) {
    const bool bInside = p_objCell.m_objFault->Has(MFaults::Presses);
    const int iRefused = bInside && !IsEnabledInside(p_objCell) ? 1 : 0;
    const bool bOpens = p_objCell.m_objFault->m_iStrikes == MFaults::Strikes::Opening;
    const int iTaken = PressesOf(p_objCell) - iRefused - (bOpens && p_objSeen.m_bClosed ? 1 : 0);
    if (p_objSeen.m_iRefused != iRefused || p_objSeen.m_iTaken != iTaken) {
        p_strBroken.push_back("pressed, " + std::to_string(p_objSeen.m_iTaken) + " taken and " +
                              std::to_string(p_objSeen.m_iRefused) + " refused, expected " +
                              std::to_string(iTaken) + " and " + std::to_string(iRefused));
    }
}

/// What is sent when the button was pressed again and that was taken: some commands, and then all.
bool IsBegunAnew(const Texts& p_strSent, const Texts& p_strCommands) {
    const std::size_t iAll = p_strCommands.size();
    const std::size_t iFirst = p_strSent.size() - std::min(p_strSent.size(), iAll);
    return p_strSent.size() > iAll && iFirst <= iAll &&
           std::equal(p_strSent.begin(), p_strSent.begin() + static_cast<std::ptrdiff_t>(iFirst),
                      p_strCommands.begin()) &&
           std::equal(p_strSent.begin() + static_cast<std::ptrdiff_t>(iFirst), p_strSent.end(),
                      p_strCommands.begin());
}

/// PAPER END does not ask what has become of its first command, and sends the second one.
bool IsInOrder(const Texts& p_strSent, const Texts& p_strCommands, bool p_bLeavesOut) {
    std::size_t iNext = 0;
    for (const std::string& strSent : p_strSent) {
        while (p_bLeavesOut && iNext < p_strCommands.size() && p_strCommands[iNext] != strSent) {
            ++iNext;
        }
        if (iNext >= p_strCommands.size() || p_strCommands[iNext] != strSent) {
            return false;
        }
        ++iNext;
    }
    return true;
}

/// Only the flow's own commands go out, byte by byte, each once, in their order, and none is left
/// out in between.
void OwnCommandsInOrder(const CFaultCell& p_objCell, const CSeen& p_objSeen,
                        const CSeen& /*p_objSound*/, Broken& p_strBroken) {
    const Texts strCommands = MFaultLaws::CommandsOf(p_objCell);
    for (const std::string& strSent : p_objSeen.m_strSent) {
        if (!Contains(strCommands, strSent)) {
            p_strBroken.push_back("sent what is none of its commands: " + strSent);
            return;
        }
    }
    const bool bTwice = PressesOf(p_objCell) > 1 && p_objSeen.m_iTaken > 1;
    if (!(bTwice ? IsBegunAnew(p_objSeen.m_strSent, strCommands)
                 : IsInOrder(p_objSeen.m_strSent, strCommands, Is(p_objCell, "btnPaperEnd")))) {
        p_strBroken.push_back("sent out of turn: " + p_objSeen.m_strSent.back());
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
    if (p_objSeen.m_iBehindFailure > 0 && !Is(p_objCell, "btnPaperEnd")) {
        p_strBroken.emplace_back("a command went out behind a failure that was told");
    }
}

/// Each fault is told by the boxes that are meant for it, once, and nothing else is told.
void ToldAsItShould(const CFaultCell& p_objCell, const CSeen& p_objSeen,
                    const CSeen& /*p_objSound*/, Broken& p_strBroken) {
    const std::string strTold =
        MFaultTold::Letters(p_objSeen.m_strTold) + MFaultTold::Letters(p_objSeen.m_strLater);
    const std::string strExpected = MFaultTold::Expected(p_objCell);
    if (!std::regex_match(strTold, std::regex(strExpected))) {
        p_strBroken.push_back("told \"" + strTold + "\", expected \"" + strExpected + '"');
    }
}

/// Settings whose answer did not come: on a link where nothing is awaited READ goes on without.
bool TellsMissingSettings(const CFaultCell& p_objCell, const CSeen& p_objSeen) {
    const std::string& strPage = p_objSeen.m_strPage;
    const std::string strGroup =
        GroupsOf(p_objCell)[static_cast<std::size_t>(p_objCell.m_iCommand) - 1];
    if (strPage.starts_with("READ ended at group ")) {
        // What went before was answered, so it ends at this one, or at the next one that the link
        // does not take any more.
        return p_objCell.m_iLink == LinkKind::Com ||
               strPage.starts_with("READ ended at group " + strGroup + ": no answer");
    }
    const std::size_t iEnd = strPage.find(" (");
    return p_objCell.m_iLink == LinkKind::Com && strPage.starts_with("READ: no answer for group") &&
           strPage.substr(0, iEnd).find(strGroup) != std::string::npos;
}

/// A status that did not come: no label shows one.
bool ShowsNoStatus(const CFaultCell& p_objCell, const CSeen& p_objSeen) {
    // The library hands over what there is: the code stands before its middle.
    const bool bHasCode = p_objCell.m_iLink == LinkKind::Usb &&
                          (p_objCell.m_objFault->m_strName == "cut short: half of it" ||
                           p_objCell.m_objFault->m_strName == "cut short: without its last byte");
    return bHasCode || p_objCell.Commands() > 1 ||
           (p_objSeen.m_strStatus.empty() && p_objSeen.m_strHeadCheck.empty());
}

/// Settings that come when their flow is over have come too late. A status is shown whenever it
/// comes.
bool LacksAnswer(const CFaultCell& p_objCell) {
    return p_objCell.m_objFault->Has(MFaults::NotWhole) ||
           (p_objCell.m_objFault->Has(MFaults::Late) && p_objCell.m_objFlow->m_bReads);
}

/// What did not go out, and what did not come, stands in the line or shows in the labels.
void SilentAboutNothing(const CFaultCell& p_objCell, const CSeen& p_objSeen,
                        const CSeen& /*p_objSound*/, Broken& p_strBroken) {
    if (p_objSeen.m_bClosed || p_objCell.m_objFault->Has(MFaults::Twice)) {
        return;
    }
    const std::string& strPage = p_objSeen.m_strPage;
    const bool bEnded = strPage.find(" ended") != std::string::npos;
    if (static_cast<int>(p_objSeen.m_strSent.size()) < p_objCell.Commands() && !bEnded) {
        p_strBroken.push_back("not everything was sent, and the line says: " + strPage);
    }
    if (MFaultTold::Letters(p_objSeen.m_strTold).ends_with("bT") &&
        (!bEnded || strPage.find(": no answer") == std::string::npos)) {
        p_strBroken.push_back("no answer came in time, and the line says: " + strPage);
    }
    if (!LacksAnswer(p_objCell)) {
        return;
    }
    if (p_objCell.m_objFlow->m_bReads ? !TellsMissingSettings(p_objCell, p_objSeen)
                                      : !ShowsNoStatus(p_objCell, p_objSeen)) {
        p_strBroken.push_back("no answer came, and yet: \"" + strPage + "\", status \"" +
                              p_objSeen.m_strStatus + p_objSeen.m_strHeadCheck + '"');
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
    if (LacksAnswer(p_objCell) && !strAsked.empty()) {
        const std::string& strStruck = strAsked[static_cast<std::size_t>(p_objCell.m_iCommand) - 1];
        if (Contains(p_objSeen.m_strRead, strStruck)) {
            p_strBroken.push_back("items without a whole answer, of group " + strStruck);
        }
    }
}

/// A page shows what whole answers have brought. READ shows it when all of its groups are through:
/// where answers are awaited that is when all have come, on a serial line in any case.
void PagesOfWholeReads(const CFaultCell& p_objCell, const CSeen& p_objSeen,
                       const CSeen& /*p_objSound*/, Broken& p_strBroken) {
    const bool bRead = Is(p_objCell, "btnRead");
    const bool bLanRead = Is(p_objCell, "btnLanRead");
    const bool bAlters = p_objCell.m_objFault->Has(MFaults::Alters);
    if ((!bRead && (p_objSeen.m_strParameterPage != "-" || !p_objSeen.m_strShown.empty())) ||
        (!bLanRead && p_objSeen.m_strLanPage != "-")) {
        p_strBroken.emplace_back("a page has changed that nobody read");
    }
    const std::string& strPage = bRead ? p_objSeen.m_strParameterPage : p_objSeen.m_strLanPage;
    const bool bAll = p_objSeen.m_strRead == GroupsOf(p_objCell);
    if (strPage == "read" && !bAll) {
        p_strBroken.emplace_back("the page shows a whole reading, the items do not hold it");
    }
    if (strPage == "other" && !bAlters) {
        p_strBroken.emplace_back("the page shows what no answer brought");
    }
    for (const std::string& strShown : p_objSeen.m_strShown) {
        if (!bAlters && !Contains(p_objSeen.m_strRead, strShown)) {
            p_strBroken.push_back("the page shows what no whole answer brought, of group " +
                                  strShown);
        }
    }
    const bool bEnded = p_objSeen.m_strPage.starts_with("READ ended at ");
    if (strPage != "-" && !bAlters && (bEnded || (!bAll && p_objCell.m_iLink != LinkKind::Com))) {
        p_strBroken.push_back("the page has changed, though the reading has not come to its end");
    }
    const bool bSaysRead = p_objSeen.m_strPage.starts_with("as read from the printer");
    if (bSaysRead && (strPage != "read" || !bAll)) {
        p_strBroken.emplace_back("the line says that the page is as read");
    }
    if (bAll && strPage == "read" && !bSaysRead && !p_objSeen.m_bClosed && !bAlters) {
        p_strBroken.push_back("the page is as read, and the line says: " + p_objSeen.m_strPage);
    }
}

void HarmlessAsClaimed(const CFaultCell& p_objCell, const CSeen& p_objSeen, const CSeen& p_objSound,
                       Broken& p_strBroken) {
    if (!MFlows::Has(p_objCell.m_objFault->m_iHarmless, p_objCell.m_iLink)) {
        return;
    }
    const int iLonger = p_objSeen.m_iHalfSeconds - p_objSound.m_iHalfSeconds;
    if (iLonger < 0 || iLonger > HalfSecondsOfADelay) {
        p_strBroken.push_back("harmless, and yet longer by half seconds: " +
                              std::to_string(iLonger));
    }
    CSeen objTimeless = p_objSeen;
    objTimeless.m_iHalfSeconds = p_objSound.m_iHalfSeconds;
    objTimeless.m_strAgain = p_objSound.m_strAgain;  // has a law of its own
    CSeen objSound = p_objSound;
    if (p_objCell.m_objFault->Has(MFaults::OneMore) && Is(p_objCell, "btnHeadCheck") &&
        p_objCell.m_iLink != LinkKind::Usb) {
        objSound.m_strStatus = objSound.m_strHeadCheck;  // the second one is a status again
    }
    if (objTimeless.Text() != objSound.Text()) {
        p_strBroken.push_back("harmless, and yet other than without a fault:\n" +
                              objTimeless.Text() + "instead of\n" + objSound.Text());
    }
}

/// What strikes behind the last answer of a flow has come too late to do any harm to it, and what
/// is late does none to the flow that was begun anew.
void NothingIsLost(const CFaultCell& p_objCell, const CSeen& p_objSeen, const CSeen& p_objSound,
                   Broken& p_strBroken) {
    const MFaults::Fault& objFault = *p_objCell.m_objFault;
    const bool bBehind = objFault.Has(MFaults::Behind) && !objFault.Has(MFaults::Presses) &&
                         p_objCell.m_iCommand == p_objCell.Commands();
    if (!bBehind && !objFault.Has(MFaults::Twice)) {
        return;
    }
    // What tells of itself is told in the line, too, while a button's handler is at work.
    const bool bLineTells = objFault.Has(MFaults::ByItself) && p_objSound.m_strPage.empty();
    // A closing window fetches nothing more from the library.
    if (p_objSeen.m_bClosed && p_objCell.m_iLink == LinkKind::Usb) {
        return;
    }
    if (p_objSeen.m_strRead != p_objSound.m_strRead || !p_objSeen.m_strOther.empty()) {
        p_strBroken.emplace_back("items are lost");
    }
    if (!p_objSeen.m_bClosed && (p_objSeen.m_strShown != p_objSound.m_strShown ||
                                 p_objSeen.m_strLanPage != p_objSound.m_strLanPage ||
                                 (p_objSeen.m_strPage != p_objSound.m_strPage && !bLineTells))) {
        p_strBroken.push_back("the page is lost, the line says: " + p_objSeen.m_strPage);
    }
    const bool bTwoStatuses = objFault.Has(MFaults::Twice) && Is(p_objCell, "btnHeadCheck");
    if (p_objSeen.m_strHeadCheck != p_objSound.m_strHeadCheck ||
        p_objSeen.m_strStatus !=
            (bTwoStatuses ? p_objSound.m_strHeadCheck : p_objSound.m_strStatus)) {
        p_strBroken.push_back("the status is lost: \"" + p_objSeen.m_strStatus + "\", \"" +
                              p_objSeen.m_strHeadCheck + '"');
    }
}

void EndsInTime(const CFaultCell& p_objCell, const CSeen& p_objSeen, const CSeen& /*p_objSound*/,
                Broken& p_strBroken) {
    const int iMost = PressesOf(p_objCell) * (p_objCell.Commands() * HalfSecondsOfACommand) +
                      HalfSecondsOfAnOpening +
                      (Is(p_objCell, "btnHeadCheck") ? HalfSecondsOfAHeadCheck : 0);
    if (p_objSeen.m_iHalfSeconds > iMost) {
        p_strBroken.push_back("took " + std::to_string(p_objSeen.m_iHalfSeconds / 2) +
                              " s, at most " + std::to_string(iMost / 2));
    }
}

constexpr std::array<Law, 13> Laws{NothingIsLost,
                                   PressedAsItShould,
                                   NothingRuns,
                                   AtRest,
                                   SoundAgain,
                                   OwnCommandsInOrder,
                                   ToldAsItShould,
                                   SilentAboutNothing,
                                   NothingBehindAFailure,
                                   ItemsOfWholeAnswers,
                                   PagesOfWholeReads,
                                   HarmlessAsClaimed,
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
