#include "tests/cli/faults/CFaultyPrinter.h"

#include "model/MSettingText.h"
#include "protocol/MCommand.h"
#include "tests/fakes/MWire.h"

#include <algorithm>
#include <array>

namespace {

using MFaults::Kind;
using MFaults::Link;

constexpr std::int64_t Usual = 30;      // what an answer takes
constexpr std::int64_t InTime = 4000;   // and when it is slow
constexpr std::int64_t TooLate = 6000;  // or too slow
constexpr std::int64_t Away = 3000;     // until what was pulled out is plugged in again
constexpr std::size_t Some = 3;         // bytes of a command, when something happens inside of it
constexpr std::int64_t Tick = CFakeEventLoop::StepMilliseconds;

/// What a link brings in a tick, when there is enough of it.
std::size_t Width(Link p_iLink) {
    constexpr std::size_t Block = 65'536;
    constexpr std::size_t Packet = 512;
    constexpr std::size_t Characters = 10;  // of 9600 bits a second
    switch (p_iLink) {
    case Link::Lan:
        return Block;
    case Link::Com:
        return Characters;
    case Link::Usb:
        break;
    }
    return Packet;
}

/// Bytes without any sense, the same ones each time; heads of answers are among them.
std::string Junk(std::size_t p_iCount) {
    constexpr std::uint32_t Factor = 1'664'525;
    constexpr std::uint32_t Summand = 1'013'904'223;
    constexpr unsigned High = 24;
    std::uint32_t iState = 7;
    std::string strJunk(p_iCount, '\0');
    for (char& cByte : strJunk) {
        iState = iState * Factor + Summand;
        cByte = static_cast<char>(iState >> High);
    }
    return strJunk;
}

SocketError Error(int p_iNumber) {
    SocketError objError;
    objError.m_iNumber = p_iNumber;
    return objError;
}

bool IsSettings(const std::string& p_strAnswer) {
    return p_strAnswer.starts_with('{');
}

std::string Shown(const char* p_strName, const CItemManager& p_objItems) {
    return MSettingText::Show(MSettings::Get(p_strName), p_objItems).value_or("?");
}

}  // namespace

CFaultyPrinter::CFaultyPrinter(Link p_iLink, CFakeEventLoop& p_objEventLoop,
                               CEndingInterrupt& p_objInterrupt)
    : m_objSocket(p_objEventLoop)
    , m_objSerialPort(p_objEventLoop)
    , m_objUsb(p_objEventLoop)
    , m_iLink(p_iLink)
    , m_objEventLoop(p_objEventLoop)
    , m_objInterrupt(p_objInterrupt) {
    m_objSocket.m_fnOpening = m_objSerialPort.m_fnOpening =
        m_objUsb.m_fnOpening = [this] { Opening(); };
    m_objSocket.m_fnSending = m_objUsb.m_fnSending = [this] { Sending(0); };
    m_objSerialPort.m_fnSending = [this](std::size_t p_iOut) { Sending(p_iOut); };
    m_objSocket.m_fnSent = m_objUsb.m_fnSent = [this](const std::string& p_strBytes) {
        if (m_objSocket.m_bCompletesSends) {
            Take(p_strBytes);
        }
    };
    m_objSerialPort.m_fnAnswer = [this](const std::string& p_strBytes) {
        Take(p_strBytes.substr(p_strBytes.rfind('{')));
        return std::nullopt;
    };
    m_strPlace = Place();
}

void CFaultyPrinter::Begin(const Plan& p_objPlan) {
    m_objPlan = p_objPlan;
    m_bUsed = false;
    m_iBefore = m_strCommands.size();
}

std::string CFaultyPrinter::Place() const {
    const CItemManager& objItems = m_objPrinter.Items();
    if (m_iLink == Link::Com) {
        const std::string strSpeed = Shown("speed", objItems);
        return strSpeed.substr(0, strSpeed.find("bps")) + "," + Shown("parity", objItems)[0] + "," +
               Shown("data-length", objItems)[0] + "," + Shown("stop-bit", objItems)[0];
    }
    return Shown("ip-address", objItems) + ":" + Shown("socket-port", objItems);
}

bool CFaultyPrinter::IsPluggedIn() {
    const bool bNothing = m_objPlan.m_iKind == Kind::NothingThere && IsHit(Next());
    m_bUsed = m_bUsed || bNothing;
    return !bNothing && !m_bGone;
}

