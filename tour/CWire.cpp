#include "tour/CWire.h"

#include <iostream>

namespace {

constexpr int AnswerMilliseconds = 5000;

std::string Joined(const std::vector<std::string>& p_strTexts) {
    std::string strJoined;
    for (const std::string& strText : p_strTexts) {
        strJoined += (strJoined.empty() ? "" : " ") + strText;
    }
    return strJoined;
}

}  // namespace

CWire::CWire(CTour& p_objTour, CSimulatorProcess& p_objSimulator)
    : m_objTour(p_objTour)
    , m_objSimulator(p_objSimulator) {}

void CWire::Expect(const std::vector<std::string>& p_strCommands) {
    m_objSimulator.WaitForCommands(m_iCommand + p_strCommands.size(), AnswerMilliseconds);
    for (; m_iLine < m_objSimulator.Lines().size(); ++m_iLine) {
        std::cout << "   wire   " << m_objSimulator.Lines()[m_iLine] << std::endl;
    }
    std::vector<std::string> strAll = m_objSimulator.Commands();
    strAll.erase(strAll.begin(), strAll.begin() + static_cast<std::ptrdiff_t>(m_iCommand));
    m_iCommand += strAll.size();
    m_objTour.Expect("commands", Joined(strAll), Joined(p_strCommands));
    m_objTour.Expect("buttons enabled", m_objTour.ButtonsEnabled() ? "yes" : "no", "yes");
}
