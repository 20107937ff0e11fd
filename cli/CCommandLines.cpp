#include "cli/CCommandLines.h"

#include "cli/MFileText.h"
#include "cli/MUtf8.h"
#include "files/CLineReader.h"
#include "model/MSettingText.h"
#include "protocol/MCommand.h"

#include <algorithm>
#include <cctype>
#include <set>
#include <string>

namespace {

using MSettings::Kind;
using MSettings::Row;
using MSettings::Slot;

constexpr std::size_t HeadLength = 4;
constexpr std::size_t EndLength = 2;

/// Bytes that are in memory already.
class CBytesReader : public IFileReader {
public:
    explicit CBytesReader(std::string_view p_strBytes)
        : m_strRest(p_strBytes)
        , m_iSize(p_strBytes.size()) {}

    [[nodiscard]] std::uint64_t Size() const override { return m_iSize; }

    std::optional<std::size_t> Read(std::span<char> p_arrBuffer) override {
        const std::size_t iCount = m_strRest.copy(p_arrBuffer.data(), p_arrBuffer.size());
        m_strRest.remove_prefix(iCount);
        return iCount;
    }

private:
    std::string_view m_strRest;
    std::uint64_t m_iSize;
};

/// A catalogue whose items hold nothing: what a line stores in it shows.
CItemManager Blank() {
    CItemManager objItems;
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        (objItems.*objRow.m_objSlot)->m_vValue = CItemValue();
    }
    return objItems;
}

bool IsHeld(const CItemManager& p_objItems, Slot p_objSlot) {
    return (p_objItems.*p_objSlot)->m_vValue != CItemValue();
}

bool IsHeld(const CItemManager& p_objItems, const Row& p_objRow) {
    return std::ranges::all_of(p_objRow.Items(),
                               [&](Slot p_objSlot) { return IsHeld(p_objItems, p_objSlot); });
}

/// Copies what is held, as it is held: an item's own way to take a value may change it.
void CopyHeld(const CItemManager& p_objFrom, const CItemManager& p_objTo) {
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        if (IsHeld(p_objFrom, objRow.m_objSlot)) {
            (p_objTo.*objRow.m_objSlot)->m_vValue = (p_objFrom.*objRow.m_objSlot)->m_vValue;
        }
    }
}

/// Whether a setting's text is to be compared with what would be written for it. A text has no
/// other form, and what is no value of the setting is found by its value.
bool HasOneForm(const Row& p_objRow, const CItemManager& p_objItems) {
    return p_objRow.m_iKind != Kind::Text && MSettingText::Show(p_objRow, p_objItems).has_value();
}

/// Whether the setting's items hold one of its values.
bool IsValue(const Row& p_objRow, const CItemManager& p_objItems) {
    const std::optional<std::string> strValue = MSettingText::Show(p_objRow, p_objItems);
    return strValue && (p_objRow.m_iKind != Kind::Text || MFileText::IsValue(p_objRow, *strValue));
}

std::string Quoted(std::string_view p_strBytes) {
    return "\"" + MUtf8::FromLatin1(p_strBytes) + "\"";
}

bool SameLetter(char p_cOne, char p_cOther) {
    return std::toupper(static_cast<unsigned char>(p_cOne)) ==
           std::toupper(static_cast<unsigned char>(p_cOther));
}

}  // namespace

CFileContent CCommandLines::Read(std::string_view p_strBytes) {
    CBytesReader objBytes(p_strBytes);
    CLineReader objLines(objBytes);
    std::string strLine;
    while (objLines.Next(strLine) == CLineReader::Result::Line) {
        ++m_iLine;
        TakeLine(strLine);
        if (strLine.size() > CLineReader::LongestLine) {
            break;  // the rest of such a line is no line
        }
        if (m_objContent.m_objProblems.size() >= MostProblems) {
            m_objContent.Add(0, {}, "what follows was not looked at");
            break;
        }
    }
    if (m_iLine == 0) {
        m_objContent.Add(0, {}, "the file is empty");
    }
    CheckValues();
    return std::move(m_objContent);
}

void CCommandLines::TakeLine(std::string_view p_strLine) {
    const CItemManager objStored = Blank();
    if (!m_objFormat.m_objStoreLine(p_strLine, objStored)) {
        m_objContent.Add(m_iLine, {}, Complaint(p_strLine));
        return;
    }
    Keep(objStored);
    CompareWithWritten(p_strLine, objStored);
}

void CCommandLines::Keep(const CItemManager& p_objStored) {
    bool bAgain = false;
    for (const Row& objRow : MSettings::All()) {
        if (IsHeld(p_objStored, objRow)) {
            bAgain = bAgain || m_objContent.m_objSnapshot.IsKnown(objRow);
            m_objContent.m_objSnapshot.SetKnown(objRow);
            m_iLines[objRow.m_strName] = m_iLine;
        }
    }
    CopyHeld(p_objStored, m_objContent.m_objSnapshot.Items());
    if (bAgain) {
        m_objContent.Add(m_iLine, {}, "its settings stand in an earlier line, too");
    }
}

