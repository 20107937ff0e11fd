#include "jobs/CLinkedPrinter.h"

#include "jobs/CFailureTap.h"
#include "jobs/CReadFields.h"
#include "model/CConversionError.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"
#include "protocol/MSettingRoute.h"

#include <array>
#include <stdexcept>
#include <utility>

namespace {

using Kind = CFailure::Kind;

/// The order of READ and LAN READ; last the one that neither asks for.
constexpr std::array ReadOrder{MAnswer::Adjustment, MAnswer::Parameter, MAnswer::ParameterExpansion,
                               MAnswer::Lan, MAnswer::Sensor};

/// The links report what has ended a wait a little before this does.
constexpr double GraceSeconds = 1;

}  // namespace

/// The link room put together for one call, from its opening to its closing.
class CLinkedPrinter::Session {
public:
    explicit Session(CLinkedPrinter& p_objPrinter)
        : m_objPrinter(p_objPrinter)
        , m_objTap(p_objPrinter.m_objParts.m_objEvents)
        , m_objSession(m_objFields.Items(), m_objInterface, m_objTap,
                       p_objPrinter.m_objParts.m_objPlatform,
                       CExchangeManners::OfAProgram(p_objPrinter.m_objLimits.m_iReply,
                                                    p_objPrinter.m_objLimits.m_dSend))
        , m_objTurn(m_objSession.Waiter()) {
        m_objInterface.SetActiveInterface(p_objPrinter.m_iInterface);
    }
    ~Session() {
        if (ILink* const objLink = m_objSession.Links().Find(m_objPrinter.m_iInterface)) {
            objLink->Close();
        }
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    [[nodiscard]] const CReadFields& Fields() const { return m_objFields; }
    [[nodiscard]] ISessionEvents& Events() { return m_objTap; }

    /// Of kind None when the link is open. The one to USB is opened with each exchange.
    CFailure Open() {
        if (m_objPrinter.m_iInterface == CInterface::UsbInterface) {
            return {};
        }
        const CDeadlineLoop::Limit objLimit(Loop(), m_objPrinter.m_objLimits.m_dOpen);
        const bool bOpen = m_objSession.Links().OpenLink(m_objPrinter.m_iInterface);
        CFailure objFailure = m_objTap.Last();
        // A port that opens and is gone at once tells nothing; a wait that was ended neither.
        if (!bOpen && objFailure.IsNone() && !Loop().IsClosing() &&
            m_objPrinter.m_iInterface == CInterface::SerialInterface) {
            objFailure.m_iKind = Kind::SerialNotOpen;
        }
        return bOpen ? CFailure{} : Complete(objFailure);
    }

    /// Carries out an exchange. Its failure is never None when it is not done.
    COutcome Do(const Command& p_fnCommand) {
        const CPrinterLimits& objLimits = m_objPrinter.m_objLimits;
        const bool bOpens = m_objPrinter.m_iInterface == CInterface::UsbInterface;
        const CDeadlineLoop::Limit objLimit(Loop(), (bOpens ? objLimits.m_dOpen : 0) +
                                                        objLimits.m_dSend + objLimits.m_iReply +
                                                        GraceSeconds);
        COutcome objOutcome;
        try {
            objOutcome = p_fnCommand(m_objSession.Exchange());
        } catch (const std::out_of_range&) {
            objOutcome.m_bSent = true;  // an answer that is none
        } catch (const CConversionError&) {
            objOutcome.m_bSent = true;
        }
        objOutcome.m_objFailure =
            objOutcome.m_bDone ? CFailure{} : Complete(objOutcome.m_objFailure);
        return objOutcome;
    }

    void Pause() {
        CWaiter& objWaiter = m_objSession.Waiter();
        const double dPause = m_objPrinter.m_objLimits.m_dPause;
        const double dStart = objWaiter.Now();
        constexpr double dQuiet = CCommandExchange::QuietSeconds;
        CAnswerRouter& objRouter = m_objSession.Router();
        const auto dLeft = [&] { return dPause - (objWaiter.Now() - dStart); };
        while (dLeft() > 0 && objWaiter.YieldFor(objRouter.SleepBeforeSettling(dLeft(), dQuiet))) {
            objRouter.SettleQuiet(objWaiter.Now(), dQuiet);
        }
    }

private:
    CDeadlineLoop& Loop() { return m_objPrinter.m_objParts.m_objEventLoop; }

    /// What is known of a failure besides. A wait that was ended says nothing itself.
    CFailure Complete(CFailure p_objFailure) {
        if (p_objFailure.IsNone()) {
            p_objFailure.m_iKind = Loop().IsTimeUp() ? Kind::TimeUp : Kind::NoReply;
        }
        const std::int32_t iNumber =
            m_objPrinter.m_objParts.m_objPlatform.m_objUsbLibrary.NotReadyNumber();
        if (iNumber != 0 && (p_objFailure.m_iKind == Kind::UsbNotReady ||
                             p_objFailure.m_iKind == Kind::UsbNotOpened)) {
            p_objFailure.m_iNumber = iNumber;
        }
        if (!m_objPrinter.m_strDevice.empty()) {
            p_objFailure.m_strDevice = m_objPrinter.m_strDevice;
        }
        return p_objFailure;
    }

    CLinkedPrinter& m_objPrinter;
    CReadFields m_objFields;
    CInterface m_objInterface;
    CFailureTap m_objTap;
    CPrinterSession m_objSession;
    CWaiter::Turn m_objTurn;
};

CLinkedPrinter::CLinkedPrinter(const Parts& p_objParts, std::int16_t p_iInterface,
                               std::string p_strDevice, const CPrinterLimits& p_objLimits)
    : m_objParts(p_objParts)
    , m_iInterface(p_iInterface)
    , m_strDevice(std::move(p_strDevice))
    , m_objLimits(p_objLimits) {}

CReadReport CLinkedPrinter::Read(std::span<const MSettings::Row* const> p_objRows) {
    CReadReport objReport;
    for (const MSettings::Row* const objRow : p_objRows) {
        const std::int16_t iGroup = MSettingRoute::ReportedIn(*objRow);
        if (iGroup != MAnswer::NoGroup) {
            objReport.m_iAsked.insert(iGroup);
        }
    }
    if (objReport.m_iAsked.empty()) {
        return objReport;
    }
    Session objSession(*this);
    objReport.m_objFailure = objSession.Open();
    const auto iSteps = static_cast<std::int16_t>(objReport.m_iAsked.size());
    std::int16_t iStep = 0;
    for (const MAnswer::Group iGroup : ReadOrder) {
        if (!objReport.m_objFailure.IsNone() || !objReport.m_iAsked.contains(iGroup)) {
            continue;
        }
        if (iStep > 0) {
            objSession.Pause();
        }
        objSession.Events().OnStep(++iStep, iSteps);
        ReadGroup(objSession, iGroup, objReport);
    }
    objSession.Events().OnStep(0, 0);
    return objReport;
}

void CLinkedPrinter::ReadGroup(Session& p_objSession, std::int16_t p_iGroup,
                               CReadReport& p_objReport) {
    const COutcome objOutcome = p_objSession.Do(
        [&](CCommandExchange& p_objExchange) { return p_objExchange.ReadGroup(p_iGroup); });
    p_objReport.m_bSent |= objOutcome.m_bTouched || objOutcome.m_bSent;
    p_objReport.m_objFailure = objOutcome.m_objFailure;
    if (objOutcome.m_bDone) {
        p_objReport.m_iAnswered.insert(p_iGroup);
        p_objSession.Fields().Take(p_iGroup, p_objReport.m_objSnapshot);
    } else {
        p_objReport.m_strStatusCode = objOutcome.m_strStatusCode.value_or("");
        p_objReport.m_strStatusText = objOutcome.m_strStatusText;
    }
}

CStatusReport CLinkedPrinter::Status() {
    return Ask([](CCommandExchange& p_objExchange) { return p_objExchange.RequestStatus(); });
}

CStatusReport CLinkedPrinter::Send(const std::string& p_strCommand) {
    return Ask([&](CCommandExchange& p_objExchange) {
        return p_objExchange.SendMaintenance(p_strCommand);
    });
}

bool CLinkedPrinter::CanOpen() {
    Session objSession(*this);
    return objSession.Open().IsNone();
}

CStatusReport CLinkedPrinter::Ask(const Command& p_fnCommand) {
    CStatusReport objReport;
    Session objSession(*this);
    objReport.m_objFailure = objSession.Open();
    if (!objReport.m_objFailure.IsNone()) {
        return objReport;
    }
    const IClock& objClock = m_objParts.m_objPlatform.m_objClock;
    const double dStart = objClock.SecondsSinceMidnight();
    const COutcome objOutcome = objSession.Do(p_fnCommand);
    objReport.m_dSeconds = objClock.SecondsSinceMidnight() - dStart;
    objReport.m_strCode = objOutcome.m_strStatusCode.value_or("");
    objReport.m_strText = objOutcome.m_strStatusText;
    objReport.m_objFailure = objOutcome.m_objFailure;
    objReport.m_bSent = objOutcome.m_bTouched || objOutcome.m_bSent;
    return objReport;
}
