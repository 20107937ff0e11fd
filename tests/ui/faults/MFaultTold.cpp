#include "tests/ui/faults/MFaultTold.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <set>
#include <string_view>

namespace {

using MFlows::Any;
using MFlows::Com;
using MFlows::Lan;
using MFlows::Links;
using MFlows::Usb;

struct Box {
    char m_cLetter;
    std::string_view m_strBegins;
};

constexpr std::array<Box, 15> Boxes{{
    {'b', "beep"},
    {'T', "box, critical, \"Failure\": Device Time Out !!"},
    {'D', "box, critical, \"Varden Setting Tool\": Device Time Out !!"},
    {'S', "box, exclamation, \"Varden Setting Tool\": 'LAN' Send Error !!"},
    {'O', "box, critical, \"Varden Setting Tool\": 'LAN' Open Error !!"},
    {'U', "box, critical, \"Varden Setting Tool\": 'USB' Open Error !!"},
    {'P', "box, exclamation, \"Varden Setting Tool\": Please confirm the connection of USB."},
    {'R', "box, exclamation, \"Varden Setting Tool\": USB Device not ready !!"},
    {'I', "box, exclamation, \"Varden Setting Tool\": USB DeviceID receive error"},
    {'M', "box, exclamation, \"Varden Setting Tool\": USB DeviceID mismatch error"},
    {'A', "box, exclamation, \"Varden Setting Tool\": Already Opened Port by other Application"},
    {'H', "box, exclamation, \"Varden Setting Tool\": HARD ERROR"},
    {'E', "box, no icon, \"Varden Setting Tool\": Error RefreshParameterSettingItem"},
    {'V', "box, no icon, \"Varden Setting Tool\": It is a value that exceeds the useful range."},
    {'N', "box, no icon, \"Varden Setting Tool\": Number="},
}};

/// Of some faults on some links: what is told in the flows that read; in those that send by the
/// common sequence, which tells what the link says; and in the steps of the sensor adjustment,
/// which do not tell it and await nothing.
///
/// "s" is what comes of the next command of the flow, if there is one, when the link has gone.
struct Row {
    Links m_iLinks;
    std::set<std::string> m_strFaults;
    std::string m_strReads;
    std::string m_strSends;
    std::string m_strSteps;
};

const std::vector<Row>& OnLan() {
    static const std::vector<Row> objRows{
        {Lan,
         {"connecting: nothing there", "connecting: refused", "connecting: no route",
          "connecting: the network is down", "connecting: not permitted"},
         "NOS",
         "NOS",
         "NO"},
        {Lan,
         {"connecting: closed as soon as it is connected", "the link takes nothing",
          "the sending never ends", "the sending takes three seconds",
          "closed or reset in the sending"},
         "S",
         "S",
         ""},
        {Lan, {"the socket fails in the sending"}, "NS", "NS", "N"},
        {Lan,
         {"silent", "six seconds late", "cut short: one byte", "cut short: half of it",
          "cut short: without its last byte", "closed or reset before the answer",
          "closed or reset inside of the answer", "silent, the window closed while the box stands"},
         "bT",
         "bT",
         ""},
        {Lan,
         {"the socket fails before the answer", "the socket fails inside of the answer"},
         "NbT",
         "NbT",
         "N"},
        {Lan, {"the socket fails behind the answer"}, "Ns", "Ns", "N"},
        {Lan, {"closed or reset behind the answer"}, "s", "s", ""},
        {Lan,
         {"refused, the window closed while the box stands",
          "the socket fails, the window closed while the box stands"},
         "N",
         "N",
         "N"},
        {Lan, {"not sent, the window closed while the box stands"}, "S", "S", ""},
        {Lan, {"the answer comes when the button has been pressed again"}, "bT", "bT", ""},
    };
    return objRows;
}

/// Bytes come, whole and in time, and they are no settings. To a command that asks for none
/// anything is an answer.
const std::vector<Row>& NoSettings() {
    static const std::vector<Row> objRows{
        {Lan,
         {"another group's answer", "the status 06, an error", "the status 40, which has no text",
          "the status 99, which nobody knows", "a status whose code is no number", "a head of 0x03",
          "junk of 1 byte", "junk of 3 bytes", "junk of 1 KB", "junk of 64 KB", "junk of 1 MB",
          "an endless stream of junk", "an endless stream of another group's answers",
          "an endless stream of the status 15"},
         "bT",
         "",
         ""},
        // What the library has handed over is no answer at all, and so nothing more is awaited; of
        // settings the right ones may yet come.
        {Usb,
         {"junk and the answer in one piece",
          "an endless stream of junk, the window closed in it",
          "single bytes",
          "in halves, with a pause",
          "cut short: one byte",
          "cut short: half of it",
          "cut short: without its last byte",
          "the status 06, an error",
          "the status 40, which has no text",
          "the status 99, which nobody knows",
          "a status whose code is no number",
          "a head of 0x03",
          "junk of 1 byte",
          "junk of 3 bytes",
          "junk of 1 KB",
          "junk of 64 KB",
          "junk of 1 MB",
          "1 KB of heads of settings",
          "1 KB of bytes by chance",
          "an endless stream of junk",
          "an endless stream of heads of settings",
          "an endless stream of the status 15"},
         "b?P",
         "",
         ""},
    };
    return objRows;
}

const std::vector<Row>& OnUsb() {
    static const std::vector<Row> objRows{
        {Usb,
         {"no printer", "the printer is not permitted", "the printer is held by another program"},
         "R",
         "R",
         ""},
        {Usb, {"the printer does not tell what it is"}, "I", "I", ""},
        {Usb, {"the wrong device"}, "M", "M", ""},
        {Usb,
         {"pulled out before the command is sent",
          "pulled out before the command is sent, back at once"},
         "U",
         "U",
         "U"},
        {Usb, {"the opening fails, nobody knows why"}, "U", "U", "U+"},
        {Usb, {"the link takes nothing"}, "D", "D", "D+"},
        {Usb,
         {"another group's answer", "an endless stream of another group's answers"},
         "bP",
         "",
         ""},
        {Usb, {"silent"}, "bP", "b", "b"},
        {Usb,
         {"three seconds late", "six seconds late", "the receiving fails",
          "the receiving ends at once, without a byte"},
         "bP",
         "b+",
         "b+"},
        {Usb, {"pulled out between sending and receiving"}, "UbP", "Ubs", "Ub"},
        {Usb, {"pulled out behind the answer"}, "s", "s", ""},
        // A half may be all, or pass for another group's answer: then the right one is awaited.
        {Usb, {"the window closed inside of the answer"}, "(b?P)?", "", ""},
        {Usb, {"no answer to a READ, the window closed while the box stands"}, "bP", "", ""},
        {Usb, {"not sent, the window closed while the box stands"}, "D", "D", ""},
        {Usb, {"no printer, the window closed while the box stands"}, "R", "R", ""},
    };
    return objRows;
}

const std::vector<Row>& OnComAndAnywhere() {
    static const std::vector<Row> objRows{
        {Com,
         {"the port is held by another program",
          "the port is held, the window closed while the box stands"},
         "A",
         "A",
         "A"},
        {Com,
         {"an overrun before the answer", "an overrun, the window closed while the box stands"},
         "H",
         "H",
         "H"},
        {Any, {"values out of range, the window closed while the box stands"}, "V|E", "", ""},
    };
    return objRows;
}

bool IsOf(const CFaultCell& p_objCell, std::initializer_list<const char*> p_strButtons) {
    return std::ranges::any_of(p_strButtons, [&](std::string_view p_strButton) {
        return p_strButton == p_objCell.m_objFlow->m_strButton;
    });
}

std::string Follow(std::string p_strExpected, const CFaultCell& p_objCell) {
    const std::string strNext = p_objCell.m_iLink == LinkKind::Usb ? "R" : "S";
    const bool bMore = p_objCell.m_iCommand < p_objCell.Commands();
    if (const std::size_t iNext = p_strExpected.find('s'); iNext != std::string::npos) {
        p_strExpected.replace(iNext, 1, bMore ? strNext : "");
    }
    return p_strExpected;
}

}  // namespace

