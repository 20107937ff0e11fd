#include "flows/MFailureBox.h"

#include <algorithm>
#include <array>

namespace {

using Kind = CFailure::Kind;

enum class Told : std::uint8_t {
    Nowhere,    ///< in no box
    AtOnce,     ///< in a box the moment it happens
    ByHandler,  ///< in the box of the handler whose command has failed
};

struct Row {
    Kind m_iKind = Kind::None;
    Told m_iTold = Told::Nowhere;
    const char* m_strText = "";
    MessageIcon m_iIcon = MessageIcon::None;
    const char* m_strTitle = IMessageBox::ProgramTitle;
    bool m_bBeep = false;  ///< the moment it happens, before the box
};

constexpr const char* FailureTitle = "Failure";

// clang-format off
constexpr std::array<Row, 23> Rows{{
    {Kind::None, Told::Nowhere, ""},
    {Kind::SerialHeld, Told::AtOnce, "Already Opened Port by other Application", MessageIcon::Exclamation},
    {Kind::SerialNotOpened, Told::Nowhere, ""},
    {Kind::SerialNotOpen, Told::Nowhere, ""},
    {Kind::SerialNotSent, Told::Nowhere, ""},
    {Kind::SerialLost, Told::Nowhere, ""},
    {Kind::SerialOverrun, Told::AtOnce, "HARD ERROR", MessageIcon::Exclamation},
    {Kind::LanError, Told::AtOnce, nullptr},  // in the socket's own words
    {Kind::LanNotConnected, Told::AtOnce, "'LAN' Open Error !!", MessageIcon::Critical},
    {Kind::LanNotSent, Told::ByHandler, "'LAN' Send Error !!", MessageIcon::Exclamation},
    {Kind::LanClosed, Told::Nowhere, ""},
    {Kind::UsbNotOpened, Told::AtOnce, "'USB' Open Error !!", MessageIcon::Critical},
    {Kind::UsbNotReady, Told::ByHandler, "USB Device not ready !!", MessageIcon::Exclamation},
    {Kind::UsbNoDeviceId, Told::ByHandler, "USB DeviceID receive error", MessageIcon::Exclamation},
    {Kind::UsbMismatch, Told::ByHandler, "USB DeviceID mismatch error", MessageIcon::Exclamation},
    {Kind::UsbNotSent, Told::AtOnce, "Device Time Out !!", MessageIcon::Critical},
    {Kind::UsbNoAnswer, Told::ByHandler, "Please confirm the connection of USB.", MessageIcon::Exclamation, IMessageBox::ProgramTitle, true},
    {Kind::UsbStrayAnswer, Told::Nowhere, ""},
    {Kind::NoReply, Told::AtOnce, "Device Time Out !!", MessageIcon::Critical, FailureTitle, true},
    {Kind::NoLink, Told::Nowhere, ""},
    {Kind::TimeUp, Told::Nowhere, ""},
    {Kind::ParallelNotOpened, Told::AtOnce, "'LPT1:' Open Error !!", MessageIcon::Critical, FailureTitle, true},
    {Kind::ParallelNotSent, Told::AtOnce, "Device Time Out !!", MessageIcon::Critical, FailureTitle},
}};
// clang-format on

const Row& RowOf(Kind p_iKind) {
    const auto* const objFound = std::ranges::find(Rows, p_iKind, &Row::m_iKind);
    return objFound != Rows.end() ? *objFound : Rows.front();
}

std::string Describe(const SocketError& p_objError) {
    const std::string strLineEnd = "\r\n";
    return "Number=" + std::to_string(p_objError.m_iNumber) + "  " + p_objError.m_strDescription +
           strLineEnd + "Scode=" + std::to_string(p_objError.m_iScode) + strLineEnd +
           "Source=" + p_objError.m_strSource + strLineEnd +
           "HelpFile=" + p_objError.m_strHelpFile + strLineEnd +
           "HelpContext=" + std::to_string(p_objError.m_iHelpContext) + strLineEnd +
           "CancelDisplay=" + (p_objError.m_bCancelDisplay ? "True" : "False");
}

}  // namespace

namespace MFailureBox {

void ShowAtOnce(const CFailure& p_objFailure, IMessageBox& p_objMessageBox) {
    const Row& objRow = RowOf(p_objFailure.m_iKind);
    if (objRow.m_bBeep) {
        p_objMessageBox.Beep();
    }
    if (objRow.m_iTold == Told::AtOnce) {
        const std::string strText =
            objRow.m_strText != nullptr ? objRow.m_strText : Describe(p_objFailure.m_objSocket);
        p_objMessageBox.Show(strText, objRow.m_iIcon, objRow.m_strTitle);
    }
}

void ShowByHandler(const CFailure& p_objFailure, IMessageBox& p_objMessageBox) {
    const Row& objRow = RowOf(p_objFailure.m_iKind);
    if (objRow.m_iTold == Told::ByHandler) {
        p_objMessageBox.Show(objRow.m_strText, objRow.m_iIcon, objRow.m_strTitle);
    }
}

std::string HandlerText(const CFailure& p_objFailure) {
    const Row& objRow = RowOf(p_objFailure.m_iKind);
    return objRow.m_iTold == Told::ByHandler ? objRow.m_strText : "";
}

}  // namespace MFailureBox
