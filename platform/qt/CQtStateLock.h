#pragma once

#include "platform/IStateStore.h"

#include <QLockFile>

#include <memory>
#include <string>

/// A lock by the toolkit's own means, on systems that have none of their own (see CStateLock). Its
/// file names the process; it is the toolkit that sees when that has ended.
class CQtStateLock : public IStateStore::ILock {
public:
    /// As IStateStore::Lock has it, but for the holder's line: others are told the process. To be
    /// called once.
    bool Take(const std::string& p_strPath, const std::string& p_strHolder, std::string& p_strWhy,
              bool& p_bHeld);

private:
    std::unique_ptr<QLockFile> m_objFile;
};
