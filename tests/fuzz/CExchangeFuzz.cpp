#include "tests/fuzz/CExchangeFuzz.h"

#include "flows/MHandler.h"
#include "tests/fakes/MWire.h"
#include "tests/fuzz/MCommandWidth.h"
#include "tests/fuzz/MFuzzTargets.h"

#include <span>
#include <string_view>

using MFuzz::Require;

namespace {

constexpr int MostSteps = 48;
constexpr std::int64_t Unit = 50;  // milliseconds, of what the input says of times

/// Longer than any handler may last, with all that can begin inside of it.
constexpr std::int64_t LongestHandler = 600'000;
/// How long a connection may be waited for until a person has enough of it.
constexpr std::int64_t LongestOpening = 10'000;
/// Yields behind the closing, in which the doubles' own events may still come.
constexpr std::int64_t MostBehindClose = 64;

}  // namespace

void CExchangeFuzz::CBoxes::Show(const std::string& /*p_strText*/, MessageIcon /*p_iIcon*/,
                                 const std::string& /*p_strTitle*/) {
    for (int i = 0; i < m_iYields && !m_objEventLoop.IsClosing(); ++i) {
        m_objEventLoop.Yield();
    }
}

CExchangeFuzz::CExchangeFuzz(MFuzz::Input p_objInput)
    : m_objInput(p_objInput)
    , m_objSession(
          m_objItems, m_objInterface, m_objEvents,
          CPrinterPlatform{m_objEventLoop, m_objClock, m_objSocket, m_objPort, m_objLibrary},
          m_objInput.Pick(4) == 3 ? CExchangeManners::OfAProgram() : CExchangeManners()) {
    m_objInterface.SetActiveInterface(static_cast<std::int16_t>(m_objInput.Pick(3)));
    OpenLink(m_objInterface.GetActiveInterface());
}

void CExchangeFuzz::Run() {
    while (!m_objInput.IsEmpty() && m_iSteps < MostSteps) {
        Step();
        RequireRest();
    }
    RequestClose();
    const std::size_t iSent = CountSent();
    RunAlone([this] { m_objFlow.LanSet(); });
    RunAlone([this] { m_objMaintenance.HeadCheck(); });
    m_objEventLoop.Idle(Unit);
    Require(CountSent() == iSent, "nothing goes out once the program closes");
    RequireRest();
}

void CExchangeFuzz::Step() {
    ++m_iSteps;
    switch (m_objInput.Pick(8)) {
    case 0:
    case 1:
        Begin();
        break;
    case 2:
    case 3:
    case 4:
        Happen();
        break;
    case 5:
        SetLine();
        break;
    case 6:
        SetTime();
        break;
    default:
        TakeField();
        break;
    }
}

/// A person starts something, which runs to its end.
void CExchangeFuzz::Begin() {
    RunAlone(TakeCommand());
}

void CExchangeFuzz::RunAlone(const std::function<void()>& p_fnCommand) {
    m_bRunning = true;
    m_objEventLoop.After(LongestHandler, [this, iStep = m_iSteps] {
        if (m_bRunning && iStep == m_iSteps) {
            m_bTooLong = true;
            RequestClose();
        }
    });
    p_fnCommand();
    m_bRunning = false;
    Require(!m_bTooLong || m_bBeyondMidnight, "a wait ends");
    Require(m_iCloseYield < 0 || m_objEventLoop.Yields() - m_iCloseYield <= MostBehindClose,
            "no wait outlives a close");
    if (m_iCloseYield >= 0) {
        m_iCloseYield = m_objEventLoop.Yields();
    }
}

/// Something happens later: in the wait of a handler that is begun meanwhile, or by itself.
void CExchangeFuzz::Happen() {
    const std::int64_t iDelay = Unit * m_objInput.Byte();
    const bool bCommand = m_objInput.Pick(4) == 0;
    const std::function<void()> fnEvent = bCommand ? TakeCommand() : TakeEvent();
    m_objEventLoop.After(iDelay, [this, bCommand, fnEvent] {
        // A button that is disabled cannot be clicked.
        if (!bCommand || (m_objView.AreControlsEnabled() && !m_objEventLoop.IsClosing())) {
            fnEvent();
        }
    });
}

