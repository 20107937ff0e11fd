#include "platform/qt/MSocketNumber.h"

#include <array>
#include <cerrno>

namespace {

struct Number {
    QAbstractSocket::SocketError m_iToolkit;
    std::int32_t m_iSystem;
};

/// The classes that stand for one number.
constexpr std::array<Number, 5> Numbers{{
    {QAbstractSocket::ConnectionRefusedError, ECONNREFUSED},
    {QAbstractSocket::SocketAccessError, EACCES},
    {QAbstractSocket::SocketResourceError, EMFILE},
    {QAbstractSocket::SocketTimeoutError, ETIMEDOUT},
    {QAbstractSocket::SocketAddressNotAvailableError, EADDRNOTAVAIL},
}};

}  // namespace

std::int32_t MSocketNumber::Of(QAbstractSocket::SocketError p_iError, int p_iSystem) {
    // This class stands for many; errno may have been left by something else then.
    if (p_iError == QAbstractSocket::NetworkError) {
        return p_iSystem == ENETUNREACH || p_iSystem == EHOSTUNREACH ? p_iSystem : 0;
    }
    for (const Number& objNumber : Numbers) {
        if (objNumber.m_iToolkit == p_iError) {
            return objNumber.m_iSystem;
        }
    }
    return 0;
}
