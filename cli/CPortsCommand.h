#pragma once

#include "cli/CEnvironment.h"
#include "cli/ICommand.h"

/// "ports": the serial ports and USB printers of this computer, and whether they can be used.
class CPortsCommand : public ICommand {
public:
    explicit CPortsCommand(const CEnvironment& p_objEnvironment)
        : m_objSerialPorts(p_objEnvironment.m_objSerialPorts)
        , m_objUsbPrinters(p_objEnvironment.m_objUsbPrinters)
        , m_objAccess(p_objEnvironment.m_objAccess) {}

    void Describe(CLI::App& p_objTable) override;
    MExitCode::Code Run(COutput& p_objOutput) override;

private:
    ISerialPortLister& m_objSerialPorts;
    IUsbPrinterLister& m_objUsbPrinters;
    const IDeviceAccess& m_objAccess;
};
