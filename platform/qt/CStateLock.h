#pragma once

#include "platform/IStateStore.h"
#include "platform/qt/CFileHandle.h"

#include <string>

/// A lock of the system's on a file, on Linux. The system drops it when the program ends, in
/// whatever way; the file goes when the lock is given back.
class CStateLock : public IStateStore::ILock {
public:
    CStateLock() = default;
    CStateLock(const CStateLock&) = delete;
    CStateLock& operator=(const CStateLock&) = delete;
    ~CStateLock() override;

    /// As IStateStore::Lock has it. To be called once.
    bool Take(const std::string& p_strPath, const std::string& p_strHolder, std::string& p_strWhy,
              bool& p_bHeld);

private:
    bool Open(std::string& p_strWhy);

    std::string m_strPath;
    CFileHandle m_objFile;
    bool m_bTaken = false;
};
