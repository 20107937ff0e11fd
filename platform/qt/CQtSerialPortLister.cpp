#include "platform/qt/CQtSerialPortLister.h"

#include "platform/qt/MDeviceName.h"

#include <QSerialPortInfo>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace {

CSerialPortEntry EntryOf(const QSerialPortInfo& p_objInfo) {
    CSerialPortEntry objEntry;
#ifdef _WIN32
    objEntry.m_strDevice = p_objInfo.portName().toStdString();
#else
    objEntry.m_strDevice = p_objInfo.systemLocation().toStdString();
#endif
    objEntry.m_strDescription = p_objInfo.description().toStdString();
    objEntry.m_strManufacturer = p_objInfo.manufacturer().toStdString();
    objEntry.m_strSerialNumber = p_objInfo.serialNumber().toStdString();
    if (p_objInfo.hasVendorIdentifier() && p_objInfo.hasProductIdentifier()) {
        objEntry.m_iVendor = p_objInfo.vendorIdentifier();
        objEntry.m_iProduct = p_objInfo.productIdentifier();
    }
    return objEntry;
}

}  // namespace

CQtSerialPortLister::CQtSerialPortLister(std::string p_strDeviceFolder)
    : m_strDeviceFolder(std::move(p_strDeviceFolder)) {}

std::vector<CSerialPortEntry> CQtSerialPortLister::SerialPorts() {
    std::vector<CSerialPortEntry> objEntries;
    for (const QSerialPortInfo& objInfo : QSerialPortInfo::availablePorts()) {
        objEntries.push_back(EntryOf(objInfo));
    }
    AddComNumbers(objEntries);
    std::ranges::sort(objEntries, {}, &CSerialPortEntry::m_strDevice);
    return objEntries;
}

void CQtSerialPortLister::AddComNumbers(std::vector<CSerialPortEntry>& p_objEntries) const {
    for (std::int16_t iNumber = 1; iNumber <= LastComNumber; ++iNumber) {
        const std::string strDevice = MSerialPortName::DeviceOf(iNumber, m_strDeviceFolder);
        const std::string strOwn = strDevice.empty() ? strDevice : MDeviceName::OwnName(strDevice);
        if (strOwn.empty()) {
            continue;
        }
        auto objFound = std::ranges::find_if(p_objEntries, [&](const CSerialPortEntry& p_objEntry) {
            return MDeviceName::OwnName(p_objEntry.m_strDevice) == strOwn;
        });
        const std::string strAlias = "com" + std::to_string(iNumber);
        if (objFound == p_objEntries.end() &&
            std::filesystem::path(strDevice).filename() == strAlias) {
            CSerialPortEntry objEntry;
            objEntry.m_strDevice = strDevice;
            objFound = p_objEntries.insert(p_objEntries.end(), objEntry);
        }
        // A device of the folder that the system does not know is no port: most computers have
        // files for ports that were never built in.
        if (objFound != p_objEntries.end()) {
            objFound->m_iComNumbers.push_back(iNumber);
        }
    }
}
