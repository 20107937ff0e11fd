#pragma once

#include "simulator/CFaultSettings.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What a simulated device is, and what goes wrong with it.
struct CDeviceSettings {
    /// When the device leaves by itself: a moment after this transfer has reached it.
    enum class Unplug : std::uint8_t {
        Never,
        InARead,   ///< the first read behind a write
        InAWrite,  ///< the first write, which does not end
    };

    bool m_bPrinter = true;                ///< has an interface of the printer class
    std::uint8_t m_iPrinterInterface = 0;  ///< 1: interface 0 is of another class
    /// The bytes of the device identification; nothing: the request stalls.
    std::optional<std::string> m_strIdentification = Identification("MFG:Varden;MDL:Label;");

    /// Which request for it, counted from 1, is never answered; 0: none. The first is the system
    /// driver's own.
    int m_iUnanswered = 0;

    CFaultSettings m_objFaults;   ///< of the answers; closing means leaving
    bool m_bEmptyAnswer = false;  ///< one of no bytes comes before each answer
    /// What a read ends with at once when there is no answer to read; nothing: it waits.
    std::optional<std::string> m_strIdle;

    /// How long the device takes over a write; nothing: for ever.
    std::optional<std::chrono::milliseconds> m_iWriteTime = std::chrono::milliseconds(0);
    std::size_t m_iMostWritten = 0;  ///< so many bytes of a write are taken; 0: all
    bool m_bWritesNothing = false;   ///< writes end without a byte taken
    std::int32_t m_iWriteError = 0;  ///< writes end in this negative error number
    std::int32_t m_iReadError = 0;   ///< reads behind a write end in this
    bool m_bHalted = false;          ///< writes are refused until the program clears the endpoint
    Unplug m_iUnplug = Unplug::Never;

    /// A text behind its length, which counts its own two bytes.
    static std::string Identification(std::string_view p_strText) {
        constexpr unsigned iByte = 8;
        const std::size_t iLength = p_strText.size() + 2;
        return std::string{static_cast<char>(iLength >> iByte), static_cast<char>(iLength)} +
               std::string(p_strText);
    }
};
