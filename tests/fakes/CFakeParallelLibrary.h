#pragma once

#include "platform/IParallelLibrary.h"

#include <algorithm>
#include <string>
#include <vector>

/// A parallel port without a printer: keeps every call, takes as much as the test says.
class CFakeParallelLibrary : public IParallelLibrary {
public:
    std::int32_t m_iHandle = 3;           ///< what DeviceOpen gives
    std::int32_t m_iMostTaken = 1 << 20;  ///< how many bytes a DeviceWrite takes; -1: it fails
    std::vector<std::string> m_strCalls;

    std::int32_t DeviceOpen(const std::string& p_strName) override {
        m_strCalls.push_back("open " + p_strName);
        return m_iHandle;
    }

    void DeviceTimeoutSet(std::int32_t p_iHandle, std::int32_t p_iMilliseconds) override {
        m_strCalls.push_back("time-out " + std::to_string(p_iHandle) + " " +
                             std::to_string(p_iMilliseconds));
    }

    std::int32_t DeviceWrite(std::int32_t p_iHandle,
                             std::span<const std::uint8_t> p_objBytes) override {
        m_strCalls.push_back("write " + std::to_string(p_iHandle) + " " +
                             std::string(p_objBytes.begin(), p_objBytes.end()));
        return std::min(static_cast<std::int32_t>(p_objBytes.size()), m_iMostTaken);
    }

    void DeviceClose(std::int32_t p_iHandle) override {
        m_strCalls.push_back("close " + std::to_string(p_iHandle));
    }
};
