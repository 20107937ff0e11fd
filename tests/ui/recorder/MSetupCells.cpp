#include "tests/ui/recorder/MSetupCells.h"

#include "tests/ui/recorder/MFlows.h"
#include "tests/ui/recorder/MPage.h"

namespace {

using MFlows::Any;
using MFlows::Com;
using MFlows::Lan;
using MFlows::Usb;
using Connect = CFakeTcpClient::ConnectResult;

constexpr const char* Button = "btnSetup";
constexpr const char* Enabler = "btnGetStatus";
constexpr std::int32_t NoSuchPort = 8012;
constexpr std::int32_t ConnectionRefused = 10061;
constexpr std::int64_t WhileConnecting = 1000;
constexpr std::int64_t WhileTheDialogStands = 50;
constexpr std::int64_t TenSeconds = 10'000;

/// Prepares the pressing of the button, or does more: it is pressed after that.
struct Fault {
    std::string m_strName;
    MFlows::Links m_iLinks;
    void (*m_fnPrepare)(CScene&);
};

void Refuse(CScene& p_objScene) {
    p_objScene.m_objSocket.m_iConnectResult = Connect::Fails;
    p_objScene.m_objSocket.m_objConnectError.m_iNumber = ConnectionRefused;
    p_objScene.m_objSocket.m_objConnectError.m_strDescription = "Connection refused";
}

void PressAgain(CScene& p_objScene) {
    p_objScene.Press(Button);
    p_objScene.m_objPort.m_iOpenResult = ISerialPort::Opened;
    p_objScene.m_objPort.m_bGoesAtOnce = false;
    p_objScene.m_objSocket.m_iConnectResult = Connect::Connects;
    p_objScene.m_objLibrary.m_iOpenResults.clear();
}

void ConnectAfter(CScene& p_objScene, std::int64_t p_iMilliseconds, void (*p_fnThen)(CScene&)) {
    p_objScene.m_objSocket.m_iConnectResult = Connect::Never;
    p_objScene.Later(p_iMilliseconds, [&p_objScene, p_fnThen] {
        p_objScene.m_objTranscript.Add("LAN event: connected");
        p_objScene.m_objSocket.ConnectNow();
        p_fnThen(p_objScene);
    });
}

void OpeningGives(CScene& p_objScene, std::int32_t p_iResult) {
    p_objScene.m_objPort.m_iOpenResult = p_iResult;
    p_objScene.m_objLibrary.m_iOpenResults.push_back(p_iResult);
}

void Type(CScene& p_objScene, const char* MPage::Texts::*p_strText) {
    const MPage::Texts objTexts = MPage::TextsBeside(p_objScene.m_objWindow, Button);
    p_objScene.m_objWindow.Type(objTexts.m_strField, objTexts.*p_strText);
}

const std::vector<Fault>& Faults() {
    // clang-format off
    static const std::vector<Fault> objFaults{
        {"nothing wrong", Any, [](CScene&) {}},
        {"cancelled", Any, [](CScene& p_objScene) { p_objScene.m_objSetup.m_bCancel = true; }},
        {"pressed twice", Any, PressAgain},
        {"everything chosen otherwise", Com, [](CScene& p_objScene) { p_objScene.m_objSetup.m_iPositions = {{"cmbComPort", 2}, {"cmbSpeed", 5}, {"cmbDataLeg", 0}, {"cmbStopBit", 1}, {"cmbParity", 2}}; }},
        {"everything chosen otherwise, cancelled, then SET", Com, [](CScene& p_objScene) { p_objScene.m_objSetup = {true, {{"cmbComPort", 2}, {"cmbParity", 0}}, {}}; p_objScene.Press(Button); p_objScene.m_objSetup = {}; }},
        {"another address", Lan, [](CScene& p_objScene) { p_objScene.m_objSetup.m_strTexts = {{"SeLan3", "77"}, {"SeLan4", "9"}}; }},
        {"another address, cancelled, then SET", Lan, [](CScene& p_objScene) { p_objScene.m_objSetup = {true, {}, {{"SeLan3", "77"}, {"SeLan4", "9"}}}; p_objScene.Press(Button); p_objScene.m_objSetup = {}; }},
        {"an address out of range", Lan, [](CScene& p_objScene) { p_objScene.m_objSetup.m_strTexts = {{"SeLan4", "999"}}; }},
        {"held by another program", Com, [](CScene& p_objScene) { OpeningGives(p_objScene, ISerialPort::AlreadyOpen); }},
        {"held by another program, then not", Com, [](CScene& p_objScene) { OpeningGives(p_objScene, ISerialPort::AlreadyOpen); PressAgain(p_objScene); }},
        {"no such port", Com, [](CScene& p_objScene) { OpeningGives(p_objScene, NoSuchPort); }},
        {"the port goes at once", Com, [](CScene& p_objScene) { p_objScene.m_objPort.m_bGoesAtOnce = true; }},
        {"refused", Lan, Refuse},
        {"refused, then not", Lan, [](CScene& p_objScene) { Refuse(p_objScene); PressAgain(p_objScene); }},
        {"connected after ten seconds", Lan, [](CScene& p_objScene) { ConnectAfter(p_objScene, TenSeconds, [](CScene&) {}); }},
        {"connected and closed at once", Lan, [](CScene& p_objScene) { ConnectAfter(p_objScene, WhileConnecting, [](CScene& p_objOther) { p_objOther.PrinterCloses(); }); }},
        {"connected, an error at once", Lan, [](CScene& p_objScene) { ConnectAfter(p_objScene, WhileConnecting, [](CScene& p_objOther) { p_objOther.ConnectionBreaks(); }); }},
        {"a status at once", Lan, [](CScene& p_objScene) { ConnectAfter(p_objScene, WhileConnecting, [](CScene& p_objOther) { p_objOther.m_objWire.Deliver(p_objOther.m_objWire.StatusAnswer("15")); }); }},
        {"an error after ten seconds", Lan, [](CScene& p_objScene) { p_objScene.m_objSocket.m_iConnectResult = Connect::Never; p_objScene.Later(TenSeconds, [&p_objScene] { p_objScene.ConnectionBreaks(); }); }},
        {"the window closed while it connects", Lan, [](CScene& p_objScene) { p_objScene.m_objSocket.m_iConnectResult = Connect::Never; p_objScene.Later(WhileConnecting, [&p_objScene] { p_objScene.Close(); }); }},
        {"another interface chosen while it connects", Lan, [](CScene& p_objScene) { p_objScene.Later(WhileConnecting, [&p_objScene] { p_objScene.Choose(LinkKind::Usb); }); ConnectAfter(p_objScene, 2 * WhileConnecting, [](CScene&) {}); }},
        {"GET STATUS pressed while it connects", Lan, [](CScene& p_objScene) { p_objScene.PressLater(WhileConnecting, Enabler); ConnectAfter(p_objScene, 2 * WhileConnecting, [](CScene&) {}); }},
        {"a status while the dialog stands", Any, [](CScene& p_objScene) { p_objScene.Later(WhileTheDialogStands, [&p_objScene] { p_objScene.m_objWire.Deliver(p_objScene.m_objWire.StatusAnswer("15")); }); }},
        {"closed while the dialog stands", Lan, [](CScene& p_objScene) { p_objScene.Later(WhileTheDialogStands, [&p_objScene] { p_objScene.PrinterCloses(); }); }},
        {"an error while the dialog stands", Lan, [](CScene& p_objScene) { p_objScene.Later(WhileTheDialogStands, [&p_objScene] { p_objScene.ConnectionBreaks(); }); }},
        {"CTS off while the dialog stands", Com, [](CScene& p_objScene) { p_objScene.Later(WhileTheDialogStands, [&p_objScene] { p_objScene.ClearToSend(false); }); }},
        {"LAN chosen before", Com | Usb, [](CScene& p_objScene) { p_objScene.Choose(LinkKind::Lan); }},
        {"COM chosen before", Lan | Usb, [](CScene& p_objScene) { p_objScene.Choose(LinkKind::Com); }},
        {"USB chosen before", Com | Lan, [](CScene& p_objScene) { p_objScene.Choose(LinkKind::Usb); }},
        {"enabled by GET STATUS", Usb, [](CScene& p_objScene) { p_objScene.Press(Enabler); }},
        {"enabled by GET STATUS, cancelled", Usb, [](CScene& p_objScene) { p_objScene.Press(Enabler); p_objScene.m_objSetup.m_bCancel = true; }},
        {"enabled by GET STATUS, the opening gives -1", Usb, [](CScene& p_objScene) { p_objScene.Press(Enabler); OpeningGives(p_objScene, IUsbLibrary::NotReady); }},
        {"enabled by GET STATUS, the opening gives -2", Usb, [](CScene& p_objScene) { p_objScene.Press(Enabler); OpeningGives(p_objScene, IUsbLibrary::NoDeviceId); }},
        {"enabled by GET STATUS, the opening gives -3", Usb, [](CScene& p_objScene) { p_objScene.Press(Enabler); OpeningGives(p_objScene, IUsbLibrary::Mismatch); }},
        {"enabled by GET STATUS, pressed twice", Usb, [](CScene& p_objScene) { p_objScene.Press(Enabler); p_objScene.Press(Button); }},
        {"enabled by GET STATUS, USB chosen again", Usb, [](CScene& p_objScene) { p_objScene.Press(Enabler); emit p_objScene.m_objWindow.List("cmbInterface").activated(static_cast<int>(LinkKind::Usb)); }},
        {"a right text is being typed", Any, [](CScene& p_objScene) { Type(p_objScene, &MPage::Texts::m_strRight); }},
        {"a text out of range is being typed", Any, [](CScene& p_objScene) { Type(p_objScene, &MPage::Texts::m_strOutOfRange); }},
    };
    // clang-format on
    return objFaults;
}

}  // namespace

namespace MSetupCells {

Cells All() {
    Cells objCells;
    for (const LinkKind iLink : MFlows::AllLinks) {
        for (const Fault& objFault : Faults()) {
            for (const bool bOpen : {false, true}) {
                if (!MFlows::Has(objFault.m_iLinks, iLink) || (bOpen && iLink == LinkKind::Usb)) {
                    continue;
                }
                objCells.push_back({std::string(MFlows::NameOf(iLink)) +
                                        (bOpen ? ", open, " : ", ") + Button + ": " +
                                        objFault.m_strName,
                                    Button, iLink, bOpen, [&objFault](CScene& p_objScene) {
                                        objFault.m_fnPrepare(p_objScene);
                                        p_objScene.Press(Button);
                                    }});
            }
        }
    }
    return objCells;
}

}  // namespace MSetupCells
