#include "simulator/program/CSerialServer.h"

#include <chrono>
#include <exception>
#include <utility>

namespace {

using std::chrono::milliseconds;

/// The system does not tell of the port's opening, nor when a full line takes bytes again.
constexpr milliseconds LookInterval{20};
/// The last answer must have been read before the line is pulled out: what it holds is lost.
constexpr milliseconds PullOutDelay{100};

constexpr std::size_t MostUnsent = 65'536;  // bytes that wait for the line
constexpr std::size_t ReadBlock = 512;      // bytes whose answers can be held at once
constexpr std::size_t MostSteps = 256;      // waiting steps above which nothing more is read

}  // namespace

CSerialServer::CSerialServer(CPrinter& p_objPrinter, CFaultSettings p_objFaults,
                             ISimulatorLog& p_objLog, Told p_objTold)
    : m_objPrinter(p_objPrinter)
    , m_objFaults(std::move(p_objFaults))
    , m_objLog(p_objLog)
    , m_objTold(std::move(p_objTold))
    , m_objSteps([this] { Work(); }) {
    m_objLook.setInterval(LookInterval);
    m_objPullOut.setInterval(PullOutDelay);
    m_objPullOut.setSingleShot(true);
    m_objPowerBack.setSingleShot(true);
    connect(&m_objLook, &QTimer::timeout, this, &CSerialServer::Look);
    connect(&m_objPullOut, &QTimer::timeout, this, &CSerialServer::PullOut);
    connect(&m_objPowerBack, &QTimer::timeout, this, &CSerialServer::ComeBack);
}

void CSerialServer::Listen(const std::string& p_strAlias) {
    m_objAlias = std::make_unique<CPortAlias>(p_strAlias);
    PlugIn();
}

void CSerialServer::PlugIn() {
    m_objTerminal = std::make_unique<CPseudoTerminal>();
    m_objAlias->PointTo(m_objTerminal->Name());
    m_objArrived =
        std::make_unique<QSocketNotifier>(m_objTerminal->Descriptor(), QSocketNotifier::Read);
    m_objArrived->setEnabled(false);  // it would fire all the time while nobody has the port open
    connect(m_objArrived.get(), &QSocketNotifier::activated, this, &CSerialServer::Work);
    m_objLook.start();
    m_objTold.m_fnListening(m_objTerminal->Name());
    m_objLog.Event(0, "listening", {});
}

void CSerialServer::PullOut() {
    End(true);
    m_objArrived.reset();
    m_objTerminal.reset();
    try {
        PlugIn();
    } catch (const std::exception& objError) {
        m_objLook.stop();
        m_objTold.m_fnFailed(objError.what());
    }
}

void CSerialServer::Look() {
    if (m_objSession) {
        Work();
    } else if (m_objTerminal->IsOpened() || m_objTerminal->HasBytes()) {
        Begin();
    }
}

void CSerialServer::Begin() {
    m_objSession.emplace(++m_iSessions, m_objPrinter, m_objFaults, m_objLog,
                         CSession::Wire::Serial);
    m_objSession->Note("port opened");
    m_objSession->Event("connected");
    m_objSteps.Add(m_objSession->Connected());
    Work();
}

void CSerialServer::End(bool p_bPulledOut) {
    m_objSteps.Clear();
    m_strUnsent.clear();
    m_objArrived->setEnabled(false);
    m_objTerminal->Discard();
    if (m_objSession) {
        // Whoever reads this finds nothing of the session on the line.
        m_objSession->Note("port closed");
        m_objSession->Event("closed", CJsonObject().Text("by", p_bPulledOut ? "printer" : "peer"));
    }
    m_objSession.reset();
}

void CSerialServer::Work() {
    if (!m_objSession || m_objPullOut.isActive()) {
        return;
    }
    Read();
    Run();
    Send();
    if (!m_objTerminal->IsOpened() && !m_objTerminal->HasBytes() && !m_objPullOut.isActive()) {
        End(false);
        return;
    }
    m_objArrived->setEnabled(CanTakeMore());
}

bool CSerialServer::CanTakeMore() const {
    return !m_objPullOut.isActive() && m_objSteps.Size() < MostSteps &&
           m_strUnsent.size() < MostUnsent;
}

void CSerialServer::Read() {
    // One block a turn: the answers of a flood go out in between.
    if (!CanTakeMore()) {
        return;
    }
    const std::vector<std::uint8_t> objBytes = m_objTerminal->Read(ReadBlock);
    m_objSteps.Add(m_objSession->Received(objBytes));
    if (m_bOn && !m_objPrinter.IsOn()) {
        LosePower();
    }
}

void CSerialServer::Run() {
    while (!m_objPullOut.isActive() && m_strUnsent.size() < MostUnsent) {
        const std::optional<CWireStep> objStep = m_objSteps.TakeDue();
        if (!objStep) {
            return;
        }
        CarryOut(*objStep);
    }
}

void CSerialServer::CarryOut(const CWireStep& p_objStep) {
    m_objSession->Sent(p_objStep);
    m_strUnsent += p_objStep.m_strBytes;
    Send();
    if (p_objStep.m_bClose) {
        m_objArrived->setEnabled(false);
        m_objPullOut.start();
    }
}

void CSerialServer::Send() {
    if (!m_objTerminal->IsOpened()) {
        m_strUnsent.clear();  // nobody is there to hear it
    }
    m_strUnsent.erase(0, m_objTerminal->Write(m_strUnsent));
}

void CSerialServer::PowerCycle() {
    if (m_objPrinter.IsOn()) {
        m_objPrinter.PowerOff();
        LosePower();
    }
}

void CSerialServer::LosePower() {
    m_bOn = false;
    m_objLog.Line(0, "! power off");
    m_objLog.Event(0, "power", CJsonObject().Flag("on", false));
    m_objSteps.Clear();
    m_strUnsent.clear();
    if (m_objSession) {
        // The half of a command that it has got is lost.
        m_objSession.emplace(m_iSessions, m_objPrinter, m_objFaults, m_objLog,
                             CSession::Wire::Serial);
    }
    if (m_objPrinter.Faults().m_iPowerBack) {
        m_objPowerBack.start(*m_objPrinter.Faults().m_iPowerBack);
    }
}

void CSerialServer::ComeBack() {
    m_objPrinter.PowerOn();
    m_bOn = true;
    m_objLog.Line(0, "! power on");
    m_objLog.Event(0, "power", CJsonObject().Flag("on", true));
}
