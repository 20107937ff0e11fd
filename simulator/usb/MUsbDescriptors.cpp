#include "simulator/usb/MUsbDescriptors.h"

#include "simulator/usb/CUsbTransfers.h"

#include <cstdint>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t Bulk = 2;
constexpr std::uint8_t Interrupt = 3;

void Append(Bytes& p_objBytes, const Bytes& p_objMore) {
    p_objBytes.insert(p_objBytes.end(), p_objMore.begin(), p_objMore.end());
}

Bytes Endpoint(std::uint8_t p_iAddress, std::uint8_t p_iKind) {
    constexpr std::uint8_t iPacket = CUsbTransfers::PacketBytes;
    return {7, 5, p_iAddress, p_iKind, iPacket, 0, std::uint8_t(p_iKind == Interrupt ? 1 : 0)};
}

std::vector<Bytes> EndpointsOf(CUsbBehaviour::Endpoints p_iEndpoints) {
    std::vector<Bytes> objEndpoints;
    if (p_iEndpoints != CUsbBehaviour::Endpoints::Bulk) {
        objEndpoints.push_back(Endpoint(CUsbTransfers::InterruptOutEndpoint, Interrupt));
        objEndpoints.push_back(Endpoint(CUsbTransfers::InterruptInEndpoint, Interrupt));
    }
    if (p_iEndpoints != CUsbBehaviour::Endpoints::Interrupt) {
        objEndpoints.push_back(Endpoint(CUsbTransfers::OutEndpoint, Bulk));
        objEndpoints.push_back(Endpoint(CUsbTransfers::InEndpoint, Bulk));
    }
    return objEndpoints;
}

/// Interface 0 in one of its alternate settings. Printers have subclass 1.
Bytes Interface(std::uint8_t p_iAlternate, std::uint8_t p_iClass,
                const std::vector<Bytes>& p_objEndpoints) {
    const auto iEndpoints = static_cast<std::uint8_t>(p_objEndpoints.size());
    const std::uint8_t iProtocol = iEndpoints > 1 ? 2 : 1;  // 2 answers as well as it listens
    Bytes objBytes{9, 4, 0, p_iAlternate, iEndpoints, p_iClass, 1, iProtocol, 0};
    for (const Bytes& objEndpoint : p_objEndpoints) {
        Append(objBytes, objEndpoint);
    }
    return objBytes;
}

}  // namespace

namespace MUsbDescriptors {

std::string Hex(const CUsbBehaviour& p_objBehaviour) {
    const std::vector<Bytes> objEndpoints = EndpointsOf(p_objBehaviour.m_iEndpoints);
    Bytes objInterfaces;
    if (p_objBehaviour.m_bAlternates) {
        objInterfaces = Interface(0, p_objBehaviour.m_iClass, {objEndpoints.front()});
    }
    Append(objInterfaces,
           Interface(p_objBehaviour.m_bAlternates ? 1 : 0, p_objBehaviour.m_iClass, objEndpoints));
    constexpr std::uint8_t iHead = 9;
    const auto iLength = static_cast<std::uint8_t>(iHead + objInterfaces.size());
    Bytes objBytes{18, 1, 0x00, 0x02, 0, 0, 0, 64, 0x09, 0x12, 0x01, 0x00, 0x00, 0x01, 0, 0, 0, 1};
    Append(objBytes, {iHead, 2, iLength, 0, 1, 1, 0, 0xC0, 0});
    Append(objBytes, objInterfaces);

    constexpr const char* strDigits = "0123456789ABCDEF";
    constexpr unsigned iBase = 16;
    std::string strHex;
    for (const std::uint8_t iByte : objBytes) {
        strHex += {strDigits[iByte / iBase], strDigits[iByte % iBase]};
    }
    return strHex;
}

}  // namespace MUsbDescriptors
