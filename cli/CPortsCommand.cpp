#include "cli/CPortsCommand.h"

#include "cli/MAccessText.h"
#include "cli/MUsbChoice.h"

#include <CLI/CLI.hpp>

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* Examples = R"(Examples:
  varden ports
  varden ports --json

COM tells which port the window's list means by COM and that number. No port is
opened: that could disturb who uses it.)";

Json TextOrNull(const std::string& p_strText) {
    return p_strText.empty() ? Json(nullptr) : Json(p_strText);
}

/// A number of USB in its four hexadecimal digits.
std::string UsbNumber(std::uint16_t p_iNumber) {
    constexpr std::string_view strDigits = "0123456789abcdef";
    constexpr unsigned iBits = 4;
    constexpr unsigned iDigit = 15;
    std::string strText;
    for (int iShift = 12; iShift >= 0; iShift -= static_cast<int>(iBits)) {
        strText += strDigits[(static_cast<unsigned>(p_iNumber) >> iShift) & iDigit];
    }
    return strText;
}

std::string Words(const std::string& p_strOne, const std::string& p_strOther) {
    return p_strOne + (p_strOne.empty() || p_strOther.empty() ? "" : " ") + p_strOther;
}

std::string ComNames(const CSerialPortEntry& p_objEntry) {
    std::string strNames;
    for (const std::int16_t iNumber : p_objEntry.m_iComNumbers) {
        strNames += (strNames.empty() ? "COM" : ", COM") + std::to_string(iNumber);
    }
    return strNames.empty() ? "-" : strNames;
}

Json ProblemJson(const std::optional<CCommandError::Texts>& p_objProblem) {
    if (!p_objProblem) {
        return nullptr;
    }
    return {{"what", p_objProblem->m_strWhat},
            {"cause", TextOrNull(p_objProblem->m_strCause)},
            {"hint", TextOrNull(p_objProblem->m_strHint)}};
}

std::string ProblemCell(const std::optional<CCommandError::Texts>& p_objProblem) {
    if (!p_objProblem) {
        return "yes";
    }
    std::string strText = "no: " + p_objProblem->m_strWhat;
    for (const std::string& strFurther : {p_objProblem->m_strCause, p_objProblem->m_strHint}) {
        strText += strFurther.empty() ? "" : ": " + strFurther;
    }
    return strText;
}

Json SerialJson(const CSerialPortEntry& p_objEntry,
                const std::optional<CCommandError::Texts>& p_objProblem) {
    const auto Number = [](std::optional<std::uint16_t> p_iNumber) {
        return p_iNumber ? Json(UsbNumber(*p_iNumber)) : Json(nullptr);
    };
    return {{"target", "com:" + p_objEntry.m_strDevice},
            {"device", p_objEntry.m_strDevice},
            {"com", p_objEntry.m_iComNumbers},
            {"description", TextOrNull(p_objEntry.m_strDescription)},
            {"manufacturer", TextOrNull(p_objEntry.m_strManufacturer)},
            {"serial_number", TextOrNull(p_objEntry.m_strSerialNumber)},
            {"vendor", Number(p_objEntry.m_iVendor)},
            {"product", Number(p_objEntry.m_iProduct)},
            {"usable", !p_objProblem.has_value()},
            {"problem", ProblemJson(p_objProblem)}};
}

Json UsbJson(const CUsbPrinterEntry& p_objEntry,
             const std::optional<CCommandError::Texts>& p_objProblem) {
    return {{"target", MUsbChoice::TargetOf(p_objEntry)},
            {"device", p_objEntry.m_strDevice},
            {"bus", p_objEntry.m_iBus},
            {"ports", p_objEntry.m_iPorts},
            {"description", TextOrNull(p_objEntry.m_strProduct)},
            {"manufacturer", TextOrNull(p_objEntry.m_strManufacturer)},
            {"serial_number", TextOrNull(p_objEntry.m_strSerialNumber)},
            {"vendor", UsbNumber(p_objEntry.m_iVendor)},
            {"product", UsbNumber(p_objEntry.m_iProduct)},
            {"usable", !p_objProblem.has_value()},
            {"problem", ProblemJson(p_objProblem)}};
}

void ShowOrSay(const CTable& p_objTable, const char* p_strNone, COutput& p_objOutput) {
    if (p_objTable.IsEmpty()) {
        p_objOutput.Say(p_strNone);
    } else {
        p_objOutput.Show(p_objTable);
    }
}

}  // namespace

void CPortsCommand::Describe(CLI::App& p_objTable) {
    p_objTable.footer(Examples);
}

MExitCode::Code CPortsCommand::Run(COutput& p_objOutput) {
    CTable objSerial({"SERIAL PORT", "COM", "WHAT", "USABLE"});
    Json& objSerialJson = p_objOutput.Json()["serial"] = Json::array();
    for (const CSerialPortEntry& objEntry : m_objSerialPorts.SerialPorts()) {
        const auto objProblem =
            MAccessText::Problem(objEntry.m_strDevice, MAccessText::Device::SerialPort,
                                 m_objAccess.Look(objEntry.m_strDevice));
        const std::string strWhat = Words(objEntry.m_strManufacturer, objEntry.m_strDescription);
        objSerial.Add({objEntry.m_strDevice, ComNames(objEntry), strWhat.empty() ? "-" : strWhat,
                       ProblemCell(objProblem)});
        objSerialJson.push_back(SerialJson(objEntry, objProblem));
    }
    CTable objUsb({"USB PRINTER", "SERIAL NUMBER", "WHAT", "USABLE"});
    Json& objUsbJson = p_objOutput.Json()["usb"] = Json::array();
    for (const CUsbPrinterEntry& objEntry : m_objUsbPrinters.UsbPrinters()) {
        const auto objProblem =
            MAccessText::Problem(objEntry.m_strDevice, MAccessText::Device::UsbPrinter,
                                 m_objAccess.Look(objEntry.m_strDevice));
        const std::string strWhat = Words(objEntry.m_strManufacturer, objEntry.m_strProduct);
        objUsb.Add({MUsbChoice::TargetOf(objEntry),
                    objEntry.m_strSerialNumber.empty() ? "-" : objEntry.m_strSerialNumber,
                    strWhat.empty() ? "-" : strWhat, ProblemCell(objProblem)});
        objUsbJson.push_back(UsbJson(objEntry, objProblem));
    }
    ShowOrSay(objSerial, "No serial port", p_objOutput);
    ShowOrSay(objUsb, "No printer on USB", p_objOutput);
    return MExitCode::Done;
}
