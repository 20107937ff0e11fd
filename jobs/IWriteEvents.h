#pragma once

#include <cstddef>
#include <cstdint>

/// How far a change of settings is.
class IWriteEvents {
public:
    enum class Stage : std::uint8_t { Reading, Writing, ReadingBack, Restoring };

    virtual ~IWriteEvents() = default;

    /// Step p_iStep of p_iSteps, counted from 1, of a stage begins; 0 of 0 where there are none.
    virtual void OnStage(Stage p_iStage, std::size_t p_iStep, std::size_t p_iSteps) = 0;
};
