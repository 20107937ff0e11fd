#include "tests/ui/recorder/MTalkingCells.h"

#include "tests/ui/recorder/MAnswerFaults.h"
#include "tests/ui/recorder/MPage.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace {

using MAnswerFaults::Asked;
using MFlows::Any;
using MFlows::Com;
using MFlows::Lan;
using MFlows::Usb;

constexpr std::int64_t HalfASecond = 500;
constexpr std::int64_t InThePause = 600;
constexpr std::int64_t ThreeSeconds = 3000;
constexpr std::int64_t LongerThanAnyWait = 6500;
constexpr double ASecondToMidnight = 86'399;
constexpr double HalfASecondToMidnight = 86'399.5;

/// The faults strike the first command and the second: what is different then has had one answer.
constexpr int MostCommands = 2;

/// An opening of the USB library that fails.
struct Opening {
    std::size_t m_iNumber;
    std::int32_t m_iResult;
};
constexpr std::array<Opening, 9> Openings{
    {{1, -1}, {1, -2}, {1, -3}, {1, -7}, {2, -1}, {3, -1}, {4, -1}, {5, -1}, {6, -1}}};

/// What happens before the button is pressed, or once while the flow runs.
struct Once {
    std::string m_strName;
    MFlows::Links m_iLinks;
    void (*m_fnPrepare)(CScene&);
};

const std::vector<Once>& OnceFaults() {
    // clang-format off
    static const std::vector<Once> objFaults{
        {"nothing wrong", Any, [](CScene&) {}},
        {"everything chosen otherwise", Any, [](CScene& p_objScene) { MPage::ChangeEverything(p_objScene.m_objWindow); }},
        {"closed before", Lan, [](CScene& p_objScene) { p_objScene.PrinterCloses(); }},
        {"an error before", Lan, [](CScene& p_objScene) { p_objScene.ConnectionBreaks(); }},
        {"unplugged before", Com | Usb, [](CScene& p_objScene) { p_objScene.Unplug(); }},
        {"CTS off before", Com, [](CScene& p_objScene) { p_objScene.ClearToSend(false); }},
        {"a status that nobody asked for, before", Any, [](CScene& p_objScene) { p_objScene.m_objWire.Deliver(p_objScene.m_objWire.StatusAnswer("15")); p_objScene.m_objEventLoop.Idle(HalfASecond); }},
        {"settings that nobody asked for, before", Any, [](CScene& p_objScene) { p_objScene.m_objWire.Deliver(p_objScene.m_objWire.SettingsAnswer(0)); p_objScene.m_objEventLoop.Idle(HalfASecond); }},
        {"a status that nobody asked for, after a while", Any, [](CScene& p_objScene) { p_objScene.Later(InThePause, [&p_objScene] { p_objScene.m_objWire.Deliver(p_objScene.m_objWire.StatusAnswer("15")); }); }},
        {"closed after a while", Lan, [](CScene& p_objScene) { p_objScene.Later(InThePause, [&p_objScene] { p_objScene.PrinterCloses(); }); }},
        {"the window closed after a while", Any, [](CScene& p_objScene) { p_objScene.Later(InThePause, [&p_objScene] { p_objScene.Close(); }); }},
        {"GET STATUS pressed after a while", Any, [](CScene& p_objScene) { p_objScene.PressLater(InThePause, "btnGetStatus"); }},
        {"midnight passes, the answer takes three seconds", Any, [](CScene& p_objScene) {
            p_objScene.m_objClock.SetTimeOfDay(ASecondToMidnight);
            p_objScene.m_objWire.OnAnswer(1, [](CScriptedWire::Steps& p_objSteps, const std::string&) { p_objSteps.front().m_iAt = ThreeSeconds; });
            p_objScene.Later(LongerThanAnyWait, [&p_objScene] { p_objScene.Close(); });
        }},
        {"midnight passes, no answer", Any, [](CScene& p_objScene) {
            p_objScene.m_objClock.SetTimeOfDay(ASecondToMidnight);
            p_objScene.m_objWire.OnAnswer(1, [](CScriptedWire::Steps& p_objSteps, const std::string&) { p_objSteps.clear(); });
            p_objScene.Later(LongerThanAnyWait, [&p_objScene] { p_objScene.Close(); });
        }},
        {"midnight passes in the pause", Any, [](CScene& p_objScene) {
            p_objScene.m_objClock.SetTimeOfDay(HalfASecondToMidnight);
            p_objScene.Later(LongerThanAnyWait, [&p_objScene] { p_objScene.Close(); });
        }},
    };
    // clang-format on
    return objFaults;
}

/// Makes the cells of one flow on one link.
class CTalkingCells {
public:
    CTalkingCells(const MFlows::Flow& p_objFlow, LinkKind p_iLink)
        : m_objFlow(p_objFlow)
        , m_iLink(p_iLink)
        , m_iCommands(std::min(MFlows::CommandsOf(p_objFlow, p_iLink), MostCommands)) {}

    Cells Make() {
        if (m_iLink != LinkKind::Usb) {
            Add(
                "the link is not open", [](CScene&) {}, false);
        }
        for (const Once& objFault : OnceFaults()) {
            if (MFlows::Has(objFault.m_iLinks, m_iLink)) {
                Add(objFault.m_strName, objFault.m_fnPrepare);
            }
        }
        AddAnswers();
        AddWays();
        AddOpenings();
        AddTyping();
        AddSecondPresses();
        return std::move(m_objCells);
    }

private:
    /// p_fnPrepare is called before the button is pressed.
    void Add(const std::string& p_strFault, std::function<void(CScene&)> p_fnPrepare,
             bool p_bOpen = true) {
        m_objCells.push_back({Heading(p_strFault), m_objFlow.m_strButton, m_iLink, p_bOpen,
                              [fnPrepare = std::move(p_fnPrepare),
                               strButton = m_objFlow.m_strButton](CScene& p_objScene) {
                                  fnPrepare(p_objScene);
                                  p_objScene.Press(strButton);
                              }});
    }

