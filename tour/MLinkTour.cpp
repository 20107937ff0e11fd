#include "tour/MLinkTour.h"

#include "platform/qt/MText.h"
#include "tests/golden/MGolden.h"
#include "tour/CWire.h"
#include "tour/MUsbTour.h"

namespace {

using Commands = std::vector<std::string>;

constexpr int NoWait = 0;
constexpr int AnswerMilliseconds = 5000;

/// One way to the printer.
struct Link {
    std::string m_strName;
    QString m_strPictures;                            ///< how their names begin
    std::function<void(const Commands&)> m_fnExpect;  ///< looks at what has been sent
    int m_iPatience;  ///< milliseconds for a status that comes by itself, after its command's end
    Commands m_strHeadCheck;  ///< what a head check sends
};

/// Clicks; a box that comes in answer is one too many, and is closed.
void Click(CTour& p_objTour, const QString& p_strButton) {
    p_objTour.InDialogs({}, [&] { p_objTour.Click(p_strButton); });
}

void ExpectLabel(CTour& p_objTour, const Link& p_objLink, const QString& p_strLabel,
                 const std::string& p_strExpected) {
    CSimulatorProcess::WaitUntil([&] { return p_objTour.Shown(p_strLabel) == p_strExpected; },
                                 p_objLink.m_iPatience);
    p_objTour.Expect(MText::FromQt(p_strLabel), p_objTour.Shown(p_strLabel), p_strExpected);
}

void ConnectSerial(CTour& p_objTour) {
    p_objTour.Heading("The serial port: COM, Setup, SET");
    p_objTour.Choose("cmbInterface", "COM");
    p_objTour.InDialog(
        "Interface Setup", [&] { p_objTour.Click("btnSetup"); },
        [&] {
            p_objTour.Picture("serial-interface-setup");
            p_objTour.Click("btnSet");
        });
}

void SetAndRead(CTour& p_objTour, const Link& p_objLink) {
    p_objTour.Heading(p_objLink.m_strName + ": READ, edit and SET");
    p_objTour.ShowTab(0);
    Click(p_objTour, "btnRead");
    p_objLink.m_fnExpect({"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"});
    p_objTour.Expect("FEED ADJ.", p_objTour.Shown("SeFeedAdj"), "0.0");
    p_objTour.Type("SeFeedAdj", "4.5");
    Click(p_objTour, "btnSet");
    p_objLink.m_fnExpect(
        {MGolden::Parameters, MGolden::With(MGolden::Adjustments, {{"FeedAdjustment", "045"}})});

    p_objTour.Heading(p_objLink.m_strName + ": READ after a RAM CLEAR shows what the printer has");
    p_objTour.ShowTab(1);
    p_objTour.Choose("cmbDestination", "JA");
    Click(p_objTour, "btnRamClear");
    p_objLink.m_fnExpect({"{Z4;00|}"});
    p_objTour.ShowTab(0);
    p_objTour.Expect("FEED ADJ.", p_objTour.Shown("SeFeedAdj"), "4.5");
    Click(p_objTour, "btnRead");
    p_objLink.m_fnExpect({"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"});
    p_objTour.Expect("FEED ADJ.", p_objTour.Shown("SeFeedAdj"), "0.0");
    p_objTour.Picture(p_objLink.m_strPictures + "-read-parameter-setting");
}

void Maintain(CTour& p_objTour, const Link& p_objLink) {
    p_objTour.Heading(p_objLink.m_strName + ": GET STATUS and HEAD CHECK");
    p_objTour.ShowTab(1);
    Click(p_objTour, "btnGetStatus");
    ExpectLabel(p_objTour, p_objLink, "lblStatus", "ON LINE");
    p_objLink.m_fnExpect({"{WS|}"});
    Click(p_objTour, "btnHeadCheck");
    ExpectLabel(p_objTour, p_objLink, "lblHeadCheck", "ON LINE");
    ExpectLabel(p_objTour, p_objLink, "lblStatus", "");
    p_objLink.m_fnExpect(p_objLink.m_strHeadCheck);
    p_objTour.Picture(p_objLink.m_strPictures + "-maintenance-mode");
}

}  // namespace

namespace MLinkTour {

void Serial(CTour& p_objTour) {
    CSimulatorProcess objPrinter;
    if (!objPrinter.StartSerial({"--alias", p_objTour.DeviceFile("com1")})) {
        p_objTour.Expect("a printer at the serial port", objPrinter.ErrorText(), "no error");
        return;
    }
    CWire objWire(p_objTour, objPrinter);
    const Link objLink{"Serial port",
                       "serial",
                       [&](const Commands& p_strCommands) { objWire.Expect(p_strCommands); },
                       AnswerMilliseconds,
                       {"{HD001,A|}"}};
    ConnectSerial(p_objTour);
    SetAndRead(p_objTour, objLink);
    Maintain(p_objTour, objLink);
    p_objTour.Expect("the simulator's exit code", std::to_string(objPrinter.Stop()), "0");
}

void Usb(CTour& p_objTour) {
    const auto fnExpect = [&](const Commands& p_strCommands) {
        MUsbTour::TellSent(p_strCommands);
        p_objTour.Expect("buttons enabled", p_objTour.ButtonsEnabled() ? "yes" : "no", "yes");
    };
    p_objTour.Heading("USB: nothing to set up");
    p_objTour.Choose("cmbInterface", "USB");
    p_objTour.Expect("buttons enabled", p_objTour.ButtonsEnabled() ? "yes" : "no", "no");
    const Link objLink{"USB", "usb", fnExpect, NoWait, {"{HD001,A|}", "{WS|}"}};
    SetAndRead(p_objTour, objLink);
    Maintain(p_objTour, objLink);
}

}  // namespace MLinkTour
