#pragma once

#include "tests/fakes/CAbsentSerialPort.h"
#include "tests/ui/CCallList.h"

#include <string>

/// Serial ports that note when one is opened, written to or closed. Opening succeeds, writing does
/// not.
///
/// The calls are "COM open 1 9600,E,8,1", "COM close", "COM send".
class CRecordingSerialPort : public CAbsentSerialPort {
public:
    /// p_objCalls outlives this.
    explicit CRecordingSerialPort(CCallList& p_objCalls)
        : m_objCalls(p_objCalls) {}

    void SetSettings(const std::string& p_strSettings) override { m_strSettings = p_strSettings; }
    void SetPortNumber(std::int16_t p_iPort) override { m_strPort = std::to_string(p_iPort); }
    std::int32_t Open() override {
        m_objCalls.Add("COM open " + m_strPort + " " + m_strSettings);
        m_bOpen = true;
        return Opened;
    }
    void Close() override {
        m_objCalls.Add("COM close");
        m_bOpen = false;
    }
    [[nodiscard]] bool IsOpen() const override { return m_bOpen; }
    bool Output(std::span<const std::uint8_t> /*p_objBytes*/) override {
        m_objCalls.Add("COM send");
        return false;
    }

private:
    CCallList& m_objCalls;
    std::string m_strSettings;
    std::string m_strPort;
    bool m_bOpen = false;
};
