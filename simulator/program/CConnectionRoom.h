#pragma once

#include <cstddef>
#include <functional>
#include <utility>

/// How many connections the system has room for, and how many there are.
class CConnectionRoom {
public:
    explicit CConnectionRoom(std::size_t p_iMost)
        : m_iMost(p_iMost) {}

    /// Calls p_fnChange whenever it has become full, and when it is so no longer.
    void OnChange(std::function<void()> p_fnChange) { m_fnChange = std::move(p_fnChange); }

    [[nodiscard]] bool IsFull() const { return m_iConnections >= m_iMost; }

    void Enter() {
        if (++m_iConnections == m_iMost && m_fnChange) {
            m_fnChange();
        }
    }
    void Leave() {
        if (m_iConnections-- == m_iMost && m_fnChange) {
            m_fnChange();
        }
    }

private:
    std::size_t m_iMost;
    std::size_t m_iConnections = 0;
    std::function<void()> m_fnChange;
};
