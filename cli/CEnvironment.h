#pragma once

#include "cli/IPrinterConnector.h"
#include "cli/ISettingsSource.h"
#include "cli/ITerminal.h"
#include "platform/IDeviceAccess.h"
#include "platform/IFileStore.h"
#include "platform/ISerialPortLister.h"
#include "platform/IStateStore.h"
#include "platform/IUsbPrinterLister.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/// What commands are handed of the outside. Nothing is owned; all outlives the commands.
struct CEnvironment {
    IFileStore& m_objFiles;
    ISerialPortLister& m_objSerialPorts;
    IUsbPrinterLister& m_objUsbPrinters;
    const IDeviceAccess& m_objAccess;
    IPrinterConnector& m_objPrinters;
    ITerminal& m_objTerminal;
    std::vector<ISettingsSource*> m_objSources;  ///< asked in their order for a name
    /// Makes what is kept between runs, in that folder; of an empty name in the usual one.
    std::function<std::unique_ptr<IStateStore>(const std::string&)> m_fnState;
};
