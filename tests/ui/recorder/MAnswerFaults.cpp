#include "tests/ui/recorder/MAnswerFaults.h"

#include <functional>
#include <utility>

namespace {

using MAnswerChanges::Hand;
using MAnswerFaults::Asked;
using MFlows::Any;
using MFlows::Com;
using MFlows::Lan;
using MFlows::Usb;

// When something happens that is neither at once nor long after.
constexpr std::int64_t HalfASecond = 500;
constexpr std::int64_t BetweenHalves = 600;
constexpr std::int64_t ASecond = 1000;
constexpr std::int64_t ThreeSeconds = 3000;

constexpr bool LaterToo = true;

constexpr const char* Junk = "xyz";
constexpr std::int16_t OtherSettings = 1;
constexpr std::int16_t UnusedEvent = 1009;

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
        {"the answer comes byte by byte", Any, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::ByteByByte(p_objHand); }},
        {"the answer comes in halves, with a pause between them", Any, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::Halve(p_objHand, BetweenHalves); }, LaterToo},
        {"the answer lacks its last byte", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer().pop_back(); }, LaterToo},
        {"the answer ends in its middle", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer().resize(p_objHand.Answer().size() / 2); }},
        {"the answer comes twice", Any, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::Precede(p_objHand, p_objHand.Answer()); }, LaterToo},
        {"the answer comes twice, in one piece", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer() += p_objHand.Answer(); }},
        {"junk and the answer in one piece", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer().insert(0, Junk); }},
        {"junk, then the answer", Any, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::Precede(p_objHand, Junk); }},
        {"junk in place of the answer", Any, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::Replace(p_objHand, Junk); }, LaterToo},
        {"a head 0x03 in place of the right one", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer().front() = '\x03'; }},
        {"the status 06", Any, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::ReplaceByStatus(p_objHand, "06"); }, LaterToo},
        {"the status 15", Any, Asked::Status, [](const Hand& p_objHand) { MAnswerChanges::ReplaceByStatus(p_objHand, "15"); }},
        {"the status 40, which has no text", Any, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::ReplaceByStatus(p_objHand, "40"); }},
        {"the status 99, which nobody knows", Any, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::ReplaceByStatus(p_objHand, "99"); }},
        {"a status, then the settings", Any, Asked::Settings, [](const Hand& p_objHand) { MAnswerChanges::Precede(p_objHand, p_objHand.m_objScene.m_objWire.StatusAnswer("15")); }},
        {"settings in place of the status", Any, Asked::Status, [](const Hand& p_objHand) { MAnswerChanges::Replace(p_objHand, p_objHand.m_objScene.m_objWire.SettingsAnswer(OtherSettings)); }, LaterToo},
        {"settings, then the status", Any, Asked::Status, [](const Hand& p_objHand) { MAnswerChanges::Precede(p_objHand, p_objHand.m_objScene.m_objWire.SettingsAnswer(OtherSettings)); }},
        {"the next group's settings", Any, Asked::Settings, [](const Hand& p_objHand) { MAnswerChanges::Replace(p_objHand, MAnswerChanges::NextGroup(p_objHand)); }},
        {"the next group's settings, then the right ones", Any, Asked::Settings, [](const Hand& p_objHand) { MAnswerChanges::Precede(p_objHand, MAnswerChanges::NextGroup(p_objHand)); }},
        {"nines in all fields", Any, Asked::Settings, [](const Hand& p_objHand) { MAnswerChanges::FillFields(p_objHand, '9'); }},
        {"letters in all fields", Any, Asked::Settings, [](const Hand& p_objHand) { MAnswerChanges::FillFields(p_objHand, 'X'); }},
        {"blanks in all fields", Any, Asked::Settings, [](const Hand& p_objHand) { MAnswerChanges::FillFields(p_objHand, ' '); }},
        {"XOFF and XON around the answer", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer() = "\x13" + p_objHand.Answer() + "\x11"; }},
        {"a byte above 128 in the answer", Any, Asked::Anything, [](const Hand& p_objHand) { p_objHand.Answer().insert(p_objHand.Answer().size() / 2, "\xE4"); }},
        {"closed before the answer", Lan, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.PrinterCloses(); }); }, LaterToo},
        {"closed in the answer", Lan, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoInside(p_objHand, [](CScene& p_objScene) { p_objScene.PrinterCloses(); }); }},
        {"closed behind the answer", Lan, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoBehind(p_objHand, [](CScene& p_objScene) { p_objScene.PrinterCloses(); }); }},
        {"an error before the answer", Lan, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.ConnectionBreaks(); }); }, LaterToo},
        {"an error in the answer", Lan, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoInside(p_objHand, [](CScene& p_objScene) { p_objScene.ConnectionBreaks(); }); }},
        {"an error behind the answer", Lan, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoBehind(p_objHand, [](CScene& p_objScene) { p_objScene.ConnectionBreaks(); }); }},
        {"unplugged before the answer", Com | Usb, Asked::Anything, [](const Hand& p_objHand) { p_objHand.m_objSteps.clear(); p_objHand.m_objScene.Unplug(); }, LaterToo},
        {"unplugged behind the answer", Com | Usb, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoBehind(p_objHand, [](CScene& p_objScene) { p_objScene.Unplug(); }); }},
        {"an overrun before the answer", Com, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.PortEvent(SerialReceiveOverrun); }); }},
        {"an overrun behind the answer", Com, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoBehind(p_objHand, [](CScene& p_objScene) { p_objScene.PortEvent(SerialReceiveOverrun); }); }},
        {"an event that nobody acts on", Com, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.PortEvent(UnusedEvent); }); }},
        {"CTS off before the answer, on behind it", Com, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.ClearToSend(false); }); MAnswerChanges::DoBehind(p_objHand, [](CScene& p_objScene) { p_objScene.ClearToSend(true); }); }},
        {"the receiving fails", Usb, Asked::Anything, [](const Hand& p_objHand) { p_objHand.m_objSteps.clear(); p_objHand.m_objScene.m_objLibrary.m_bWaits = false; p_objHand.m_objScene.m_objLibrary.m_iNoAnswer = IUsbLibrary::Failed; }, LaterToo},
        {"the receiving ends at once, without a byte", Usb, Asked::Anything, [](const Hand& p_objHand) { p_objHand.m_objSteps.clear(); p_objHand.m_objScene.m_objLibrary.m_bWaits = false; }},
        {"another interface chosen before the answer", Any, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.Choose(NextLink(p_objScene)); }); }, LaterToo},
        {"the window closed before the answer", Any, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoBefore(p_objHand, [](CScene& p_objScene) { p_objScene.Close(); }); }, LaterToo},
        {"the window closed behind the answer", Any, Asked::Anything, [](const Hand& p_objHand) { MAnswerChanges::DoBehind(p_objHand, [](CScene& p_objScene) { p_objScene.Close(); }); }},
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
