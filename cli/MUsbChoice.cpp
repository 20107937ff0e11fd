#include "cli/MUsbChoice.h"

#include "cli/CCommandError.h"

#include <algorithm>

namespace {

using Entries = std::vector<CUsbPrinterEntry>;

constexpr const char* Shows = "varden ports shows what is plugged in";

/// "usb:1-2 (Varden Label Printer, serial number A17)"
std::string Describe(const CUsbPrinterEntry& p_objEntry) {
    std::string strText = p_objEntry.m_strManufacturer;
    const auto Add = [&](const char* p_strBetween, const std::string& p_strFurther) {
        if (!p_strFurther.empty()) {
            strText += (strText.empty() ? "" : p_strBetween) + p_strFurther;
        }
    };
    Add(" ", p_objEntry.m_strProduct);
    Add(", ", p_objEntry.m_strSerialNumber.empty()
                  ? std::string()
                  : "serial number " + p_objEntry.m_strSerialNumber);
    const std::string strTarget = MUsbChoice::TargetOf(p_objEntry);
    return strText.empty() ? strTarget : strTarget + " (" + strText + ")";
}

std::string Describe(const Entries& p_objEntries) {
    std::string strText;
    for (const CUsbPrinterEntry& objEntry : p_objEntries) {
        strText += (strText.empty() ? "" : ", ") + Describe(objEntry);
    }
    return strText;
}

bool IsMeant(const CTarget& p_objTarget, const CUsbPrinterEntry& p_objEntry) {
    if (!p_objTarget.m_iPorts.empty()) {
        return p_objEntry.m_iBus == p_objTarget.m_iBus &&
               p_objEntry.m_iPorts == p_objTarget.m_iPorts;
    }
    return p_objTarget.m_strSerialNumber.empty() ||
           p_objEntry.m_strSerialNumber == p_objTarget.m_strSerialNumber;
}

[[noreturn]] void Refuse(const CTarget& p_objTarget, const std::string& p_strWhat,
                         const std::string& p_strCause, const std::string& p_strHint) {
    throw CCommandError(MExitCode::NotReachable,
                        {p_strWhat, p_strCause, p_objTarget.m_strText, p_strHint});
}

[[noreturn]] void RefuseNone(const CTarget& p_objTarget, const Entries& p_objEntries) {
    if (p_objEntries.empty()) {
        Refuse(p_objTarget, "There is no printer on USB", {},
               "plug it in and switch it on; varden ports shows it then");
    }
    Refuse(p_objTarget, "There is no printer " + p_objTarget.m_strText,
           "what is plugged in is " + Describe(p_objEntries), Shows);
}

}  // namespace

namespace MUsbChoice {

std::string TargetOf(const CUsbPrinterEntry& p_objEntry) {
    std::string strTarget = "usb";
    for (std::size_t i = 0; i < p_objEntry.m_iPorts.size(); ++i) {
        strTarget += (i == 0 ? ":" + std::to_string(p_objEntry.m_iBus) + "-" : ".") +
                     std::to_string(p_objEntry.m_iPorts[i]);
    }
    return strTarget;
}

CUsbPrinterEntry Choose(const CTarget& p_objTarget, const Entries& p_objEntries,
                        const IsForeign& p_fnIsForeign) {
    Entries objMeant;
    std::ranges::copy_if(
        p_objEntries, std::back_inserter(objMeant),
        [&](const CUsbPrinterEntry& p_objEntry) { return IsMeant(p_objTarget, p_objEntry); });
    if (objMeant.empty()) {
        RefuseNone(p_objTarget, p_objEntries);
    }
    if (objMeant.size() > 1) {
        const Entries objAll = objMeant;
        std::erase_if(objMeant, p_fnIsForeign);
        if (objMeant.empty()) {
            Refuse(p_objTarget, "None of the printers on USB is one of Varden",
                   "what is plugged in is " + Describe(objAll), Shows);
        }
    }
    if (objMeant.size() > 1) {
        Refuse(p_objTarget, "Several printers are plugged in on USB", Describe(objMeant),
               "name the one that is meant, as in " + TargetOf(objMeant.front()));
    }
    return objMeant.front();
}

}  // namespace MUsbChoice
