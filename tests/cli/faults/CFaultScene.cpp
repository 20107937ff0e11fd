#include "tests/cli/faults/CFaultScene.h"

#include "cli/CProgram.h"
#include "cli/MExitCode.h"
#include "model/MSettingText.h"

#include <algorithm>
#include <exception>
#include <sstream>

/// What the system says of the printer's device.
class CFaultScene::CAccess : public IDeviceAccess {
public:
    explicit CAccess(const CFaultyPrinter& p_objPrinter)
        : m_objPrinter(p_objPrinter) {}
    [[nodiscard]] CDeviceState Look(const std::string& /*p_strDevice*/) const override {
        return m_objPrinter.DeviceState();
    }

private:
    const CFaultyPrinter& m_objPrinter;
};

/// Nothing is plugged in, for the commands that list it.
class CFaultScene::CNothing : public ISerialPortLister, public IUsbPrinterLister {
public:
    std::vector<CSerialPortEntry> SerialPorts() override { return {}; }
    std::vector<CUsbPrinterEntry> UsbPrinters() override { return {}; }
};

CFaultScene::CFaultScene(MFaults::Link p_iLink)
    : m_iLink(p_iLink)
    , m_objPrinter(p_iLink, m_objEventLoop, m_objInterrupt)
    , m_objConnector(m_objEventLoop, m_objClock, m_objInterrupt, m_objPrinter)
    , m_objAccess(std::make_unique<CAccess>(m_objPrinter))
    , m_objNothing(std::make_unique<CNothing>())
    , m_objTargets(m_objConnector, *m_objAccess) {}

CFaultScene::~CFaultScene() = default;

CEnvironment CFaultScene::Environment() {
    return {m_objFiles,
            *m_objNothing,
            *m_objNothing,
            *m_objAccess,
            m_objConnector,
            m_objTerminal,
            {&m_objDefaults, &m_objTargets},
            [this](const std::string& /*p_strFolder*/) {
                return std::make_unique<CSharedState>(m_objState);
            }};
}

std::map<std::string, std::string> CFaultScene::Held() const {
    std::map<std::string, std::string> strHeld;
    for (const MSettings::Row& objRow : MSettings::All()) {
        strHeld[std::string(objRow.m_strName)] =
            MSettingText::Show(objRow, m_objPrinter.m_objPrinter.Items()).value_or("?");
    }
    return strHeld;
}

void CFaultScene::Hold(const CItemManager& p_objItems) {
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        (Items().*objRow.m_objSlot)->m_vValue = (p_objItems.*objRow.m_objSlot)->m_vValue;
    }
}

int CFaultScene::Carry(const std::vector<std::string>& p_strWords, std::string& p_strOut) {
    std::ostringstream objOut;
    std::ostringstream objError;
    int iCode = CFaultOutcome::NoCode;
    try {
        CProgram objProgram(Environment());
        COutput objOutput(objOut, objError, m_objInterrupt, 0, 0);
        iCode = objProgram.Run(p_strWords, objOutput);
        p_strOut = objOut.str();
    } catch (const CProgramEnded&) {
        p_strOut = objOut.str() + m_objInterrupt.m_strWords;
        iCode = MExitCode::Interrupted;
    } catch (const std::exception& objFailure) {
        p_strOut = objFailure.what();
    }
    return iCode;
}

CFaultOutcome CFaultScene::Run(const std::vector<std::string>& p_strWords,
                               const CFaultyPrinter::Plan& p_objPlan) {
    constexpr std::int64_t Later = 20'000;
    constexpr double Thousand = 1000;
    std::vector<std::string> strWords = p_strWords;
    std::ranges::replace(strWords, "TARGET", MFaultRows::Target(m_iLink));
    strWords.emplace_back("--json");
    CFaultOutcome objOutcome;
    objOutcome.m_strBefore = Held();
    m_objFiles.m_strFiles.clear();
    m_objInterrupt.m_iCame.reset();
    const std::size_t iBefore = m_objPrinter.m_strCommands.size();
    const int iSendings = m_objPrinter.Sendings();
    m_objPrinter.Begin(p_objPlan);
    m_objPrinter.m_fnCarried = [&] {
        for (const auto& [strName, strValue] : Held()) {
            if (objOutcome.m_strBefore[strName] != strValue) {
                objOutcome.m_strMoved.insert(strName);
            }
        }
    };
    const std::int64_t iStart = m_objClock.Elapsed();
    objOutcome.m_iCode = Carry(strWords, objOutcome.m_strOut);
    const std::int64_t iEnd = m_objClock.Elapsed();
    objOutcome.m_dSeconds = static_cast<double>(iEnd - iStart) / Thousand;
    if (m_objInterrupt.m_iCame) {
        objOutcome.m_dSinceCtrlC = static_cast<double>(iEnd - *m_objInterrupt.m_iCame) / Thousand;
        objOutcome.m_iSendingsSinceCtrlC = m_objPrinter.Sendings() - m_objPrinter.SendingsAtCtrlC();
    }
    objOutcome.m_iSendings = m_objPrinter.Sendings() - iSendings;
    objOutcome.m_iInside = m_objEventLoop.Depth();
    objOutcome.m_bClosed = m_objPrinter.IsAllClosed();
    objOutcome.m_bLocked = !m_objState.m_strHolders.empty();
    m_objPrinter.m_fnCarried = nullptr;
    m_objPrinter.Rest();
    m_objEventLoop.Idle(Later);
    objOutcome.m_iSendingsLater = m_objPrinter.Sendings() - iSendings - objOutcome.m_iSendings;
    objOutcome.m_bClosed = objOutcome.m_bClosed && m_objPrinter.IsAllClosed();
    objOutcome.m_strCommands.assign(m_objPrinter.m_strCommands.begin() +
                                        static_cast<std::ptrdiff_t>(iBefore),
                                    m_objPrinter.m_strCommands.end());
    objOutcome.m_strFiles = m_objFiles.m_strFiles;
    objOutcome.m_strAfter = Held();
    objOutcome.m_bJournal = !m_objState.m_strFiles.empty();
    return objOutcome;
}

void CFaultScene::Mend() {
    m_objPrinter.Begin({});
    m_objPrinter.ComeBack();
}
