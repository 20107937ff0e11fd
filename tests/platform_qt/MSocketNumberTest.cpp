#include "platform/qt/MSocketNumber.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

struct NumberCase {
    QAbstractSocket::SocketError m_iError;
    int m_iSystem;  ///< errno
    std::int32_t m_iNumber;
};

class MSocketNumberTest : public ::testing::TestWithParam<NumberCase> {};

TEST_P(MSocketNumberTest, IsTheSystems) {
    EXPECT_EQ(MSocketNumber::Of(GetParam().m_iError, GetParam().m_iSystem), GetParam().m_iNumber);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(, MSocketNumberTest, ::testing::Values(
    NumberCase{QAbstractSocket::ConnectionRefusedError, ECONNREFUSED, ECONNREFUSED},
    NumberCase{QAbstractSocket::ConnectionRefusedError, EHOSTUNREACH, ECONNREFUSED},
    NumberCase{QAbstractSocket::ConnectionRefusedError, 0, ECONNREFUSED},
    NumberCase{QAbstractSocket::SocketAccessError, EPERM, EACCES},
    NumberCase{QAbstractSocket::SocketResourceError, ENFILE, EMFILE},
    NumberCase{QAbstractSocket::SocketTimeoutError, 0, ETIMEDOUT},
    NumberCase{QAbstractSocket::SocketAddressNotAvailableError, 0, EADDRNOTAVAIL},
    NumberCase{QAbstractSocket::NetworkError, ENETUNREACH, ENETUNREACH},
    NumberCase{QAbstractSocket::NetworkError, EHOSTUNREACH, EHOSTUNREACH},
    NumberCase{QAbstractSocket::NetworkError, EAGAIN, 0},
    NumberCase{QAbstractSocket::NetworkError, 0, 0},
    NumberCase{QAbstractSocket::UnknownSocketError, EHOSTUNREACH, 0},
    NumberCase{QAbstractSocket::OperationError, 0, 0}));
// clang-format on

}  // namespace
