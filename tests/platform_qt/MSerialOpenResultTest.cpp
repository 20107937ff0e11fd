#include "platform/qt/MSerialOpenResult.h"

#include "platform/ISerialPort.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <vector>

namespace {

using MSerialOpenResult::NotOpened;
using MSerialOpenResult::Of;

TEST(MSerialOpenResultTest, TheNumbersDiffer) {
    EXPECT_EQ(ISerialPort::AlreadyOpen, 8005);
    EXPECT_NE(NotOpened, ISerialPort::AlreadyOpen);
    EXPECT_NE(NotOpened, ISerialPort::Opened);
}

TEST(MSerialOpenResultTest, ALockAndABusyDeviceAreAnotherPrograms) {
    EXPECT_EQ(Of(QSerialPort::PermissionError, "Permission error while locking the device"), 8005);
    EXPECT_EQ(Of(QSerialPort::PermissionError, qt_error_string(EBUSY)), 8005);
}

TEST(MSerialOpenResultTest, WhatIsNotPermittedIsNot) {
    EXPECT_EQ(Of(QSerialPort::PermissionError, qt_error_string(EACCES)), NotOpened);
    EXPECT_EQ(Of(QSerialPort::PermissionError, "Permission error while creating lock file"),
              NotOpened);
    EXPECT_EQ(Of(QSerialPort::PermissionError, ""), NotOpened);
}

TEST(MSerialOpenResultTest, NorIsAnyOtherErrorWhateverItsWords) {
    const std::vector<QSerialPort::SerialPortError> iErrors{
        QSerialPort::DeviceNotFoundError, QSerialPort::OpenError,
        QSerialPort::ResourceError,       QSerialPort::UnsupportedOperationError,
        QSerialPort::UnknownError,        QSerialPort::NoError};
    for (const auto iError : iErrors) {
        EXPECT_EQ(Of(iError, qt_error_string(EBUSY)), NotOpened) << iError;
    }
}

}  // namespace
