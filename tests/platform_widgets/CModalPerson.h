#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

#include <exception>
#include <functional>
#include <utility>

/// The person who deals with the modal dialogs that come up, one after the other, while the code
/// that opened them waits.
///
/// Deals with each once, as soon as it has the keyboard. One that stays too long fails the test
/// and is closed, so that the test does not stand still.
class CModalPerson {
public:
    /// @param p_fnAction what is done in a dialog; it ought to close it. What it throws fails the
    ///                   test: an exception must not leave an event.
    explicit CModalPerson(std::function<void(QWidget&)> p_fnAction)
        : m_fnAction(std::move(p_fnAction)) {
        m_objTimer.callOnTimeout([this] { Look(); });
        m_objTimer.start(LookEveryMilliseconds);
    }
    CModalPerson(const CModalPerson&) = delete;
    CModalPerson& operator=(const CModalPerson&) = delete;

    /// How many dialogs have come.
    [[nodiscard]] int Count() const { return m_iCount; }

private:
    void Look() {
        QWidget* const objModal = QApplication::activeModalWidget();
        if (objModal != m_objSeen) {
            m_objSeen = objModal;
            m_objSince.start();
        }
        if (objModal == nullptr) {
            return;
        }
        if (m_objSince.elapsed() > PatienceMilliseconds) {
            ADD_FAILURE() << "a dialog stays: " << objModal->metaObject()->className();
            objModal->close();
        } else if (objModal != m_objDealtWith && objModal->isActiveWindow()) {
            m_objDealtWith = objModal;
            ++m_iCount;
            Act(*objModal);
        }
    }

    void Act(QWidget& p_objModal) {
        try {
            m_fnAction(p_objModal);
        } catch (const std::exception& objError) {
            ADD_FAILURE() << objError.what();
        }
    }

    static constexpr int LookEveryMilliseconds = 5;
    static constexpr qint64 PatienceMilliseconds = 20'000;

    std::function<void(QWidget&)> m_fnAction;
    QTimer m_objTimer;
    QElapsedTimer m_objSince;
    QPointer<QWidget> m_objSeen;  // null again when it is gone: the next may lie at its address
    QPointer<QWidget> m_objDealtWith;  // the same
    int m_iCount = 0;
};
