#pragma once

#include <QDeadlineTimer>
#include <QTimer>
#include <QWidget>

#include <functional>

/// The person who deals with the next modal dialog, while the code that opened it waits.
///
/// Acts once, as soon as the dialog stands. A dialog that nobody expects, or that stays, is
/// closed after a while, so that a test fails instead of standing still.
class CModalAnswer {
public:
    /// @param p_strName  the dialog's object name, or its class's name.
    /// @param p_fnAction what the person does; it ought to close the dialog.
    CModalAnswer(const QString& p_strName, std::function<void(QWidget&)> p_fnAction);
    CModalAnswer(const CModalAnswer&) = delete;
    CModalAnswer& operator=(const CModalAnswer&) = delete;

    /// Whether the dialog has come.
    [[nodiscard]] bool Done() const { return m_bDone; }

private:
    void Look();

    QString m_strName;
    std::function<void(QWidget&)> m_fnAction;
    QTimer m_objTimer;
    QDeadlineTimer m_objDeadline;
    bool m_bDone = false;
};
