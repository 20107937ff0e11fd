#include "tests/jobs/CModelPrinter.h"

#include "jobs/CReadFields.h"
#include "model/MSettingText.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"
#include "protocol/MStatus.h"

#include <algorithm>
#include <utility>

namespace {

constexpr const char* Trouble = "11";
constexpr double LateSeconds = 2.5;

bool IsSet(const std::string& p_strCommand) {
    return p_strCommand.starts_with("{Z2") || p_strCommand.starts_with("{I");
}

std::string Shown(const char* p_strName, const CItemManager& p_objItems) {
    return MSettingText::Show(MSettings::Get(p_strName), p_objItems).value_or("?");
}

}  // namespace

/// One opening of the link.
class CModelPrinter::CCall : public IPrinter {
public:
    CCall(CModelPrinter& p_objModel, bool p_bThere)
        : m_objModel(p_objModel)
        , m_bThere(p_bThere) {}

    CReadReport Read(std::span<const MSettings::Row* const> p_objRows) override {
        CReadReport objReport;
        const Mishap iMishap = m_objModel.Begin();
        for (const MSettings::Row* const objRow : p_objRows) {
            if (MSettingRoute::ReportedIn(*objRow) != MAnswer::NoGroup) {
                objReport.m_iAsked.insert(MSettingRoute::ReportedIn(*objRow));
            }
        }
        objReport.m_bSent = IsOut(iMishap);
        if (!objReport.m_bSent || iMishap == Mishap::Unheard || iMishap == Mishap::Unanswered) {
            objReport.m_objFailure.m_iKind = CFailure::Kind::NoReply;
            return objReport;
        }
        m_objModel.CatchUp(false);
        CReadFields objFields;
        for (const std::int16_t iGroup : objReport.m_iAsked) {
            const std::string strAnswer = m_objModel.Carry(MCommand::ReadRequest(iGroup));
            if (!strAnswer.starts_with('{')) {
                objReport.m_objFailure.m_iKind = CFailure::Kind::NoReply;
                objReport.m_strStatusCode = CPrinter::CommandError;
                return objReport;
            }
            const std::vector<std::uint8_t> iBytes(strAnswer.begin(), strAnswer.end());
            MAnswer::DistributeAnswer(objFields.Items(), iBytes, iGroup);
            objFields.Take(iGroup, objReport.m_objSnapshot);
            objReport.m_iAnswered.insert(iGroup);
        }
        return objReport;
    }

    CStatusReport Status() override { return Send(MCommand::StatusRequest); }

    CStatusReport Send(const std::string& p_strCommand) override {
        CStatusReport objReport;
        const Mishap iMishap = m_objModel.Begin();
        objReport.m_bSent = IsOut(iMishap);
        if (!objReport.m_bSent || iMishap == Mishap::Unheard) {
            objReport.m_objFailure.m_iKind = CFailure::Kind::NoReply;
            return objReport;
        }
        m_objModel.CatchUp(IsSet(p_strCommand));
        if (iMishap == Mishap::Late && IsSet(p_strCommand)) {
            m_objModel.m_strLate = p_strCommand;
            m_objModel.m_dLateAt = m_objModel.m_dNow + LateSeconds;
            objReport.m_strCode = "00";
            return objReport;
        }
        const std::string strAnswer = m_objModel.Carry(p_strCommand);
        End(iMishap);
        if (iMishap == Mishap::Unanswered || iMishap == Mishap::LatePowerCut) {
            objReport.m_objFailure.m_iKind = CFailure::Kind::NoReply;
            return objReport;
        }
        objReport.m_strCode = strAnswer.substr(2, 2);
        if (iMishap == Mishap::Troubled && objReport.m_strCode != CPrinter::CommandError) {
            objReport.m_strCode = Trouble;
        }
        return objReport;
    }

private:
    [[nodiscard]] bool IsOut(Mishap p_iMishap) const {
        return m_bThere && m_objModel.m_objPrinter.IsOn() && p_iMishap != Mishap::Unreached;
    }
    void End(Mishap p_iMishap) {
        if (p_iMishap == Mishap::LatePowerCut) {
            m_objModel.CutPower();
        }
    }

