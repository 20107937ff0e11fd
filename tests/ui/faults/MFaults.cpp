#include "tests/ui/faults/MFaults.h"

#include "tests/ui/faults/MFloods.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <stdexcept>
#include <utility>

namespace {

using MAnswerChanges::Hand;
using MAnswerFaults::Asked;
using MFlows::Any;
using MFlows::Com;
using MFlows::Lan;
using MFlows::Links;
using MFlows::Usb;
using enum MFaults::Strikes;
using MFaults::Alters;
using MFaults::Awaited;
using MFaults::Behind;
using MFaults::ByItself;
using MFaults::Closes;
using MFaults::Core;
using MFaults::Each;
using MFaults::InPause;
using MFaults::Late;
using MFaults::Many;
using MFaults::NotWhole;
using MFaults::OneMore;
using MFaults::Presses;
using MFaults::Twice;
using Prepare = std::function<void(CScene&, int)>;
using Faults = std::vector<MFaults::Fault>;

constexpr Links None = 0;
constexpr MFaults::Claims Nothing = 0;

constexpr std::int64_t JustInTime = 700;
constexpr std::int64_t TooLate = 6000;
constexpr std::int64_t LongerThanAnyFlow = 60'000;
constexpr std::int64_t WhileItWaits = 30;
constexpr std::int64_t InThePause = 600;
constexpr std::int64_t InTheStream = 300;
constexpr std::int64_t BeforeTheNextAnswer = 20;
constexpr std::size_t BytesOfAYield = 4;  // on the serial line
constexpr std::int64_t Gap = 600;
constexpr std::size_t Kilobyte = 1024;
constexpr std::size_t Megabyte = Kilobyte * Kilobyte;
constexpr std::int32_t UnknownFailure = -7;
constexpr std::size_t MoreThanAnybodyOpens = 1000;
constexpr std::size_t OpeningsOfACommand = 3;  // to ask, to send, to receive

/// A fault of the recordings, by its name there.
Prepare As(const char* p_strName) {
    for (const MAnswerFaults::Answer& objAnswer : MAnswerFaults::Answers()) {
        if (objAnswer.m_strName == p_strName) {
            return [&objAnswer](CScene& p_objScene, int p_iCommand) {
                MAnswerFaults::Apply(objAnswer, p_objScene, p_iCommand);
            };
        }
    }
    for (const MAnswerFaults::Way& objWay : MAnswerFaults::Ways()) {
        if (objWay.m_strName == p_strName) {
            return [&objWay](CScene& p_objScene, int p_iCommand) {
                MAnswerFaults::Apply(objWay, p_objScene, p_iCommand);
            };
        }
    }
    throw std::logic_error(std::string("no such fault in the recordings: ") + p_strName);
}

Prepare Answer(void (*p_fnRule)(const Hand&)) {
    return [p_fnRule](CScene& p_objScene, int p_iCommand) {
        p_objScene.m_objWire.OnAnswer(p_iCommand,
                                      [&p_objScene, p_fnRule](CScriptedWire::Steps& p_objSteps,
                                                              const std::string& p_strCommand) {
                                          p_fnRule({p_objScene, p_objSteps, p_strCommand});
                                      });
    };
}

/// Instead of the answer, or before it is thought of, this happens.
Prepare Instead(void (*p_fnDo)(CScene&)) {
    return [p_fnDo](CScene& p_objScene, int p_iCommand) {
        p_objScene.m_objWire.OnAnswer(
            p_iCommand,
            [&p_objScene, p_fnDo](CScriptedWire::Steps& p_objSteps, const std::string&) {
                p_objSteps = {{CScriptedWire::AnswerMilliseconds, {}, [&p_objScene, p_fnDo] {
                                   p_fnDo(p_objScene);
                               }}};
            });
    };
}

/// Before the first byte of the command.
Prepare Before(void (*p_fnDo)(CScene&)) {
    return [p_fnDo](CScene& p_objScene, int p_iCommand) {
        p_objScene.m_objWire.Before(p_iCommand, [&p_objScene, p_fnDo] { p_fnDo(p_objScene); });
    };
}

Prepare Connecting(int p_iNumber, const char* p_strWords) {
    return [p_iNumber, p_strWords](CScene& p_objScene, int) {
        p_objScene.m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Fails;
        p_objScene.m_objSocket.m_objConnectError = {p_iNumber, p_strWords, 0,    "Socket",
                                                    "",        0,          false};
    };
}

Prepare Port(std::int32_t p_iResult, const char* p_strGroup = "") {
    return [p_iResult, p_strGroup](CScene& p_objScene, int) {
        p_objScene.m_objPort.m_iOpenResult = p_iResult;
        if (p_iResult == EACCES) {
            p_objScene.m_objPort.m_objRefusal = {"/dev/ttyS0", p_strGroup, false};
        }
    };
}

/// From the p_iOpening-th opening of the command on, or just once.
Prepare Openings(std::size_t p_iOpening, std::int32_t p_iResult, int p_iReason = 0,
                 std::size_t p_iCount = MoreThanAnybodyOpens) {
    return [=](CScene& p_objScene, int p_iCommand) {
        auto& iResults = p_objScene.m_objLibrary.m_iOpenResults;
        iResults.assign(OpeningsOfACommand * static_cast<std::size_t>(p_iCommand - 1) + p_iOpening -
                            1,
                        IUsbLibrary::Opened);
        iResults.insert(iResults.end(), p_iCount, p_iResult);
        p_objScene.m_objLibrary.m_iNotReadyNumber = p_iReason;
    };
}

void PullOut(CScene& p_objScene) {
    p_objScene.Unplug();
    p_objScene.m_objPort.GoAway();
}

/// As soon as a box stands.
void CloseAtBox(CScene& p_objScene) {
    p_objScene.Later(CFakeEventLoop::StepMilliseconds, [&p_objScene] {
        if (p_objScene.m_objBoxes.Stands()) {
            p_objScene.Close();
        } else if (p_objScene.m_objEventLoop.Elapsed() < LongerThanAnyFlow) {
            CloseAtBox(p_objScene);
        }
    });
}

/// Two things at once.
Prepare Both(const Prepare& p_fnFirst, void (*p_fnSecond)(CScene&)) {
    return [p_fnFirst, p_fnSecond](CScene& p_objScene, int p_iCommand) {
        p_fnFirst(p_objScene, p_iCommand);
        p_fnSecond(p_objScene);
    };
}

/// With the last byte of the answer, before anybody does anything else. On the serial line, where
/// an answer takes its time, in the round behind it.
Prepare AtOnceBehind(void (*p_fnDo)(CScene&)) {
    return [p_fnDo](CScene& p_objScene, int p_iCommand) {
        p_objScene.m_objWire.OnAnswer(
            p_iCommand,
            [&p_objScene, p_fnDo](CScriptedWire::Steps& p_objSteps, const std::string&) {
                const std::size_t iYields = p_objSteps.back().m_strBytes.size() / BytesOfAYield + 2;
                const std::int64_t iTakes =
                    p_objScene.Link() == LinkKind::Com
                        ? static_cast<std::int64_t>(iYields) * CFakeEventLoop::StepMilliseconds
                        : 0;
                p_objSteps.push_back({p_objSteps.back().m_iAt + iTakes, {}, [&p_objScene, p_fnDo] {
                                          p_fnDo(p_objScene);
                                      }});
            });
    };
}

/// The button once more, if its flow still runs.
void PressInside(CScene& p_objScene) {
    if (p_objScene.m_iHandlers == 1) {
        p_objScene.Press(p_objScene.m_strPressed);
    }
}

/// While the answer is awaited, or, where none is, while the command goes out.
void PressBefore(CScene& p_objScene, int p_iCommand) {
    const std::int64_t iAt =
        p_objScene.Link() == LinkKind::Com ? CFakeEventLoop::StepMilliseconds : WhileItWaits;
    p_objScene.m_objWire.Before(p_iCommand, [&p_objScene, iAt] {
        p_objScene.Later(iAt, [&p_objScene] { PressInside(p_objScene); });
    });
}

void PressInPause(CScene& p_objScene, int p_iCommand) {
    p_objScene.m_objWire.Before(p_iCommand, [&p_objScene] {
        p_objScene.Later(InThePause, [&p_objScene] { PressInside(p_objScene); });
    });
}

/// The answer comes when the flow has been begun anew, and its first command has been sent again.
void AnswerToTheNext(CScene& p_objScene, int p_iCommand) {
    struct Held {
        int m_iTaken = 0;
        std::string m_strFirst;
        std::string m_strAnswer;
    };
    const auto objHeld = std::make_shared<Held>();
    p_objScene.m_objWire.OnAnswer(
        CScriptedWire::EveryCommand,
        [objHeld, p_iCommand](CScriptedWire::Steps& p_objSteps, const std::string& p_strCommand) {
            if (++objHeld->m_iTaken == 1) {
                objHeld->m_strFirst = p_strCommand;
            }
            if (objHeld->m_iTaken == p_iCommand) {
                objHeld->m_strAnswer = p_objSteps.front().m_strBytes;
                p_objSteps.clear();
            } else if (p_strCommand == objHeld->m_strFirst && !objHeld->m_strAnswer.empty()) {
                p_objSteps.insert(
                    p_objSteps.begin(),
                    {BeforeTheNextAnswer, std::exchange(objHeld->m_strAnswer, {}), nullptr});
            }
        });
}

/// The link does not come to be.
Faults OpeningFaults() {
    // clang-format off
    return {
        {"no such port", Com, Asked::Anything, Opening, Core, None, Port(ENOENT)},
        {"the port is held by another program", Com, Asked::Anything, Opening, Nothing, None, Port(ISerialPort::AlreadyOpen)},
        {"the port is not permitted", Com, Asked::Anything, Opening, Nothing, None, Port(EACCES, "dialout")},
        {"the port is no serial port", Com, Asked::Anything, Opening, Nothing, None, Port(ENOTTY)},
        {"the device at the port does not react", Com, Asked::Anything, Opening, Nothing, None, Port(EIO)},
        {"the port is gone the moment it opens", Com, Asked::Anything, Opening, Nothing, None, [](CScene& p_objScene, int) { p_objScene.m_objPort.m_bGoesAtOnce = true; }},
        {"connecting: nothing there", Lan, Asked::Anything, Opening, Core, None, Connecting(ETIMEDOUT, "Connection timed out")},
        {"connecting: refused", Lan, Asked::Anything, Opening, Core, None, Connecting(ECONNREFUSED, "Connection refused")},
        {"connecting: no route", Lan, Asked::Anything, Opening, Nothing, None, Connecting(EHOSTUNREACH, "No route to host")},
        {"connecting: the network is down", Lan, Asked::Anything, Opening, Nothing, None, Connecting(ENETDOWN, "Network is down")},
        {"connecting: not permitted", Lan, Asked::Anything, Opening, Nothing, None, Connecting(EACCES, "Permission denied")},
        {"connecting: closed as soon as it is connected", Lan, Asked::Anything, Opening, Nothing, None, [](CScene& p_objScene, int) { p_objScene.m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Never; p_objScene.Later(Gap, [&p_objScene] { p_objScene.m_objSocket.ConnectNow(); p_objScene.PrinterCloses(); }); }},
        {"no printer", Usb, Asked::Anything, Command, Core, None, Openings(1, IUsbLibrary::NotReady, ENODEV)},
        {"the printer is not permitted", Usb, Asked::Anything, Command, Core, None, Openings(1, IUsbLibrary::NotReady, EACCES)},
        {"the printer is held by another program", Usb, Asked::Anything, Command, Nothing, None, Openings(1, IUsbLibrary::NotReady, EBUSY)},
        {"the printer does not tell what it is", Usb, Asked::Anything, Command, Nothing, None, Openings(1, IUsbLibrary::NoDeviceId)},
        {"the wrong device", Usb, Asked::Anything, Command, Core, None, Openings(1, IUsbLibrary::Mismatch)},
        {"the opening fails, nobody knows why", Usb, Asked::Anything, Command, Nothing, None, Openings(1, UnknownFailure)},
    };
    // clang-format on
}

/// The command does not go out as it should.
Faults SendingFaults() {
    // clang-format off
    return {
        {"pulled out before the command is sent", Usb, Asked::Anything, Command, Core, None, Openings(2, IUsbLibrary::NotReady, ENODEV)},
        {"pulled out before the command is sent, back at once", Usb, Asked::Anything, Command, Nothing, None, Openings(2, IUsbLibrary::NotReady, ENODEV, 1)},
        {"pulled out before the command is sent", Com, Asked::Anything, Command, Core, None, Before(PullOut)},
        {"pulled out inside of the command", Com, Asked::Anything, Command, Nothing, None, Before([](CScene& p_objScene) { p_objScene.m_objPort.m_fnByte = [&p_objScene, iLeft = 3]() mutable { if (--iLeft < 0) { PullOut(p_objScene); } }; })},
        {"the link takes nothing", Any, Asked::Anything, Command, Core, None, As("the link takes nothing")},
        {"the port takes three bytes and no more", Com, Asked::Anything, Command, Nothing, None, As("the port takes three bytes and no more")},
        {"CTS goes off in the sending", Com, Asked::Anything, Command, Nothing, None, As("CTS off in the sending")},
        {"the sending never ends", Lan, Asked::Anything, Command, Core, None, As("the sending never ends")},
        {"the sending takes a second", Lan, Asked::Anything, Command, Nothing, Lan, As("the sending takes a second")},
        {"the sending takes three seconds", Lan, Asked::Anything, Command, Nothing, None, As("the sending takes three seconds")},
        {"closed or reset in the sending", Lan, Asked::Anything, Command, Nothing, None, As("closed in the sending")},
        {"the socket fails in the sending", Lan, Asked::Anything, Command, Nothing, None, As("an error in the sending")},
    };
    // clang-format on
}

/// No answer, or not in time, or not in one piece.
Faults TimingFaults() {
    // clang-format off
    return {
        {"silent", Any, Asked::Anything, Command, Core | Each | NotWhole, None, As("no answer")},
        {"late, in time", Any, Asked::Anything, Command, Nothing, Any, Answer([](const Hand& p_objHand) { p_objHand.m_objSteps.front().m_iAt = JustInTime; })},
        {"three seconds late", Any, Asked::Anything, Command, Each, Lan, As("the answer takes three seconds")},
        {"six seconds late", Any, Asked::Anything, Command, Each | Late, None, Answer([](const Hand& p_objHand) { p_objHand.m_objSteps.front().m_iAt = TooLate; })},
        {"single bytes", Any, Asked::Anything, Command, Core, Lan | Com, As("the answer comes byte by byte")},
        {"in halves, with a pause", Any, Asked::Anything, Command, Nothing, Lan | Com, As("the answer comes in halves, with a pause between them")},
        {"cut short: one byte", Any, Asked::Anything, Command, NotWhole, None, Answer([](const Hand& p_objHand) { p_objHand.Answer().resize(1); })},
        {"cut short: half of it", Any, Asked::Anything, Command, Core | Each | NotWhole, None, As("the answer ends in its middle")},
        {"cut short: without its last byte", Any, Asked::Anything, Command, NotWhole, None, As("the answer lacks its last byte")},
        {"two answers at once", Any, Asked::Anything, Command, Core | OneMore, Any, As("the answer comes twice, in one piece")},
        {"two answers, one behind the other", Lan | Com, Asked::Anything, Command, OneMore, Lan | Com, As("the answer comes twice")},
    };
    // clang-format on
}

/// Another answer.
Faults OtherAnswersFaults() {
    // clang-format off
    return {
        {"another group's answer", Any, Asked::Settings, Command, Core | Each | NotWhole, None, As("the next group's settings")},
        {"another group's answer, then the right one", Any, Asked::Settings, Command, Nothing, Any, As("the next group's settings, then the right ones")},
        {"a status, then the settings", Lan | Com, Asked::Settings, Command, Nothing, None, As("a status, then the settings")},
        {"settings in place of the status", Any, Asked::Status, Command, NotWhole, None, As("settings in place of the status")},
        {"settings, then the status", Lan | Com, Asked::Status, Command, Nothing, None, As("settings, then the status")},
        {"the status 06, an error", Any, Asked::Anything, Command, Core | Each, None, As("the status 06")},
        {"the status 40, which has no text", Any, Asked::Anything, Command, Each, None, As("the status 40, which has no text")},
        {"the status 99, which nobody knows", Any, Asked::Anything, Command, Core | Each, None, As("the status 99, which nobody knows")},
        {"a status whose code is no number", Any, Asked::Anything, Command, Nothing, None, Answer([](const Hand& p_objHand) { MAnswerChanges::ReplaceByStatus(p_objHand, "X?"); })},
        {"a head of 0x03", Any, Asked::Anything, Command, NotWhole, None, As("a head 0x03 in place of the right one")},
        {"values out of range", Any, Asked::Settings, Command, Core | Each | Alters, None, As("nines in all fields")},
        {"fields that are no numbers", Any, Asked::Settings, Command, Core | Each | Alters, None, As("letters in all fields")},
        {"fields of blanks", Any, Asked::Settings, Command, Alters, None, As("blanks in all fields")},
        {"XOFF and XON around the answer", Com, Asked::Anything, Command, Nothing, Com, As("XOFF and XON around the answer")},
        {"a byte above 128 in the answer", Com, Asked::Anything, Command, Nothing, Com, As("a byte above 128 in the answer")},
    };
    // clang-format on
}

/// Bytes that are no answer.
Faults JunkFaults() {
    // clang-format off
    return {
        {"junk of 1 byte", Any, Asked::Anything, Command, NotWhole, None, Answer([](const Hand& p_objHand) { MAnswerChanges::Replace(p_objHand, "x"); })},
        {"junk of 3 bytes", Any, Asked::Anything, Command, Core | Each | NotWhole, None, As("junk in place of the answer")},
        {"junk of 1 KB", Any, Asked::Anything, Command, NotWhole, None, Instead([](CScene& p_objScene) { MFloods::Pour(p_objScene, MFloods::Junk(Kilobyte)); })},
        {"junk of 64 KB", Any, Asked::Anything, Command, Many | NotWhole, None, Instead([](CScene& p_objScene) { MFloods::Pour(p_objScene, MFloods::Junk(64 * Kilobyte)); })},
        {"junk of 1 MB", Lan | Usb, Asked::Anything, Command, Many | NotWhole, None, Instead([](CScene& p_objScene) { MFloods::Pour(p_objScene, MFloods::Junk(Megabyte)); })},
        {"junk of 1 MB", Com, Asked::Settings, Command, Many | NotWhole, None, Instead([](CScene& p_objScene) { MFloods::Pour(p_objScene, MFloods::Junk(Megabyte)); })},
        {"1 KB of heads of settings", Any, Asked::Anything, Command, Alters, None, Instead([](CScene& p_objScene) { MFloods::Pour(p_objScene, std::string(Kilobyte, '{')); })},
        {"1 KB of bytes by chance", Any, Asked::Anything, Command, Alters, None, Instead([](CScene& p_objScene) { MFloods::Pour(p_objScene, MFloods::Chance(Kilobyte)); })},
        {"junk and the answer in one piece", Any, Asked::Anything, Command, Nothing, Lan | Com, As("junk and the answer in one piece")},
        {"junk, then the answer", Lan | Com, Asked::Anything, Command, Nothing, Lan | Com, As("junk, then the answer")},
        {"an endless stream of junk", Any, Asked::Anything, Command, Many | Alters, None, Instead([](CScene& p_objScene) { MFloods::Begin(p_objScene, MFloods::Junk(16)); })},
        {"an endless stream of heads of settings", Any, Asked::Anything, Command, Many | Alters, None, Instead([](CScene& p_objScene) { MFloods::Begin(p_objScene, "{{{{"); })},
        {"an endless stream of another group's answers", Any, Asked::Settings, Command, Many | NotWhole, None, Instead([](CScene& p_objScene) { MFloods::Begin(p_objScene, p_objScene.m_objWire.SettingsAnswer(2)); })},
        {"an endless stream of the status 15", Any, Asked::Anything, Command, Many, None, Instead([](CScene& p_objScene) { MFloods::Begin(p_objScene, p_objScene.m_objWire.StatusAnswer("15")); })},
    };
    // clang-format on
}

/// The link goes away around the answer. A reset is told by the socket as a close.
Faults LeavingFaults() {
    // clang-format off
    return {
        {"closed or reset before the answer", Lan, Asked::Anything, Command, Core | Each | NotWhole, None, As("closed before the answer")},
        {"closed or reset inside of the answer", Lan, Asked::Anything, Command, Each | NotWhole, None, As("closed in the answer")},
        {"closed or reset behind the answer", Lan, Asked::Anything, Command, Behind, None, AtOnceBehind([](CScene& p_objScene) { p_objScene.PrinterCloses(); })},
        {"the socket fails before the answer", Lan, Asked::Anything, Command, Core | Each | NotWhole, None, As("an error before the answer")},
        {"the socket fails inside of the answer", Lan, Asked::Anything, Command, Each | NotWhole, None, As("an error in the answer")},
        {"the socket fails behind the answer", Lan, Asked::Anything, Command, Behind | ByItself, None, AtOnceBehind([](CScene& p_objScene) { p_objScene.ConnectionBreaks(); })},
        {"pulled out between sending and receiving", Usb, Asked::Anything, Command, Core | Each | NotWhole, None, Openings(3, IUsbLibrary::NotReady, ENODEV)},
        {"pulled out behind the answer", Usb, Asked::Anything, Command, Behind, None, AtOnceBehind([](CScene& p_objScene) { p_objScene.Unplug(); })},
        {"pulled out before the answer", Com, Asked::Anything, Command, Core | Each | NotWhole, None, Instead(PullOut)},
        {"pulled out inside of the answer", Com, Asked::Anything, Command, NotWhole, None, Answer([](const Hand& p_objHand) { MAnswerChanges::DoInside(p_objHand, PullOut); })},
        {"pulled out behind the answer", Com, Asked::Anything, Command, Behind, None, AtOnceBehind(PullOut)},
        {"an overrun before the answer", Com, Asked::Anything, Command, Core | ByItself, None, As("an overrun before the answer")},
        {"CTS off before the answer, on behind it", Com, Asked::Anything, Command, Nothing, None, As("CTS off before the answer, on behind it")},
        {"the receiving fails", Usb, Asked::Anything, Command, Core | Each | NotWhole, None, As("the receiving fails")},
        {"the receiving ends at once, without a byte", Usb, Asked::Anything, Command, NotWhole, None, As("the receiving ends at once, without a byte")},
    };
    // clang-format on
}

/// The window is closed at one moment more.
Faults ClosingFaults() {
    // clang-format off
    return {
        {"connecting: never, the window closed meanwhile", Lan, Asked::Anything, Opening, Closes, None, [](CScene& p_objScene, int) { p_objScene.m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Never; p_objScene.Later(Gap, [&p_objScene] { p_objScene.Close(); }); }},
        {"the port is held, the window closed while the box stands", Com, Asked::Anything, Opening, Closes, None, Both(Port(ISerialPort::AlreadyOpen), CloseAtBox)},
        {"the window closed in the sending", Usb, Asked::Anything, Command, Closes, None, Answer([](const Hand& p_objHand) { p_objHand.m_objScene.Close(); })},
        {"not sent, the window closed while the box stands", Lan | Usb, Asked::Anything, Command, Awaited | Closes, None, Both(As("the link takes nothing"), CloseAtBox)},
        {"no printer, the window closed while the box stands", Usb, Asked::Anything, Command, Awaited | Closes, None, Both(Openings(1, IUsbLibrary::NotReady, ENODEV), CloseAtBox)},
        {"the socket fails, the window closed while the box stands", Lan, Asked::Anything, Command, Closes | NotWhole, None, Both(As("an error before the answer"), CloseAtBox)},
        {"an overrun, the window closed while the box stands", Com, Asked::Anything, Command, ByItself | Closes, None, Both(As("an overrun before the answer"), CloseAtBox)},
        {"values out of range, the window closed while the box stands", Any, Asked::Settings, Command, Alters | Closes, None, Both(As("nines in all fields"), CloseAtBox)},
        {"an endless stream of junk, the window closed in it", Any, Asked::Anything, Command, Alters | Closes | Many, None, Instead([](CScene& p_objScene) { MFloods::Begin(p_objScene, MFloods::Junk(16)); p_objScene.Later(InTheStream, [&p_objScene] { p_objScene.Close(); }); })},
    };
    // clang-format on
}

/// A person does something at that moment.
Faults PersonsFaults() {
    // clang-format off
    return {
        {"the window closed in the sending", Com | Lan, Asked::Anything, Command, Closes, None, As("the window closed in the sending")},
        {"the window closed before the answer", Any, Asked::Anything, Command, Core | Closes | NotWhole, None, As("the window closed before the answer")},
        {"the window closed inside of the answer", Any, Asked::Anything, Command, Closes | NotWhole, None, Answer([](const Hand& p_objHand) { MAnswerChanges::DoInside(p_objHand, [](CScene& p_objScene) { p_objScene.Close(); }); })},
        {"the window closed behind the answer", Any, Asked::Anything, Command, Behind | Core | Closes, None, AtOnceBehind([](CScene& p_objScene) { p_objScene.Close(); })},
        {"silent, the window closed while the box stands", Lan, Asked::Anything, Command, Core | Awaited | Closes | NotWhole, None, [](CScene& p_objScene, int p_iCommand) { As("no answer")(p_objScene, p_iCommand); CloseAtBox(p_objScene); }},
        {"no answer to a READ, the window closed while the box stands", Usb, Asked::Settings, Command, Core | Closes | NotWhole, None, [](CScene& p_objScene, int p_iCommand) { As("no answer")(p_objScene, p_iCommand); CloseAtBox(p_objScene); }},
        {"refused, the window closed while the box stands", Lan, Asked::Anything, Opening, Closes, None, [](CScene& p_objScene, int p_iCommand) { Connecting(ECONNREFUSED, "Connection refused")(p_objScene, p_iCommand); CloseAtBox(p_objScene); }},
        {"the same button again before the answer", Any, Asked::Anything, Command, Core | Presses, None, PressBefore},
        {"the same button again behind the answer", Any, Asked::Anything, Command, Behind | Presses, None, AtOnceBehind(PressInside)},
        {"the same button again in the pause", Any, Asked::Anything, Command, InPause | Presses, None, PressInPause},
        {"the answer comes when the button has been pressed again", Com | Lan, Asked::Anything, Command, Twice, None, AnswerToTheNext},
    };
    // clang-format on
}

}  // namespace

namespace MFaults {

const std::vector<Fault>& All() {
    static const Faults objAll = [] {
        Faults objFaults{{"none", Any, Asked::Anything, Command, Core, Any, [](CScene&, int) {}}};
        for (Faults (*fnPart)() : {OpeningFaults, SendingFaults, TimingFaults, OtherAnswersFaults,
                                   JunkFaults, LeavingFaults, ClosingFaults, PersonsFaults}) {
            const Faults objPart = fnPart();
            objFaults.insert(objFaults.end(), objPart.begin(), objPart.end());
        }
        return objFaults;
    }();
    return objAll;
}

}  // namespace MFaults
