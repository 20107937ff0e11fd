#pragma once

#include "tests/cli/CCliFixture.h"
#include "tests/jobs/CModelPrinter.h"

/// The program in front of a printer that holds settings and goes where they name.
class CWriteFixture : public CCliFixture {
protected:
    using Mishap = CModelPrinter::Mishap;

    CWriteFixture() {
        m_objPrinters.m_fnConnect = [this](const CTarget& p_objTarget) {
            return m_objModel.At(Place(p_objTarget));
        };
        m_objPrinters.m_fnIsTaken = [this](const CTarget& p_objTarget) {
            return m_objModel.IsTaken(Place(p_objTarget));
        };
        m_objPrinters.m_fnOnWait = [this](double p_dSeconds) { m_objModel.Wait(p_dSeconds); };
    }

    /// What the printer holds of a setting.
    [[nodiscard]] std::string Held(const char* p_strName) const {
        return MSettingText::Show(MSettings::Get(p_strName), m_objModel.m_objPrinter.Items())
            .value_or("?");
    }

    void Hold(const char* p_strName, const char* p_strValue) {
        MSettingText::Set(MSettings::Get(p_strName), m_objModel.m_objPrinter.Items(), p_strValue);
        m_objModel.Settle();
    }

    /// The target's name is the printer's home; any other host and port are places.
    static CPrinterPlace Place(const CTarget& p_objTarget) {
        CPrinterPlace objPlace;
        if (p_objTarget.m_iLink == CTarget::Link::Lan && p_objTarget.m_strHost != "printer") {
            objPlace.m_strHost = p_objTarget.m_strHost;
        }
        if (p_objTarget.m_iLink == CTarget::Link::Lan &&
            p_objTarget.m_iPort != CTarget::DefaultPort) {
            objPlace.m_iPort = p_objTarget.m_iPort;
        }
        if (p_objTarget.m_iLink == CTarget::Link::Com &&
            p_objTarget.m_strLine != CTarget::DefaultLine) {
            objPlace.m_strLine = p_objTarget.m_strLine;
        }
        return objPlace;
    }

    Ran Write(Arguments p_strWords) {
        p_strWords.insert(p_strWords.begin(), {"write", m_strTarget});
        return RunJson(p_strWords);
    }

    /// Leaves a journal behind: the answer to the set command, and everything behind, is missing.
    Ran BreakDown(const Arguments& p_strWords) {
        for (int iCall = 3; iCall < 200; ++iCall) {
            m_objModel.m_iMishaps[iCall] = iCall == 3 ? Mishap::Unanswered : Mishap::Unreached;
        }
        Arguments strWords = p_strWords;
        strWords.insert(strWords.end(), {"--reach", "3"});
        const Ran objRan = Write(strWords);
        m_objModel.m_iMishaps.clear();
        return objRan;
    }

    CModelPrinter m_objModel;
    std::string m_strTarget = "lan:printer";
};
