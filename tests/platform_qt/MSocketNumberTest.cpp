#include "platform/qt/MSocketNumber.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace {

struct NumberCase {
    QAbstractSocket::SocketError m_iError;
    const char* m_strWords;
    std::int32_t m_iNumber;
};

class MSocketNumberTest : public ::testing::TestWithParam<NumberCase> {};

TEST_P(MSocketNumberTest, IsTheSystems) {
    EXPECT_EQ(MSocketNumber::Of(GetParam().m_iError, GetParam().m_strWords), GetParam().m_iNumber);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(, MSocketNumberTest, ::testing::Values(
    NumberCase{QAbstractSocket::ConnectionRefusedError, "Connection refused", ECONNREFUSED},
    NumberCase{QAbstractSocket::ConnectionRefusedError, "whatever", ECONNREFUSED},
    NumberCase{QAbstractSocket::SocketAccessError, "Permission denied", EACCES},
    NumberCase{QAbstractSocket::SocketResourceError, "Out of resources", EMFILE},
    NumberCase{QAbstractSocket::SocketTimeoutError, "Connection timed out", ETIMEDOUT},
    NumberCase{QAbstractSocket::SocketAddressNotAvailableError, "The address is not available", EADDRNOTAVAIL},
    NumberCase{QAbstractSocket::NetworkError, "Network unreachable", ENETUNREACH},
    NumberCase{QAbstractSocket::NetworkError, "Host unreachable", EHOSTUNREACH},
    NumberCase{QAbstractSocket::NetworkError, "Unable to write", 0},
    NumberCase{QAbstractSocket::UnknownSocketError, "Host unreachable", 0},
    NumberCase{QAbstractSocket::OperationError, "", 0}));
// clang-format on

}  // namespace
