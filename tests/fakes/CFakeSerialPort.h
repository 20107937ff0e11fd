#pragma once

#include "platform/ISerialPort.h"
#include "tests/fakes/CFakeEventLoop.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A serial port without a line. Keeps every call and every byte; answers a command, character by
/// character, as the test says.
class CFakeSerialPort : public ISerialPort {
public:
    explicit CFakeSerialPort(CFakeEventLoop& p_objEventLoop)
        : m_objEventLoop(p_objEventLoop) {}

    std::int32_t m_iOpenResult = Opened;
    DeviceRefusal m_objRefusal;            ///< what an Open that fails ran into
    bool m_bGoesAtOnce = false;            ///< true: opens, and is gone the next moment
    bool m_bRefusesOutput = false;         ///< true: Output says no
    bool m_bRaisesSendEvents = true;       ///< whether a byte that has left raises an event
    bool m_bClearToSend = true;            ///< the line, as it is now
    std::vector<std::string> m_strCalls;   ///< every call but Output, IsOpen and ClearToSend
    std::vector<std::string> m_strWrites;  ///< every Output that was taken
    std::vector<std::int64_t> m_iYields;   ///< the number of yields at each, in m_strWrites' order
    /// What is sent back to each command; nothing for no answer. Null is silent.
    std::function<std::optional<std::string>(const std::string&)> m_fnAnswer;

    /// Everything that was sent, in one text.
    [[nodiscard]] std::string Sent() const {
        std::string strSent;
        for (const std::string& strWrite : m_strWrites) {
            strSent += strWrite;
        }
        return strSent;
    }

    [[nodiscard]] bool HasEvents() const { return m_objEvents != nullptr; }
    /// Characters that came and were not fetched.
    [[nodiscard]] std::size_t Waiting() const { return m_objArrived.size(); }

    /// The other side has been reset: the part of a command that it has got is gone.
    void ForgetCommand() { m_strCommand.clear(); }

    // What happens on the line. Call these between yields or from a scheduled action.

    void Raise(std::int16_t p_iEvent) {
        if (m_objEvents != nullptr) {
            m_objEvents->OnComm(p_iEvent);
        }
    }

    /// Its adapter is pulled out.
    void GoAway() {
        m_bOpen = false;
        if (m_objEvents != nullptr) {
            m_objEvents->OnGone();
        }
    }

    void SetClearToSend(bool p_bOn) {
        m_bClearToSend = p_bOn;
        Raise(SerialClearToSend);
    }

    /// Characters arrive, with an event for each if the receive threshold asks for it.
    void Arrive(std::string_view p_strCharacters) {
        for (const char cCharacter : p_strCharacters) {
            m_objArrived.push_back(static_cast<std::uint8_t>(cCharacter));
            if (m_iReceiveThreshold == 1) {
                Raise(SerialReceive);
            }
        }
    }

    /// The same, one character in each yield.
    void ArriveSlowly(const std::string& p_strCharacters) {
        std::int64_t iYield = m_objEventLoop.Yields();
        for (const char cCharacter : p_strCharacters) {
            m_objEventLoop.AtYield(++iYield, [this, cCharacter] { Arrive({&cCharacter, 1}); });
        }
    }

    void SetEvents(ISerialPortEvents* p_objEvents) override { m_objEvents = p_objEvents; }

    void SetSettings(const std::string& p_strSettings) override {
        m_strCalls.push_back("settings " + p_strSettings);
    }

    void SetHandshaking(std::int16_t p_iHandshaking) override {
        Keep("handshaking", p_iHandshaking);
    }

    void SetReceiveThreshold(std::int16_t p_iCharacters) override {
        Keep("receive threshold", p_iCharacters);
        m_iReceiveThreshold = p_iCharacters;
    }

    void SetInputLength(std::int16_t p_iCharacters) override {
        Keep("input length", p_iCharacters);
        m_iInputLength = p_iCharacters;
    }

    void SetSendThreshold(std::int16_t p_iCharacters) override {
        Keep("send threshold", p_iCharacters);
        m_iSendThreshold = p_iCharacters;
    }

    void SetPortNumber(std::int16_t p_iPort) override { Keep("port", p_iPort); }

    std::int32_t Open() override {
        m_strCalls.emplace_back("open");
        m_bOpen = m_iOpenResult == Opened && !m_bGoesAtOnce;
        return m_iOpenResult;
    }

    [[nodiscard]] DeviceRefusal Refusal() const override { return m_objRefusal; }

    void Close() override {
        m_strCalls.emplace_back("close");
        m_bOpen = false;
        m_objArrived.clear();
    }

    [[nodiscard]] bool IsOpen() const override { return m_bOpen; }

    bool Output(std::span<const std::uint8_t> p_objBytes) override {
        if (!m_bOpen || m_bRefusesOutput) {
            return false;
        }
        m_strWrites.emplace_back(p_objBytes.begin(), p_objBytes.end());
        m_iYields.push_back(m_objEventLoop.Yields());
        if (m_bRaisesSendEvents && m_iSendThreshold > 0) {
            m_objEventLoop.AtNextYield([this] { Raise(SerialSend); });
        }
        m_strCommand += m_strWrites.back();
        if (m_strCommand.ends_with("|}")) {
            Answer();
            m_strCommand.clear();
        }
        return true;
    }

    std::vector<std::uint8_t> Input() override {
        m_strCalls.emplace_back("input");
        const std::size_t iMost =
            m_iInputLength == 0 ? m_objArrived.size() : static_cast<std::size_t>(m_iInputLength);
        const auto iCount = static_cast<std::ptrdiff_t>(std::min(m_objArrived.size(), iMost));
        std::vector<std::uint8_t> objTaken(m_objArrived.begin(), m_objArrived.begin() + iCount);
        m_objArrived.erase(m_objArrived.begin(), m_objArrived.begin() + iCount);
        return objTaken;
    }

    [[nodiscard]] bool ClearToSend() const override { return m_bClearToSend; }

private:
    void Keep(const char* p_strName, std::int16_t p_iValue) {
        m_strCalls.push_back(std::string(p_strName) + " " + std::to_string(p_iValue));
    }

    void Answer() {
        if (!m_fnAnswer) {
            return;
        }
        if (const auto strAnswer = m_fnAnswer(m_strCommand)) {
            ArriveSlowly(*strAnswer);
        }
    }

    CFakeEventLoop& m_objEventLoop;
    ISerialPortEvents* m_objEvents = nullptr;
    std::vector<std::uint8_t> m_objArrived;
    std::string m_strCommand;
    std::int16_t m_iReceiveThreshold = 0;
    std::int16_t m_iInputLength = 0;
    std::int16_t m_iSendThreshold = 0;
    bool m_bOpen = false;
};
