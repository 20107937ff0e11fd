#pragma once

#include "model/CItem.h"

#include <cstdint>
#include <string>

/// The settings of the link to the printer: which interface is active, the serial port's line
/// settings and the printer's network address.
///
/// They live in memory only: every new object begins with the defaults, and with USB as the active
/// interface until the window's list chooses. The items are created once and edited in place, so
/// there is no copy of a CInterface.
///
/// The p_bDefaultValue of the getters asks for the defaults in place of the current values. A
/// getter throws CConversionError when an item it reads holds a text that is not a number.
class CInterface {
public:
    /// The interface numbers, which are the positions of the main window's list.
    static constexpr std::int16_t SerialInterface = 0;
    static constexpr std::int16_t LanInterface = 1;
    static constexpr std::int16_t UsbInterface = 2;

    CInterface();
    CInterface(const CInterface&) = delete;
    CInterface& operator=(const CInterface&) = delete;

    /// Stored as given; a number that is no interface sends nothing.
    void SetActiveInterface(std::int16_t p_iActiveInterface);
    [[nodiscard]] std::int16_t GetActiveInterface() const;

    /// The serial port's number, counted from 1.
    [[nodiscard]] std::int16_t GetComPortNumber(bool p_bDefaultValue = false) const;

    /// The serial port's settings text: speed, parity, data bits, stop bits ("9600,E,8,1"). An
    /// index outside its list stands for 9600, N, 8 or 1.
    [[nodiscard]] std::string GetSerialInfo(bool p_bDefaultValue = false) const;

    /// Makes the first argument all four octets and ignores the others.
    /// @return an empty text, always.
    std::string SetIpAddress(std::int16_t p_iIpAddress1, std::int16_t p_iIpAddress2,
                             std::int16_t p_iIpAddress3, std::int16_t p_iIpAddress4);

    /// The address as a host name: plain octets ("192.168.10.20").
    [[nodiscard]] std::string GetIpAddress(bool p_bDefaultValue = false) const;
    /// Octets of three digits ("000.000.000.000"): for show, not for connecting.
    [[nodiscard]] std::string GetGateway(bool p_bDefaultValue = false) const;
    /// Octets of three digits ("255.255.255.000").
    [[nodiscard]] std::string GetSubnetMas(bool p_bDefaultValue = false) const;
    /// Five digits ("08000").
    [[nodiscard]] std::string GetSocketPortNumber(bool p_bDefaultValue = false) const;

    ItemRef m_objIpAddress1;
    ItemRef m_objIpAddress2;
    ItemRef m_objIpAddress3;
    ItemRef m_objIpAddress4;
    ItemRef m_objGateway1;
    ItemRef m_objGateway2;
    ItemRef m_objGateway3;
    ItemRef m_objGateway4;
    ItemRef m_objSubnetMask1;
    ItemRef m_objSubnetMask2;
    ItemRef m_objSubnetMask3;
    ItemRef m_objSubnetMask4;
    ItemRef m_objReservedChoice;   ///< kept at its default; read by nobody
    ItemRef m_objSocketPort;       ///< the printer's TCP port
    ItemRef m_objComPortIndex;     ///< the port's number less 1
    ItemRef m_objSpeedIndex;       ///< 2400, 4800, 9600, 19200, 38400, 115200
    ItemRef m_objDataLengthIndex;  ///< 7, 8
    ItemRef m_objStopBitIndex;     ///< 1, 2
    ItemRef m_objParityIndex;      ///< none, even, odd

private:
    struct Row;

    void CreateItems();

    std::int16_t m_iActiveInterface = UsbInterface;
};
