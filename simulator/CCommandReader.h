#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>

/// Cuts one connection's stream of bytes into commands, wherever the network has cut it.
///
/// A command runs from "{" to the next "|}". A "{" inside an open command begins a new one, so
/// that the reader finds its way back after anything; only the DHCP command, which carries free
/// text, may hold a "{". Whatever is no command is left out and told about. The reader holds no
/// more than LongestCommand and LongestShown bytes, whatever comes, and never fails.
class CCommandReader {
public:
    /// A command that has not ended by then is no command; the printer's longest has 57 bytes.
    static constexpr std::size_t LongestCommand = 256;
    /// Of left out bytes no more than these are kept for showing.
    static constexpr std::size_t LongestShown = 64;

    /// What was found: a whole command, or bytes that were left out.
    struct Found {
        bool m_bCommand = false;
        std::string m_strBytes;    ///< the command; or the first of the bytes left out
        std::size_t m_iCount = 0;  ///< how many bytes there were
    };
    using Sink = std::function<void(const Found&)>;

    /// Takes the next bytes and gives p_objSink what they complete, in the order of the stream.
    /// Left out bytes are told before the command behind them, at the latest at the block's end.
    void Feed(std::span<const std::uint8_t> p_objBytes, const Sink& p_objSink);

    /// The bytes held at the moment.
    [[nodiscard]] std::size_t Held() const { return m_strCommand.size() + m_strLeftOut.size(); }

private:
    void Take(char p_c, const Sink& p_objSink);
    void LeaveOut(const std::string& p_strBytes);
    void TellLeftOut(const Sink& p_objSink);
    [[nodiscard]] bool InFreeText() const;

    std::string m_strCommand;  // empty between commands
    std::string m_strLeftOut;
    std::size_t m_iLeftOut = 0;
};
