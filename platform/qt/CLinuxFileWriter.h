#pragma once

#include "platform/IFileWriter.h"
#include "platform/qt/CFileHandle.h"

#include <sys/stat.h>

#include <cstdint>
#include <optional>
#include <string>

/// A file being written on Linux.
///
/// It has no name until it is complete; a program that is killed before that leaves nothing. A new
/// file then gets its own name at once. One that replaces another bears a name of MSaveName for
/// the moment until it takes the other's; where the file system has no files without a name, it
/// bears one from the beginning. What a killed program leaves there goes with the next commit
/// for the same target.
class CLinuxFileWriter : public IFileWriter {
public:
    /// Whom a file is for.
    enum class Readers : std::uint8_t {
        Usual,  ///< whoever may read what the user makes, or could read what stood there
        Owner,  ///< its owner alone; what stands at its name may be no link then
    };

    explicit CLinuxFileWriter(Readers p_iReaders = Readers::Usual)
        : m_iReaders(p_iReaders) {}
    CLinuxFileWriter(const CLinuxFileWriter&) = delete;
    CLinuxFileWriter& operator=(const CLinuxFileWriter&) = delete;
    ~CLinuxFileWriter() override;

    /// Begins, where p_strPath or what it links to is a regular file that may be written, or
    /// nothing. To be called first, and once.
    bool Open(const std::string& p_strPath);

    bool Write(std::string_view p_strBytes) override;

    /// An existing file keeps its permissions, and its owner and group where the system allows
    /// that. The folder is synchronised, too; IsInPlace tells how that went. (That the disk fails
    /// there is no failure: the file has taken its place by then, and whatever a disk makes of
    /// that, old or new is whole.)
    bool Commit() override;

    /// Whether the disk knows, after a commit, that the file has taken its place.
    [[nodiscard]] bool IsInPlace() const { return m_bInPlace; }

private:
    bool LookAtTarget();
    [[nodiscard]] mode_t FirstMode() const;
    bool OpenWithoutName();
    bool OpenWithName();
    void TakeOverOwner() const;
    void RemoveLeftOvers() const;
    bool PutInPlace();
    [[nodiscard]] bool GiveName(const std::string& p_strName) const;
    bool Rename();

    Readers m_iReaders;
    CFileHandle m_objFolder;
    std::string m_strTarget;              // in that folder
    std::optional<struct stat> m_objOld;  // what stood there
    CFileHandle m_objFile;
    std::string m_strName;  // of MSaveName, while the file bears one
    bool m_bFailed = false;
    bool m_bInPlace = false;
};
