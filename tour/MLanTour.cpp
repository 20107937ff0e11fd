#include "tour/MLanTour.h"

#include "link/CInterface.h"
#include "tests/golden/MGolden.h"

#include <QTcpSocket>

namespace {

constexpr int AnswerMilliseconds = 5000;

/// What somebody has set up in this printer before: every page shall show something of its own.
const std::string FormerParameters =
    MGolden::With(MGolden::Parameters, {{"FontCode", "8"},
                                        {"ZeroStyle", "1"},
                                        {"CommunicationSpeed", "5"},
                                        {"Parity", "2"},
                                        {"Control", "0"},
                                        {"AutoForwardDirection", "-"},
                                        {"AutoForwardAdjustment", "35"},
                                        {"ControlCode", "3"},
                                        {"ControlCode1st", "0D"},
                                        {"ControlCode3rd", "21"},
                                        {"StripStatus", "1"},
                                        {"FeedKeyFunction", "1"},
                                        {"KanjiCode", "1"},
                                        {"EuroCode", "80"},
                                        {"HeadCheck", "1"},
                                        {"WebPrinter", "1"},
                                        {"RibbonNearEnd", "2"},
                                        {"ExpansionIO", "1"},
                                        {"PlugAndPlay", "1"},
                                        {"PreStrip", "1"},
                                        {"MaxiCodeSpecification", "1"},
                                        {"StripMotorTorque", "3"}});
const std::string FormerAdjustments =
    MGolden::With(MGolden::Adjustments, {{"FeedAdjustment", "015"},
                                         {"CutPosDirection", "-"},
                                         {"CutPosAdjustment", "020"},
                                         {"BackFeedAdjustment", "05"},
                                         {"XCoordinateDirection", "-"},
                                         {"XCoordinateAdjustment", "105"},
                                         {"ToneAdjustment_T", "03"},
                                         {"ToneDirection_D", "-"},
                                         {"ToneAdjustment_D", "04"},
                                         {"RibbonMotorAdjustment_F", "06"},
                                         {"RibbonMotorAdjustment_B", "07"},
                                         {"ThresholdAdjustment_R", "22"},
                                         {"ThresholdAdjustment_T", "15"}});

/// Sets the printer up over a connection of its own, as another tool would have done earlier.
void SetUpPrinter(std::uint16_t p_iPort) {
    QTcpSocket objSocket;
    objSocket.connectToHost("127.0.0.1", p_iPort);
    objSocket.waitForConnected(AnswerMilliseconds);
    for (const std::string& strCommand : {FormerParameters, FormerAdjustments}) {
        objSocket.write(QByteArray::fromStdString(strCommand));
        objSocket.waitForReadyRead(AnswerMilliseconds);
        objSocket.readAll();
    }
}

}  // namespace

