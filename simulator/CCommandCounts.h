#pragma once

#include "simulator/MCommandKind.h"

#include <array>
#include <cstddef>
#include <string>

/// How many commands of each kind have come.
class CCommandCounts {
public:
    struct Count {
        std::size_t m_iAccepted = 0;
        std::size_t m_iRefused = 0;

        bool operator==(const Count&) const = default;
    };

    void Add(MCommandKind::Kind p_iKind, bool p_bAccepted);
    void Add(const CCommandCounts& p_objOther);

    [[nodiscard]] Count Of(MCommandKind::Kind p_iKind) const;

    /// One line for each kind that has come, such as "read settings: 3", refused ones told apart.
    [[nodiscard]] std::string Describe() const;

private:
    std::array<Count, MCommandKind::KindCount> m_objCounts{};
};
