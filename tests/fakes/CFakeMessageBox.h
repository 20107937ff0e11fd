#pragma once

#include "platform/IMessageBox.h"

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

/// Message boxes by script: the test says beforehand, in their order, which boxes it expects.
///
/// Any other box fails the test when it is shown, one that was expected and never came when the
/// object ends (or at Verify). Beeps are only counted.
class CFakeMessageBox : public IMessageBox {
public:
    struct Box {
        std::string m_strText;
        MessageIcon m_iIcon;
        std::string m_strTitle;

        bool operator==(const Box&) const = default;

        friend std::ostream& operator<<(std::ostream& p_objStream, const Box& p_objBox) {
            return p_objStream << "\"" << p_objBox.m_strText << "\", icon "
                               << static_cast<int>(p_objBox.m_iIcon) << ", titled \""
                               << p_objBox.m_strTitle << "\"";
        }
    };

    CFakeMessageBox() = default;
    CFakeMessageBox(const CFakeMessageBox&) = delete;
    CFakeMessageBox& operator=(const CFakeMessageBox&) = delete;
    ~CFakeMessageBox() override { Verify(); }

    /// One more box, after those already expected.
    void Expect(const std::string& p_strText, MessageIcon p_iIcon = MessageIcon::None,
                const std::string& p_strTitle = ProgramTitle) {
        m_arrExpected.push_back({p_strText, p_iIcon, p_strTitle});
    }

    /// What happens while a box stands, in place of the person who looks at it.
    void WhileShown(std::function<void(const Box&)> p_fnAction) {
        m_fnWhileShown = std::move(p_fnAction);
    }

    /// Fails the test for each expected box that has not come, and forgets it.
    void Verify() {
        for (const Box& objBox : m_arrExpected) {
            ADD_FAILURE() << "this box never came: " << objBox;
        }
        m_arrExpected.clear();
    }

    /// Everything shown so far, expected or not.
    [[nodiscard]] const std::vector<Box>& Shown() const { return m_arrShown; }
    [[nodiscard]] int BeepCount() const { return m_iBeeps; }

    using IMessageBox::Show;

    void Show(const std::string& p_strText, MessageIcon p_iIcon,
              const std::string& p_strTitle) override {
        const Box objBox{p_strText, p_iIcon, p_strTitle};
        m_arrShown.push_back(objBox);
        if (m_arrExpected.empty()) {
            ADD_FAILURE() << "a box that nobody expects: " << objBox;
        } else {
            EXPECT_EQ(objBox, m_arrExpected.front());
            m_arrExpected.pop_front();
        }
        if (m_fnWhileShown) {
            m_fnWhileShown(objBox);
        }
    }

    /// One question, after the boxes already expected, and its answer.
    void ExpectQuestion(const std::string& p_strText, bool p_bYes) {
        Expect(p_strText);
        m_arrAnswers.push_back(p_bYes);
    }

    bool AskYesNo(const std::string& p_strText) override {
        Show(p_strText, MessageIcon::None, ProgramTitle);
        if (m_arrAnswers.empty()) {
            ADD_FAILURE() << "a question that nobody expects: " << p_strText;
            return false;
        }
        const bool bYes = m_arrAnswers.front();
        m_arrAnswers.pop_front();
        return bYes;
    }

    void Beep() override { ++m_iBeeps; }

private:
    std::deque<Box> m_arrExpected;
    std::deque<bool> m_arrAnswers;
    std::vector<Box> m_arrShown;
    std::function<void(const Box&)> m_fnWhileShown;
    int m_iBeeps = 0;
};
