#include "tests/simulator/CSimulatorProcess.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <algorithm>
#include <fstream>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace {

constexpr int PatienceMs = 20'000;  // for a program that is expected to do as it is told

/// How a line begins that tells where the program listens.
const std::string Listening = "Listening on ";

}  // namespace

CSimulatorProcess::CSimulatorProcess() {
    QObject::connect(&m_objProcess, &QProcess::readyReadStandardOutput, &m_objProcess,
                     [this] { ReadOutput(); });
    QObject::connect(&m_objProcess, &QProcess::readyReadStandardError, &m_objProcess,
                     [this] { m_strErrors += m_objProcess.readAllStandardError().toStdString(); });
}

CSimulatorProcess::~CSimulatorProcess() {
    Stop();
}

bool CSimulatorProcess::Start(const QStringList& p_strArguments) {
    if (!LaunchAndListen(QStringList{"--port", "0"} + p_strArguments, "127.")) {
        return false;
    }
    const QString strPort = QString::fromStdString(m_strLines.front()).section(':', -1);
    m_iPort = strPort.toUShort();
    return m_iPort != 0;
}

bool CSimulatorProcess::StartSerial(const QStringList& p_strArguments) {
    return LaunchAndListen(QStringList{"--serial"} + p_strArguments, "/");
}

bool CSimulatorProcess::LaunchAndListen(const QStringList& p_strArguments,
                                        const std::string& p_strListening) {
    Launch(p_strArguments);
    const auto bReady = [this] {
        return !m_strLines.empty() || m_objProcess.state() == QProcess::NotRunning;
    };
    return WaitUntil(bReady, PatienceMs) && !m_strLines.empty() &&
           m_strLines.front().starts_with(Listening + p_strListening);
}

std::string CSimulatorProcess::Name() const {
    std::string strName;
    for (const std::string& strLine : m_strLines) {
        if (strLine.starts_with(Listening + "/")) {
            strName = strLine.substr(Listening.size());
        }
    }
    return strName;
}

std::vector<std::string> CSimulatorProcess::Addresses() const {
    std::vector<std::string> strAddresses;
    for (const std::string& strLine : m_strLines) {
        if (strLine.starts_with(Listening)) {
            strAddresses.push_back(strLine.substr(Listening.size()));
        }
    }
    return strAddresses;
}

void CSimulatorProcess::Launch(const QStringList& p_strArguments) {
    m_objProcess.start(VARDEN_SIMULATOR_PROGRAM, p_strArguments);
}

void CSimulatorProcess::ReadOutput() {
    m_strUnfinished += m_objProcess.readAllStandardOutput().toStdString();
    std::size_t iBegin = 0;
    for (std::size_t iEnd = 0; (iEnd = m_strUnfinished.find('\n', iBegin)) != std::string::npos;
         iBegin = iEnd + 1) {
        m_strLines.push_back(m_strUnfinished.substr(iBegin, iEnd - iBegin));
    }
    m_strUnfinished.erase(0, iBegin);
}

std::vector<std::string> CSimulatorProcess::Commands() const {
    constexpr std::size_t iMark = 2;  // "> "
    std::vector<std::string> strCommands;
    for (const std::string& strLine : m_strLines) {
        const std::size_t iEnd = strLine.find("|}");
        if (strLine.starts_with("> ") && iEnd != std::string::npos) {
            strCommands.push_back(strLine.substr(iMark, iEnd));
        }
    }
    return strCommands;
}

std::vector<std::string> CSimulatorProcess::AsPrinted(std::vector<std::string> p_strCommands) {
    for (std::string& strCommand : p_strCommands) {
        for (std::size_t i = 0; (i = strCommand.find('\xFF', i)) != std::string::npos;) {
            strCommand.replace(i, 1, "<FF>");
        }
    }
    return p_strCommands;
}

bool CSimulatorProcess::WaitForCommands(std::size_t p_iCount, int p_iMilliseconds) {
    return WaitUntil([&] { return Commands().size() >= p_iCount; }, p_iMilliseconds);
}

