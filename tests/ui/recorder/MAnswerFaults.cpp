#include "tests/ui/recorder/MAnswerFaults.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace {

using MAnswerFaults::Asked;
using MAnswerFaults::Hand;
using MFlows::Any;
using MFlows::Com;
using MFlows::Lan;
using MFlows::Usb;

// When something happens that is neither at once nor long after.
constexpr std::int64_t Soon = 100;
constexpr std::int64_t HalfASecond = 500;
constexpr std::int64_t BetweenHalves = 600;
constexpr std::int64_t BetweenBytes = 5;
constexpr std::int64_t ASecond = 1000;
constexpr std::int64_t ThreeSeconds = 3000;

constexpr bool LaterToo = true;

constexpr const char* Junk = "xyz";
constexpr std::int16_t OtherSettings = 1;
constexpr int Groups = 5;
constexpr std::size_t GroupPosition = 4;  // in "{Z5;0|}"
constexpr std::int16_t UnusedEvent = 1009;

void Replace(const Hand& p_objHand, const std::string& p_strBytes) {
    p_objHand.Answer() = p_strBytes;
}

void ReplaceByStatus(const Hand& p_objHand, const char* p_strCode) {
    p_objHand.Answer() = p_objHand.m_objScene.m_objWire.StatusAnswer(p_strCode);
}

/// Something comes first, and the answer half a second after it.
void Precede(const Hand& p_objHand, const std::string& p_strBytes) {
    const CScriptedWire::Step objFirst{p_objHand.m_objSteps.front().m_iAt, p_strBytes, nullptr};
    p_objHand.m_objSteps.front().m_iAt += HalfASecond;
    p_objHand.m_objSteps.insert(p_objHand.m_objSteps.begin(), objFirst);
}

std::string NextGroup(const Hand& p_objHand) {
    const int iNext = (p_objHand.m_strCommand[GroupPosition] - '0' + 1) % Groups;
    return p_objHand.m_objScene.m_objWire.SettingsAnswer(static_cast<std::int16_t>(iNext));
}

/// The answer with every character of its fields replaced.
void FillFields(const Hand& p_objHand, char p_cCharacter) {
    std::string& strAnswer = p_objHand.Answer();
    const std::size_t iFields = strAnswer.find('{') + 2;
    std::fill(strAnswer.begin() + static_cast<std::ptrdiff_t>(iFields), strAnswer.end() - 2,
              p_cCharacter);
}

void ByteByByte(const Hand& p_objHand) {
    const std::string strAnswer = p_objHand.Answer();
    std::int64_t iAt = p_objHand.m_objSteps.front().m_iAt;
    p_objHand.m_objSteps.clear();
    for (const char cByte : strAnswer) {
        p_objHand.m_objSteps.push_back({iAt, std::string(1, cByte), nullptr});
        iAt += BetweenBytes;
    }
}

/// The answer in two halves, so much time between them.
void Halve(const Hand& p_objHand, std::int64_t p_iBetween) {
    const std::string strAnswer = p_objHand.Answer();
    const std::size_t iHalf = strAnswer.size() / 2;
    p_objHand.Answer().resize(iHalf);
    p_objHand.m_objSteps.push_back(
        {p_objHand.m_objSteps.front().m_iAt + p_iBetween, strAnswer.substr(iHalf), nullptr});
}

CScriptedWire::Step Event(const Hand& p_objHand, std::int64_t p_iAt, void (*p_fnEvent)(CScene&)) {
    return {p_iAt, {}, [&objScene = p_objHand.m_objScene, p_fnEvent] { p_fnEvent(objScene); }};
}

// Something happens before the answer, in its middle, or behind it.

void DoBefore(const Hand& p_objHand, void (*p_fnEvent)(CScene&)) {
    p_objHand.m_objSteps.insert(p_objHand.m_objSteps.begin(),
                                Event(p_objHand, p_objHand.m_objSteps.front().m_iAt, p_fnEvent));
    p_objHand.m_objSteps.back().m_iAt += Soon;
}

void DoInside(const Hand& p_objHand, void (*p_fnEvent)(CScene&)) {
    const std::int64_t iAt = p_objHand.m_objSteps.front().m_iAt;
    Halve(p_objHand, BetweenHalves);
    p_objHand.m_objSteps.insert(p_objHand.m_objSteps.begin() + 1,
                                Event(p_objHand, iAt + BetweenHalves / 2, p_fnEvent));
}

void DoBehind(const Hand& p_objHand, void (*p_fnEvent)(CScene&)) {
    p_objHand.m_objSteps.push_back(
        Event(p_objHand, p_objHand.m_objSteps.back().m_iAt + HalfASecond, p_fnEvent));
}

LinkKind NextLink(const CScene& p_objScene) {
    constexpr int iLinks = 3;
    return static_cast<LinkKind>((static_cast<int>(p_objScene.Link()) + 1) % iLinks);
}

}  // namespace

