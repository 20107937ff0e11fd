#pragma once

#include "platform/IFileReader.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

/// Reads a file line by line in bounded memory and up to a bounded length. A line ends with CR LF,
/// with LF alone or with CR alone; the last one may lack its end.
class CLineReader {
public:
    /// A line longer than this is given as its first LongestLine + 1 bytes; no line of a settings
    /// file is, so whoever gets one refuses it.
    static constexpr std::size_t LongestLine = 255;

    static constexpr std::uint64_t AnyLength = std::numeric_limits<std::uint64_t>::max();

    enum class Result : std::uint8_t { Line, End, Failure };

    /// p_objReader is not owned and outlives this.
    /// @param p_iMost a file that turns out to have more bytes fails, at the latest there.
    explicit CLineReader(IFileReader& p_objReader, std::uint64_t p_iMost = AnyLength);

    /// Line: p_strLine is the next line without its end. End: there is none. Failure: the file
    /// cannot be read on, or is too long. Not to be called again after a line longer than
    /// LongestLine.
    Result Next(std::string& p_strLine);

private:
    enum class Byte : std::uint8_t { Read, End, Failure };

    Byte Peek(char& p_cByte);
    void Skip() { ++m_iPosition; }
    Result FinishLine(char p_cEnd);

    IFileReader& m_objReader;
    std::uint64_t m_iLeft;  // so many bytes may still come
    std::array<char, 4096> m_arrBlock{};
    std::size_t m_iPosition = 0;
    std::size_t m_iCount = 0;
};
