#pragma once

#include "simulator/CPrinter.h"
#include "tests/ui/recorder/CRecordedEventLoop.h"
#include "tests/ui/recorder/CRecordedSerialPort.h"
#include "tests/ui/recorder/CRecordedTcpClient.h"
#include "tests/ui/recorder/CRecordedUsbLibrary.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// One of the window's links to the printer, by the position in its list.
enum class LinkKind : std::uint8_t { Com, Lan, Usb };

/// The printer's end of all three links. It answers as the simulator's printer does, unless a rule
/// says otherwise for the command's number, which counts what is sent from 1 on.
class CScriptedWire {
public:
    /// What comes back, and when, counted from the command: bytes, or whatever else is to happen.
    struct Step {
        std::int64_t m_iAt = 0;
        std::string m_strBytes;
        std::function<void()> m_fnDo;
    };
    using Steps = std::vector<Step>;

    /// Changes the steps of one command, which are the right answer, a moment later.
    using Rule = std::function<void(Steps&, const std::string&)>;

    static constexpr int EveryCommand = 0;
    static constexpr std::int64_t AnswerMilliseconds = 60;

    /// None is owned; all outlive this.
    CScriptedWire(CRecordedEventLoop& p_objEventLoop, CTranscript& p_objTranscript,
                  CRecordedTcpClient& p_objSocket, CRecordedSerialPort& p_objPort,
                  CRecordedUsbLibrary& p_objLibrary);

    /// On which link the printer is. It goes to where it gets a command.
    void SetLink(LinkKind p_iLink) { m_iLink = p_iLink; }

    /// What it is to answer to a command. The rules of one command are followed in their order.
    void OnAnswer(int p_iCommand, Rule p_fnRule);
    /// What happens when a command is about to be sent, before its first byte.
    void Before(int p_iCommand, std::function<void()> p_fnAction);
    /// No more rules: the printer is sound, commands count from 1 again.
    void Forget();

    /// The printer's settings are changed by these commands.
    void Teach(const std::vector<std::string>& p_strCommands);

    /// An answer as it stands on this link.
    [[nodiscard]] std::string OnThisLink(const std::string& p_strAnswer) const;
    [[nodiscard]] std::string StatusAnswer(const std::string& p_strCode) const;
    [[nodiscard]] std::string SettingsAnswer(std::int16_t p_iGroup) const;

    /// Puts bytes on the link now; lost where it is not open. On the serial line they arrive one
    /// after the other.
    void Deliver(const std::string& p_strBytes);
    /// True when anything that may be settings has been put there.
    [[nodiscard]] bool HasDeliveredSettings() const { return m_bSettings; }

private:
    void Begins(LinkKind p_iLink);
    void Taken(const std::string& p_strCommand);
    /// The printer answers one command after the other.
    void WaitForFormerAnswer(Steps& p_objSteps);
    void DeliverSlowly(const std::string& p_strBytes);

    CRecordedEventLoop& m_objEventLoop;
    CTranscript& m_objTranscript;
    CRecordedTcpClient& m_objSocket;
    CRecordedSerialPort& m_objPort;
    CRecordedUsbLibrary& m_objLibrary;
    CPrinter m_objPrinter;
    LinkKind m_iLink = LinkKind::Com;
    int m_iBegun = 0;
    int m_iTaken = 0;
    std::int64_t m_iAnswered = 0;   ///< when the answers so far have been sent
    std::int64_t m_iBusyUntil = 0;  ///< the yield in which the serial line's last byte arrives
    bool m_bSettings = false;
    std::vector<std::pair<int, Rule>> m_fnRules;
    std::vector<std::pair<int, std::function<void()>>> m_fnBefore;
};
