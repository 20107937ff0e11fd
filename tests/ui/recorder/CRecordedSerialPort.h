#pragma once

#include "tests/fakes/CFakeSerialPort.h"
#include "tests/ui/recorder/CTranscript.h"

#include <functional>
#include <string>

/// A serial port whose opening, closing and sending stand in the transcript.
class CRecordedSerialPort : public CFakeSerialPort {
public:
    CRecordedSerialPort(CFakeEventLoop& p_objEventLoop, CTranscript& p_objTranscript)
        : CFakeSerialPort(p_objEventLoop)
        , m_objTranscript(p_objTranscript) {}

    /// Called before the first byte of a command, and before each byte; may change how that goes.
    std::function<void()> m_fnBegins;
    std::function<void()> m_fnByte;

    void ForgetCommand() {
        m_strBegun.clear();
        CFakeSerialPort::ForgetCommand();
    }

    void SetSettings(const std::string& p_strSettings) override {
        m_strSettings = p_strSettings;
        CFakeSerialPort::SetSettings(p_strSettings);
    }

    void SetPortNumber(std::int16_t p_iPort) override {
        m_strPort = std::to_string(p_iPort);
        CFakeSerialPort::SetPortNumber(p_iPort);
    }

    void SetHandshaking(std::int16_t p_iHandshaking) override {
        m_strHandshaking = std::to_string(p_iHandshaking);
        CFakeSerialPort::SetHandshaking(p_iHandshaking);
    }

    std::int32_t Open() override {
        const std::int32_t iResult = CFakeSerialPort::Open();
        m_objTranscript.Add("COM opens " + m_strPort + " with " + m_strSettings + ", handshaking " +
                            m_strHandshaking + ": " + std::to_string(iResult));
        return iResult;
    }

    void Close() override {
        m_objTranscript.Add("COM closes");
        CFakeSerialPort::Close();
    }

    bool Output(std::span<const std::uint8_t> p_objBytes) override {
        if (m_strBegun.empty() && m_fnBegins) {
            m_fnBegins();
        }
        if (m_fnByte) {
            m_fnByte();
        }
        const std::string strBytes(p_objBytes.begin(), p_objBytes.end());
        const bool bTakes = IsOpen() && !m_bRefusesOutput;
        m_objTranscript.Bytes(bTakes ? "COM sends" : "COM refuses", strBytes);
        m_strBegun = m_strBegun.ends_with('|') && strBytes == "}" ? "" : m_strBegun + strBytes;
        return CFakeSerialPort::Output(p_objBytes);
    }

private:
    CTranscript& m_objTranscript;
    std::string m_strSettings;
    std::string m_strPort;
    std::string m_strHandshaking;
    std::string m_strBegun;
};
