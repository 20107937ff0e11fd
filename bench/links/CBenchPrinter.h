#pragma once

#include "simulator/CPrinter.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

/// A printer on a thread of its own that notes when things pass, to the microsecond: the
/// simulator's program would add the time of a process to each figure.
///
/// One connection at a time, on any free port of 127.0.0.1.
class CBenchPrinter {
public:
    enum class Manner : std::uint8_t {
        Answers,      ///< in a few milliseconds
        Silent,       ///< takes commands and says nothing
        Junk,         ///< sends without end what begins no answer
        Heads,        ///< sends without end what begins one
        SingleBytes,  ///< sends junk without end, a packet for each byte
    };

    CBenchPrinter();
    ~CBenchPrinter();
    CBenchPrinter(const CBenchPrinter&) = delete;
    CBenchPrinter& operator=(const CBenchPrinter&) = delete;

    [[nodiscard]] std::uint16_t Port() const { return m_iPort; }

    /// From now on.
    void Be(Manner p_iManner) { m_iManner = p_iManner; }

    /// The times from an answer's last byte to the next command's last, in milliseconds, since the
    /// last call.
    std::vector<double> TakeGaps();

    /// Bytes of a flood that have been taken from it, ever.
    [[nodiscard]] std::uint64_t Flooded() const { return m_iFlooded; }

private:
    void Run();
    void Serve(int p_iSocket);
    void Read(int p_iSocket);
    void Flood(int p_iSocket);
    void Answer(int p_iSocket, const std::string& p_strCommand);

    CPrinter m_objPrinter;
    std::string m_strOpen;  // a command that has not ended yet
    int m_iListener = -1;
    std::uint16_t m_iPort = 0;
    std::atomic<Manner> m_iManner = Manner::Answers;
    std::atomic<bool> m_bOver = false;
    std::atomic<std::uint64_t> m_iFlooded = 0;
    std::mutex m_objLock;
    std::vector<double> m_dGaps;
    std::chrono::steady_clock::time_point m_objAnswered{};
    std::thread m_objThread;
};