bool CSimulatorProcess::WaitForLine(const std::string& p_strText, int p_iMilliseconds) {
    const auto bHolds = [&](const std::string& p_strLine) {
        return p_strLine.find(p_strText) != std::string::npos;
    };
    return WaitUntil([&] { return std::any_of(m_strLines.begin(), m_strLines.end(), bHolds); },
                     p_iMilliseconds);
}

bool CSimulatorProcess::WaitUntil(const std::function<bool()>& p_objCondition,
                                  int p_iMilliseconds) {
    const QDeadlineTimer objDeadline(p_iMilliseconds);
    QTimer objWake;  // so that the deadline is seen even when nothing else happens
    objWake.start(20);
    while (!p_objCondition()) {
        if (objDeadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void CSimulatorProcess::Interrupt() {
#ifdef Q_OS_UNIX
    Signal(SIGINT);
#else
    m_objProcess.terminate();
#endif
}

#ifdef Q_OS_UNIX

void CSimulatorProcess::Signal(int p_iSignal) {
    if (m_objProcess.processId() > 0) {
        ::kill(static_cast<pid_t>(m_objProcess.processId()), p_iSignal);
    }
}

void CSimulatorProcess::LimitOpenFiles(std::uint64_t p_iFiles, std::uint64_t p_iMost) {
    m_objProcess.setChildProcessModifier([p_iFiles, p_iMost] {
        const rlimit objLimit{p_iFiles, p_iMost};
        ::setrlimit(RLIMIT_NOFILE, &objLimit);
    });
}

bool CSimulatorProcess::Dump(int p_iMilliseconds) {
    const auto iWritten = [this] {
        return std::count_if(m_strLines.begin(), m_strLines.end(), [](const std::string& p_str) {
            return p_str.starts_with("Settings written to ");
        });
    };
    const auto iBefore = iWritten();
    Signal(SIGUSR1);
    return WaitUntil([&] { return iWritten() > iBefore; }, p_iMilliseconds);
}

void CSimulatorProcess::PowerCycle() {
    Signal(SIGUSR2);
}

std::chrono::milliseconds CSimulatorProcess::ProcessorTime() const {
    // Behind the name in brackets: eleven other things, then the program's time and the system's.
    std::ifstream objFile("/proc/" + std::to_string(m_objProcess.processId()) + "/stat");
    std::string strText;
    std::getline(objFile, strText, ')');
    for (int i = 0; i < 11; ++i) {
        objFile >> strText;
    }
    long iProgram = 0;
    long iSystem = 0;
    objFile >> iProgram >> iSystem;
    return std::chrono::milliseconds((iProgram + iSystem) * 1000 / ::sysconf(_SC_CLK_TCK));
}

std::size_t CSimulatorProcess::Memory() const {
    // All that it may use, then what of it is there, in pages.
    std::ifstream objFile("/proc/" + std::to_string(m_objProcess.processId()) + "/statm");
    std::size_t iAll = 0;
    std::size_t iThere = 0;
    objFile >> iAll >> iThere;
    return iThere * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

#endif

void CSimulatorProcess::Terminate() {
    m_objProcess.terminate();
}

int CSimulatorProcess::WaitForExit(int p_iMilliseconds) {
    const bool bEnded =
        WaitUntil([this] { return m_objProcess.state() == QProcess::NotRunning; }, p_iMilliseconds);
    ReadOutput();
    return bEnded && m_objProcess.exitStatus() == QProcess::NormalExit ? m_objProcess.exitCode()
                                                                       : -1;
}

int CSimulatorProcess::Stop() {
    if (m_objProcess.state() == QProcess::NotRunning) {
        return WaitForExit(0);
    }
    Terminate();
    const int iExitCode = WaitForExit(PatienceMs);
    if (m_objProcess.state() != QProcess::NotRunning) {
        m_objProcess.kill();
        m_objProcess.waitForFinished();
    }
    return iExitCode;
}
