#include "tests/platform_qt/CTestResolver.h"

#include <dlfcn.h>
#include <netdb.h>

CTestResolver& CTestResolver::Instance() {
    static CTestResolver objResolver;
    return objResolver;
}

void CTestResolver::Set(const std::string& p_strName, const Answer& p_objAnswer) {
    const std::lock_guard objLock(m_objMutex);
    m_objAnswers[p_strName] = p_objAnswer;
}

void CTestResolver::Release() {
    const std::lock_guard objLock(m_objMutex);
    for (auto& [strName, objAnswer] : m_objAnswers) {
        objAnswer.m_bHeld = false;
    }
    m_objReleased.notify_all();
}

const CTestResolver::Answer* CTestResolver::Ask(const std::string& p_strName) {
    std::unique_lock objLock(m_objMutex);
    const auto objFound = m_objAnswers.find(p_strName);
    if (objFound == m_objAnswers.end()) {
        return nullptr;
    }
    m_objReleased.wait(objLock, [&] { return !objFound->second.m_bHeld; });
    return &objFound->second;
}

// Takes the place of the C library's, which is asked for addresses only and for names that no test
// has set.
extern "C" int getaddrinfo(const char* p_strName, const char* p_strService,
                           const addrinfo* p_objHints, addrinfo** p_objResult) {
    using Function = int (*)(const char*, const char*, const addrinfo*, addrinfo**);
    static const auto fnSystem = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "getaddrinfo"));
    const CTestResolver::Answer* const objAnswer =
        p_strName != nullptr ? CTestResolver::Instance().Ask(p_strName) : nullptr;
    if (objAnswer == nullptr) {
        return fnSystem(p_strName, p_strService, p_objHints, p_objResult);
    }
    addrinfo** objNext = p_objResult;
    for (const std::string& strAddress : objAnswer->m_strAddresses) {
        if (const int iError = fnSystem(strAddress.c_str(), p_strService, p_objHints, objNext)) {
            return iError;
        }
        while (*objNext != nullptr) {
            objNext = &(*objNext)->ai_next;
        }
    }
    return objAnswer->m_iError;
}
