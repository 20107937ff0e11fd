#pragma once

#include "platform/IFileDialog.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// File dialogs that a script answers in place of a person. Keeps what each was shown with; until
/// the test says otherwise they are cancelled.
class CFakeFileDialog : public IFileDialog {
public:
    enum class Kind : std::uint8_t { Save, Open };

    /// One dialog as it came up.
    struct Call {
        Kind m_iKind;
        CFileDialogRecord m_objRecord;
    };

    /// From now on a person picks this path and this filter pair, counted from 1. As with the real
    /// ones a path of more than 511 bytes is a failure.
    void Choose(std::string p_strPath, std::uint32_t p_iFilterIndex = 1) {
        m_strPath = std::move(p_strPath);
        m_iFilterIndex = p_iFilterIndex;
        m_bChosen = true;
    }

    /// From now on a person types a name and then cancels: the name stands in the buffer, yet it
    /// was not chosen.
    void CancelAfterTyping(const std::string& p_strPath) {
        Choose(p_strPath);
        m_bChosen = false;
    }

    /// What else happens while a dialog stands; may throw.
    void WhileShown(std::function<void()> p_fnAction) { m_fnWhileShown = std::move(p_fnAction); }

    [[nodiscard]] const std::vector<Call>& Calls() const { return m_objCalls; }

    bool GetSaveFileName(CFileDialogRecord& p_objRecord) override {
        return Answer(Kind::Save, p_objRecord);
    }

    bool GetOpenFileName(CFileDialogRecord& p_objRecord) override {
        return Answer(Kind::Open, p_objRecord);
    }

private:
    bool Answer(Kind p_iKind, CFileDialogRecord& p_objRecord) {
        m_objCalls.push_back({p_iKind, p_objRecord});
        if (m_fnWhileShown) {
            m_fnWhileShown();
        }
        if (m_strPath.size() > p_objRecord.m_iFileNameSize) {
            return false;
        }
        std::copy(m_strPath.begin(), m_strPath.end(), p_objRecord.m_arrFileName.begin());
        p_objRecord.m_iFilterIndex = m_iFilterIndex;
        return m_bChosen;
    }

    std::vector<Call> m_objCalls;
    std::function<void()> m_fnWhileShown;
    std::string m_strPath;
    std::uint32_t m_iFilterIndex = 0;
    bool m_bChosen = false;
};
