#pragma once

#include <QHostAddress>

#include <cstdint>
#include <string>

/// Addresses as text.
namespace MAddress {

/// An address with its port, such as 127.0.0.1:8000 or [::1]:8000.
inline std::string Text(const QHostAddress& p_objHost, std::uint32_t p_iPort) {
    const std::string strHost = p_objHost.toString().toStdString();
    const bool bColons = p_objHost.protocol() == QAbstractSocket::IPv6Protocol;
    return (bColons ? "[" + strHost + "]" : strHost) + ":" + std::to_string(p_iPort);
}

}  // namespace MAddress
