#pragma once

#include "jobs/CWriteJob.h"
#include "tests/jobs/CModelPrinter.h"

#include <map>
#include <string>

/// A change of settings against the model of a printer, told in words: what came of it, and all
/// that was done on the way. Two that differ in anything that matters differ in their words.
class CWriteTranscript {
public:
    using Values = std::map<std::string, std::string>;

    explicit CWriteTranscript(MSettings::Cuts p_iLink)
        : m_objModel(p_iLink) {
        m_objRequest.m_iLink = p_iLink;
        m_objRequest.m_dReach = 3;
    }

    CModelPrinter m_objModel;
    CModelJournal m_objJournal;
    CWriteRequest m_objRequest;

    void Want(const Values& p_strValues) { Put(p_strValues, m_objRequest.m_objWanted); }
    void Expect(const Values& p_strValues) { Put(p_strValues, m_objRequest.m_objExpected); }
    void Vouch(const Values& p_strValues) { Put(p_strValues, m_objRequest.m_objVouched); }
    void LinkStands(const Values& p_strValues) { Put(p_strValues, m_objRequest.m_objLinkStands); }
    /// What the printer holds from the start; it stands where that names.
    void Hold(const Values& p_strValues);
    /// The same while it runs: what somebody else changes.
    void Change(const Values& p_strValues);
    void Refuse(const std::string& p_strHead, std::size_t p_iOnly = 0);
    void Stick(const std::string& p_strItem);

    /// Each does its work and tells it. A plan to look at or to bring back is what the last run's
    /// journal holds, or what m_objPlan is set to.
    std::string Run();
    std::string Restore();
    std::string Look();
    CWritePlan m_objPlan;
    CWriteReport m_objReport;  ///< the last one

private:
    static void Put(const Values& p_strValues, CSnapshot& p_objSnapshot);
    std::string Tell(const CWriteReport& p_objReport);
    void TellEnd(const CWriteReport& p_objReport, std::string& p_strText) const;

    CStages m_objStages;
    double m_dBegun = 1000;
    int m_iCallsBefore = 0;
    std::size_t m_iSetsBefore = 0;
};
