#pragma once

#include "platform/ISerialPort.h"

/// A computer without serial ports.
class CAbsentSerialPort : public ISerialPort {
public:
    static constexpr std::int32_t NoSuchPort = 8012;

    void SetEvents(ISerialPortEvents* /*p_objEvents*/) override {}
    void SetSettings(const std::string& /*p_strSettings*/) override {}
    void SetHandshaking(std::int16_t /*p_iHandshaking*/) override {}
    void SetReceiveThreshold(std::int16_t /*p_iCount*/) override {}
    void SetInputLength(std::int16_t /*p_iCount*/) override {}
    void SetSendThreshold(std::int16_t /*p_iCount*/) override {}
    void SetPortNumber(std::int16_t /*p_iPort*/) override {}
    std::int32_t Open() override { return NoSuchPort; }
    void Close() override {}
    [[nodiscard]] bool IsOpen() const override { return false; }
    bool Output(std::span<const std::uint8_t> /*p_objBytes*/) override { return false; }
    std::vector<std::uint8_t> Input() override { return {}; }
    [[nodiscard]] bool ClearToSend() const override { return true; }
};
