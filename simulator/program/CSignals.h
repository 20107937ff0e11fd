#pragma once

#include <QObject>

#include <functional>
#include <memory>

class QSocketNotifier;

/// Turns the system's signals into calls from the event loop.
///
/// At most one at a time may exist: signals belong to the process.
class CSignals : public QObject {
public:
    /// What is asked for. One call for each signal; on Windows there is only the first, once, when
    /// the program ends.
    struct Asked {
        std::function<void()> m_fnStop;        ///< Ctrl-C, and the system's request to end
        std::function<void()> m_fnDump;        ///< SIGUSR1
        std::function<void()> m_fnPowerCycle;  ///< SIGUSR2
    };

    explicit CSignals(Asked p_objAsked);
    ~CSignals() override;
    CSignals(const CSignals&) = delete;
    CSignals(CSignals&&) = delete;
    CSignals& operator=(const CSignals&) = delete;
    CSignals& operator=(CSignals&&) = delete;

private:
    void Call(int p_iSignal) const;

    Asked m_objAsked;
    std::unique_ptr<QSocketNotifier> m_objNotifier;
};
