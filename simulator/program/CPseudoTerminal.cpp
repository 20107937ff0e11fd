#include "simulator/program/CPseudoTerminal.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
#include <termios.h>
#include <unistd.h>

namespace {

/// The other end, opened for a moment.
class COtherEnd {
public:
    explicit COtherEnd(const std::string& p_strName)
        : m_iDescriptor(::open(p_strName.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {}
    ~COtherEnd() {
        if (m_iDescriptor >= 0) {
            ::close(m_iDescriptor);
        }
    }
    COtherEnd(const COtherEnd&) = delete;
    COtherEnd& operator=(const COtherEnd&) = delete;

    /// No echo, no lines, no characters with a meaning.
    bool MakeRaw() {
        termios objSettings{};
        if (::tcgetattr(m_iDescriptor, &objSettings) != 0) {
            return false;
        }
        ::cfmakeraw(&objSettings);
        return ::tcsetattr(m_iDescriptor, TCSANOW, &objSettings) == 0;
    }

    void Discard() { ::tcflush(m_iDescriptor, TCIFLUSH); }

private:
    int m_iDescriptor;
};

}  // namespace

CPseudoTerminal::CPseudoTerminal()
    : m_iDescriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    const char* strName = nullptr;
    if (m_iDescriptor >= 0 && ::grantpt(m_iDescriptor) == 0 && ::unlockpt(m_iDescriptor) == 0 &&
        ::fcntl(m_iDescriptor, F_SETFL, O_NONBLOCK) == 0) {
        strName = ::ptsname(m_iDescriptor);
    }
    if (strName == nullptr || !COtherEnd(strName).MakeRaw()) {
        const int iError = errno;
        if (m_iDescriptor >= 0) {
            ::close(m_iDescriptor);
        }
        throw std::system_error(iError, std::generic_category(), "Cannot open a pseudo-terminal");
    }
    m_strName = strName;
}

CPseudoTerminal::~CPseudoTerminal() {
    ::close(m_iDescriptor);
}

int CPseudoTerminal::Events() const {
    pollfd objPoll{m_iDescriptor, POLLIN, 0};
    return ::poll(&objPoll, 1, 0) < 0 ? 0 : objPoll.revents;
}

bool CPseudoTerminal::IsOpened() const {
    return (Events() & POLLHUP) == 0;
}

bool CPseudoTerminal::HasBytes() const {
    return (Events() & POLLIN) != 0;
}

std::vector<std::uint8_t> CPseudoTerminal::Read(std::size_t p_iMost) {
    std::vector<std::uint8_t> objBytes(p_iMost);
    const ssize_t iCount = ::read(m_iDescriptor, objBytes.data(), objBytes.size());
    objBytes.resize(iCount > 0 ? static_cast<std::size_t>(iCount) : 0);
    return objBytes;
}

std::size_t CPseudoTerminal::Write(std::string_view p_strBytes) {
    const ssize_t iCount = ::write(m_iDescriptor, p_strBytes.data(), p_strBytes.size());
    return iCount > 0 ? static_cast<std::size_t>(iCount) : 0;
}

void CPseudoTerminal::Discard() {
    COtherEnd(m_strName).Discard();
}
