#pragma once

#include <QAbstractSocket>

#include <cstdint>

/// Why a socket has failed, as the system numbers it.
namespace MSocketNumber {

/// The system's error number (errno) for a failure of the toolkit's socket; 0 where it cannot be
/// told. The toolkit keeps the number to itself and tells a class of its own instead; where one
/// class stands for several numbers, what errno held just then tells them apart.
/// @param p_iSystem errno when the toolkit told of the failure.
std::int32_t Of(QAbstractSocket::SocketError p_iError, int p_iSystem);

}  // namespace MSocketNumber