namespace MFaultTold {

std::string Letters(const std::vector<std::string>& p_strTold) {
    std::string strLetters;
    for (const std::string& strTold : p_strTold) {
        const auto objBox = std::ranges::find_if(
            Boxes, [&](const Box& p_objBox) { return strTold.starts_with(p_objBox.m_strBegins); });
        strLetters += objBox != Boxes.end() ? objBox->m_cLetter : '?';
    }
    return strLetters;
}

std::string Expected(const CFaultCell& p_objCell) {
    const MFaults::Fault& objFault = *p_objCell.m_objFault;
    const bool bReads = p_objCell.m_objFlow->m_bReads;
    for (const std::vector<Row>* const objRows :
         {&OnLan(), &NoSettings(), &OnUsb(), &OnComAndAnywhere()}) {
        for (const Row& objRow : *objRows) {
            if (!MFlows::Has(objRow.m_iLinks, p_objCell.m_iLink) ||
                !objRow.m_strFaults.contains(objFault.m_strName)) {
                continue;
            }
            if (IsOf(p_objCell, {"btnReflect", "btnTrans", "btnPaperEnd"})) {
                return Follow(objRow.m_strSteps, p_objCell);
            }
            return Follow(bReads ? objRow.m_strReads : objRow.m_strSends, p_objCell);
        }
    }
    // The page tells what it cannot show; the LAN page tells no more than its fields do.
    if (bReads && objFault.Has(MFaults::Alters) && !objFault.Has(MFaults::Closes)) {
        const bool bMayBeShown = p_objCell.m_iLink == LinkKind::Com;
        return IsOf(p_objCell, {"btnLanRead"}) ? "V*" : bMayBeShown ? "V*|E" : "V+|E";
    }
    return {};
}

}  // namespace MFaultTold