namespace MAnswerFaults {

const std::vector<MAnswerFaults::Answer>& Answers() {
    // clang-format off
    static const std::vector<Answer> objAnswers{
        {"no answer", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.m_objSteps.clear(); }, LaterToo},
        {"the answer takes three seconds", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.m_objSteps.front().m_iAt = ThreeSeconds; }},
        {"the answer comes byte by byte", Any, Asked::Anything, [](const Hand& p_objHand) { ByteByByte(p_objHand); }},
        {"the answer comes in halves, with a pause between them", Any, Asked::Anything, [](const Hand& p_objHand) { Halve(p_objHand, BetweenHalves); }, LaterToo},
        {"the answer lacks its last byte", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer().pop_back(); }, LaterToo},
        {"the answer ends in its middle", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer().resize(p_objHand.Answer().size() / 2); }},
        {"the answer comes twice", Any, Asked::Anything, [](const Hand& p_objHand) { Precede(p_objHand, p_objHand.Answer()); }, LaterToo},
        {"the answer comes twice, in one piece", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer() += p_objHand.Answer(); }},
        {"junk and the answer in one piece", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer().insert(0, Junk); }},
        {"junk, then the answer", Any, Asked::Anything, [](const Hand& p_objHand) { Precede(p_objHand, Junk); }},
        {"junk in place of the answer", Any, Asked::Anything, [](const Hand& p_objHand) { Replace(p_objHand, Junk); }, LaterToo},
        {"a head 0x03 in place of the right one", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer().front() = '\x03'; }},
        {"the status 06", Any, Asked::Anything, [](const Hand& p_objHand) { ReplaceByStatus(p_objHand, "06"); }, LaterToo},
        {"the status 15", Any, Asked::Status, [](const Hand& p_objHand) { ReplaceByStatus(p_objHand, "15"); }},
        {"the status 40, which has no text", Any, Asked::Anything, [](const Hand& p_objHand) { ReplaceByStatus(p_objHand, "40"); }},
        {"the status 99, which nobody knows", Any, Asked::Anything, [](const Hand& p_objHand) { ReplaceByStatus(p_objHand, "99"); }},
        {"a status, then the settings", Any, Asked::Settings, [](const Hand& p_objHand) { Precede(p_objHand, p_objHand.m_objScene.m_objWire.StatusAnswer("15")); }},
        {"settings in place of the status", Any, Asked::Status, [](const Hand& p_objHand) { Replace(p_objHand, p_objHand.m_objScene.m_objWire.SettingsAnswer(OtherSettings)); }, LaterToo},
        {"settings, then the status", Any, Asked::Status, [](const Hand& p_objHand) { Precede(p_objHand, p_objHand.m_objScene.m_objWire.SettingsAnswer(OtherSettings)); }},
        {"the next group's settings", Any, Asked::Settings, [](const Hand& p_objHand) { Replace(p_objHand, NextGroup(p_objHand)); }},
        {"the next group's settings, then the right ones", Any, Asked::Settings, [](const Hand& p_objHand) { Precede(p_objHand, NextGroup(p_objHand)); }},
        {"nines in all fields", Any, Asked::Settings, [](const Hand& p_objHand) { FillFields(p_objHand, '9'); }},
        {"letters in all fields", Any, Asked::Settings, [](const Hand& p_objHand) { FillFields(p_objHand, 'X'); }},
        {"blanks in all fields", Any, Asked::Settings, [](const Hand& p_objHand) { FillFields(p_objHand, ' '); }},
        {"XOFF and XON around the answer", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer() = "\x13" + p_objHand.Answer() + "\x11"; }},
        {"a byte above 128 in the answer", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer().insert(p_objHand.Answer().size() / 2, "\xE4"); }},
        {"closed before the answer", Lan, Asked::Anything, [](const Hand& p_objHand) { DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.PrinterCloses(); }); }, LaterToo},
        {"closed in the answer", Lan, Asked::Anything, [](const Hand& p_objHand) { DoInside(p_objHand, [](CScene& p_objScene) { p_objScene.PrinterCloses(); }); }},
        {"closed behind the answer", Lan, Asked::Anything, [](const Hand& p_objHand) { DoBehind(p_objHand, [](CScene& p_objScene) { p_objScene.PrinterCloses(); }); }},
        {"an error before the answer", Lan, Asked::Anything, [](const Hand& p_objHand) { DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.ConnectionBreaks(); }); }, LaterToo},
        {"an error in the answer", Lan, Asked::Anything, [](const Hand& p_objHand) { DoInside(p_objHand, [](CScene& p_objScene) { p_objScene.ConnectionBreaks(); }); }},
        {"an error behind the answer", Lan, Asked::Anything, [](const Hand& p_objHand) { DoBehind(p_objHand, [](CScene& p_objScene) { p_objScene.ConnectionBreaks(); }); }},
        {"unplugged before the answer", Com | Usb, Asked::Anything, [](const Hand& p_objHand) { p_objHand.m_objSteps.clear(); p_objHand.m_objScene.Unplug(); }, LaterToo},
        {"unplugged behind the answer", Com | Usb, Asked::Anything, [](const Hand& p_objHand) { DoBehind(p_objHand, [](CScene& p_objScene) { p_objScene.Unplug(); }); }},
        {"an overrun before the answer", Com, Asked::Anything, [](const Hand& p_objHand) { DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.PortEvent(SerialReceiveOverrun); }); }},
        {"an overrun behind the answer", Com, Asked::Anything, [](const Hand& p_objHand) { DoBehind(p_objHand, [](CScene& p_objScene) { p_objScene.PortEvent(SerialReceiveOverrun); }); }},
        {"an event that nobody acts on", Com, Asked::Anything, [](const Hand& p_objHand) { DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.PortEvent(UnusedEvent); }); }},
        {"CTS off before the answer, on behind it", Com, Asked::Anything, [](const Hand& p_objHand) { DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.ClearToSend(false); }); DoBehind(p_objHand, [](CScene& p_objScene) { p_objScene.ClearToSend(true); }); }},
        {"the receiving fails", Usb, Asked::Anything, [](const Hand& p_objHand) { p_objHand.m_objSteps.clear(); p_objHand.m_objScene.m_objLibrary.m_bWaits = false; p_objHand.m_objScene.m_objLibrary.m_iNoAnswer = IUsbLibrary::Failed; }, LaterToo},
        {"the receiving ends at once, without a byte", Usb, Asked::Anything, [](const Hand& p_objHand) { p_objHand.m_objSteps.clear(); p_objHand.m_objScene.m_objLibrary.m_bWaits = false; }},
        {"another interface chosen before the answer", Any, Asked::Anything, [](const Hand& p_objHand) { DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.Choose(NextLink(p_objScene)); }); }, LaterToo},
        {"the window closed before the answer", Any, Asked::Anything, [](const Hand& p_objHand) { DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.Close(); }); }, LaterToo},
        {"the window closed behind the answer", Any, Asked::Anything, [](const Hand& p_objHand) { DoBehind(p_objHand, [](CScene& p_objScene) { p_objScene.Close(); }); }},
    };
    // clang-format on
    return objAnswers;
}

