#pragma once

#include <cerrno>
#include <deque>

/// Stands in front of the system's connecting in this program, for the toolkit's library as well.
class CTestNetwork {
public:
    /// The one of this program.
    static CTestNetwork& Instance();

    /// The next attempt to connect that is not yet to fail fails with p_iError: at once, or later,
    /// when the toolkit asks what has become of it.
    void FailNext(int p_iError, bool p_bLater) {
        if (p_bLater) {
            m_iErrors.push_back(EINPROGRESS);
        }
        m_iErrors.push_back(p_iError);
    }

    /// True when all that was to fail has; the system decides then.
    [[nodiscard]] bool HasFailed() const { return m_iErrors.empty(); }

    /// What a call is to fail with now; 0: nothing.
    int TakeError() {
        if (m_iErrors.empty()) {
            return 0;
        }
        const int iError = m_iErrors.front();
        m_iErrors.pop_front();
        return iError;
    }

private:
    CTestNetwork() = default;

    std::deque<int> m_iErrors;
};
