#include "tests/kernel/MUsbIp.h"

#include <sys/socket.h>
#include <sys/types.h>

namespace MUsbIp {

namespace {

constexpr std::size_t HeaderSize = 48;
// Where the numbers of a message begin. Replies name no device, direction or endpoint.
constexpr std::size_t CommandAt = 0;
constexpr std::size_t NumberAt = 4;
constexpr std::size_t DirectionAt = 12;
constexpr std::size_t EndpointAt = 16;
constexpr std::size_t UnlinkAt = 20;
constexpr std::size_t RequestLengthAt = 24;
constexpr std::size_t SetupAt = 40;
constexpr std::size_t StatusAt = 20;
constexpr std::size_t ReplyLengthAt = 24;

using Header = std::array<std::uint8_t, HeaderSize>;

std::uint32_t Number(const Header& p_objHeader, std::size_t p_iAt) {
    std::uint32_t iNumber = 0;
    for (std::size_t i = p_iAt; i < p_iAt + 4; ++i) {
        iNumber = iNumber << 8U | p_objHeader[i];
    }
    return iNumber;
}

void PutNumber(Header& p_objHeader, std::size_t p_iAt, std::uint32_t p_iNumber) {
    for (std::size_t i = 0; i < 4; ++i) {
        p_objHeader[p_iAt + i] = static_cast<std::uint8_t>(p_iNumber >> (24U - 8U * i));
    }
}

bool ReadAll(int p_iSocket, std::span<std::uint8_t> p_objBytes) {
    while (!p_objBytes.empty()) {
        const ssize_t iRead = ::recv(p_iSocket, p_objBytes.data(), p_objBytes.size(), 0);
        if (iRead <= 0) {
            return false;
        }
        p_objBytes = p_objBytes.subspan(static_cast<std::size_t>(iRead));
    }
    return true;
}

bool WriteAll(int p_iSocket, std::string_view p_strBytes) {
    while (!p_strBytes.empty()) {
        const ssize_t iSent = ::send(p_iSocket, p_strBytes.data(), p_strBytes.size(), MSG_NOSIGNAL);
        if (iSent <= 0) {
            return false;
        }
        p_strBytes.remove_prefix(static_cast<std::size_t>(iSent));
    }
    return true;
}

bool WriteReply(int p_iSocket, Command p_iCommand, std::uint32_t p_iNumber, std::int32_t p_iStatus,
                std::size_t p_iLength, std::string_view p_strBytes) {
    Header objHeader{};
    PutNumber(objHeader, CommandAt, static_cast<std::uint32_t>(p_iCommand));
    PutNumber(objHeader, NumberAt, p_iNumber);
    PutNumber(objHeader, StatusAt, static_cast<std::uint32_t>(p_iStatus));
    PutNumber(objHeader, ReplyLengthAt, static_cast<std::uint32_t>(p_iLength));
    std::string strMessage(objHeader.begin(), objHeader.end());
    strMessage += p_strBytes;
    return WriteAll(p_iSocket, strMessage);
}

// The setup bytes are as they are on the bus: little-endian.
Setup SetupOf(const Header& p_objHeader) {
    const auto fnWord = [&](std::size_t p_iAt) {
        return static_cast<std::uint16_t>(p_objHeader[SetupAt + p_iAt] |
                                          p_objHeader[SetupAt + p_iAt + 1] << 8U);
    };
    return {p_objHeader[SetupAt], p_objHeader[SetupAt + 1], fnWord(2), fnWord(4), fnWord(6)};
}

}  // namespace

std::optional<Request> Read(int p_iSocket) {
    Header objHeader{};
    if (!ReadAll(p_iSocket, objHeader)) {
        return std::nullopt;
    }
    Request objRequest;
    objRequest.m_iCommand = static_cast<Command>(Number(objHeader, CommandAt));
    objRequest.m_iNumber = Number(objHeader, NumberAt);
    objRequest.m_bIn = Number(objHeader, DirectionAt) != 0;
    objRequest.m_iEndpoint = Number(objHeader, EndpointAt);
    if (objRequest.m_iCommand == Command::Unlink) {
        objRequest.m_iUnlink = Number(objHeader, UnlinkAt);
        return objRequest;
    }
    objRequest.m_iLength = Number(objHeader, RequestLengthAt);
    objRequest.m_objSetup = SetupOf(objHeader);
    if (!objRequest.m_bIn) {
        objRequest.m_strBytes.resize(objRequest.m_iLength);
        if (!ReadAll(p_iSocket, {reinterpret_cast<std::uint8_t*>(objRequest.m_strBytes.data()),
                                 objRequest.m_strBytes.size()})) {
            return std::nullopt;
        }
    }
    return objRequest;
}

bool WriteSubmitted(int p_iSocket, std::uint32_t p_iNumber, std::int32_t p_iStatus,
                    std::size_t p_iLength, std::string_view p_strBytes) {
    return WriteReply(p_iSocket, Command::Submitted, p_iNumber, p_iStatus, p_iLength, p_strBytes);
}

bool WriteUnlinked(int p_iSocket, std::uint32_t p_iNumber, std::int32_t p_iStatus) {
    return WriteReply(p_iSocket, Command::Unlinked, p_iNumber, p_iStatus, 0, {});
}

}  // namespace MUsbIp
