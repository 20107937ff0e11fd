#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// The calls that several recording doubles have got, in their common order.
class CCallList {
public:
    /// Called with every call, as it happens; null for nobody.
    std::function<void()> m_fnOnCall;

    [[nodiscard]] const std::vector<std::string>& All() const { return m_strCalls; }
    void Forget() { m_strCalls.clear(); }

    void Add(std::string p_strCall) {
        m_strCalls.push_back(std::move(p_strCall));
        if (m_fnOnCall) {
            m_fnOnCall();
        }
    }

private:
    std::vector<std::string> m_strCalls;
};
