#include "simulator/CDecodedCommand.h"

#include "protocol/MCommand.h"
#include "simulator/MCommandLayout.h"
#include "simulator/MPrintable.h"

#include <algorithm>
#include <span>

namespace {

bool IsControl(char p_c) {
    const auto iCode = static_cast<unsigned char>(p_c);
    return iCode < 0x20 || iCode == 0x7F;
}

std::string Quoted(std::string_view p_strBytes) {
    return '"' + MPrintable::Printable(p_strBytes) + '"';
}

std::string LengthError(std::size_t p_iLength, MCommandKind::Kind p_iKind,
                        std::span<const MCommandLayout::Layout> p_objForms) {
    std::string strExpected;
    for (const auto& objForm : p_objForms) {
        strExpected += strExpected.empty() ? "" : " or ";
        strExpected += std::to_string(objForm.Length(p_iKind));
    }
    return MPrintable::ByteCount(p_iLength) + " long, " + strExpected + " expected";
}

/// What is wrong with a field's bytes; empty when nothing is.
std::string FieldError(const MCommandLayout::Field& p_objField, std::string_view p_strValue) {
    const bool bText = p_objField.m_strAllowed.empty();
    const bool bWrong =
        bText ? std::any_of(p_strValue.begin(), p_strValue.end(), IsControl)
              : p_strValue.find_first_not_of(p_objField.m_strAllowed) != std::string_view::npos;
    if (!bWrong) {
        return {};
    }
    return p_objField.m_strName + " is " + Quoted(p_strValue) + ", expected " +
           (bText ? "no control characters" : "only " + std::string(p_objField.m_strAllowed));
}

CDecodedCommand::Field Decoded(const MCommandLayout::Field& p_objField,
                               std::string_view p_strValue) {
    CDecodedCommand::Field objField{
        p_objField.m_strName, std::string(p_strValue), {}, p_objField.m_strAllowed.empty(),
        p_strValue.size(),    p_objField.m_objItem};
    if (objField.m_bText) {
        std::erase(objField.m_strValue, MCommand::HostNameFill);
    }
    if (!p_objField.m_strMeanings.empty()) {
        // A field with meanings is one byte wide, and that byte has been found to be allowed.
        objField.m_strMeaning =
            p_objField.m_strMeanings.at(p_objField.m_strAllowed.find(p_strValue.front()));
    }
    return objField;
}

std::string FixedError(std::string_view p_strFound, std::string_view p_strExpected) {
    return Quoted(p_strFound) + " where " + Quoted(p_strExpected) + " is expected";
}

}  // namespace

CDecodedCommand::CDecodedCommand(std::string_view p_strCommand, const CItemManager& p_objItems)
    : m_iKind(MCommandKind::Identify(p_strCommand)) {
    Decode(p_strCommand, p_objItems);
}

void CDecodedCommand::Decode(std::string_view p_strCommand, const CItemManager& p_objItems) {
    if (m_iKind == MCommandKind::Kind::Unknown) {
        m_strError = "begins like no command of this printer";
        return;
    }
    const auto objForms = MCommandLayout::Forms(m_iKind, p_objItems);
    const auto objForm = std::find_if(objForms.begin(), objForms.end(), [&](const auto& p_objForm) {
        return p_objForm.Length(m_iKind) == p_strCommand.size();
    });
    if (objForm == objForms.end()) {
        m_strError = LengthError(p_strCommand.size(), m_iKind, objForms);
        return;
    }
    m_strRemark = objForm->m_strRemark;
    p_strCommand.remove_prefix(MCommandKind::Head(m_iKind).size());
    for (const auto& objField : objForm->m_objFields) {
        const auto strBefore = p_strCommand.substr(0, objField.m_strBefore.size());
        const auto strValue = p_strCommand.substr(strBefore.size(), objField.m_iWidth);
        m_strError = strBefore != objField.m_strBefore ? FixedError(strBefore, objField.m_strBefore)
                                                       : FieldError(objField, strValue);
        if (!m_strError.empty()) {
            return;
        }
        m_objFields.push_back(Decoded(objField, strValue));
        p_strCommand.remove_prefix(strBefore.size() + strValue.size());
    }
    const std::string strTail = objForm->m_strTail + MCommand::CommandEnd;
    if (p_strCommand != strTail) {
        m_strError = FixedError(p_strCommand, strTail);
    }
}

std::string CDecodedCommand::Value(std::string_view p_strName) const {
    const auto objFound =
        std::find_if(m_objFields.begin(), m_objFields.end(),
                     [&](const Field& p_objField) { return p_objField.m_strName == p_strName; });
    return objFound != m_objFields.end() ? objFound->m_strValue : std::string();
}

std::string CDecodedCommand::Describe() const {
    std::string strLine(MCommandKind::Name(m_iKind));
    if (!IsValid()) {
        return strLine + ", refused: " + m_strError;
    }
    const char* strSeparator = ": ";
    for (const Field& objField : m_objFields) {
        strLine += strSeparator + objField.m_strName + "=" +
                   (objField.m_bText ? Quoted(objField.m_strValue) : objField.m_strValue);
        if (!objField.m_strMeaning.empty()) {
            strLine += " (" + objField.m_strMeaning + ")";
        }
        strSeparator = ", ";
    }
    return m_strRemark.empty() ? strLine : strLine + strSeparator + m_strRemark;
}
