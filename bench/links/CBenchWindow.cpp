#include "bench/links/CBenchWindow.h"

#include <QApplication>
#include <QComboBox>
#include <QEventLoop>
#include <QPushButton>
#include <QTimer>

#include <chrono>
#include <ctime>
#include <stdexcept>

namespace {

constexpr std::chrono::seconds ConnectLimit{5};

/// Of this thread alone: a printer may run on another.
double ProcessorMilliseconds() {
    timespec objNow{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &objNow);
    return static_cast<double>(objNow.tv_sec) * 1000 + static_cast<double>(objNow.tv_nsec) / 1e6;
}

template <typename Steps>
CBenchWindow::Spent Measure(const Steps& p_fnSteps) {
    const double dProcessor = ProcessorMilliseconds();
    const auto objBegin = std::chrono::steady_clock::now();
    p_fnSteps();
    const std::chrono::duration<double, std::milli> dWall =
        std::chrono::steady_clock::now() - objBegin;
    return {dWall.count(), ProcessorMilliseconds() - dProcessor};
}

CPlatform With(CPlatform p_objPlatform, ITcpClient& p_objTcpClient, IMessageBox& p_objBoxes) {
    const CPrinterPlatform objPrinter{p_objPlatform.m_objEventLoop, p_objPlatform.m_objClock,
                                      p_objTcpClient, p_objPlatform.m_objSerialPort,
                                      p_objPlatform.m_objUsbLibrary};
    return {objPrinter,
            {p_objBoxes, p_objPlatform.m_objFileDialog, p_objPlatform.m_objFileStore,
             p_objPlatform.m_strProgramFolder},
            p_objPlatform.m_objSerialPorts};
}

}  // namespace

CBenchWindow::CBenchWindow(std::uint16_t p_iPort, const std::string& p_strDevices)
    : m_objPlatform(p_strDevices)
    , m_objTcpClient("127.0.0.1", p_iPort, ConnectLimit)
    , m_objWindow(With(m_objPlatform.Interfaces(), m_objTcpClient, m_objBoxes)) {
    m_objWindow.show();
}

void CBenchWindow::Open(int p_iInterface) {
    auto* const cmbInterface = m_objWindow.findChild<QComboBox*>("cmbInterface");
    if (cmbInterface == nullptr) {
        throw std::runtime_error("no list of interfaces");
    }
    cmbInterface->setCurrentIndex(p_iInterface);
    QTimer objPerson;
    QObject::connect(&objPerson, &QTimer::timeout, &objPerson, [&objPerson] {
        const QWidget* const objDialog = QApplication::activeModalWidget();
        auto* const btnSet =
            objDialog != nullptr ? objDialog->findChild<QPushButton*>("btnSet") : nullptr;
        if (btnSet != nullptr) {
            objPerson.stop();
            btnSet->click();
        }
    });
    objPerson.start(std::chrono::milliseconds(5));
    Press("btnSetup");
}

CBenchWindow::Spent CBenchWindow::Press(const char* p_strButton) {
    auto* const btn = m_objWindow.findChild<QPushButton*>(p_strButton);
    if (btn == nullptr || !btn->isEnabled()) {
        throw std::runtime_error(std::string("not to be pressed: ") + p_strButton);
    }
    return Measure([&] { btn->click(); });
}

CBenchWindow::Spent CBenchWindow::Wait(double p_dSeconds) {
    constexpr double dMillisecondsPerSecond = 1000;
    return Measure([&] {
        QEventLoop objLoop;
        QTimer::singleShot(static_cast<int>(p_dSeconds * dMillisecondsPerSecond), &objLoop,
                           &QEventLoop::quit);
        objLoop.exec();
    });
}