    [[nodiscard]] std::string Heading(const std::string& p_strFault) const {
        return std::string(MFlows::NameOf(m_iLink)) + ", " + m_objFlow.m_strButton + ": " +
               p_strFault;
    }

    [[nodiscard]] bool Meets(Asked p_iAsked) const {
        return p_iAsked == Asked::Anything || (p_iAsked == Asked::Settings) == m_objFlow.m_bReads;
    }

    [[nodiscard]] std::string Numbered(const std::string& p_strFault, int p_iCommand) const {
        return m_iCommands == 1 ? p_strFault
                                : p_strFault + " (command " + std::to_string(p_iCommand) + ")";
    }

    template <typename Faults, typename Condition>
    void AddEach(const Faults& p_objFaults, const Condition& p_fnMeets) {
        for (const auto& objFault : p_objFaults) {
            for (int i = 1; i <= m_iCommands; ++i) {
                if (MFlows::Has(objFault.m_iLinks, m_iLink) && p_fnMeets(objFault, i)) {
                    Add(Numbered(objFault.m_strName, i), [&objFault, i](CScene& p_objScene) {
                        MAnswerFaults::Apply(objFault, p_objScene, i);
                    });
                }
            }
        }
    }

    void AddAnswers() {
        AddEach(MAnswerFaults::Answers(),
                [this](const MAnswerFaults::Answer& p_objFault, int p_iCommand) {
                    return Meets(p_objFault.m_iAsked) &&
                           (p_iCommand == 1 || m_objFlow.m_bReads || p_objFault.m_bLaterToo);
                });
    }

    void AddWays() {
        AddEach(MAnswerFaults::Ways(), [](const MAnswerFaults::Way&, int) { return true; });
    }

    void AddOpenings() {
        constexpr std::size_t iOpeningsOfACommand = 3;
        if (m_iLink != LinkKind::Usb) {
            return;
        }
        for (const auto& [iNumber, iResult] : Openings) {
            if (iNumber <= iOpeningsOfACommand * static_cast<std::size_t>(m_iCommands)) {
                Add("opening " + std::to_string(iNumber) + " gives " + std::to_string(iResult),
                    [iNumber = iNumber, iResult = iResult](CScene& p_objScene) {
                        auto& iResults = p_objScene.m_objLibrary.m_iOpenResults;
                        iResults.assign(iNumber - 1, IUsbLibrary::Opened);
                        iResults.push_back(iResult);
                    });
            }
        }
    }

    void AddTyping() {
        AddTyped("a right text is being typed", &MPage::Texts::m_strRight);
        AddTyped("a text out of range is being typed", &MPage::Texts::m_strOutOfRange);
    }

    void AddTyped(const std::string& p_strFault, const char* MPage::Texts::*p_strText) {
        Add(p_strFault, [p_strText, strButton = m_objFlow.m_strButton](CScene& p_objScene) {
            const MPage::Texts objTexts = MPage::TextsBeside(p_objScene.m_objWindow, strButton);
            p_objScene.m_objWindow.Type(objTexts.m_strField, objTexts.*p_strText);
        });
    }

    void AddSecondPresses() {
        AddSecondPress();
        for (int i = 1; i <= m_iCommands; ++i) {
            for (const char* const strThen : {"btnGetStatus", "btnRead", "btnSet"}) {
                AddLate(Numbered("a late answer", i), i, strThen);
            }
        }
    }

    void AddSecondPress() {
        m_objCells.push_back({Heading("pressed twice"), m_objFlow.m_strButton, m_iLink, true,
                              [strButton = m_objFlow.m_strButton](CScene& p_objScene) {
                                  p_objScene.Press(strButton);
                                  p_objScene.Press(strButton);
                              }});
    }

    /// The answer comes when the next flow has sent its first command, before that one's own.
    void AddLate(const std::string& p_strFault, int p_iCommand, const char* p_strThen) {
        const auto fnAct = [p_iCommand, p_strThen,
                            strButton = m_objFlow.m_strButton](CScene& p_objScene) {
            const auto objLate = std::make_shared<CScriptedWire::Steps>();
            p_objScene.m_objWire.OnAnswer(
                p_iCommand, [objLate](CScriptedWire::Steps& p_objSteps, const std::string&) {
                    objLate->swap(p_objSteps);
                });
            p_objScene.Press(strButton);
            p_objScene.m_objWire.Forget();
            p_objScene.m_objWire.OnAnswer(
                1, [objLate](CScriptedWire::Steps& p_objSteps, const std::string&) {
                    p_objSteps.front().m_iAt += HalfASecond;
                    p_objSteps.insert(p_objSteps.begin(), objLate->begin(), objLate->end());
                });
            p_objScene.Press(p_strThen);
        };
        m_objCells.push_back({Heading(p_strFault + ", while " + p_strThen + " waits for its own"),
                              m_objFlow.m_strButton, m_iLink, true, fnAct});
    }

    const MFlows::Flow& m_objFlow;
    LinkKind m_iLink;
    int m_iCommands;
    Cells m_objCells;
};

}  // namespace

namespace MTalkingCells {

Cells Of(const MFlows::Flow& p_objFlow) {
    Cells objCells;
    for (const LinkKind iLink : MFlows::AllLinks) {
        for (CCell& objCell : CTalkingCells(p_objFlow, iLink).Make()) {
            objCells.push_back(std::move(objCell));
        }
    }
    return objCells;
}

}  // namespace MTalkingCells
