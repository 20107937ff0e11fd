#pragma once

#include <QAccessible>

#include <string>
#include <vector>

/// Hears, as an assistive program does, when a control is called something else, and keeps a line
/// of each: "lblLink: Link: COM1 closed". There is one at a time.
class CNameLog {
public:
    CNameLog();
    ~CNameLog();
    CNameLog(const CNameLog&) = delete;
    CNameLog& operator=(const CNameLog&) = delete;

    /// What that control was called, one after the other.
    [[nodiscard]] std::vector<std::string> Of(const std::string& p_strControl) const;

private:
    static void Take(QAccessibleEvent* p_objEvent);

    static CNameLog* s_objCurrent;

    std::vector<std::string> m_strLines;
    QAccessible::UpdateHandler m_fnFormer = nullptr;
    bool m_bFormer = QAccessible::isActive();
};
