#pragma once

#include "flows/CPageState.h"
#include "flows/ISettingsPage.h"

#include <QObject>
#include <QString>

#include <vector>

class CReadBaseline;

/// A page of settings that knows where what it shows has come from. It does what the page itself
/// does; the flows are given it in the page's place.
class CToldPage : public QObject, public ISettingsPage {
    Q_OBJECT

public:
    /// p_objPage and its fields, which show the defaults. Not owned; outlive this.
    CToldPage(ISettingsPage& p_objPage, const CReadBaseline& p_objBaseline);

    bool Refresh() override { return m_objPage.Refresh(); }
    void NoteRead() override { m_objPage.NoteRead(); }
    bool Store() override { return m_objPage.Store(); }
    void NoteEnd(const CPageNote& p_objNote) override;

    /// A flow begins: how the one before has ended does not count any more.
    void Begin();

    [[nodiscard]] CPageState State() const;

signals:
    /// State, or what a field shows, is not what it was.
    void Changed();

    /// What the page shows comes from State().m_iOrigin now. Comes before Changed.
    void Came();

private:
    [[nodiscard]] std::vector<QString> ShownTexts() const;
    [[nodiscard]] bool SetOrigin(const CPageNote& p_objNote);

    ISettingsPage& m_objPage;
    const CReadBaseline& m_objBaseline;
    CPageState m_objState;
    std::vector<QString> m_strAtOrigin;  // what the fields showed when it came from there
};
