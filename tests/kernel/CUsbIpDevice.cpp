#include "tests/kernel/CUsbIpDevice.h"

#include "tests/kernel/MDescriptors.h"
#include "tests/simulator/MBytes.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <utility>

namespace {

using std::chrono::steady_clock;

// Long enough for the program to be waiting for the transfer.
constexpr std::chrono::milliseconds UnplugDelay{200};

constexpr std::chrono::milliseconds Forever = std::chrono::hours(1);

// Type and request of a setup, together.
constexpr unsigned Ask(unsigned p_iType, unsigned p_iRequest) {
    constexpr unsigned iByte = 8;
    return p_iType << iByte | p_iRequest;
}

constexpr unsigned GetDescriptor = Ask(0x80, 6);
constexpr unsigned GetDeviceStatus = Ask(0x80, 0);
constexpr unsigned GetDeviceId = Ask(0xA1, 0);
constexpr unsigned SetConfiguration = Ask(0x00, 9);
constexpr unsigned SetInterface = Ask(0x01, 11);
constexpr unsigned ClearEndpointFeature = Ask(0x02, 1);

// The longest wait for the socket, in milliseconds, until something is due.
int Milliseconds(const std::optional<steady_clock::time_point>& p_objDue) {
    if (!p_objDue) {
        return -1;
    }
    const auto iLeft =
        std::chrono::ceil<std::chrono::milliseconds>(*p_objDue - steady_clock::now());
    return static_cast<int>(std::max<std::int64_t>(0, iLeft.count()));
}

}  // namespace

CUsbIpDevice::CUsbIpDevice(CDeviceSettings p_objSettings, int p_iSocket,
                           std::function<void()> p_fnUnplug)
    : m_objSettings(std::move(p_objSettings))
    , m_iSocket(p_iSocket)
    , m_fnUnplug(std::move(p_fnUnplug))
    , m_objSession(1, m_objPrinter, m_objSettings.m_objFaults, *this)
    , m_bHalted(m_objSettings.m_bHalted) {
    m_objThread = std::thread([this] { Run(); });
}

CUsbIpDevice::~CUsbIpDevice() {
    ::shutdown(m_iSocket, SHUT_RDWR);
    m_objThread.join();
    ::close(m_iSocket);
}

std::vector<std::string> CUsbIpDevice::Writes() const {
    const std::lock_guard objLock(m_objMutex);
    return m_strWrites;
}

std::size_t CUsbIpDevice::WritesGivenUp() const {
    const std::lock_guard objLock(m_objMutex);
    return m_iWritesGivenUp;
}

std::size_t CUsbIpDevice::Waiting() const {
    const std::lock_guard objLock(m_objMutex);
    return m_iWaiting;
}

bool CUsbIpDevice::HasTaken() const {
    return !Writes().empty();
}

// The cases look at bytes, not at the session's lines.
void CUsbIpDevice::Line(std::size_t /*p_iConnection*/, std::string_view /*p_strLine*/) {}

void CUsbIpDevice::Run() {
    while (true) {
        pollfd objPoll{m_iSocket, POLLIN, 0};
        if (::poll(&objPoll, 1, Milliseconds(Work())) > 0) {
            const auto objRequest = MUsbIp::Read(m_iSocket);
            if (!objRequest) {
                return;
            }
            Take(*objRequest);
        }
    }
}

void CUsbIpDevice::Take(const MUsbIp::Request& p_objRequest) {
    if (p_objRequest.m_iCommand == MUsbIp::Command::Unlink) {
        GiveUp(p_objRequest);
    } else if (p_objRequest.m_iEndpoint == 0) {
        Control(p_objRequest);
    } else if (p_objRequest.m_bIn) {
        m_objReading.push_back(p_objRequest);
        if (m_objSettings.m_iUnplug == CDeviceSettings::Unplug::InARead && HasTaken()) {
            UnplugSoon();
        }
    } else {
        const auto iTime = m_objSettings.m_iWriteTime.value_or(Forever);
        m_objWriting.push_back({p_objRequest, steady_clock::now() + iTime});
        if (m_objSettings.m_iUnplug == CDeviceSettings::Unplug::InAWrite) {
            UnplugSoon();
        }
    }
}

