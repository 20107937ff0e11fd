#pragma once

#include "platform/IClock.h"
#include "platform/IEventLoop.h"
#include "platform/ISerialPort.h"
#include "platform/ITcpClient.h"
#include "platform/IUsbLibrary.h"

/// What lies outside of the program on the way to a printer, handed in from outside. Nothing is
/// owned; all of it outlives whoever gets it.
struct CPrinterPlatform {
    IEventLoop& m_objEventLoop;
    const IClock& m_objClock;
    ITcpClient& m_objTcpClient;
    ISerialPort& m_objSerialPort;
    IUsbLibrary& m_objUsbLibrary;
};
