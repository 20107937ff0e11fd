#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

/// A pseudo-terminal in the hands of a test: the far end of a serial port, with both ends open, as
/// the driver of a real port has it.
class CTestTerminal {
public:
    CTestTerminal() {
        if (::openpty(&m_iFar, &m_iNear, nullptr, nullptr, nullptr) != 0) {
            throw std::runtime_error("no pseudo-terminal");
        }
        m_strName = ::ptsname(m_iFar);
        ::fcntl(m_iFar, F_SETFL, O_NONBLOCK);
    }
    ~CTestTerminal() {
        PullOut();
        ::close(m_iNear);
    }
    CTestTerminal(const CTestTerminal&) = delete;
    CTestTerminal& operator=(const CTestTerminal&) = delete;

    [[nodiscard]] const std::string& Name() const { return m_strName; }
    /// The end that the port has open, too.
    [[nodiscard]] int NearEnd() const { return m_iNear; }

    void Write(std::string_view p_strBytes) const {
        if (::write(m_iFar, p_strBytes.data(), p_strBytes.size()) !=
            static_cast<ssize_t>(p_strBytes.size())) {
            throw std::runtime_error("the pseudo-terminal does not take the bytes");
        }
    }

    /// How many bytes wait to be fetched by the port.
    [[nodiscard]] int Waiting() const {
        int iCount = 0;
        return ::ioctl(m_iNear, FIONREAD, &iCount) == 0 ? iCount : 0;
    }

    /// What has come; does not wait for more.
    [[nodiscard]] std::string Read() const {
        char strBlock[4096];
        const ssize_t iCount = ::read(m_iFar, strBlock, sizeof strBlock);
        return iCount > 0 ? std::string(strBlock, static_cast<std::size_t>(iCount)) : "";
    }

    /// The adapter is pulled out.
    void PullOut() {
        if (m_iFar >= 0) {
            ::close(m_iFar);
        }
        m_iFar = -1;
    }

private:
    int m_iFar = -1;
    int m_iNear = -1;
    std::string m_strName;
};
