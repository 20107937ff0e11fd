#include "tests/jobs/CWriteTranscript.h"

#include "model/MSettingText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::array Ends{"unchanged", "changed", "would change", "not begun", "undone", "person"};
constexpr std::array Whys{"",
                          "not read",
                          "unsteady",
                          "unreadable",
                          "not given",
                          "link change",
                          "not expected",
                          "other host",
                          "place taken",
                          "not ready",
                          "no journal",
                          "refused",
                          "unanswered",
                          "other than wanted",
                          "others changed",
                          "not read back",
                          "not understood"};
constexpr std::array Results{"same",     "changed",  "unverifiable", "refused",
                             "mismatch", "restored", "lost"};

std::string Names(const CWritePlan::Rows& p_objRows) {
    if (p_objRows.size() > 4) {
        return " (" + std::to_string(p_objRows.size()) + ")";
    }
    std::string strNames;
    for (const MSettings::Row* const objRow : p_objRows) {
        strNames += " " + std::string(objRow->m_strName);
    }
    return strNames;
}

std::string Place(const CPrinterPlace& p_objPlace) {
    return " " + p_objPlace.m_strHost +
           (p_objPlace.m_iPort ? ":" + std::to_string(*p_objPlace.m_iPort) : "") +
           (p_objPlace.m_strLine.empty() ? "" : "@" + p_objPlace.m_strLine);
}

std::string Tenths(double p_dSeconds) {
    const auto iTenths = static_cast<int>(std::lround(p_dSeconds * 10));
    return std::to_string(iTenths / 10) + "." + std::to_string(iTenths % 10);
}

void AddLine(std::string& p_strText, const std::string& p_strHead, const std::string& p_strLine) {
    p_strText += p_strLine.empty() ? "" : p_strHead + p_strLine + "\n";
}

/// Those that follow one another with nothing between.
std::string Steps(const std::vector<std::string>& p_strStages) {
    std::string strText;
    for (std::size_t i = 0; i < p_strStages.size(); ++i) {
        strText += (i == 0 ? " " : ", ") + p_strStages[i];
    }
    return strText;
}

}  // namespace

void CWriteTranscript::Put(const Values& p_strValues, CSnapshot& p_objSnapshot) {
    for (const auto& [strName, strValue] : p_strValues) {
        MSettingText::Set(MSettings::Get(strName), p_objSnapshot.Items(), strValue);
        p_objSnapshot.SetKnown(MSettings::Get(strName));
    }
}

void CWriteTranscript::Change(const Values& p_strValues) {
    for (const auto& [strName, strValue] : p_strValues) {
        MSettingText::Set(MSettings::Get(strName), m_objModel.m_objPrinter.Items(), strValue);
    }
}

void CWriteTranscript::Hold(const Values& p_strValues) {
    Change(p_strValues);
    m_objModel.Settle();
}

void CWriteTranscript::Refuse(const std::string& p_strHead, std::size_t p_iOnly) {
    CStateFaults objFaults = m_objModel.m_objPrinter.Faults();
    objFaults.m_strRefused.push_back(p_strHead);
    objFaults.m_iRefusedOnly = p_iOnly;
    m_objModel.m_objPrinter.SetFaults(objFaults);
}

void CWriteTranscript::Stick(const std::string& p_strItem) {
    CStateFaults objFaults = m_objModel.m_objPrinter.Faults();
    objFaults.m_strStuck.push_back(p_strItem);
    m_objModel.m_objPrinter.SetFaults(objFaults);
}

std::string CWriteTranscript::Run() {
    CWriteJob objJob(m_objModel, m_objJournal, m_objStages);
    const std::string strText = Tell(objJob.Run(m_objRequest));
    if (m_objJournal.m_objPlan) {
        m_objPlan = *m_objJournal.m_objPlan;
    }
    return strText;
}

std::string CWriteTranscript::Restore() {
    CWriteJob objJob(m_objModel, m_objJournal, m_objStages);
    return Tell(objJob.Restore(m_objPlan, m_objRequest.m_dReach));
}

std::string CWriteTranscript::Look() {
    CWriteJob objJob(m_objModel, m_objJournal, m_objStages);
    return Tell(objJob.Look(m_objPlan, m_objRequest.m_dReach));
}

void CWriteTranscript::TellEnd(const CWriteReport& p_objReport, std::string& p_strText) const {
    p_strText = Ends.at(static_cast<std::size_t>(p_objReport.m_iEnd));
    AddLine(p_strText, ": ",
            Whys.at(static_cast<std::size_t>(p_objReport.m_iWhy)) + Names(p_objReport.m_objRows));
    p_strText += p_strText.ends_with('\n') ? "" : "\n";
    AddLine(p_strText, "status ", p_objReport.m_objStatus.m_strCode);
    if (!p_objReport.m_objRead.m_objFailure.IsNone()) {
        AddLine(p_strText, "reading failed",
                std::string(p_objReport.m_objRead.m_bSent ? " behind bytes" : " before bytes") +
                    " " + p_objReport.m_objRead.m_strStatusCode);
    }
    AddLine(p_strText, "doubtful", Names(p_objReport.m_objDoubtful));
    AddLine(p_strText, "journal", m_objJournal.m_objPlan ? " there" : "");
    AddLine(p_strText, "journal", p_objReport.m_bJournalStays ? " stays" : "");
    p_strText += p_objReport.m_bSent ? "" : "nothing went out\n";
}

std::string CWriteTranscript::Tell(const CWriteReport& p_objReport) {
    std::string strText;
    m_objReport = p_objReport;
    TellEnd(p_objReport, strText);
    for (const auto& [strName, iResult] : p_objReport.m_objResults) {
        const auto objShown =
            MSettingText::Show(MSettings::Get(strName), p_objReport.m_objFinally.Items());
        const bool bKnown = p_objReport.m_objFinally.IsKnown(MSettings::Get(strName));
        strText += "  " + strName + ": " + Results.at(static_cast<std::size_t>(iResult)) +
                   (bKnown ? ", " + objShown.value_or("?") : "") + "\n";
    }
    AddLine(strText, "at", p_objReport.m_objPlace.IsTargets() ? "" : Place(p_objReport.m_objPlace));
    AddLine(strText, "stages", Steps(m_objStages.m_strStages));
    const std::vector<std::string> strSets = m_objModel.Sets();
    for (std::size_t i = m_iSetsBefore; i < strSets.size(); ++i) {
        std::string strSet = strSets[i].substr(0, strSets[i].starts_with("{Z2") ? 6 : 64);
        std::ranges::replace(strSet, CPrinter::Fill, '~');
        strText += strSet + "\n";
    }
    strText += std::to_string(m_objModel.m_iCalls - m_iCallsBefore) + " calls, " +
               Tenths(m_objModel.Now() - m_dBegun) + " s\n";
    m_iSetsBefore = strSets.size();
    m_iCallsBefore = m_objModel.m_iCalls;
    m_dBegun = m_objModel.Now();
    m_objStages.m_strStages.clear();
    return strText;
}
