#include "tests/kernel/MDescriptors.h"

#include <initializer_list>

namespace {

constexpr int PrinterClass = 7;
constexpr int VendorClass = 0xFF;

std::string Bytes(std::initializer_list<int> p_objBytes) {
    std::string strBytes;
    for (const int iByte : p_objBytes) {
        strBytes += static_cast<char>(iByte);
    }
    return strBytes;
}

std::string Endpoint(int p_iAddress) {
    constexpr int iBulk = 2;
    constexpr int iByte = 256;
    const int iSize = static_cast<int>(MDescriptors::PacketSize);
    return Bytes({7, 5, p_iAddress, iBulk, iSize % iByte, iSize / iByte, 0});
}

// Printers have subclass 1; protocol 2 answers as well as it listens.
std::string Interface(int p_iNumber, int p_iClass) {
    const bool bPrinter = p_iClass == PrinterClass;
    return Bytes({9, 4, p_iNumber, 0, bPrinter ? 2 : 0, p_iClass, bPrinter ? 1 : 0,
                  bPrinter ? 2 : 0, 0}) +
           (bPrinter ? Endpoint(MDescriptors::OutEndpoint) + Endpoint(MDescriptors::InEndpoint)
                     : std::string());
}

}  // namespace

namespace MDescriptors {

// USB 2.0, 64 bytes in a packet of endpoint 0, no texts, one configuration.
std::string Device() {
    return Bytes({18, 1, 0x00, 0x02, 0, 0, 0, 64, 0x09, 0x12, 0x01, 0x00, 0x00, 0x01, 0, 0, 0, 1});
}

std::string Configuration(const CDeviceSettings& p_objSettings) {
    std::string strInterfaces;
    int iNumber = 0;
    for (; iNumber < p_objSettings.m_iPrinterInterface; ++iNumber) {
        strInterfaces += Interface(iNumber, VendorClass);
    }
    strInterfaces += Interface(iNumber, p_objSettings.m_bPrinter ? PrinterClass : VendorClass);
    constexpr int iHead = 9;
    constexpr int iSelfPowered = 0xC0;
    const int iLength = iHead + static_cast<int>(strInterfaces.size());
    return Bytes({iHead, 2, iLength, 0, iNumber + 1, 1, 0, iSelfPowered, 1}) + strInterfaces;
}

}  // namespace MDescriptors
