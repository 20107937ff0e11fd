#include "cli/CStateJournal.h"

#include "cli/CCommandError.h"
#include "cli/MJournalJson.h"

#include <QCoreApplication>

#include <algorithm>
#include <ctime>
#include <string_view>

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

/// Whether two names lead to the same place. What a name of the network stands for is not asked.
bool IsSamePlace(const CTarget& p_objOne, const CTarget& p_objOther) {
    if (p_objOne.m_iLink != p_objOther.m_iLink) {
        return false;
    }
    switch (p_objOne.m_iLink) {
    case CTarget::Link::Lan:
        return p_objOne.m_strHost == p_objOther.m_strHost && p_objOne.m_iPort == p_objOther.m_iPort;
    case CTarget::Link::Com:
        return p_objOne.m_strDevice == p_objOther.m_strDevice;
    case CTarget::Link::Usb:
        break;
    }
    return p_objOne.m_strText == p_objOther.m_strText;
}

/// Whether the change of a record is one of the printer that p_objTarget names: by the name that it
/// was begun with, or by a place to which the change may have taken it.
bool Concerns(const CJournalRecord& p_objRecord, const CTarget& p_objTarget) {
    try {
        const CTarget objBegun = CTarget::Parse(p_objRecord.m_strTarget);
        const CWritePlan& objPlan = p_objRecord.m_objPlan;
        return std::ranges::any_of(objPlan.Places(objPlan.m_objSteps.size()),
                                   [&](const CPrinterPlace& p_objPlace) {
                                       return IsSamePlace(objBegun.At(p_objPlace), p_objTarget);
                                   });
    } catch (const CCommandError&) {
        return false;  // it was written by hand
    }
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
    m_objLock = p_objStore.Lock(p_strKey,
                                "varden " + p_strCommand + ", process " +
                                    std::to_string(QCoreApplication::applicationPid()) +
                                    ", since " + UtcNow(),
                                strWhy, bHeld);
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

std::string CStateJournal::KeyOf(const IStateStore& p_objStore, const CTarget& p_objTarget,
                                 IPrinterConnector& p_objPrinters) {
    for (const std::string& strName : p_objStore.Names(End)) {
        const auto strBytes = p_objStore.Read(strName);
        const auto objRecord = strBytes ? MJournalJson::Read(*strBytes) : std::nullopt;
        if (objRecord && Concerns(*objRecord, p_objTarget)) {
            return strName.substr(0, strName.size() - std::string_view(End).size());
        }
    }
    return p_objPrinters.KeyOf(p_objTarget);
}

bool CStateJournal::IsOpen() const {
    return m_objStore.Stands(m_strName);
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
    TellInterruption();
    return objRecord;
}

bool CStateJournal::Open(const CWritePlan& p_objPlan) {
    if (IsOpen()) {
        return false;
    }
    if (!m_objStore.Write(m_strName, MJournalJson::Text({m_strTarget, UtcNow(), p_objPlan}))) {
        m_objStore.Remove(m_strName);  // nothing has been changed, whatever stands there now
        return false;
    }
    TellInterruption();
    return true;
}

void CStateJournal::TellInterruption() const {
    m_objOutput.SetInterruption({"Interrupted in the middle of a change",
                                 "its journal is " + Path(), m_strTarget,
                                 "varden recover " + m_strTarget + " goes on from there"});
}

bool CStateJournal::Close() {
    const bool bClosed = m_objStore.Remove(m_strName);
    if (bClosed) {
        m_objOutput.SetInterruption({"Interrupted", {}, {}, {}});
    }
    return bClosed;
}
