#include "simulator/program/CSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <utility>

#ifdef Q_OS_WIN

#include <windows.h>

namespace {

/// Runs on a thread of the system's own.
BOOL WINAPI OnConsoleEvent(DWORD p_iEvent) {
    if (p_iEvent != CTRL_C_EVENT && p_iEvent != CTRL_BREAK_EVENT) {
        return FALSE;
    }
    QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit,
                              Qt::QueuedConnection);
    return TRUE;
}

}  // namespace

CSignals::CSignals(Asked p_objAsked)
    : m_objAsked(std::move(p_objAsked)) {
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
            m_objAsked.m_fnStop);
    SetConsoleCtrlHandler(&OnConsoleEvent, TRUE);
}

CSignals::~CSignals() {
    SetConsoleCtrlHandler(&OnConsoleEvent, FALSE);
}

#else

#include <array>
#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace {

// A signal handler gets no argument: where it writes to must be known to the file.
std::atomic<int> g_iWriteEnd{-1};
static_assert(std::atomic<int>::is_always_lock_free);

constexpr std::array<int, 4> Signals{SIGINT, SIGTERM, SIGUSR1, SIGUSR2};

void OnSignal(int p_iSignal) {
    const auto cSignal = static_cast<char>(p_iSignal);
    // A full pipe already holds enough to wake the event loop.
    [[maybe_unused]] const auto iWritten = ::write(g_iWriteEnd.load(), &cSignal, 1);
}

void Install(void (*p_objHandler)(int)) {
    struct sigaction objAction {};
    objAction.sa_handler = p_objHandler;
    sigemptyset(&objAction.sa_mask);
    objAction.sa_flags = SA_RESTART;
    for (const int iSignal : Signals) {
        ::sigaction(iSignal, &objAction, nullptr);
    }
}

}  // namespace

CSignals::CSignals(Asked p_objAsked)
    : m_objAsked(std::move(p_objAsked)) {
    int iEnds[2]{};
    if (::pipe(iEnds) != 0) {
        throw std::runtime_error("no pipe for the signals");
    }
    for (const int iEnd : iEnds) {
        ::fcntl(iEnd, F_SETFD, FD_CLOEXEC);
        ::fcntl(iEnd, F_SETFL, O_NONBLOCK);
    }
    g_iWriteEnd = iEnds[1];
    m_objNotifier = std::make_unique<QSocketNotifier>(iEnds[0], QSocketNotifier::Read);
    connect(m_objNotifier.get(), &QSocketNotifier::activated, this, [this] {
        char cSignal = 0;
        if (::read(static_cast<int>(m_objNotifier->socket()), &cSignal, 1) == 1) {
            Call(cSignal);
        }
    });
    Install(&OnSignal);
}

void CSignals::Call(int p_iSignal) const {
    switch (p_iSignal) {
    case SIGUSR1:
        m_objAsked.m_fnDump();
        break;
    case SIGUSR2:
        m_objAsked.m_fnPowerCycle();
        break;
    default:
        m_objAsked.m_fnStop();
        break;
    }
}

CSignals::~CSignals() {
    Install(SIG_DFL);
    const auto iReadEnd = static_cast<int>(m_objNotifier->socket());
    m_objNotifier.reset();
    ::close(iReadEnd);
    ::close(g_iWriteEnd.exchange(-1));
}

#endif
