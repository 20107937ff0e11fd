#pragma once

#include "tests/fakes/CFakeTcpClient.h"
#include "tests/fakes/MWire.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>

/// A printer at the other end of a CFakeTcpClient that answers each command as the test says.
class CScriptedPrinter {
public:
    /// What is sent back to a command; nothing for no answer.
    using Script = std::function<std::optional<std::string>(const std::string&)>;

    CScriptedPrinter(CFakeEventLoop& p_objEventLoop, CFakeTcpClient& p_objSocket)
        : m_objEventLoop(p_objEventLoop)
        , m_objSocket(p_objSocket) {
        m_objSocket.m_fnSent = [this](const std::string& p_strCommand) { Take(p_strCommand); };
    }
    CScriptedPrinter(const CScriptedPrinter&) = delete;
    CScriptedPrinter& operator=(const CScriptedPrinter&) = delete;
    ~CScriptedPrinter() { m_objSocket.m_fnSent = nullptr; }

    /// How long an answer takes.
    std::int64_t m_iDelay = 2 * CFakeEventLoop::StepMilliseconds;
    Script m_fnAnswer = Behave;

    /// What a sound printer answers: settings to a read request, else the status "00".
    static std::optional<std::string> Behave(const std::string& p_strCommand) {
        constexpr std::size_t iGroupPosition = 4;
        if (p_strCommand.rfind("{Z5;", 0) == 0) {
            return MWire::Settings(static_cast<std::int16_t>(p_strCommand[iGroupPosition] - '0'));
        }
        return MWire::Status("00");
    }

    /// A printer that takes commands and says nothing.
    static std::optional<std::string> KeepSilent(const std::string& /*p_strCommand*/) {
        return std::nullopt;
    }

private:
    void Take(const std::string& p_strCommand) {
        if (const auto strAnswer = m_fnAnswer(p_strCommand)) {
            m_objEventLoop.After(m_iDelay, [this, strBytes = *strAnswer] {
                if (m_objSocket.IsConnected()) {
                    m_objSocket.Arrive(strBytes);
                }
            });
        }
    }

    CFakeEventLoop& m_objEventLoop;
    CFakeTcpClient& m_objSocket;
};
