#pragma once

#include <string>
#include <utility>
#include <variant>

/// A value that holds a number, a text, or (until something is stored) nothing.
///
/// Text is one byte a character, the character's code in ISO 8859-1: what a printer sends in a
/// field is kept byte for byte. Converting between the two is MNumber's business.
class CItemValue {
public:
    /// Empty: as a number 0, as a text "".
    CItemValue() = default;
    // Implicit on purpose: a value is written where it is used, as in SetValue(27).
    CItemValue(int p_iNumber)
        : m_vHeld(static_cast<double>(p_iNumber)) {}
    CItemValue(double p_dNumber)
        : m_vHeld(p_dNumber) {}
    CItemValue(std::string p_strText)
        : m_vHeld(std::move(p_strText)) {}
    CItemValue(const char* p_strText)
        : m_vHeld(std::string(p_strText)) {}

    /// The held number, or null when the value is no number.
    [[nodiscard]] const double* Number() const { return std::get_if<double>(&m_vHeld); }
    /// The held text, or null when the value is no text.
    [[nodiscard]] const std::string* Text() const { return std::get_if<std::string>(&m_vHeld); }

    /// Same kind and same content: the number 5 and the text "5" differ.
    bool operator==(const CItemValue&) const = default;

private:
    std::variant<std::monostate, double, std::string> m_vHeld;
};
