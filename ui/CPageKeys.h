#pragma once

#include <QObject>

#include <vector>

class QPushButton;
class QTabWidget;

/// The keys of the window: those that change tabs, from wherever the focus is, and those that press
/// the buttons of the page in front.
///
/// What sends something that cannot be taken back, SET and every SEND, has no key of its own.
class CPageKeys : public QObject {
    Q_OBJECT

public:
    /// Ctrl+Tab, Ctrl+Page Down and Alt with a number bring tabs of p_objTabs to the front. Their
    /// tool tips tell it. p_objTabs outlives this.
    explicit CPageKeys(QTabWidget& p_objTabs);

    /// Has p_strKey press whichever of p_objButtons is on the tab in front and enabled; of each tab
    /// one at most. The focus is afterwards where it was. They outlive this. Their tool tips tell
    /// the key.
    void AddKey(const char* p_strKey, const std::vector<QPushButton*>& p_objButtons);

    /// Has Return and Enter press p_objButton while it has the focus, as the space bar does.
    void PressByReturn(QPushButton& p_objButton);

    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override;

private:
    void AddTabKeys();
    void GoToTab(int p_iTab);
    static void LeaveMenuBar();
    void Press(QPushButton& p_objButton);

    QTabWidget& m_objTabs;
};
