#pragma once

#include <cstdint>
#include <span>
#include <string>

/// The parallel port, which only sends.
class IParallelLibrary {
public:
    /// In place of a handle: nothing was opened.
    static constexpr std::int32_t NoHandle = -1;

    virtual ~IParallelLibrary() = default;

    /// Opens the device of that name ("LPT1:"). NoHandle when it cannot be had.
    virtual std::int32_t DeviceOpen(const std::string& p_strName) = 0;

    /// How long a DeviceWrite waits at most for the printer to take its bytes.
    virtual void DeviceTimeoutSet(std::int32_t p_iHandle, std::int32_t p_iMilliseconds) = 0;

    /// Sends the bytes and waits until they are taken. How many were: fewer than were given when
    /// the time was over or the device has failed.
    virtual std::int32_t DeviceWrite(std::int32_t p_iHandle,
                                     std::span<const std::uint8_t> p_objBytes) = 0;

    /// Gives the handle back.
    virtual void DeviceClose(std::int32_t p_iHandle) = 0;
};
