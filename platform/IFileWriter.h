#pragma once

#include <string_view>

/// A file being written, all or nothing: until Commit has returned true, whatever stood at its
/// name stands there whole. Ends without a trace when it is destroyed before that.
class IFileWriter {
public:
    virtual ~IFileWriter() = default;

    /// Adds p_strBytes. False when that fails; the file is not going to be written then.
    virtual bool Write(std::string_view p_strBytes) = 0;

    /// Puts what was written in the place of what stood there, safely on the disk. False, and
    /// nothing changed, when that or any Write before it fails.
    virtual bool Commit() = 0;
};