CDeviceState CFaultyPrinter::DeviceState() const {
    using Use = CDeviceState::Use;
    if (m_bGone) {
        return {Use::Missing, {}, false, {}};
    }
    switch (m_objPlan.m_iKind) {
    case Kind::NothingThere:
        return {Use::Missing, {}, false, {}};
    case Kind::NotPermitted:
        return {Use::Forbidden, m_iLink == Link::Com ? "dialout" : "lp", false, {}};
    case Kind::Held:
        return {Use::Held, {}, false, "minicom (4711)"};
    default:
        return {};
    }
}

bool CFaultyPrinter::IsAllClosed() const {
    return !m_objSocket.IsConnected() && !m_objSerialPort.IsOpen() && !m_objUsb.IsOpen() &&
           !m_objSocket.HasEvents() && !m_objSerialPort.HasEvents();
}

/// Whether the fault meets command number p_iNumber. What is for once has met it then.
bool CFaultyPrinter::IsHit(std::size_t p_iNumber) {
    const bool bHit =
        m_objPlan.m_bOnce ? p_iNumber == m_objPlan.m_iAt && !m_bUsed : p_iNumber >= m_objPlan.m_iAt;
    return bHit && m_objPlan.m_iKind != Kind::None;
}

void CFaultyPrinter::Opening() {
    // On USB it opens once more for each answer.
    const bool bHit = !m_objUsb.m_bAwaited && IsHit(Next());
    const Kind iKind = bHit ? m_objPlan.m_iKind : Kind::None;
    switch (m_iLink) {
    case Link::Lan:
        OpenLan(iKind);
        break;
    case Link::Com:
        OpenCom(iKind);
        break;
    case Link::Usb:
        OpenUsb(iKind);
        break;
    }
    const bool bOfOpening = iKind >= Kind::NothingThere && iKind <= Kind::GoneAtOnce;
    m_bUsed = m_bUsed || (bHit && bOfOpening);
}

void CFaultyPrinter::OpenLan(Kind p_iKind) {
    using Result = CFakeTcpClient::ConnectResult;
    const auto Fail = [this](int p_iNumber) {
        m_objSocket.m_iConnectResult = Result::Fails;
        m_objSocket.m_objConnectError = Error(p_iNumber);
    };
    m_objSocket.m_iConnectResult = Result::Connects;
    m_objSocket.m_bCompletesSends = true;
    m_objSocket.m_bRefusesSends = false;
    switch (p_iKind) {
    case Kind::NothingThere:
        m_objSocket.m_iConnectResult = Result::Never;
        return;
    case Kind::Refused:
        return Fail(ECONNREFUSED);
    case Kind::NoRoute:
        return Fail(EHOSTUNREACH);
    case Kind::NoName:
        return Fail(SocketError::NoSuchHost);
    case Kind::NotPermitted:
        return Fail(EACCES);
    case Kind::GoneAtOnce:
        // Behind the connection's own event, and in the same round.
        m_objEventLoop.AtNextYield([this] {
            m_objEventLoop.AtYield(m_objEventLoop.Yields(), OfConnection([this] { Leave(); }));
        });
        return;
    case Kind::InterruptedOpening:
        m_objSocket.m_iConnectResult = Result::Never;
        return InterruptIn(5 * Tick);
    default:
        break;
    }
    if (m_strPlace != Place()) {
        Fail(EHOSTUNREACH);
    }
}

void CFaultyPrinter::OpenCom(Kind p_iKind) {
    constexpr std::array Results{
        std::pair{Kind::NothingThere, ENOENT}, std::pair{Kind::NotPermitted, EACCES},
        std::pair{Kind::Held, int{ISerialPort::AlreadyOpen}}, std::pair{Kind::NoPrinter, ENOTTY},
        std::pair{Kind::NoReaction, EIO}};
    const auto* const objFound =
        std::ranges::find(Results, p_iKind, [](const auto& p_objPair) { return p_objPair.first; });
    m_objSerialPort.m_iOpenResult = objFound != Results.end() ? objFound->second
                                    : m_bGone                 ? ENOENT
                                                              : int{ISerialPort::Opened};
    m_objSerialPort.m_bRefusesOutput = false;
    m_objSerialPort.m_bGoesAtOnce = p_iKind == Kind::GoneAtOnce;
    if (p_iKind == Kind::InterruptedOpening) {
        InterruptIn(Tick);
    }
}