void CCommandLines::CompareWithWritten(std::string_view p_strLine,
                                       const CItemManager& p_objStored) {
    const CItemManager objItems;
    CopyHeld(p_objStored, objItems);
    for (const Row& objRow : MSettings::All()) {
        if (!HasOneForm(objRow, objItems)) {
            for (const Slot objSlot : objRow.Items()) {
                (objItems.*objSlot)->m_vValue = (objItems.*objSlot)->m_vDefaultValue;
            }
        }
    }
    for (const std::string& strWritten : m_objFormat.m_objBuildLines(objItems)) {
        const CItemManager objAgain = Blank();
        m_objFormat.m_objStoreLine(strWritten, objAgain);
        const bool bSameLine = std::ranges::all_of(MSettings::All(), [&](const Row& p_objRow) {
            return !IsHeld(p_objStored, p_objRow) || IsHeld(objAgain, p_objRow);
        });
        if (bSameLine) {
            CompareColumns(p_strLine, strWritten, p_objStored);
            return;
        }
    }
}

void CCommandLines::CompareColumns(std::string_view p_strLine, std::string_view p_strWritten,
                                   const CItemManager& p_objStored) {
    // A line may be shorter by fields at its end; it ends as every line does.
    const std::string strExpected =
        std::string(p_strWritten.substr(0, p_strLine.size() - EndLength)) + MCommand::CommandEnd;
    std::set<const Row*> objTold;
    for (std::size_t i = 0; i < p_strLine.size(); ++i) {
        if (SameLetter(p_strLine[i], strExpected[i])) {
            continue;
        }
        const Row* const objRow = SettingAt(p_strLine, i);
        if (objRow == nullptr) {
            m_objContent.Add(m_iLine, {},
                             "column " + std::to_string(i + 1) + " has " +
                                 Quoted(p_strLine.substr(i, 1)) + " where " +
                                 Quoted(strExpected.substr(i, 1)) + " belongs");
        } else if (HasOneForm(*objRow, p_objStored) && objTold.insert(objRow).second) {
            m_objContent.Add(m_iLine, objRow->m_strName,
                             Quoted(FieldAt(p_strLine, *objRow)) + " is read as " +
                                 MSettingText::Show(*objRow, p_objStored).value_or(""));
        }
    }
}

std::string_view CCommandLines::FieldAt(std::string_view p_strLine, const Row& p_objRow) const {
    std::size_t iBegin = 0;
    while (SettingAt(p_strLine, iBegin) != &p_objRow) {
        ++iBegin;
    }
    std::size_t iEnd = p_strLine.size();
    while (SettingAt(p_strLine, iEnd - 1) != &p_objRow) {
        --iEnd;
    }
    return p_strLine.substr(iBegin, iEnd - iBegin);
}

const Row* CCommandLines::SettingAt(std::string_view p_strLine, std::size_t p_iColumn) const {
    // The setting that another character there changes.
    const CItemManager objBefore = Blank();
    const CItemManager objAfter = Blank();
    std::string strLine(p_strLine);
    m_objFormat.m_objStoreLine(strLine, objBefore);
    strLine[p_iColumn] = strLine[p_iColumn] == '1' ? '2' : '1';
    if (!m_objFormat.m_objStoreLine(strLine, objAfter)) {
        return nullptr;  // what tells the line's kind
    }
    for (const Row& objRow : MSettings::All()) {
        for (const Slot objSlot : objRow.Items()) {
            if ((objBefore.*objSlot)->m_vValue != (objAfter.*objSlot)->m_vValue) {
                return &objRow;
            }
        }
    }
    return nullptr;
}

std::string CCommandLines::Complaint(std::string_view p_strLine) const {
    if (p_strLine.empty()) {
        return "it is empty";
    }
    // Where several kinds of line have the same head, the character behind it tells them apart.
    std::vector<std::string> strKinds = m_objFormat.m_objBuildLines(CItemManager());
    std::string_view strBegin = p_strLine.substr(0, HeadLength);
    const auto KeepThoseThatBeginSo = [&] {
        std::erase_if(strKinds, [&](const std::string& p_strKind) {
            return strBegin.size() < HeadLength || !p_strKind.starts_with(strBegin);
        });
    };
    KeepThoseThatBeginSo();
    if (strKinds.size() > 1) {
        strBegin = p_strLine.substr(0, HeadLength + 1);
        KeepThoseThatBeginSo();
    }
    if (strKinds.size() != 1) {
        return "no line of such a file begins with " + Quoted(strBegin);
    }
    return "it has " + std::to_string(p_strLine.size()) + " characters in place of " +
           std::to_string(strKinds.front().size());
}

void CCommandLines::CheckValues() {
    const CSnapshot& objSnapshot = m_objContent.m_objSnapshot;
    for (const Row& objRow : MSettings::All()) {
        if (objSnapshot.IsKnown(objRow) && !IsValue(objRow, objSnapshot.Items())) {
            m_objContent.Add(m_iLines[objRow.m_strName], objRow.m_strName,
                             Quoted(MSettingText::Raw(objRow, objSnapshot.Items())) +
                                 " is none of its values (" + MSettingText::Allowed(objRow) + ")");
        }
    }
}