std::function<void()> CExchangeFuzz::TakeCommand() {
    const auto iArgument = static_cast<std::int16_t>(m_objInput.Pick(12));
    const auto iOther = static_cast<std::int16_t>(iArgument / 2);
    CMaintenanceFlow& objMaintenance = m_objMaintenance;
    CReadWriteFlow& objFlow = m_objFlow;
    switch (m_objInput.Pick(16)) {
    case 0:
        return [&objFlow] { objFlow.Read(); };
    case 1:
        return [&objFlow] { objFlow.Set(); };
    case 2:
        return [&objFlow] { objFlow.LanRead(); };
    case 3:
        return [&objFlow] { objFlow.LanSet(); };
    case 4:
        return [&objMaintenance] { objMaintenance.GetStatus(); };
    case 5:
        return [&objMaintenance] { objMaintenance.HeadCheck(); };
    case 6:
        return [&objMaintenance, iArgument, iOther] { objMaintenance.RamClear(iOther, iArgument); };
    case 7:
        return [&objMaintenance, iArgument] { objMaintenance.ThresholdCalib(iArgument); };
    case 8:
        return [&objMaintenance] { objMaintenance.SensorAdjustReflect(); };
    case 9:
        return [&objMaintenance] { objMaintenance.SensorAdjustPaperEnd(); };
    case 10:
        return [&objMaintenance, iArgument, iOther] {
            const auto iLength = static_cast<std::int16_t>(iArgument * 1000);
            objMaintenance.TestPrint([&]() -> MCommand::TestPrintFields {
                return {iOther, iLength, iLength, iOther, iOther, iOther, iArgument};
            });
        };
    case 11:
        return [&objMaintenance, iArgument] { objMaintenance.DiagPrint(iArgument); };
    case 12:
        return [this, iOther] { OpenLink(static_cast<std::int16_t>(iOther % 3)); };
    case 13:
        return [this, iOther] {
            m_bLineCut = true;
            m_objSession.Links().CloseLink(static_cast<std::int16_t>(iOther % 3));
        };
    case 14:
        return [this, iOther] { m_objInterface.SetActiveInterface(iOther); };
    default:
        return [this, iArgument] { Pause(Unit * iArgument * iArgument); };
    }
}

/// Nothing is done for a while, as while a dialog stands, which the closing ends.
void CExchangeFuzz::Pause(std::int64_t p_iMilliseconds) {
    const std::int64_t iEnd = m_objEventLoop.Elapsed() + p_iMilliseconds;
    while (m_objEventLoop.Elapsed() < iEnd && !m_objEventLoop.IsClosing()) {
        m_objEventLoop.Yield();
    }
}

/// What the setup dialog's SET does with a link, as a handler; somebody gives up waiting for it.
void CExchangeFuzz::OpenLink(std::int16_t p_iInterface) {
    m_objEventLoop.After(LongestOpening, [this] { m_objSession.Links().StopOpening(); });
    MHandler::Run(m_objSession.Waiter(), [&] {
        m_bLineCut = true;
        m_objSession.Links().CloseLink(p_iInterface);
        m_objSession.Links().OpenLink(p_iInterface);
    });
}

std::function<void()> CExchangeFuzz::TakeEvent() {
    const unsigned iKind = m_objInput.Pick(6);
    if (iKind == 5) {
        return m_objInput.Pick(4) == 0 ? std::function<void()>([this] { RequestClose(); })
                                       : TakeLinkEvent();
    }
    if (iKind == 4) {
        return TakeLinkEvent();
    }
    const std::string strBytes = TakeAnswer();
    return [this, iKind, strBytes] {
        if (iKind % 3 == 0 && m_objSocket.IsConnected()) {
            m_objSocket.Arrive(strBytes);
        } else if (iKind % 3 == 1 && m_objPort.IsOpen()) {
            m_objPort.Arrive(strBytes);
        } else if (iKind % 3 == 2) {
            m_objLibrary.m_strAnswers.push_back(strBytes);
        }
    };
}

/// An answer as a printer gives it, perhaps with USB's head, cut or changed; or any bytes.
std::string CExchangeFuzz::TakeAnswer() {
    const unsigned iGroup = m_objInput.Pick(8);
    if (iGroup == 7) {
        return m_objInput.Text(m_objInput.Byte());
    }
    std::string strAnswer = iGroup < 5 ? MWire::Settings(static_cast<std::int16_t>(iGroup))
                                       : MWire::Status(m_objInput.Text(2) + "00").substr(0, 13);
    const unsigned iChange = m_objInput.Pick(8);
    if (iChange == 1) {
        strAnswer.resize(m_objInput.Byte() % strAnswer.size());
    } else if (iChange == 2) {
        strAnswer[m_objInput.Byte() % strAnswer.size()] = static_cast<char>(m_objInput.Byte());
    } else if (iChange == 3 && iGroup < 5) {
        strAnswer.insert(0, "\x02 ");
    }
    return strAnswer;
}

std::function<void()> CExchangeFuzz::TakeLinkEvent() {
    const unsigned iKind = m_objInput.Pick(8);
    const std::int16_t iNumber = m_objInput.Byte();
    return [this, iKind, iNumber] {
        const bool bSocket = m_objSocket.IsConnected();
        const bool bPort = m_objPort.IsOpen();
        if (iKind == 0 && bSocket) {
            m_objSocket.PeerCloses();
        } else if (iKind == 1 && bSocket) {
            SocketError objError;
            objError.m_iNumber = iNumber;
            m_objSocket.Break(objError);
        } else if (iKind == 2 && bSocket) {
            m_objSocket.CompleteSend();
        } else if (iKind == 3 && bPort) {
            m_bLineCut = true;
            m_objPort.GoAway();
        } else if (iKind == 4 && bPort) {
            m_objPort.SetClearToSend(iNumber % 2 == 0);
        } else if (iKind == 5 && bPort) {
            m_objPort.Raise(iNumber == SerialSend ? std::int16_t{0} : iNumber);
        } else if (iKind == 6) {
            m_objLibrary.m_iOpenResults.push_back(-(iNumber % 4));
        } else if (iKind == 7) {
            m_objSession.Links().StopOpening();
        }
    };
}