void CUsbIpDevice::Control(const MUsbIp::Request& p_objRequest) {
    const MUsbIp::Setup& objSetup = p_objRequest.m_objSetup;
    if (Ask(objSetup.m_iType, objSetup.m_iRequest) == GetDeviceId &&
        ++m_iAsked == m_objSettings.m_iUnanswered) {
        m_objUnanswered.push_back(p_objRequest);
        return;
    }
    const auto strTold = Tell(p_objRequest.m_objSetup);
    if (!strTold) {
        MUsbIp::WriteSubmitted(m_iSocket, p_objRequest.m_iNumber, -EPIPE, 0);
        return;
    }
    const std::string strBytes = strTold->substr(0, p_objRequest.m_iLength);
    MUsbIp::WriteSubmitted(m_iSocket, p_objRequest.m_iNumber, 0, strBytes.size(), strBytes);
}

std::optional<std::string> CUsbIpDevice::Descriptor(unsigned p_iKind) const {
    switch (p_iKind) {
    case 1:
        return MDescriptors::Device();
    case 2:
        return MDescriptors::Configuration(m_objSettings);
    default:
        return std::nullopt;
    }
}

std::optional<std::string> CUsbIpDevice::Tell(const MUsbIp::Setup& p_objSetup) {
    constexpr unsigned iByte = 8;
    switch (Ask(p_objSetup.m_iType, p_objSetup.m_iRequest)) {
    case GetDescriptor:
        return Descriptor(p_objSetup.m_iValue >> iByte);
    case GetDeviceStatus:
        return std::string(2, '\0');
    case GetDeviceId:
        // The interface stands in the upper byte, its alternate setting in the lower.
        if (!m_objSettings.m_bPrinter || p_objSetup.m_iIndex != m_objSettings.m_iPrinterInterface
                                                                    << iByte) {
            return std::nullopt;
        }
        return m_objSettings.m_strIdentification;
    case ClearEndpointFeature:
        m_bHalted = m_bHalted && p_objSetup.m_iIndex != MDescriptors::OutEndpoint;
        return std::string();
    case SetConfiguration:
    case SetInterface:
        return std::string();
    default:
        return std::nullopt;
    }
}

void CUsbIpDevice::GiveUp(const MUsbIp::Request& p_objRequest) {
    const auto fnIsIt = [&](const MUsbIp::Request& p_objWaiting) {
        return p_objWaiting.m_iNumber == p_objRequest.m_iUnlink;
    };
    const auto iOthers =
        std::erase_if(m_objReading, fnIsIt) + std::erase_if(m_objUnanswered, fnIsIt);
    const auto iWrites = std::erase_if(
        m_objWriting, [&](const Transfer& p_objWrite) { return fnIsIt(p_objWrite.m_objRequest); });
    const bool bFound = iOthers + iWrites > 0;
    {
        const std::lock_guard objLock(m_objMutex);
        m_iWritesGivenUp += iWrites;
    }
    MUsbIp::WriteUnlinked(m_iSocket, p_objRequest.m_iNumber, bFound ? -ECONNRESET : 0);
}

void CUsbIpDevice::UnplugSoon() {
    m_objUnplug = steady_clock::now() + UnplugDelay;
}

std::optional<CUsbIpDevice::Time> CUsbIpDevice::Work() {
    const Time objNow = steady_clock::now();
    if (m_objUnplug && *m_objUnplug <= objNow) {
        m_objUnplug.reset();
        m_fnUnplug();
    }
    while (!m_objWriting.empty() && m_objWriting.front().m_objDue <= objNow) {
        EndWrite(m_objWriting.front().m_objRequest);
        m_objWriting.pop_front();
    }
    while (!m_objSteps.empty() && m_objSteps.front().m_objDue <= objNow) {
        CarryOut(m_objSteps.front().m_objStep);
        m_objSteps.pop_front();
    }
    EndReads();

    std::optional<Time> objNext = m_objUnplug;
    const auto fnEarlier = [&](Time p_objTime) {
        objNext = objNext ? std::min(*objNext, p_objTime) : p_objTime;
    };
    if (!m_objWriting.empty()) {
        fnEarlier(m_objWriting.front().m_objDue);
    }
    if (!m_objSteps.empty()) {
        fnEarlier(m_objSteps.front().m_objDue);
    }
    return objNext;
}

