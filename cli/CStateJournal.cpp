#include "cli/CStateJournal.h"

#include "cli/CCommandError.h"
#include "cli/MJournalJson.h"

#include <ctime>

namespace {

std::string UtcNow() {
    const std::time_t iNow = std::time(nullptr);
    std::tm objParts{};
#ifdef _WIN32
    ::gmtime_s(&objParts, &iNow);
#else
    ::gmtime_r(&iNow, &objParts);
#endif
    std::string strTime(sizeof "2026-11-22T04:30:00Z", '\0');
    strTime.resize(std::strftime(strTime.data(), strTime.size(), "%Y-%m-%dT%H:%M:%SZ", &objParts));
    return strTime;
}

}  // namespace

CStateJournal::CStateJournal(IStateStore& p_objStore, COutput& p_objOutput,
                             const CTarget& p_objTarget, const std::string& p_strKey,
                             const std::string& p_strCommand)
    : m_objStore(p_objStore)
    , m_objOutput(p_objOutput)
    , m_strTarget(p_objTarget.m_strText)
    , m_strName(p_strKey + End) {
    std::string strWhy;
    bool bHeld = false;
    m_objLock =
        p_objStore.Lock(p_strKey, "varden " + p_strCommand + ", since " + UtcNow(), strWhy, bHeld);
    if (m_objLock) {
        return;
    }
    if (bHeld) {
        throw CCommandError(MExitCode::NotReachable,
                            {m_strTarget + " is being changed by another program", strWhy,
                             m_strTarget, "wait until it is done"});
    }
    throw CCommandError(MExitCode::Failed, {"Nothing can be kept in " + p_objStore.Path(""), strWhy,
                                            m_strTarget, "--state names another folder"});
}

bool CStateJournal::IsOpen() const {
    const std::vector<std::string> strNames = m_objStore.Names(End);
    return std::find(strNames.begin(), strNames.end(), m_strName) != strNames.end();
}

void CStateJournal::CheckNoneOpen() const {
    if (IsOpen()) {
        throw CCommandError(MExitCode::PersonNeeded,
                            {"A change of " + m_strTarget + " was begun and not ended",
                             "its journal is " + Path(), m_strTarget,
                             "varden recover " + m_strTarget + " tells how the printer stands"});
    }
}

std::optional<CJournalRecord> CStateJournal::Record() const {
    if (!IsOpen()) {
        return std::nullopt;
    }
    const std::optional<std::string> strBytes = m_objStore.Read(m_strName);
    std::optional<CJournalRecord> objRecord =
        strBytes ? MJournalJson::Read(*strBytes) : std::nullopt;
    if (!objRecord) {
        throw CCommandError(MExitCode::PersonNeeded,
                            {Path() + " cannot be understood",
                             strBytes ? "it is no journal of this program" : "it cannot be read",
                             m_strTarget, "see what the printer holds, then remove the file"});
    }
    return objRecord;
}

bool CStateJournal::Open(const CWritePlan& p_objPlan) {
    if (!m_objStore.Write(m_strName, MJournalJson::Text({m_strTarget, UtcNow(), p_objPlan}))) {
        return false;
    }
    m_objOutput.SetInterruption({"Interrupted in the middle of a change",
                                 "its journal is " + Path(), m_strTarget,
                                 "varden recover " + m_strTarget + " goes on from there"});
    return true;
}

bool CStateJournal::Close() {
    const bool bClosed = m_objStore.Remove(m_strName);
    if (bClosed) {
        m_objOutput.SetInterruption({"Interrupted", {}, {}, {}});
    }
    return bClosed;
}
