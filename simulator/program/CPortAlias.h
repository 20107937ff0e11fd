#pragma once

#include <string>

/// A second name for a serial port: a symbolic link of this object's own making.
class CPortAlias {
public:
    /// @param p_strPath where the link is to be; empty for no link at all.
    explicit CPortAlias(std::string p_strPath);
    /// Removes the link, unless something else has taken its place.
    ~CPortAlias();
    CPortAlias(const CPortAlias&) = delete;
    CPortAlias& operator=(const CPortAlias&) = delete;

    /// Makes the link lead to p_strTarget, in place of where it led. Throws std::runtime_error
    /// when it cannot be made; what is there and is not this object's stays.
    void PointTo(const std::string& p_strTarget);

private:
    void Remove();

    std::string m_strPath;
    std::string m_strTarget;  // empty while there is no link
};