void CUsbIpDevice::CarryOut(const CWireStep& p_objStep) {
    if (!p_objStep.m_strBytes.empty() && m_objSettings.m_bEmptyAnswer) {
        m_strAnswers.emplace_back();
    }
    if (p_objStep.m_strBytes.starts_with('{')) {
        m_strAnswers.push_back(std::string("\x02\x00", 2) + p_objStep.m_strBytes);
    } else if (!p_objStep.m_strBytes.empty()) {
        m_strAnswers.push_back(p_objStep.m_strBytes);
    }
    if (p_objStep.m_bClose) {
        UnplugSoon();
    }
}

void CUsbIpDevice::EndWrite(const MUsbIp::Request& p_objRequest) {
    if (const int iError = m_bHalted ? -EPIPE : m_objSettings.m_iWriteError) {
        MUsbIp::WriteSubmitted(m_iSocket, p_objRequest.m_iNumber, iError, 0);
        return;
    }
    const std::size_t iMost = m_objSettings.m_iMostWritten;
    const std::string strTaken =
        p_objRequest.m_strBytes.substr(0, iMost > 0 ? iMost : std::string::npos);
    if (m_objSettings.m_bWritesNothing) {
        MUsbIp::WriteSubmitted(m_iSocket, p_objRequest.m_iNumber, 0, 0);
        return;
    }
    {
        const std::lock_guard objLock(m_objMutex);
        m_strWrites.push_back(strTaken);
    }
    MUsbIp::WriteSubmitted(m_iSocket, p_objRequest.m_iNumber, 0, strTaken.size());
    Answer(m_objSession.Received(MBytes::Of(strTaken)));
}

void CUsbIpDevice::Answer(const std::vector<CWireStep>& p_objSteps) {
    for (const CWireStep& objStep : p_objSteps) {
        const Time objBegin = m_objSteps.empty() ? steady_clock::now() : m_objSteps.back().m_objDue;
        m_objSteps.push_back({objBegin + objStep.m_iDelay, objStep});
    }
}

void CUsbIpDevice::EndReads() {
    const bool bError = m_objSettings.m_iReadError != 0 && HasTaken();
    while (!m_objReading.empty() && (bError || !m_strAnswers.empty() || m_objSettings.m_strIdle)) {
        if (m_strAnswers.empty() && m_objSettings.m_strIdle) {
            m_strAnswers.push_back(*m_objSettings.m_strIdle);
        }
        EndRead(m_objReading.front());
        m_objReading.pop_front();
    }
    const std::lock_guard objLock(m_objMutex);
    m_iWaiting = m_strAnswers.size();
}

void CUsbIpDevice::EndRead(const MUsbIp::Request& p_objRequest) {
    if (m_objSettings.m_iReadError != 0) {
        MUsbIp::WriteSubmitted(m_iSocket, p_objRequest.m_iNumber, m_objSettings.m_iReadError, 0);
        return;
    }
    const std::string strAnswer = m_strAnswers.front();
    const std::size_t iLength = p_objRequest.m_iLength;
    m_strAnswers.pop_front();
    if (strAnswer.size() > iLength && iLength % MDescriptors::PacketSize != 0) {
        // So does a controller end a read when a packet does not fit in what is left of it.
        MUsbIp::WriteSubmitted(m_iSocket, p_objRequest.m_iNumber, -EOVERFLOW, 0);
        return;
    }
    if (strAnswer.size() > iLength) {
        m_strAnswers.push_front(strAnswer.substr(iLength));
    }
    const std::string strTaken = strAnswer.substr(0, iLength);
    MUsbIp::WriteSubmitted(m_iSocket, p_objRequest.m_iNumber, 0, strTaken.size(), strTaken);
}
