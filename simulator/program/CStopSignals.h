#pragma once

#include <QObject>

#include <functional>
#include <memory>

class QSocketNotifier;

/// Turns Ctrl-C and the system's request to end into a call from the event loop.
///
/// At most one at a time may exist: signals belong to the process.
class CStopSignals : public QObject {
public:
    /// @param p_objStop called from the event loop, once for each signal (on Windows once, when the
    ///        program ends).
    explicit CStopSignals(std::function<void()> p_objStop);
    ~CStopSignals() override;
    CStopSignals(const CStopSignals&) = delete;
    CStopSignals(CStopSignals&&) = delete;
    CStopSignals& operator=(const CStopSignals&) = delete;
    CStopSignals& operator=(CStopSignals&&) = delete;

private:
    std::function<void()> m_objStop;
    std::unique_ptr<QSocketNotifier> m_objNotifier;
};
