#pragma once

#include <string>

/// Another program that holds interface 0 of a device, as long as this lives.
class CForeignClaim {
public:
    /// Puts the system's driver aside. Throws std::runtime_error when the interface cannot be had.
    explicit CForeignClaim(const std::string& p_strNode);
    CForeignClaim(const CForeignClaim&) = delete;
    CForeignClaim& operator=(const CForeignClaim&) = delete;
    /// Gives the interface back to the system's driver.
    ~CForeignClaim();

    /// True while nobody has taken the interface away: it can still be used through this claim.
    [[nodiscard]] bool IsHeld() const;

private:
    int m_iFile;
};
