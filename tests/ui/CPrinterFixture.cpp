#include "tests/ui/CPrinterFixture.h"

#include <QDir>
#include <QHostAddress>
#include <QTcpSocket>

#include <algorithm>

namespace {

constexpr int LanPosition = 1;
constexpr int WatchEveryMs = 5;

}  // namespace

CPrinterFixture::CPrinterFixture(Pace p_iPace)
    : m_objWindow(Platform(p_iPace)) {
    m_objTime.start();
    QObject::connect(&m_objWatch, &QTimer::timeout, &m_objWatch, [this] {
        while (m_iArrivals.size() < m_objPrinter.Commands().size()) {
            m_iArrivals.push_back(m_objTime.elapsed());
        }
    });
}

const IClock& CPrinterFixture::Clock(Pace p_iPace) const {
    switch (p_iPace) {
    case Pace::Hasty:
        return m_objHastyClock;
    case Pace::ByHand:
        return m_objHandClock;
    case Pace::Real:
        break;
    }
    return m_objClock;
}

CPlatform CPrinterFixture::Platform(Pace p_iPace) {
    return {{m_objEventLoop, Clock(p_iPace), m_objNetwork, m_objSerialPort, m_objUsbLibrary},
            {m_objBoxes, m_objFileDialog, m_objFileStore, QDir::tempPath().toStdString()}};
}

void CPrinterFixture::WatchArrivals() {
    m_objWatch.start(WatchEveryMs);
}

void CPrinterFixture::StartPrinter(const QStringList& p_strOptions) {
    ASSERT_TRUE(m_objPrinter.Start(p_strOptions)) << m_objPrinter.ErrorText();
    m_objWindow.Form().Interface().m_objSocketPort->SetValue(m_objPrinter.Port());
}

void CPrinterFixture::TeachPrinter() {
    for (const std::string& strCommand :
         {MTaughtPrinter::Parameters, MTaughtPrinter::Adjustments, MTaughtPrinter::Address}) {
        QTcpSocket objSocket;  // a connection each: the printer may close after the first
        objSocket.connectToHost(QHostAddress::LocalHost, m_objPrinter.Port());
        objSocket.write(QByteArray::fromStdString(strCommand));
        ASSERT_TRUE(m_objPrinter.WaitForCommands(++m_iTaught, PatienceMs));
    }
}

const std::vector<std::string>& CPrinterFixture::LanSetCommands() {
    static const std::vector<std::string> strCommands =
        CSimulatorProcess::AsPrinted(MGolden::LanSetCommands());
    return strCommands;
}

void CPrinterFixture::ConnectToPrinter() {
    m_objWindow.Choose("cmbInterface", LanPosition);
    ASSERT_TRUE(m_objWindow.SetUp("127.0.0.1"));
}

std::vector<std::string> CPrinterFixture::Sent() const {
    std::vector<std::string> strCommands = m_objPrinter.Commands();
    strCommands.erase(strCommands.begin(),
                      strCommands.begin() + static_cast<std::ptrdiff_t>(m_iTaught));
    return strCommands;
}

std::size_t CPrinterFixture::AnswerCount() const {
    const auto& strLines = m_objPrinter.Lines();
    return static_cast<std::size_t>(
        std::count_if(strLines.begin(), strLines.end(), [](const std::string& p_strLine) {
            return p_strLine.find("< <01>") != std::string::npos;
        }));
}

std::vector<qint64> CPrinterFixture::Gaps() const {
    std::vector<qint64> iGaps;
    for (std::size_t i = m_iTaught + 1; i < m_iArrivals.size(); ++i) {
        iGaps.push_back(m_iArrivals[i] - m_iArrivals[i - 1]);
    }
    return iGaps;
}
