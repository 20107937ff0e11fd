#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// A serial line without wires: any program can open its other end by name, as a serial port.
///
/// It hands every byte on as it is, in both directions, and never blocks. Nothing but a program's
/// own opening and closing of its end is noticed; speeds and parities mean nothing to it.
class CPseudoTerminal {
public:
    /// Throws std::system_error when the system has none to give.
    CPseudoTerminal();
    /// Whoever has the other end open is hung up on.
    ~CPseudoTerminal();
    CPseudoTerminal(const CPseudoTerminal&) = delete;
    CPseudoTerminal& operator=(const CPseudoTerminal&) = delete;

    /// The path of the other end.
    [[nodiscard]] const std::string& Name() const { return m_strName; }

    /// Readable when bytes have come or the other end was closed.
    [[nodiscard]] int Descriptor() const { return m_iDescriptor; }

    /// Whether a program has the other end open at the moment.
    [[nodiscard]] bool IsOpened() const;
    /// Whether bytes are there to read; they outlive the program that has sent them.
    [[nodiscard]] bool HasBytes() const;

    /// The next bytes, at most so many; none when none are there.
    std::vector<std::uint8_t> Read(std::size_t p_iMost);

    /// Sends what fits; how many bytes did.
    std::size_t Write(std::string_view p_strBytes);

    /// Throws away what was sent and nobody has fetched.
    void Discard();

private:
    [[nodiscard]] int Events() const;

    int m_iDescriptor = -1;
    std::string m_strName;
};