void CFaultyPrinter::OpenUsb(Kind p_iKind) {
    m_objUsb.m_iSendResult = 0;
    m_objUsb.m_iNotReadyNumber = 0;
    m_objUsb.m_iOpens = IUsbLibrary::NotReady;
    switch (p_iKind) {
    case Kind::NothingThere:
        m_objUsb.m_iNotReadyNumber = ENODEV;
        return;
    case Kind::NotPermitted:
        m_objUsb.m_iNotReadyNumber = EACCES;
        return;
    case Kind::Held:
        m_objUsb.m_iNotReadyNumber = EBUSY;
        return;
    case Kind::NoPrinter:
        m_objUsb.m_iOpens = IUsbLibrary::Mismatch;
        return;
    case Kind::NotIdentified:
        m_objUsb.m_iOpens = IUsbLibrary::NoDeviceId;
        return;
    case Kind::GoneAtOnce:
        m_objEventLoop.AtNextYield([this] { Leave(); });
        break;
    case Kind::InterruptedOpening:
        InterruptIn(Tick);
        break;
    default:
        break;
    }
    m_objUsb.m_iOpens = IUsbLibrary::Opened;
}

/// p_iOut bytes of the command are out already.
void CFaultyPrinter::Sending(std::size_t p_iOut) {
    m_objSocket.m_bCompletesSends = true;
    m_objUsb.m_iSendResult = 0;
    if (!IsHit(Next())) {
        return;
    }
    switch (m_objPlan.m_iKind) {
    case Kind::NotTaken:
        TakeNone(p_iOut);
        break;
    case Kind::BrokenSending:
        BreakSending(p_iOut);
        break;
    case Kind::InterruptedSending:
        m_objSocket.m_bCompletesSends = false;
        if (m_iLink == Link::Lan || p_iOut == Some) {
            InterruptIn(m_iLink == Link::Lan ? 5 * Tick : Tick);
        }
        break;
    default:
        break;
    }
}

void CFaultyPrinter::TakeNone(std::size_t p_iOut) {
    m_objSocket.m_bCompletesSends = false;
    m_objUsb.m_iSendResult = IUsbLibrary::Failed;
    m_objSerialPort.m_bRefusesOutput = p_iOut == Some;
    m_bUsed = m_iLink != Link::Com || p_iOut == Some;
}

void CFaultyPrinter::BreakSending(std::size_t p_iOut) {
    m_bUsed = m_iLink != Link::Com || p_iOut == Some;
    switch (m_iLink) {
    case Link::Lan:
        m_objSocket.m_bCompletesSends = false;
        m_objEventLoop.AtNextYield(OfConnection([this] { m_objSocket.Break(Error(ECONNRESET)); }));
        break;
    case Link::Com:
        if (p_iOut == Some) {
            Leave();
        }
        break;
    case Link::Usb:
        Leave();
        break;
    }
}

void CFaultyPrinter::Take(const std::string& p_strCommand) {
    const std::size_t iNumber = Next();
    m_strCommands.push_back(p_strCommand);
    if (m_iLink == Link::Com && m_strPlace != Place()) {
        return;  // in another format it understands nothing
    }
    const bool bHit = IsHit(iNumber);
    CStateFaults objFaults;
    if (bHit && m_objPlan.m_iKind == Kind::Refusal) {
        objFaults.m_strRefused = {p_strCommand};
    }
    m_objPrinter.SetFaults(objFaults);
    const std::string strAnswer = m_objPrinter.Handle(p_strCommand).m_strAnswer;
    if (m_fnCarried) {
        m_fnCarried();
    }
    if (!bHit) {
        Deliver(OnLink(strAnswer), Usual);
        return;
    }
    m_bUsed = true;
    Spoil(p_strCommand, strAnswer);
}

