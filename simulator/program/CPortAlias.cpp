#include "simulator/program/CPortAlias.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <utility>

CPortAlias::CPortAlias(std::string p_strPath)
    : m_strPath(std::move(p_strPath)) {}

CPortAlias::~CPortAlias() {
    Remove();
}

void CPortAlias::PointTo(const std::string& p_strTarget) {
    if (m_strPath.empty()) {
        return;
    }
    Remove();
    std::error_code objError;
    std::filesystem::create_symlink(p_strTarget, m_strPath, objError);
    if (objError) {
        throw std::runtime_error("Cannot make the link " + m_strPath + ": " + objError.message() +
                                 ".");
    }
    m_strTarget = p_strTarget;
}

void CPortAlias::Remove() {
    std::error_code objError;
    if (!m_strTarget.empty() && std::filesystem::read_symlink(m_strPath, objError) == m_strTarget) {
        std::filesystem::remove(m_strPath, objError);
    }
    m_strTarget.clear();
}
