#include "simulator/usb/CUsbWorld.h"

#include <umockdev.h>

#include <filesystem>
#include <stdexcept>

CUsbWorld::CUsbWorld()
    : m_objTestbed(umockdev_testbed_new()) {}

CUsbWorld::~CUsbWorld() {
    g_object_unref(m_objTestbed);
}

bool CUsbWorld::IsInside() const {
    return umockdev_in_mock_environment() != FALSE;
}

void CUsbWorld::Add(const std::string& p_strRecord) {
    GError* objError = nullptr;
    if (umockdev_testbed_add_from_string(m_objTestbed, p_strRecord.c_str(), &objError) == FALSE) {
        const std::string strError = objError != nullptr ? objError->message : "";
        g_clear_error(&objError);
        throw std::runtime_error("no emulated device: " + strError);
    }
}

void CUsbWorld::Remove(const std::string& p_strPath) {
    umockdev_testbed_remove_device(m_objTestbed, p_strPath.c_str());
}

void CUsbWorld::RemoveNode(const std::string& p_strName) {
    gchar* const strRoot = umockdev_testbed_get_root_dir(m_objTestbed);
    std::filesystem::remove(strRoot + p_strName);
    g_free(strRoot);
}
