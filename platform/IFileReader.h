#pragma once

#include <cstddef>
#include <optional>
#include <span>

/// An open file, read from its beginning to its end. Closes with the object.
class IFileReader {
public:
    virtual ~IFileReader() = default;

    /// Reads what comes next into p_arrBuffer. The bytes read, 0 at the end of the file, nothing
    /// when reading fails.
    virtual std::optional<std::size_t> Read(std::span<char> p_arrBuffer) = 0;
};
