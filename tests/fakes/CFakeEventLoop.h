#pragma once

#include "platform/IEventLoop.h"
#include "tests/fakes/CFakeClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <stdexcept>
#include <utility>

/// An event loop whose events are the actions that the test has scheduled. Each yield moves the
/// clock by a step and runs what is due by then, in the order in which it was scheduled; actions
/// may yield themselves.
///
/// A wait that never ends fails the test instead of hanging it.
class CFakeEventLoop : public IEventLoop {
public:
    using Action = std::function<void()>;

    static constexpr std::int64_t StepMilliseconds = 10;

    explicit CFakeEventLoop(CFakeClock& p_objClock)
        : m_objClock(p_objClock) {}

    /// Runs p_fnAction in the next yield.
    void AtNextYield(Action p_fnAction) { AtYield(m_iYields + 1, std::move(p_fnAction)); }

    /// Runs p_fnAction in yield number p_iYield, counted from 1, or in the next one after it.
    void AtYield(std::int64_t p_iYield, Action p_fnAction) {
        m_objActions.push_back({p_iYield, 0, std::move(p_fnAction)});
    }

    /// Runs p_fnAction in the first yield in which p_iMilliseconds from now have passed.
    void After(std::int64_t p_iMilliseconds, Action p_fnAction) {
        m_objActions.push_back(
            {m_iYields + 1, m_objClock.Elapsed() + p_iMilliseconds, std::move(p_fnAction)});
    }

    /// Yields until p_iMilliseconds have passed, in place of a program that has nothing to do.
    void Idle(std::int64_t p_iMilliseconds) {
        const std::int64_t iEnd = m_objClock.Elapsed() + p_iMilliseconds;
        while (m_objClock.Elapsed() < iEnd) {
            Yield();
        }
    }

    [[nodiscard]] std::int64_t Yields() const { return m_iYields; }

    /// As CFakeClock tells it.
    [[nodiscard]] std::int64_t Elapsed() const { return m_objClock.Elapsed(); }

    void Yield() override {
        if (++m_iYields > AbsurdlyMany) {
            m_bClosing = true;
            ADD_FAILURE() << "a wait that does not end";
            throw std::logic_error("a wait that does not end");
        }
        m_objClock.Advance(StepMilliseconds);
        for (auto objDue = FindDue(); objDue != m_objActions.end(); objDue = FindDue()) {
            const Action fnAction = std::move(objDue->m_fnAction);
            m_objActions.erase(objDue);
            fnAction();
        }
    }

    void YieldFor(double p_dSeconds) override {
        m_dAsked = p_dSeconds;
        Yield();
    }

    /// For how many seconds the last YieldFor was.
    [[nodiscard]] double Asked() const { return m_dAsked; }

    [[nodiscard]] bool IsClosing() const override { return m_bClosing; }
    void RequestClose() override { m_bClosing = true; }

private:
    struct Scheduled {
        std::int64_t m_iYield;
        std::int64_t m_iTime;
        Action m_fnAction;
    };

    /// More than a night of waiting.
    static constexpr std::int64_t AbsurdlyMany = 5'000'000;

    std::deque<Scheduled>::iterator FindDue() {
        return std::find_if(m_objActions.begin(), m_objActions.end(),
                            [this](const Scheduled& p_objScheduled) {
                                return p_objScheduled.m_iYield <= m_iYields &&
                                       p_objScheduled.m_iTime <= m_objClock.Elapsed();
                            });
    }

    CFakeClock& m_objClock;
    std::deque<Scheduled> m_objActions;
    std::int64_t m_iYields = 0;
    double m_dAsked = 0;
    bool m_bClosing = false;
};
