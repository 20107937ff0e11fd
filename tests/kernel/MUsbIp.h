#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

/// The messages in which the kernel's virtual host controller talks to a device over a socket.
///
/// A message has 48 bytes, its numbers big-endian, and the bytes of a transfer behind it: those
/// to be written behind a Submit, those that were read behind a Submitted.
namespace MUsbIp {

enum class Command : std::uint32_t { Submit = 1, Unlink = 2, Submitted = 3, Unlinked = 4 };

/// The eight bytes that open a control transfer.
struct Setup {
    std::uint8_t m_iType = 0;
    std::uint8_t m_iRequest = 0;
    std::uint16_t m_iValue = 0;
    std::uint16_t m_iIndex = 0;
    std::uint16_t m_iLength = 0;
};

struct Request {
    Command m_iCommand = Command::Submit;
    std::uint32_t m_iNumber = 0;    ///< names the transfer
    bool m_bIn = false;             ///< from the device
    std::uint32_t m_iEndpoint = 0;  ///< without the direction
    std::uint32_t m_iUnlink = 0;    ///< Unlink: the transfer to be given up
    std::uint32_t m_iLength = 0;    ///< Submit: bytes to write or to read at most
    Setup m_objSetup;               ///< Submit on endpoint 0
    std::string m_strBytes;         ///< Submit: the bytes to write
};

/// The next request; waits for it. Nothing once the controller has let go of the device.
std::optional<Request> Read(int p_iSocket);

/// Ends a transfer: p_iStatus 0 or a negative error number, p_iLength bytes carried, and the
/// bytes themselves when they were read.
bool WriteSubmitted(int p_iSocket, std::uint32_t p_iNumber, std::int32_t p_iStatus,
                    std::size_t p_iLength, std::string_view p_strBytes = {});

/// Answers an Unlink: p_iStatus 0 when the transfer had ended before, else the negative error
/// number with which it was given up.
bool WriteUnlinked(int p_iSocket, std::uint32_t p_iNumber, std::int32_t p_iStatus);

}  // namespace MUsbIp
