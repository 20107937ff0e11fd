#pragma once

#include <QProcess>
#include <QStringList>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// The printer simulator's program as a child process, for tests that need a printer to talk to.
///
/// Runs on the caller's event loop: every wait keeps windows and sockets of the test alive. The
/// destructor stops the program.
class CSimulatorProcess {
public:
    CSimulatorProcess();
    ~CSimulatorProcess();
    CSimulatorProcess(const CSimulatorProcess&) = delete;
    CSimulatorProcess(CSimulatorProcess&&) = delete;
    CSimulatorProcess& operator=(const CSimulatorProcess&) = delete;
    CSimulatorProcess& operator=(CSimulatorProcess&&) = delete;

    /// Starts the program on any free port of 127.0.0.1 and waits until it listens. The further
    /// arguments are the program's own options, another address of 127.0.0.0/8 among them. False
    /// when it does not get that far.
    bool Start(const QStringList& p_strArguments = {});

    /// Starts the program on a serial line and waits until it listens there. False when it does
    /// not get that far.
    bool StartSerial(const QStringList& p_strArguments = {});

    /// Starts the program with exactly these arguments and waits for nothing.
    void Launch(const QStringList& p_strArguments);

    /// Beforehand: how many files the program may have open, and how many it may ask for.
    void LimitOpenFiles(std::uint64_t p_iFiles, std::uint64_t p_iMost);

    /// The port it listens on, the first when there are several; 0 before Start.
    [[nodiscard]] std::uint16_t Port() const { return m_iPort; }

    /// The path of the serial line that it listens on, the latest when there were several; empty
    /// before StartSerial.
    [[nodiscard]] std::string Name() const;

    /// Where its printers listen, in their order, such as 127.0.0.1:8000.
    [[nodiscard]] std::vector<std::string> Addresses() const;

    /// The whole lines printed so far, without their ends.
    [[nodiscard]] const std::vector<std::string>& Lines() const { return m_strLines; }

    /// What it has printed as errors so far.
    [[nodiscard]] std::string ErrorText() const { return m_strErrors; }

    /// The texts of the commands received so far, "{" to "|}", in their order and as printed:
    /// a byte that cannot be printed by its code, such as <FF>.
    [[nodiscard]] std::vector<std::string> Commands() const;

    /// p_strCommands as Commands gives them.
    static std::vector<std::string> AsPrinted(std::vector<std::string> p_strCommands);

    /// Waits until p_iCount commands have come; false when they have not after p_iMilliseconds.
    bool WaitForCommands(std::size_t p_iCount, int p_iMilliseconds);

    /// Waits until a printed line holds p_strText.
    bool WaitForLine(const std::string& p_strText, int p_iMilliseconds);

    /// Waits until the condition holds, running the event loop; false when it never did.
    static bool WaitUntil(const std::function<bool()>& p_objCondition, int p_iMilliseconds);

    /// Asks the program to end as Ctrl-C does, where the system can ask so.
    void Interrupt();
    /// Asks the program to end as the system does.
    void Terminate();

    /// Asks the program to write its printers' settings, and waits until it says that it has.
    bool Dump(int p_iMilliseconds);
    /// Asks the program to take its printers' power for a while.
    void PowerCycle();

    /// How long the program has kept a processor busy so far.
    [[nodiscard]] std::chrono::milliseconds ProcessorTime() const;

    /// The memory that the program holds now, in bytes.
    [[nodiscard]] std::size_t Memory() const;

    /// True from its start to its end.
    [[nodiscard]] bool IsRunning() const { return m_objProcess.state() != QProcess::NotRunning; }

    /// The program's exit code once it has ended by itself; -1 when it crashed or goes on.
    int WaitForExit(int p_iMilliseconds);

    /// Asks the program to end, kills it when it does not; its exit code, -1 when killed.
    int Stop();

private:
    bool LaunchAndListen(const QStringList& p_strArguments, const std::string& p_strListening);
    void ReadOutput();
    void Signal(int p_iSignal);

    QProcess m_objProcess;
    std::string m_strUnfinished;
    std::string m_strErrors;
    std::vector<std::string> m_strLines;
    std::uint16_t m_iPort = 0;
};
