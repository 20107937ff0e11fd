#pragma once

#include <unistd.h>

#include <utility>

/// A file that the system has open for this program, or none; closed with the object.
class CFileHandle {
public:
    /// p_iFile: what the system has given; negative for none.
    explicit CFileHandle(int p_iFile = -1)
        : m_iFile(p_iFile) {}
    CFileHandle(CFileHandle&& p_objOther) noexcept
        : m_iFile(std::exchange(p_objOther.m_iFile, -1)) {}
    CFileHandle& operator=(CFileHandle&& p_objOther) noexcept {
        std::swap(m_iFile, p_objOther.m_iFile);
        return *this;
    }
    CFileHandle(const CFileHandle&) = delete;
    CFileHandle& operator=(const CFileHandle&) = delete;
    ~CFileHandle() {
        if (IsOpen()) {
            ::close(m_iFile);
        }
    }

    [[nodiscard]] bool IsOpen() const { return m_iFile >= 0; }
    [[nodiscard]] int Number() const { return m_iFile; }

private:
    int m_iFile;
};
