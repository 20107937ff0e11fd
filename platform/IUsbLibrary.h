#pragma once

#include <cstdint>
#include <span>

/// The printer on USB, opened and closed around every single transfer.
///
/// Results are 32-bit numbers; a negative one is a failure. Windows are kept painted while a call
/// waits; every wait ends at once when the program closes.
class IUsbLibrary {
public:
    /// What Dll_openUSB gives.
    static constexpr std::int32_t Opened = 0;
    static constexpr std::int32_t NotReady = -1;    ///< none there, or it cannot be had
    static constexpr std::int32_t NoDeviceId = -2;  ///< its identification cannot be read
    static constexpr std::int32_t Mismatch = -3;    ///< its identification names another maker

    /// What a transfer gives when it fails.
    static constexpr std::int32_t Failed = -1;

    virtual ~IUsbLibrary() = default;

    /// Finds the printer and takes hold of it. Opened or more when it is open; opening an open
    /// one changes nothing. Waits a second at most for each device to tell its identification.
    virtual std::int32_t Dll_openUSB() = 0;

    /// Why the latest Dll_openUSB was NotReady, as the system numbers it (errno): ENODEV where no
    /// printer is there, EACCES where this user may not, EBUSY where another program has it. 0
    /// where that is not told.
    [[nodiscard]] virtual std::int32_t NotReadyNumber() const { return 0; }

    /// Sends all the bytes, for five seconds at most. The number sent, or Failed.
    virtual std::int32_t Dll_sendUSB(std::span<const std::uint8_t> p_objBytes) = 0;

    /// Waits about a second for an answer of at most so many bytes as the buffer has (and a 16-bit
    /// number can count). The number of bytes received, 0 when none came, or Failed.
    virtual std::int32_t Dll_rcvUSB(std::span<std::uint8_t> p_objBuffer) = 0;

    /// Lets go of the printer; harmless when it is not open.
    virtual std::int32_t Dll_closeUSB() = 0;

    /// The library's own way to write and read in one. Declared only: nobody uses it.
    std::int32_t Dll_wbUSB(std::span<const std::uint8_t> p_objBytes,
                           std::span<std::uint8_t> p_objBuffer);
};
