#pragma once

#include <chrono>
#include <cstddef>

/// Keeps a device that sends without end from taking the processor: so much may come in each slot
/// of time, and what is more waits for the next one. Whoever owns the line reads nothing meanwhile,
/// so it waits with the system and, in the end, with whoever sends it.
///
/// It only counts; nothing here waits.
class CFloodGate {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// What may come in a slot. More than any printer sends, or it would wait for its answers.
    struct Share {
        std::size_t m_iBytes;
        std::size_t m_iArrivals;  ///< each costs as much as many bytes
    };

    static constexpr std::chrono::milliseconds Slot{4};

    explicit CFloodGate(Share p_objShare)
        : m_objShare(p_objShare) {}

    /// Something has come. It is to be taken, even when the gate shuts behind it.
    void Arrive(Time p_objNow);

    /// So many of its bytes have been taken.
    void Take(std::size_t p_iBytes) { m_objSlot.m_iBytes += p_iBytes; }

    /// True when the slot has had its share.
    [[nodiscard]] bool IsShut() const {
        return m_objSlot.m_iBytes >= m_objShare.m_iBytes ||
               m_objSlot.m_iArrivals >= m_objShare.m_iArrivals;
    }

    /// How long it stays shut then: a millisecond at least.
    [[nodiscard]] std::chrono::milliseconds Left(Time p_objNow) const;

private:
    Share m_objShare;
    Share m_objSlot{0, 0};  // what has come in it
    Time m_objBegin{};
};
