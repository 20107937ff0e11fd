#include "bench/frame/CFirstFrame.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QLabel>
#include <QMetaObject>
#include <QPushButton>
#include <QTabWidget>

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

namespace {

constexpr double NanosecondsPerMillisecond = 1e6;

double Milliseconds(clockid_t p_iClock) {
    timespec objNow{};
    ::clock_gettime(p_iClock, &objNow);
    return static_cast<double>(objNow.tv_sec) * 1000 +
           static_cast<double>(objNow.tv_nsec) / NanosecondsPerMillisecond;
}

/// The most memory that the program has had, in KiB.
std::string PeakMemory() {
    std::ifstream objStatus("/proc/self/status");
    for (std::string strWord; objStatus >> strWord;) {
        if (strWord == "VmHWM:") {
            objStatus >> strWord;
            return strWord;
        }
    }
    return "0";
}

template <typename Control>
int Count() {
    int iCount = 0;
    for (const QWidget* const objWidget : QApplication::allWidgets()) {
        const auto* const objControl = qobject_cast<const Control*>(objWidget);
        iCount += objControl != nullptr ? 1 : 0;
    }
    return iCount;
}

/// Of all lists together.
int CountEntries() {
    int iCount = 0;
    for (const QWidget* const objWidget : QApplication::allWidgets()) {
        const auto* const cmb = qobject_cast<const QComboBox*>(objWidget);
        iCount += cmb != nullptr ? cmb->count() : 0;
    }
    return iCount;
}

[[noreturn]] void Report() {
    const double dWall = Milliseconds(CLOCK_MONOTONIC);
    const double dProcessor = Milliseconds(CLOCK_PROCESS_CPUTIME_ID);
    const double dStarted = qEnvironmentVariable("VARDEN_STARTED").toDouble();
    std::ofstream objFile(qEnvironmentVariable("VARDEN_FIRST_FRAME").toStdString());
    objFile << "{\"wall_ms\": " << dWall - dStarted / NanosecondsPerMillisecond
            << ", \"processor_ms\": " << dProcessor << ", \"peak_kib\": " << PeakMemory()
            << ", \"lists\": " << Count<QComboBox>() << ", \"entries\": " << CountEntries()
            << ", \"spin_boxes\": " << Count<QAbstractSpinBox>()
            << ", \"labels\": " << Count<QLabel>() << ", \"buttons\": " << Count<QPushButton>()
            << ", \"tabs\": " << Count<QTabWidget>() << "}\n"
            << std::flush;
    std::_Exit(0);
}

void Begin() {
    if (qEnvironmentVariableIsSet("VARDEN_FIRST_FRAME")) {
        QCoreApplication::instance()->installEventFilter(
            new CFirstFrame(QCoreApplication::instance()));
    }
}

}  // namespace

CFirstFrame::CFirstFrame(QObject* p_objParent)
    : QObject(p_objParent) {}

bool CFirstFrame::eventFilter(QObject* p_objWatched, QEvent* p_objEvent) {
    if (!m_bPainted && p_objEvent->type() == QEvent::Paint && p_objWatched->isWidgetType()) {
        m_bPainted = true;
        // Behind the whole window, which is painted and shown in one go.
        QMetaObject::invokeMethod(
            this, [] { Report(); }, Qt::QueuedConnection);
    }
    return false;
}

Q_COREAPP_STARTUP_FUNCTION(Begin)