    CModelPrinter& m_objModel;
    bool m_bThere;
};

CModelPrinter::CModelPrinter(MSettings::Cuts p_iLink)
    : m_iLink(p_iLink) {
    Settle();
}

void CModelPrinter::Settle() {
    const CItemManager& objItems = m_objPrinter.Items();
    m_strHomeHost = m_strHost = Shown("ip-address", objItems);
    m_strHomePort = m_strPort = Shown("socket-port", objItems);
    m_strHomeLine = m_strLine = Line();
}

std::string CModelPrinter::Line() const {
    const CItemManager& objItems = m_objPrinter.Items();
    const std::string strSpeed = Shown("speed", objItems);
    return strSpeed.substr(0, strSpeed.find("bps")) + "," + Shown("parity", objItems)[0] + "," +
           Shown("data-length", objItems)[0] + "," + Shown("stop-bit", objItems)[0];
}

std::vector<std::string> CModelPrinter::Sets() const {
    std::vector<std::string> strSets;
    std::ranges::copy_if(
        m_strCommands, std::back_inserter(strSets), [](const std::string& p_strCommand) {
            return p_strCommand.starts_with("{Z2") || p_strCommand.starts_with("{I");
        });
    return strSets;
}

bool CModelPrinter::IsThere(const CPrinterPlace& p_objPlace) const {
    switch (m_iLink) {
    case MSettings::Cuts::Lan: {
        const bool bOpen = !m_bMoves || Shown("socket", m_objPrinter.Items()) == "ON";
        return bOpen &&
               (p_objPlace.m_strHost.empty() ? m_strHomeHost : p_objPlace.m_strHost) == m_strHost &&
               (p_objPlace.m_iPort ? std::to_string(*p_objPlace.m_iPort) : m_strHomePort) ==
                   m_strPort;
    }
    case MSettings::Cuts::Serial:
        return (p_objPlace.m_strLine.empty() ? m_strHomeLine : p_objPlace.m_strLine) == m_strLine;
    case MSettings::Cuts::Nothing:
        break;
    }
    return true;
}

std::unique_ptr<IPrinter> CModelPrinter::At(const CPrinterPlace& p_objPlace) {
    LookAtPower();
    return std::make_unique<CCall>(*this, IsThere(p_objPlace));
}

bool CModelPrinter::IsTaken(const CPrinterPlace& p_objPlace) {
    return m_bSomebodyElse || (m_objPrinter.IsOn() && IsThere(p_objPlace));
}

CModelPrinter::Mishap CModelPrinter::Begin() {
    m_dNow += 0.05;
    if (m_fnBeforeCall) {
        m_fnBeforeCall();
    }
    const auto objFound = m_iMishaps.find(m_iCalls++);
    const Mishap iMishap = objFound == m_iMishaps.end() ? Mishap::None : objFound->second;
    if (iMishap == Mishap::PowerCut) {
        CutPower();
    }
    return iMishap;
}

void CModelPrinter::CutPower() {
    if (m_objPrinter.IsOn()) {
        m_objPrinter.PowerOff();
        m_strLate.clear();
        m_dBackAt = m_dNow + m_dPowerBack;
    }
}

/// What comes behind a command is carried out behind it.
void CModelPrinter::CatchUp(bool p_bAll) {
    if (!m_strLate.empty() && (p_bAll || m_dNow >= m_dLateAt)) {
        Carry(std::exchange(m_strLate, {}));
    }
}

void CModelPrinter::LookAtPower() {
    if (!m_objPrinter.IsOn() && m_dNow >= m_dBackAt) {
        m_objPrinter.PowerOn();
    }
}

std::string CModelPrinter::Carry(const std::string& p_strCommand) {
    m_strCommands.push_back(p_strCommand);
    const std::string strAnswer = m_objPrinter.Handle(p_strCommand).m_strAnswer;
    if (m_bMoves) {
        m_strHost = Shown("ip-address", m_objPrinter.Items());
        m_strPort = Shown("socket-port", m_objPrinter.Items());
        m_strLine = Line();
    }
    return strAnswer;
}