/// How the lines behave from now on.
void CExchangeFuzz::SetLine() {
    using Result = CFakeTcpClient::ConnectResult;
    const unsigned iFlags = m_objInput.Byte();
    m_objSocket.m_bCompletesSends = (iFlags & 1U) == 0;
    m_objSocket.m_bRefusesSends = (iFlags & 2U) != 0;
    m_objPort.m_bRefusesOutput = (iFlags & 4U) != 0;
    m_bLineCut = true;
    m_objPort.m_bRaisesSendEvents = (iFlags & 8U) == 0;
    m_objPort.m_bGoesAtOnce = (iFlags & 16U) != 0;
    m_objLibrary.m_iSendResult = (iFlags & 32U) != 0 ? -1 : 0;
    m_objLibrary.m_bWaits = (iFlags & 64U) == 0;
    m_objBoxes.m_iYields = (iFlags & 128U) != 0 ? 3 : 0;
    const unsigned iConnects = m_objInput.Pick(6);
    m_objSocket.m_iConnectResult = iConnects == 4   ? Result::Never
                                   : iConnects == 5 ? Result::Fails
                                                    : Result::Connects;
    constexpr std::int32_t iRefused = -3;
    m_objPort.m_iOpenResult = m_objInput.Pick(6) == 5 ? iRefused : ISerialPort::Opened;
}

/// The clock goes on by itself, or is set to a moment before midnight.
void CExchangeFuzz::SetTime() {
    const std::int64_t iStep = m_objInput.Byte();
    if (m_objInput.Pick(4) == 3) {
        constexpr double dMidnight = 86'400;
        m_objClock.SetTimeOfDay(dMidnight - static_cast<double>(iStep) / 8);
        m_bBeyondMidnight = true;
    } else {
        m_objClock.Advance(Unit * iStep);
    }
}

/// The page will put any text into one of the items, when a SET stores it.
void CExchangeFuzz::TakeField() {
    const auto objRows = CItemManager::Rows();
    const auto objSlot = objRows[m_objInput.Byte() % objRows.size()].m_objSlot;
    const CItem& objItem = *(m_objItems.*objSlot);
    const auto iLength = static_cast<unsigned>(objItem.m_iLength);
    const std::string strText = m_objInput.Text(m_objInput.Pick(iLength + 2));
    const auto fnStore = [this, objSlot, strText] {
        (m_objItems.*objSlot)->SetValue(strText);
        return true;
    };
    m_objParameterPage.m_fnStore = fnStore;
    m_objLanPage.m_fnStore = fnStore;
}

void CExchangeFuzz::RequestClose() {
    if (m_iCloseYield < 0) {
        m_iCloseYield = m_objEventLoop.Yields();
        m_bLineCut = true;
    }
    m_objEventLoop.RequestClose();
}

void CExchangeFuzz::RequireRest() {
    Require(!m_objSession.Busy().IsBusy(), "at rest nothing is busy");
    Require(m_objView.AreControlsEnabled(), "at rest the buttons are enabled");
    Require(!m_objPort.IsOpen() || m_objPort.Waiting() == 0,
            "what comes on the serial line is taken");
    Require(m_objSocket.GetData().empty(), "what comes on the network is taken");
    MFuzz::RequireRendered(m_objItems);
    RequireSent();
    ForgetSent();
    m_bLineCut = false;
}

void CExchangeFuzz::RequireSent() {
    for (const auto& strCommands : {m_objSocket.m_strSent, m_objLibrary.m_strSent}) {
        for (const std::string& strCommand : strCommands) {
            Require(MCommandWidth::Of(strCommand) == strCommand.size(), "a command has its width");
        }
    }
    RequireSerialSent();
}

/// On the serial line commands stand behind each other, and a line that is cut tears one.
void CExchangeFuzz::RequireSerialSent() {
    const std::string strSent = m_objPort.Sent();
    std::string_view strRest = strSent;
    while (!strRest.empty() && !m_bLineCut) {
        const std::size_t iWidth = MCommandWidth::Of(strRest);
        Require(iWidth > 0, "a command has its width on the serial line");
        strRest.remove_prefix(iWidth);
    }
}

void CExchangeFuzz::ForgetSent() {
    m_objSocket.m_strSent.clear();
    m_objSocket.m_iSentTimes.clear();
    m_objSocket.m_objRemotes.clear();
    m_objLibrary.m_strSent.clear();
    m_objLibrary.m_strCalls.clear();
    m_objPort.m_strWrites.clear();
    m_objPort.m_iYields.clear();
    m_objPort.m_strCalls.clear();
}

std::size_t CExchangeFuzz::CountSent() const {
    return m_objSocket.m_strSent.size() + m_objLibrary.m_strSent.size() +
           m_objPort.m_strWrites.size();
}

void MFuzzTargets::Exchange(MFuzz::Input p_objInput) {
    CExchangeFuzz(p_objInput).Run();
}