const std::vector<Way>& Ways() {
    // clang-format off
    static const std::vector<Way> objWays{
        {"the link takes nothing", Any, [](CScene& p_objScene) { p_objScene.m_objSocket.m_bRefusesSends = true; p_objScene.m_objPort.m_bRefusesOutput = true; p_objScene.m_objLibrary.m_iSendResult = IUsbLibrary::Failed; }},
        {"the port takes three bytes and no more", Com, [](CScene& p_objScene) { p_objScene.m_objPort.m_fnByte = [&p_objScene, iLeft = 3]() mutable { p_objScene.m_objPort.m_bRefusesOutput = --iLeft < 0; }; }},
        {"the sending never ends", Lan, [](CScene& p_objScene) { p_objScene.m_objSocket.m_bCompletesSends = false; }},
        {"the sending takes a second", Lan, [](CScene& p_objScene) { p_objScene.m_objSocket.m_bCompletesSends = false; p_objScene.Later(ASecond, [&p_objScene] { p_objScene.m_objSocket.CompleteSend(); p_objScene.m_objSocket.m_bCompletesSends = true; }); }},
        {"the sending takes three seconds", Lan, [](CScene& p_objScene) { p_objScene.m_objSocket.m_bCompletesSends = false; p_objScene.Later(ThreeSeconds, [&p_objScene] { p_objScene.m_objSocket.CompleteSend(); p_objScene.m_objSocket.m_bCompletesSends = true; }); }},
        {"closed in the sending", Lan, [](CScene& p_objScene) { p_objScene.m_objSocket.m_bCompletesSends = false; p_objScene.Later(HalfASecond, [&p_objScene] { p_objScene.PrinterCloses(); }); }},
        {"an error in the sending", Lan, [](CScene& p_objScene) { p_objScene.m_objSocket.m_bCompletesSends = false; p_objScene.Later(HalfASecond, [&p_objScene] { p_objScene.ConnectionBreaks(); }); }},
        {"CTS off in the sending", Com, [](CScene& p_objScene) { p_objScene.ClearToSend(false); }},
        {"the window closed in the sending", Com | Lan, [](CScene& p_objScene) { p_objScene.m_objSocket.m_bCompletesSends = false; p_objScene.Later(CFakeEventLoop::StepMilliseconds, [&p_objScene] { p_objScene.Close(); }); }},
    };
    // clang-format on
    return objWays;
}

void Apply(const Answer& p_objFault, CScene& p_objScene, int p_iCommand) {
    p_objScene.m_objWire.OnAnswer(
        p_iCommand, [&p_objScene, fnRule = p_objFault.m_fnRule](CScriptedWire::Steps& p_objSteps,
                                                                const std::string& p_strCommand) {
            fnRule({p_objScene, p_objSteps, p_strCommand});
        });
}

void Apply(const Way& p_objFault, CScene& p_objScene, int p_iCommand) {
    p_objScene.m_objWire.Before(p_iCommand,
                                [&p_objScene, fn = p_objFault.m_fnBefore] { fn(p_objScene); });
}

}  // namespace MAnswerFaults
