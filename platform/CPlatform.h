#pragma once

#include "platform/CFilePlatform.h"
#include "platform/CPrinterPlatform.h"
#include "platform/ISerialPortLister.h"

#include <utility>

/// Everything that lies outside the program, handed in from outside. Nothing that it refers to is
/// owned; all of it outlives whoever gets it.
struct CPlatform : CPrinterPlatform, CFilePlatform {
    CPlatform(const CPrinterPlatform& p_objPrinter, CFilePlatform p_objFiles,
              ISerialPortLister* p_objSerialPorts = nullptr)
        : CPrinterPlatform(p_objPrinter)
        , CFilePlatform(std::move(p_objFiles))
        , m_objSerialPorts(p_objSerialPorts) {}

    ISerialPortLister* m_objSerialPorts;  ///< null: nothing is known of the serial ports
};
