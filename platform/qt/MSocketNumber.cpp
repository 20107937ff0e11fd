#include "platform/qt/MSocketNumber.h"

#include <QCoreApplication>

#include <array>
#include <cerrno>

namespace {

struct Number {
    QAbstractSocket::SocketError m_iToolkit;
    const char* m_strWords;  ///< the toolkit's own, not translated; null when any will do
    std::int32_t m_iSystem;
};

constexpr std::array<Number, 7> Numbers{{
    {QAbstractSocket::ConnectionRefusedError, nullptr, ECONNREFUSED},
    {QAbstractSocket::SocketAccessError, nullptr, EACCES},
    {QAbstractSocket::SocketResourceError, nullptr, EMFILE},
    {QAbstractSocket::SocketTimeoutError, nullptr, ETIMEDOUT},
    {QAbstractSocket::SocketAddressNotAvailableError, nullptr, EADDRNOTAVAIL},
    {QAbstractSocket::NetworkError, "Network unreachable", ENETUNREACH},
    {QAbstractSocket::NetworkError, "Host unreachable", EHOSTUNREACH},
}};

}  // namespace

std::int32_t MSocketNumber::Of(QAbstractSocket::SocketError p_iError, const QString& p_strError) {
    for (const Number& objNumber : Numbers) {
        // The words come in the language that the toolkit's own context has.
        const bool bWords =
            objNumber.m_strWords == nullptr ||
            p_strError == QCoreApplication::translate("QNativeSocketEngine", objNumber.m_strWords);
        if (objNumber.m_iToolkit == p_iError && bWords) {
            return objNumber.m_iSystem;
        }
    }
    return 0;
}
