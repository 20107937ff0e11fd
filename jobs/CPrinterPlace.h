#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// Where a printer is to be had over the link of its target: as the target says, but for what is
/// told here.
struct CPrinterPlace {
    std::string m_strHost{};               ///< on the network: another address
    std::optional<std::uint16_t> m_iPort;  ///< on the network: another port
    std::string m_strLine{};               ///< on a serial port: another format, "9600,E,8,1"

    /// As the target says.
    [[nodiscard]] bool IsTargets() const { return *this == CPrinterPlace{}; }

    bool operator==(const CPrinterPlace&) const = default;
};
