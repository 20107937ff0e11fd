#pragma once

#include "tests/fuzz/MFuzz.h"

#include <algorithm>
#include <string>

/// Takes an input apart from its front. Behind its end there are zeros and empty texts.
class CFuzzInput {
public:
    explicit CFuzzInput(MFuzz::Input p_objBytes)
        : m_objBytes(p_objBytes) {}

    [[nodiscard]] bool IsEmpty() const { return m_objBytes.empty(); }

    std::uint8_t Byte() {
        const std::uint8_t iByte = IsEmpty() ? std::uint8_t{0} : m_objBytes.front();
        m_objBytes = m_objBytes.subspan(std::min<std::size_t>(1, m_objBytes.size()));
        return iByte;
    }

    /// A number from 0 to p_iCount - 1. In an input that is written by hand it can be a digit.
    unsigned Pick(unsigned p_iCount) {
        const unsigned iByte = Byte();
        return (iByte >= '0' && iByte <= '9' ? iByte - '0' : iByte) % p_iCount;
    }

    std::int16_t Word() {
        constexpr unsigned iByteWidth = 8;
        const unsigned iHigh = Byte();
        return static_cast<std::int16_t>((iHigh << iByteWidth) | Byte());
    }

    /// So many bytes, or what there is.
    MFuzz::Input Block(std::size_t p_iCount) {
        const MFuzz::Input objBlock = m_objBytes.first(std::min(p_iCount, m_objBytes.size()));
        m_objBytes = m_objBytes.subspan(objBlock.size());
        return objBlock;
    }

    MFuzz::Input Rest() { return Block(m_objBytes.size()); }

    std::string Text(std::size_t p_iCount) {
        const MFuzz::Input objBlock = Block(p_iCount);
        return {objBlock.begin(), objBlock.end()};
    }

private:
    MFuzz::Input m_objBytes;
};
