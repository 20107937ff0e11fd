#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

/// What the tool keeps between its runs, in a folder of its own: small files by names, and locks.
/// Names are letters, digits, ".", "-" and "_"; whoever asks for another gets nothing.
class IStateStore {
public:
    /// Held until it is destroyed, or the program ends in whatever way.
    class ILock {
    public:
        virtual ~ILock() = default;
    };

    virtual ~IStateStore() = default;

    /// Takes the lock of that name, at once or not at all; null when it cannot be had.
    /// @param p_strHolder a line that tells others who holds it, such as "varden write, process
    /// 17".
    /// @param p_strWhy gets the holder's line when another has it, else what the system says.
    /// @param p_bHeld gets whether another has it.
    virtual std::unique_ptr<ILock> Lock(const std::string& p_strName,
                                        const std::string& p_strHolder, std::string& p_strWhy,
                                        bool& p_bHeld) = 0;

    /// Writes a file anew, all or nothing, and safely on the disk with its folder's entry before
    /// this returns. False, and what stood there stands, when that fails. Only its owner may read
    /// it.
    virtual bool Write(const std::string& p_strName, const std::string& p_strBytes) = 0;

    /// A file's content; nothing when it is not there, cannot be read or has more than 1 MiB.
    [[nodiscard]] virtual std::optional<std::string> Read(const std::string& p_strName) const = 0;

    /// Whether a file stands there; also when that cannot be found out.
    [[nodiscard]] virtual bool Stands(const std::string& p_strName) const = 0;

    /// Removes a file, safely on the disk. True when none stands there afterwards.
    virtual bool Remove(const std::string& p_strName) = 0;

    /// The names of all files that end so, sorted.
    [[nodiscard]] virtual std::vector<std::string> Names(const std::string& p_strEnd) const = 0;

    /// How people find the file: its path.
    [[nodiscard]] virtual std::string Path(const std::string& p_strName) const = 0;
};