/// What comes back of a command that the fault meets.
void CFaultyPrinter::Spoil(const std::string& p_strCommand, const std::string& p_strAnswer) {
    constexpr std::size_t Many = 64;
    const std::string strAnswer = OnLink(p_strAnswer);
    switch (m_objPlan.m_iKind) {
    case Kind::Silent:
        break;
    case Kind::Late:
        Deliver(strAnswer, TooLate);
        break;
    case Kind::LateInTime:
        Deliver(strAnswer, InTime);
        break;
    case Kind::SingleBytes:
        Deliver(strAnswer, Usual, 1);
        break;
    case Kind::Junk64K:
        Deliver(Junk(Many * 1024), Usual);
        break;
    case Kind::Junk1M:
        Deliver(Junk(1024 * 1024), Usual);
        break;
    case Kind::Endless:
        Stream();
        break;
    case Kind::OtherGroupFirst:
        Deliver(Spoiled(p_strCommand, p_strAnswer), Usual);
        Deliver(strAnswer, 10 * Usual);
        break;
    default:
        if (m_objPlan.m_iKind >= Kind::ClosedBefore && m_objPlan.m_iKind <= Kind::Reset) {
            SpoilWay(strAnswer);
        } else if (m_objPlan.m_iKind >= Kind::InterruptedWaiting) {
            const bool bBetween = m_objPlan.m_iKind == Kind::InterruptedBetween;
            Deliver(strAnswer, bBetween ? Usual : InTime);
            // On the network the answer comes at once, and the next command may go out with it.
            const std::int64_t iWhole = m_iLink == Link::Lan ? Usual : Whole(strAnswer);
            InterruptIn(bBetween ? iWhole : 10 * Usual);
        } else {
            Deliver(Spoiled(p_strCommand, p_strAnswer), Usual);
            if (m_objPlan.m_iKind == Kind::NoPrinter) {
                m_objEventLoop.After(2 * Usual, OfConnection([this] { Leave(); }));
            }
        }
        break;
    }
}

void CFaultyPrinter::SpoilWay(const std::string& p_strAnswer) {
    switch (m_objPlan.m_iKind) {
    case Kind::Reset:
        m_objEventLoop.After(Usual, OfConnection([this] { m_objSocket.Break(Error(ECONNRESET)); }));
        return;
    case Kind::ClosedBefore:
        m_objEventLoop.After(Usual, OfConnection([this] { Leave(); }));
        return;
    case Kind::ClosedInside:
        Deliver(p_strAnswer.substr(0, p_strAnswer.size() / 2), Usual);
        break;
    default:
        Deliver(p_strAnswer, Usual);
        break;
    }
    m_objEventLoop.After(Whole(p_strAnswer), OfConnection([this] { Leave(); }));
}

/// What meets a connection does not meet a later one. A cable does not know of any.
std::function<void()> CFaultyPrinter::OfConnection(const std::function<void()>& p_fnEvent) {
    return [this, p_fnEvent, iConnection = m_objSocket.m_iConnects] {
        if (iConnection == m_objSocket.m_iConnects) {
            p_fnEvent();
        }
    };
}

/// After how many milliseconds an answer is there, a serial line bringing a few characters in a
/// tick.
std::int64_t CFaultyPrinter::Whole(const std::string& p_strAnswer) const {
    const auto iTicks = static_cast<std::int64_t>(p_strAnswer.size() / Width(m_iLink)) + 1;
    return Usual + (iTicks + 1) * Tick;
}

std::string CFaultyPrinter::Spoiled(const std::string& p_strCommand,
                                    const std::string& p_strAnswer) const {
    constexpr std::size_t GroupPosition = 4;
    const bool bSettings = IsSettings(p_strAnswer);
    const std::string strAnswer = OnLink(p_strAnswer);
    switch (m_objPlan.m_iKind) {
    case Kind::NoPrinter:
        return "HTTP/1.1 400 Bad Request\r\nConnection: close\r\n\r\n{\"status\": 400}";
    case Kind::Twice:
        return strAnswer + strAnswer;
    case Kind::Cut:
        return strAnswer.substr(0, strAnswer.size() / 2);
    case Kind::OtherGroup:
    case Kind::OtherGroupFirst:
        return OnLink(m_objPrinter.SettingsAnswer(p_strCommand.at(GroupPosition) == '0' ? 1 : 0));
    case Kind::OtherKind:
        return bSettings ? MWire::Status("00") : OnLink(m_objPrinter.SettingsAnswer(0));
    case Kind::Junk1:
        return Junk(1);
    case Kind::Junk100:
        return Junk(100);
    case Kind::JunkBefore1:
        return Junk(1) + strAnswer;
    case Kind::JunkBefore100:
        return Junk(100) + strAnswer;
    case Kind::OutOfRange:
        return bSettings ? Fields(p_strAnswer, '9') : strAnswer;
    case Kind::NoNumbers:
        return bSettings ? Fields(p_strAnswer, '?') : strAnswer;
    case Kind::UnknownStatus:
        return bSettings ? strAnswer : MWire::Status("99");
    case Kind::ErrorStatus:
        return bSettings ? strAnswer : MWire::Status("11");
    default:
        return strAnswer;
    }
}

