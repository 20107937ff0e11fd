#include "simulator/program/CStopSignals.h"

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

CStopSignals::CStopSignals(std::function<void()> p_objStop)
    : m_objStop(std::move(p_objStop)) {
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this, m_objStop);
    SetConsoleCtrlHandler(&OnConsoleEvent, TRUE);
}

CStopSignals::~CStopSignals() {
    SetConsoleCtrlHandler(&OnConsoleEvent, FALSE);
}

#else

#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace {

// A signal handler gets no argument: where it writes to must be known to the file.
std::atomic<int> g_iWriteEnd{-1};
static_assert(std::atomic<int>::is_always_lock_free);

void OnSignal(int /*p_iSignal*/) {
    const char cAny = 0;
    // A full pipe already holds enough to wake the event loop.
    [[maybe_unused]] const auto iWritten = ::write(g_iWriteEnd.load(), &cAny, 1);
}

void Install(void (*p_objHandler)(int)) {
    struct sigaction objAction {};
    objAction.sa_handler = p_objHandler;
    sigemptyset(&objAction.sa_mask);
    objAction.sa_flags = SA_RESTART;
    ::sigaction(SIGINT, &objAction, nullptr);
    ::sigaction(SIGTERM, &objAction, nullptr);
}

}  // namespace

CStopSignals::CStopSignals(std::function<void()> p_objStop)
    : m_objStop(std::move(p_objStop)) {
    int iEnds[2]{};
    if (::pipe(iEnds) != 0) {
        throw std::runtime_error("no pipe for the stop signals");
    }
    for (const int iEnd : iEnds) {
        ::fcntl(iEnd, F_SETFD, FD_CLOEXEC);
        ::fcntl(iEnd, F_SETFL, O_NONBLOCK);
    }
    g_iWriteEnd = iEnds[1];
    m_objNotifier = std::make_unique<QSocketNotifier>(iEnds[0], QSocketNotifier::Read);
    connect(m_objNotifier.get(), &QSocketNotifier::activated, this, [this] {
        char cAny = 0;
        if (::read(static_cast<int>(m_objNotifier->socket()), &cAny, 1) == 1) {
            m_objStop();
        }
    });
    Install(&OnSignal);
}

CStopSignals::~CStopSignals() {
    Install(SIG_DFL);
    const auto iReadEnd = static_cast<int>(m_objNotifier->socket());
    m_objNotifier.reset();
    ::close(iReadEnd);
    ::close(g_iWriteEnd.exchange(-1));
}

#endif