namespace MLanTour {

void LookAround(CTour& p_objTour) {
    p_objTour.Heading("After the start: the defaults");
    p_objTour.Expect("interface", p_objTour.Shown("cmbInterface"), "COM");
    for (const auto& [iTab, strName] :
         {std::pair{2, "start-extra-setting"}, std::pair{1, "start-maintenance-mode"},
          std::pair{0, "start-parameter-setting"}}) {
        p_objTour.ShowTab(iTab);
        p_objTour.Picture(strName);
    }
    p_objTour.InDialog(
        "Varden Setting Tool", [&] { p_objTour.TriggerMenu("smAbout"); },
        [&] {
            p_objTour.Picture("about");
            p_objTour.Click("btnOk");
        });
}

void Connect(CTour& p_objTour, CWire& p_objWire, std::uint16_t p_iPort) {
    p_objTour.Window().Interface().m_objSocketPort->SetValue(p_iPort);
    SetUpPrinter(p_iPort);
    p_objWire.Expect({FormerParameters, FormerAdjustments});

    p_objTour.Heading("Connect: LAN, Setup, 127.0.0.1, SET");
    p_objTour.Choose("cmbInterface", "LAN");
    p_objTour.InDialog(
        "Interface Setup", [&] { p_objTour.Click("btnSetup"); },
        [&] {
            p_objTour.Type("SeLan1", "127");
            p_objTour.Type("SeLan2", "0");
            p_objTour.Type("SeLan3", "0");
            p_objTour.Type("SeLan4", "1");
            p_objTour.Picture("interface-setup");
            p_objTour.Click("btnSet");
        });
    p_objTour.Expect("address", p_objTour.Window().Interface().GetIpAddress(), "127.0.0.1");
}

void ReadEditSet(CTour& p_objTour, CWire& p_objWire) {
    p_objTour.Heading("READ");
    p_objTour.ShowTab(0);
    p_objTour.Click("btnRead");
    p_objWire.Expect({"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"});
    p_objTour.PrintPage();
    p_objTour.Expect("FONT CODE", p_objTour.Shown("cmbFontCode"), "PC-1252");
    p_objTour.Expect("FEED ADJ.", p_objTour.Shown("SeFeedAdj"), "1.5");
    p_objTour.Expect("X ADJ.", p_objTour.Shown("SeXAdj"), "-10.5");
    p_objTour.Expect("THRESHOLD<R>", p_objTour.Shown("SeThresholdR"), "2.2");
    p_objTour.Picture("read-parameter-setting");

    p_objTour.Heading("Edit and SET");
    p_objTour.Choose("cmbFontCode", "UTF-8");
    p_objTour.Type("SeCode3", "1b");
    p_objTour.Type("SeFeedAdj", "2.5");
    p_objTour.Picture("edited-parameter-setting");
    p_objTour.Click("btnSet");
    p_objWire.Expect(
        {MGolden::With(FormerParameters, {{"FontCode", "F"}, {"ControlCode3rd", "1B"}}),
         MGolden::With(FormerAdjustments, {{"FeedAdjustment", "025"}})});

    p_objTour.Heading("READ again: the page shows what was written");
    p_objTour.Choose("cmbFontCode", "PC-850");
    p_objTour.Type("SeFeedAdj", "0");
    p_objTour.Click("btnRead");
    p_objWire.Expect({"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"});
    p_objTour.Expect("FONT CODE", p_objTour.Shown("cmbFontCode"), "UTF-8");
    p_objTour.Expect("CODE 3", p_objTour.Shown("SeCode3"), "1B");
    p_objTour.Expect("FEED ADJ.", p_objTour.Shown("SeFeedAdj"), "2.5");
}

void LanReadEditSet(CTour& p_objTour, CWire& p_objWire) {
    p_objTour.Heading("LAN SET");
    p_objTour.ShowTab(2);
    p_objTour.Type("SeIpAddress4", "77");
    p_objTour.Type("SeGateway4", "1");
    p_objTour.Type("SeSocetPort", "9100");
    p_objTour.Choose("cmbDhcp", "ON");
    p_objTour.Type("txtDhcpName", "varden-7");
    p_objTour.Click("btnLanSet");
    p_objWire.Expect({"{IP;2,192,168,010,077|}", "{IP;3,000,000,000,001|}",
                      "{IP;4,255,255,255,000|}", "{IS;1,09100|}",
                      std::string("{IH;1,FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF,varden-7") +
                          "<FF><FF><FF><FF><FF><FF><FF><FF>|}"});

    p_objTour.Heading("LAN READ: the page shows what was written");
    p_objTour.Type("SeIpAddress4", "20");
    p_objTour.Type("txtDhcpName", "?");
    p_objTour.Click("btnLanRead");
    p_objWire.Expect({"{Z5;3|}"});
    p_objTour.PrintPage();
    p_objTour.Expect("IP ADDRESS 4", p_objTour.Shown("SeIpAddress4"), "77");
    p_objTour.Expect("SOCKET PORT", p_objTour.Shown("SeSocetPort"), "9100");
    p_objTour.Expect("DHCP", p_objTour.Shown("cmbDhcp"), "ON");
    p_objTour.Expect("DHCP HOST NAME", p_objTour.Shown("txtDhcpName"), "varden-7        ");
    p_objTour.Picture("read-extra-setting");
}

void Maintain(CTour& p_objTour, CWire& p_objWire) {
    p_objTour.Heading("GET STATUS");
    p_objTour.ShowTab(1);
    p_objTour.Click("btnGetStatus");
    p_objWire.Expect({"{WS|}"});
    p_objTour.Expect("status", p_objTour.Shown("lblStatus"), "ON LINE");

    p_objTour.Heading("HEAD CHECK");
    p_objTour.Click("btnHeadCheck");
    p_objWire.Expect({"{HD001,A|}"});
    p_objTour.Expect("head check", p_objTour.Shown("lblHeadCheck"), "ON LINE");
    p_objTour.Expect("status", p_objTour.Shown("lblStatus"), "");

    p_objTour.Heading("THRESHOLD CALIB and SENSOR ADJUST");
    p_objTour.Choose("cmbThresholdCalib", "TRANS.");
    p_objTour.Click("btnThresholdCalib");
    p_objTour.Click("btnReflect");
    p_objTour.Click("btnTrans");
    p_objTour.Click("btnPaperEnd");
    p_objWire.Expect({"{WT;1000,2|}", "{Z6;0|}", "{Z6;1|}", "{Z6;01|}", "{Z6;11|}"});

    p_objTour.Heading("TEST PRINT and DIAG PRINT");
    p_objTour.Type("SeIssueCount", "12");
    p_objTour.Type("SeLabelLen", "100");
    p_objTour.Choose("cmbType", "WITH CUT");
    p_objTour.Choose("cmbPattern", "FACTORY TEST");
    p_objTour.Click("btnTestPrint");
    p_objTour.Choose("cmbDiagPrint", "TRANSFR");
    p_objTour.Click("btnDiagPrint");
    p_objWire.Expect({"{Z3;601000070105700120010|}", "{Z11|}"});
    p_objTour.Picture("filled-maintenance-mode");
    p_objTour.DarkPicture("dark-maintenance-mode");

    p_objTour.Heading("RAM CLEAR: READ shows the defaults");
    p_objTour.Choose("cmbDestination", "QP");
    p_objTour.Click("btnRamClear");
    p_objWire.Expect({"{Z4;02|}"});
    p_objTour.ShowTab(0);
    p_objTour.Click("btnRead");
    p_objWire.Expect({"{Z5;0|}", "{Z5;1|}", "{Z5;4|}"});
    p_objTour.Expect("FONT CODE", p_objTour.Shown("cmbFontCode"), "PC-850");
    p_objTour.Expect("FEED ADJ.", p_objTour.Shown("SeFeedAdj"), "0.0");
    p_objTour.DarkPicture("dark-parameter-setting");
}

}  // namespace MLanTour