/// The answer with that character in place of every field's.
std::string CFaultyPrinter::Fields(const std::string& p_strAnswer, char p_cField) const {
    constexpr std::size_t Ends = 2;
    std::string strAnswer = p_strAnswer;
    std::fill(strAnswer.begin() + Ends, strAnswer.end() - Ends, p_cField);
    return OnLink(strAnswer);
}

/// An answer as the link brings it.
std::string CFaultyPrinter::OnLink(const std::string& p_strAnswer) const {
    const bool bHead = m_iLink == Link::Usb && IsSettings(p_strAnswer);
    return (bHead ? std::string("\x02") + "0" : std::string()) + p_strAnswer;
}

/// Bytes come, p_iPiece a tick; 0: as many as the link brings.
void CFaultyPrinter::Deliver(const std::string& p_strBytes, std::int64_t p_iDelay,
                             std::size_t p_iPiece) {
    const std::size_t iPiece = p_iPiece == 0 ? Width(m_iLink) : p_iPiece;
    m_objEventLoop.After(p_iDelay, [this, iPiece, iConnection = m_objSocket.m_iConnects,
                                    strBytes = std::make_shared<const std::string>(p_strBytes)] {
        DeliverPiece(strBytes, 0, iPiece, iConnection);
    });
}

void CFaultyPrinter::DeliverPiece(const Bytes& p_strBytes, std::size_t p_iFrom,
                                  std::size_t p_iPiece, int p_iConnection) {
    if (p_iConnection != m_objSocket.m_iConnects || m_bGone) {
        return;
    }
    Arrive(p_strBytes->substr(p_iFrom, p_iPiece));
    if (p_iFrom + p_iPiece < p_strBytes->size()) {
        m_objEventLoop.After(Tick, [this, p_strBytes, p_iFrom, p_iPiece, p_iConnection] {
            DeliverPiece(p_strBytes, p_iFrom + p_iPiece, p_iPiece, p_iConnection);
        });
    }
}

void CFaultyPrinter::Arrive(const std::string& p_strBytes) {
    switch (m_iLink) {
    case Link::Lan:
        if (m_objSocket.IsConnected()) {
            m_objSocket.Arrive(p_strBytes);
        }
        break;
    case Link::Com:
        if (m_objSerialPort.IsOpen()) {
            m_objSerialPort.Arrive(p_strBytes);
        }
        break;
    case Link::Usb:
        m_objUsb.m_strAnswers.push_back(p_strBytes);
        break;
    }
}

/// Junk comes for as long as somebody is connected.
void CFaultyPrinter::Stream() {
    constexpr std::size_t Most = 128;
    const std::string strJunk = Junk(std::min(Most, Width(m_iLink)));
    m_objEventLoop.After(Tick, OfConnection([this, strJunk] {
                             const bool bFull =
                                 m_objUsb.m_strAnswers.size() > 1;  // nobody takes it
                             const bool bOver = m_iLink == Link::Lan   ? !m_objSocket.IsConnected()
                                                : m_iLink == Link::Com ? !m_objSerialPort.IsOpen()
                                                                       : bFull;
                             if (!bOver) {
                                 Arrive(strJunk);
                                 Stream();
                             }
                         }));
}

/// The printer closes the connection, or is pulled out.
void CFaultyPrinter::Leave() {
    switch (m_iLink) {
    case Link::Lan:
        if (m_objSocket.IsConnected()) {
            m_objSocket.PeerCloses();
        }
        return;
    case Link::Com:
        m_objSerialPort.GoAway();
        break;
    case Link::Usb:
        m_objUsb.m_bGone = true;
        break;
    }
    m_bGone = true;
    if (m_objPlan.m_bOnce) {
        m_objEventLoop.After(Away, [this] { ComeBack(); });
    }
}

void CFaultyPrinter::ComeBack() {
    m_bGone = m_objUsb.m_bGone = false;
    m_objUsb.m_strAnswers.clear();
}

void CFaultyPrinter::InterruptIn(std::int64_t p_iMilliseconds) {
    if (!std::exchange(m_bUsed, true) || !m_objPlan.m_bOnce) {
        m_objEventLoop.After(p_iMilliseconds, [this] {
            if (!m_objInterrupt.m_iCame) {
                m_iSendingsAtCtrlC = Sendings();
                m_objInterrupt.Come();
            }
        });
    }
}
