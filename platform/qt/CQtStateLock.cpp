#include "platform/qt/CQtStateLock.h"

#include <QFile>

#include <chrono>

bool CQtStateLock::Take(const std::string& p_strPath, const std::string& /*p_strHolder*/,
                        std::string& p_strWhy, bool& p_bHeld) {
    m_objFile = std::make_unique<QLockFile>(QFile::decodeName(p_strPath.c_str()));
    m_objFile->setStaleLockTime(0);  // however long its holder works
    if (m_objFile->tryLock(0)) {
        return true;
    }
    p_bHeld = m_objFile->error() == QLockFile::LockFailedError;
    if (!p_bHeld) {
        p_strWhy = "the lock's file cannot be written";
        return false;
    }
    qint64 iProcess = 0;
    QString strHost;
    QString strProgram;
    p_strWhy = m_objFile->getLockInfo(&iProcess, &strHost, &strProgram)
                   ? strProgram.toStdString() + ", process " + std::to_string(iProcess)
                   : "another program";
    return false;
}
