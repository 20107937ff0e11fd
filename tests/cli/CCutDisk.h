#pragma once

#include "platform/qt/CFileHandle.h"
#include "tests/platform_qt/CSteppedProcess.h"

#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <map>
#include <string>

/// A folder of the disk with all that is in it, and what of that a power cut would leave. It hears
/// of every call of a process that works there, and counts as safe only what was synchronised: a
/// file's bytes by its own fsync, a name by that of its folder.
class CCutDisk {
public:
    /// What becomes of names that were given, changed or taken since their folder was synchronised.
    enum class Names : std::uint8_t { Lost, Kept };

    /// All that is there is safe.
    explicit CCutDisk(std::string p_strFolder);

    /// Hears of a call before it is carried out; the one before has been by then. True when it
    /// concerns the folder.
    bool Hear(const CSteppedProcess::Call& p_objCall);

    /// The process has ended by itself: its last call has been carried out, too.
    void Settle();

    /// Makes the folder what a power cut leaves that comes before the last call is carried out: of
    /// a file whose bytes are not safe as they stand there is nothing but its name. No process
    /// works there any more. To be called once.
    void Cut(Names p_iNames);

private:
    using Entries = std::map<std::string, ino_t>;

    /// The folder as it is: names by folders, and files' bytes.
    struct Tree {
        std::map<ino_t, Entries> m_objFolders;
        std::map<ino_t, std::string> m_strFiles;
    };

    [[nodiscard]] bool IsInside(const std::string& p_strPath) const;
    [[nodiscard]] bool Concerns(const CSteppedProcess::Call& p_objCall) const;
    [[nodiscard]] Tree Look();
    void LookInto(const std::string& p_strFolder, Tree& p_objTree);
    void Hold(ino_t p_iEntry, const std::string& p_strPath);
    void Build(const std::string& p_strFolder, ino_t p_iFolder, const Tree& p_objNames,
               const Tree& p_objNow) const;

    std::string m_strFolder;
    ino_t m_iFolder;
    std::map<ino_t, CFileHandle> m_objHeld;  // so that no number is given to another file
    Tree m_objSafe;
    std::function<void()> m_fnSettle;  // what is safe once the call before is done
};
