#include "flows/MPageText.h"

#include "flows/MCauseText.h"

namespace {

using Kind = CPageNote::Kind;
using Origin = CPageState::Origin;

std::string Fields(int p_iCount) {
    return std::to_string(p_iCount) + (p_iCount == 1 ? " field" : " fields") + " changed";
}

/// The name of a file without its folders.
std::string NameOf(const std::string& p_strPath) {
    return p_strPath.substr(p_strPath.find_last_of("/\\") + 1);
}

std::string Holds(const CPageState& p_objState) {
    switch (p_objState.m_iOrigin) {
    case Origin::Defaults:
        break;
    case Origin::Read:
        return p_objState.m_iChanged == 0 ? "as read from the printer"
                                          : Fields(p_objState.m_iChanged) + " since read";
    case Origin::File:
        return "from file " + NameOf(p_objState.m_strFile) +
               (p_objState.m_bEdited ? ", then changed" : "");
    case Origin::Sent:
        return p_objState.m_bEdited ? "sent, then changed" : "sent, not read back";
    }
    return p_objState.m_iChanged == 0 ? "defaults, never read"
                                      : Fields(p_objState.m_iChanged) + ", never read";
}

/// ": no answer", or nothing.
std::string Cause(const CPageNote& p_objNote) {
    const std::string strCause = MCauseText::Of(p_objNote.m_objFailure);
    return strCause.empty() ? "" : ": " + strCause;
}

/// "0, 1 and 4".
std::string Places(const CPageNote& p_objNote) {
    std::string strPlaces;
    const std::size_t iCount = p_objNote.m_iPlaces.size();
    for (std::size_t i = 0; i < iCount; ++i) {
        if (i > 0) {
            strPlaces += i + 1 == iCount ? " and " : ", ";
        }
        strPlaces += std::to_string(p_objNote.m_iPlaces[i]);
    }
    return strPlaces;
}

std::string Ended(const CPageNote& p_objNote) {
    switch (p_objNote.m_iKind) {
    case Kind::Read:
    case Kind::Sent:
    case Kind::Loaded:
        break;
    case Kind::Unanswered:
        return std::string("READ: no answer for group") +
               (p_objNote.m_iPlaces.size() > 1 ? "s " : " ") + Places(p_objNote);
    case Kind::ReadEnded:
        return "READ ended at group " + Places(p_objNote) + Cause(p_objNote);
    case Kind::Unshown:
        return "READ ended: " + (p_objNote.m_strText.empty() ? "the page cannot show what came"
                                                             : p_objNote.m_strText);
    case Kind::SetEnded:
        return "SET ended at " + std::to_string(p_objNote.m_iPlaces.at(0)) + " of " +
               std::to_string(p_objNote.m_iPlaces.at(1)) + Cause(p_objNote);
    case Kind::Unsendable:
        return "SET has sent nothing: a text is longer than the printer takes";
    case Kind::LoadEnded:
        return "LOAD ended in file " + NameOf(p_objNote.m_strText);
    }
    return {};
}

}  // namespace

namespace MPageText {

std::string Of(const CPageState& p_objState) {
    const std::string strEnded = p_objState.m_objEnded ? Ended(*p_objState.m_objEnded) : "";
    return strEnded.empty() ? Holds(p_objState) : strEnded + " (" + Holds(p_objState) + ")";
}

std::string Of(const CPageState& p_objState, const std::string& p_strWarning) {
    return p_strWarning.empty() ? Of(p_objState) : p_strWarning + " (" + Of(p_objState) + ")";
}

std::string Failed(const std::string& p_strName, const CFailure& p_objFailure) {
    const std::string strCause = MCauseText::Of(p_objFailure);
    return strCause.empty() ? "" : p_strName + " ended: " + strCause;
}

std::string Move(const Place& p_objFrom, const Place& p_objTo) {
    const std::string strEnds = ": this connection ends";
    if (!p_objTo.m_bListens) {
        return "SET will switch the printer's socket off" + strEnds;
    }
    const bool bAddress = p_objFrom.m_strAddress != p_objTo.m_strAddress;
    const bool bPort = p_objFrom.m_strPort != p_objTo.m_strPort;
    if (!bAddress && !bPort) {
        return {};
    }
    const auto Text = [&](const Place& p_objPlace) {
        if (!bAddress) {
            return "port " + p_objPlace.m_strPort;
        }
        return p_objPlace.m_strAddress + (bPort ? ":" + p_objPlace.m_strPort : "");
    };
    return "SET will move the printer from " + Text(p_objFrom) + " to " + Text(p_objTo) + strEnds;
}

}  // namespace MPageText
