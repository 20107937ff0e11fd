#include "bench/links/CBenchPrinter.h"

#include <array>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int LookMilliseconds = 20;
constexpr std::size_t BlockBytes = 65536;

/// How long a command takes: with none, the answer would be there before the tool has got round to
/// showing what it does, which no printer manages.
constexpr std::chrono::milliseconds AnswerTime{5};

/// A descriptor that is closed with this.
struct Closed {
    int m_iDescriptor;
    ~Closed() { ::close(m_iDescriptor); }
};

bool IsReady(int p_iSocket, std::int16_t p_iFor, int p_iMilliseconds) {
    pollfd objPoll{p_iSocket, p_iFor, 0};
    return ::poll(&objPoll, 1, p_iMilliseconds) > 0;
}

}  // namespace

CBenchPrinter::CBenchPrinter()
    : m_iListener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in objAddress{};
    objAddress.sin_family = AF_INET;
    objAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t iLength = sizeof objAddress;
    auto* const objGeneric = reinterpret_cast<sockaddr*>(&objAddress);
    if (::bind(m_iListener, objGeneric, iLength) != 0 || ::listen(m_iListener, 1) != 0 ||
        ::getsockname(m_iListener, objGeneric, &iLength) != 0) {
        throw std::runtime_error("no port to listen on");
    }
    m_iPort = ntohs(objAddress.sin_port);
    m_objThread = std::thread([this] { Run(); });
}

CBenchPrinter::~CBenchPrinter() {
    m_bOver = true;
    m_objThread.join();
    ::close(m_iListener);
}

std::vector<double> CBenchPrinter::TakeGaps() {
    const std::scoped_lock objLock(m_objLock);
    return std::exchange(m_dGaps, {});
}

void CBenchPrinter::Run() {
    while (!m_bOver) {
        if (IsReady(m_iListener, POLLIN, LookMilliseconds)) {
            const Closed objSocket{::accept4(m_iListener, nullptr, nullptr, SOCK_CLOEXEC)};
            const int iOn = 1;
            ::setsockopt(objSocket.m_iDescriptor, IPPROTO_TCP, TCP_NODELAY, &iOn, sizeof iOn);
            Serve(objSocket.m_iDescriptor);
        }
    }
}

void CBenchPrinter::Serve(int p_iSocket) {
    m_strOpen.clear();
    m_objAnswered = {};
    std::array<char, 1> arrNext{};
    while (!m_bOver) {
        const Manner iManner = m_iManner;
        if (iManner != Manner::Answers && iManner != Manner::Silent) {
            Flood(p_iSocket);
        } else if (IsReady(p_iSocket, POLLIN, LookMilliseconds)) {
            if (::recv(p_iSocket, arrNext.data(), 1, MSG_PEEK) <= 0) {
                return;
            }
            Read(p_iSocket);
        }
    }
}

void CBenchPrinter::Read(int p_iSocket) {
    std::array<char, 4096> arrBlock{};
    const ssize_t iCount = ::recv(p_iSocket, arrBlock.data(), arrBlock.size(), 0);
    const auto objNow = std::chrono::steady_clock::now();
    m_strOpen.append(arrBlock.data(), static_cast<std::size_t>(iCount));
    if (!m_strOpen.ends_with("|}")) {
        return;
    }
    if (m_objAnswered.time_since_epoch().count() != 0) {
        const std::scoped_lock objLock(m_objLock);
        m_dGaps.push_back(
            std::chrono::duration<double, std::milli>(objNow - m_objAnswered).count());
    }
    const std::string strCommand = std::exchange(m_strOpen, {});
    if (m_iManner == Manner::Answers) {
        Answer(p_iSocket, strCommand);
    }
}

void CBenchPrinter::Answer(int p_iSocket, const std::string& p_strCommand) {
    const std::string strAnswer = m_objPrinter.Handle(p_strCommand).m_strAnswer;
    std::this_thread::sleep_for(AnswerTime);
    // Before it goes out: whoever waits for it may run on another processor at once.
    m_objAnswered = std::chrono::steady_clock::now();
    ::send(p_iSocket, strAnswer.data(), strAnswer.size(), MSG_NOSIGNAL);
}

void CBenchPrinter::Flood(int p_iSocket) {
    const Manner iManner = m_iManner;
    const std::string strBlock(iManner == Manner::SingleBytes ? 1 : BlockBytes,
                               iManner == Manner::Heads ? '{' : '~');
    while (!m_bOver && m_iManner == iManner) {
        if (IsReady(p_iSocket, POLLOUT, LookMilliseconds)) {
            const ssize_t iSent =
                ::send(p_iSocket, strBlock.data(), strBlock.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
            m_iFlooded += iSent > 0 ? static_cast<std::uint64_t>(iSent) : 0;
        }
    }
}
