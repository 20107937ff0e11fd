#pragma once

#include "cli/IPrinterConnector.h"
#include "cli/ISettingsSource.h"
#include "platform/IDeviceAccess.h"

/// Printers, by the names of CTarget.
class CTargetSource : public ISettingsSource {
public:
    /// None is owned; all outlive this.
    CTargetSource(IPrinterConnector& p_objPrinters, const IDeviceAccess& p_objAccess)
        : m_objPrinters(p_objPrinters)
        , m_objAccess(p_objAccess) {}

    [[nodiscard]] bool Knows(const std::string& p_strName) const override {
        return CTarget::IsMeant(p_strName);
    }
    /// Everything that the printer reports; had in part it is refused.
    Fetch Open(const std::string& p_strName, COutput& p_objOutput) override;

private:
    IPrinterConnector& m_objPrinters;
    const IDeviceAccess& m_objAccess;
};
