#include "tests/ui/recorder/CScriptedWire.h"

#include <algorithm>
#include <utility>

namespace {

/// What stands on USB before a settings answer as the other links have it.
constexpr const char* UsbFrame = "\x02\x30";
constexpr char SettingsHead = '{';

/// What a serial line brings between two rounds of the event loop.
constexpr std::size_t BytesOfAYield = 4;

}  // namespace

CScriptedWire::CScriptedWire(CRecordedEventLoop& p_objEventLoop, CTranscript& p_objTranscript,
                             CRecordedTcpClient& p_objSocket, CRecordedSerialPort& p_objPort,
                             CRecordedUsbLibrary& p_objLibrary)
    : m_objEventLoop(p_objEventLoop)
    , m_objTranscript(p_objTranscript)
    , m_objSocket(p_objSocket)
    , m_objPort(p_objPort)
    , m_objLibrary(p_objLibrary) {
    const auto fnTaken = [this](const std::string& p_strCommand) { Taken(p_strCommand); };
    m_objSocket.m_fnBegins = [this] { Begins(LinkKind::Lan); };
    m_objSocket.m_fnSent = fnTaken;
    m_objLibrary.m_fnBegins = [this] { Begins(LinkKind::Usb); };
    m_objLibrary.m_fnSent = fnTaken;
    m_objPort.m_fnBegins = [this] { Begins(LinkKind::Com); };
    m_objPort.m_fnAnswer = [fnTaken](const std::string& p_strCommand) {
        fnTaken(p_strCommand);
        return std::optional<std::string>();
    };
}

void CScriptedWire::OnAnswer(int p_iCommand, Rule p_fnRule) {
    m_fnRules.emplace_back(p_iCommand, std::move(p_fnRule));
}

void CScriptedWire::Before(int p_iCommand, std::function<void()> p_fnAction) {
    m_fnBefore.emplace_back(p_iCommand, std::move(p_fnAction));
}

void CScriptedWire::Forget() {
    m_fnRules.clear();
    m_fnBefore.clear();
    m_iBegun = 0;
    m_iTaken = 0;
}

void CScriptedWire::Teach(const std::vector<std::string>& p_strCommands) {
    for (const std::string& strCommand : p_strCommands) {
        m_objPrinter.Handle(strCommand);
    }
}

std::string CScriptedWire::OnThisLink(const std::string& p_strAnswer) const {
    const bool bFramed = m_iLink == LinkKind::Usb && p_strAnswer.front() == SettingsHead;
    return bFramed ? UsbFrame + p_strAnswer : p_strAnswer;
}

std::string CScriptedWire::StatusAnswer(const std::string& p_strCode) const {
    return OnThisLink(CPrinter::StatusAnswer(p_strCode));
}

std::string CScriptedWire::SettingsAnswer(std::int16_t p_iGroup) const {
    return OnThisLink(m_objPrinter.SettingsAnswer(p_iGroup));
}

void CScriptedWire::Begins(LinkKind p_iLink) {
    m_iLink = p_iLink;
    ++m_iBegun;
    const auto fnBefore = m_fnBefore;  // an action may forget the rules
    for (const auto& [iCommand, fnAction] : fnBefore) {
        if (iCommand == EveryCommand || iCommand == m_iBegun) {
            fnAction();
        }
    }
}

void CScriptedWire::Taken(const std::string& p_strCommand) {
    ++m_iTaken;
    Steps objSteps{
        {AnswerMilliseconds, OnThisLink(m_objPrinter.Handle(p_strCommand).m_strAnswer), nullptr}};
    for (const auto& [iCommand, fnRule] : m_fnRules) {
        if (iCommand == EveryCommand || iCommand == m_iTaken) {
            fnRule(objSteps, p_strCommand);
        }
    }
    WaitForFormerAnswer(objSteps);
    for (const Step& objStep : objSteps) {
        m_objEventLoop.After(objStep.m_iAt, [this, objStep, iConnection = m_objSocket.m_iConnects] {
            if (objStep.m_fnDo) {
                objStep.m_fnDo();
            } else if (m_iLink != LinkKind::Lan || iConnection == m_objSocket.m_iConnects) {
                Deliver(objStep.m_strBytes);
            }
        });
    }
}

void CScriptedWire::WaitForFormerAnswer(Steps& p_objSteps) {
    const auto objFirst = std::ranges::find_if(
        p_objSteps, [](const Step& p_objStep) { return !p_objStep.m_strBytes.empty(); });
    if (objFirst == p_objSteps.end()) {
        return;
    }
    const std::int64_t iNow = m_objEventLoop.Elapsed();
    const std::int64_t iLater = std::max(m_iAnswered - iNow - objFirst->m_iAt, std::int64_t{0});
    for (Step& objStep : p_objSteps) {
        objStep.m_iAt += iLater;
        if (!objStep.m_strBytes.empty()) {
            m_iAnswered = iNow + objStep.m_iAt + CFakeEventLoop::StepMilliseconds;
        }
    }
}

void CScriptedWire::Deliver(const std::string& p_strBytes) {
    m_bSettings = m_bSettings || p_strBytes.find(SettingsHead) != std::string::npos;
    switch (m_iLink) {
    case LinkKind::Com:
        DeliverSlowly(p_strBytes);
        break;
    case LinkKind::Lan:
        if (m_objSocket.IsConnected()) {
            m_objTranscript.Bytes("LAN gets", p_strBytes);
            m_objSocket.Arrive(p_strBytes);
        }
        break;
    case LinkKind::Usb:
        m_objLibrary.m_strAnswers.push_back(p_strBytes);
        break;
    }
}

void CScriptedWire::DeliverSlowly(const std::string& p_strBytes) {
    m_iBusyUntil = std::max(m_iBusyUntil, m_objEventLoop.Yields());
    for (std::size_t i = 0; i < p_strBytes.size(); ++i) {
        m_iBusyUntil += i % BytesOfAYield == 0 ? 1 : 0;
        m_objEventLoop.AtYield(m_iBusyUntil, [this, cByte = p_strBytes[i]] {
            if (m_objPort.IsOpen()) {
                m_objTranscript.Bytes("COM gets", {&cByte, 1});
                m_objPort.Arrive({&cByte, 1});
            }
        });
    }
}
