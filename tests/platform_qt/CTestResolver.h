#pragma once

#include <condition_variable>
#include <map>
#include <mutex>
#include <string>
#include <vector>

/// Stands in front of the system's looking up of names in this program, for the toolkit's library
/// as well, which asks on threads of its own.
class CTestResolver {
public:
    /// What a name stands for.
    struct Answer {
        std::vector<std::string> m_strAddresses;
        int m_iError = 0;      ///< EAI_…, in place of addresses
        bool m_bHeld = false;  ///< the answer does not come before Release
    };

    /// The one of this program.
    static CTestResolver& Instance();

    /// What p_strName stands for from now on. The toolkit remembers answers: each test has names
    /// of its own.
    void Set(const std::string& p_strName, const Answer& p_objAnswer);

    /// Lets the answers that are held come.
    void Release();

    /// Waits for the answer that was set; null for a name for which none was.
    const Answer* Ask(const std::string& p_strName);

private:
    CTestResolver() = default;

    std::mutex m_objMutex;
    std::condition_variable m_objReleased;
    std::map<std::string, Answer> m_objAnswers;
};
