#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

/// An open file, read from its beginning to its end. Closes with the object.
class IFileReader {
public:
    virtual ~IFileReader() = default;

    /// How many bytes the file has, as far as the system tells. It may grow while it is read.
    [[nodiscard]] virtual std::uint64_t Size() const = 0;

    /// Reads what comes next into p_arrBuffer. The bytes read, 0 at the end of the file, nothing
    /// when reading fails.
    virtual std::optional<std::size_t> Read(std::span<char> p_arrBuffer) = 0;
};
