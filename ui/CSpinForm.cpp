#include "ui/CSpinForm.h"

#include "model/MNumber.h"
#include "platform/qt/MText.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace {

/// Whether p_strText is hexadecimal digits and blanks, and some of the former.
bool IsHex(const std::string& p_strText) {
    const auto IsBlank = [](unsigned char p_cLetter) {
        return p_cLetter == ' ' || p_cLetter == '\t';
    };
    return !std::ranges::all_of(p_strText, IsBlank) &&
           std::ranges::all_of(p_strText, [&](unsigned char p_cLetter) {
               return std::isxdigit(p_cLetter) != 0 || IsBlank(p_cLetter);
           });
}

}  // namespace

bool CSpinForm::Contains(double p_dValue) const {
    return p_dValue >= m_iMin && p_dValue <= m_iMax;
}

bool CSpinForm::CanStep(std::int32_t p_iValue, bool p_bUp) const {
    const std::int64_t iStepped =
        std::int64_t{p_iValue} + (p_bUp ? 1 : -1) * std::int64_t{m_iIncrement};
    return p_bUp ? iStepped <= m_iMax : iStepped >= m_iMin;
}

QString CSpinForm::TextOf(std::int32_t p_iValue) const {
    if (m_iDecimalPoint != 0) {
        return QString::number(p_iValue / std::pow(10.0, m_iDecimalPoint), 'f', m_iShownPlaces);
    }
    if (m_bHexaMode) {
        const std::string strDigits = MNumber::HexText(p_iValue);
        return MText::ToQt(p_iValue < 16 ? "0" + strDigits : strDigits);
    }
    return MText::ToQt(MNumber::ToText(static_cast<double>(p_iValue)));
}

double CSpinForm::TypedNumber(const std::string& p_strText) const {
    if (p_strText.find_first_of("eE") == std::string::npos) {
        // Moving the point in the text is exact; the product of 1.1 and 100 is above 110.
        const std::string strNumber = p_strText.substr(0, p_strText.find_last_not_of(" \t") + 1);
        return MNumber::ToDouble(strNumber + "e" + std::to_string(m_iDecimalPoint));
    }
    return MNumber::ToDouble(p_strText) * std::pow(10.0, m_iDecimalPoint);
}

CSpinForm::Fault CSpinForm::FaultOf(const QString& p_strText) const {
    const std::string strText = MText::FromQt(p_strText);
    if (m_bHexaMode ? !IsHex(strText) : !MNumber::IsNumber(strText)) {
        return Fault::NoNumber;
    }
    const double dValue = m_bHexaMode ? MNumber::ReadHex(strText) : TypedNumber(strText);
    return Contains(dValue) ? Fault::None : Fault::OutOfRange;
}

QString CSpinForm::RangeText() const {
    const QString strStep = m_bHexaMode ? QString::number(m_iIncrement) : TextOf(m_iIncrement);
    return TextOf(m_iMin) + " to " + TextOf(m_iMax) + (m_bHexaMode ? " (hexadecimal)" : "") +
           ", in steps of " + strStep;
}
