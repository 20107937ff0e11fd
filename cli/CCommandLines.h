#pragma once

#include "cli/CFileContent.h"
#include "files/CSettingsFile.h"

#include <cstddef>
#include <map>
#include <string_view>

/// Reads the lines of a settings file of commands (.dt1, .dt2). What the window would put up with
/// is found, too: a separator that is none, a digit that is read over, settings that stand twice.
class CCommandLines {
public:
    /// What is wrong beyond so many things is not looked for.
    static constexpr std::size_t MostProblems = 100;

    explicit CCommandLines(const CSettingsFile::Format& p_objFormat)
        : m_objFormat(p_objFormat) {}

    /// To be called once.
    CFileContent Read(std::string_view p_strBytes);

private:
    void TakeLine(std::string_view p_strLine);
    void Keep(const CItemManager& p_objStored);
    void CompareWithWritten(std::string_view p_strLine, const CItemManager& p_objStored);
    void CompareColumns(std::string_view p_strLine, std::string_view p_strWritten,
                        const CItemManager& p_objStored);
    [[nodiscard]] const MSettings::Row* SettingAt(std::string_view p_strLine,
                                                  std::size_t p_iColumn) const;
    [[nodiscard]] std::string_view FieldAt(std::string_view p_strLine,
                                           const MSettings::Row& p_objRow) const;
    [[nodiscard]] std::string Complaint(std::string_view p_strLine) const;
    void CheckValues();

    CSettingsFile::Format m_objFormat;
    CFileContent m_objContent;
    std::size_t m_iLine = 0;
    std::map<std::string_view, std::size_t> m_iLines;  // where a setting stands, by its name
};
