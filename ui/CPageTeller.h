#pragma once

#include "flows/CLineTeller.h"
#include "flows/IStatusLineView.h"
#include "flows/MPageText.h"

#include <QObject>

#include <cstdint>
#include <string>
#include <vector>

class CReadBaseline;
class CToldPage;
class QTabWidget;

/// Keeps in the line at the foot of the window what the page in front holds.
///
/// The page of network settings warns there, before SET is pressed, that the printer would leave
/// the very place where the tool talks to it. What was read over this connection is the printer's
/// own, even where the tool has another address for it, and warns of nothing. The page of the
/// service functions holds nothing; there stands why the last one has failed.
class CPageTeller : public QObject {
    Q_OBJECT

public:
    /// Which page a button's work belongs to.
    enum class Page : std::uint8_t { Parameter, Maintenance, Lan };

    /// The pages stand in p_objTabs in the order of Page. None is owned; all outlive this.
    CPageTeller(const QTabWidget& p_objTabs, CToldPage& p_objParameter, CToldPage& p_objLan,
                const CReadBaseline& p_objLanFields, CLineTeller& p_objLine,
                IStatusLineView& p_objView);
    ~CPageTeller() override;
    CPageTeller(const CPageTeller&) = delete;
    CPageTeller& operator=(const CPageTeller&) = delete;

    /// Something with the printer begins that belongs to p_iPage.
    void Begin(Page p_iPage);

    /// It has ended, with p_objFailure (of kind None: well). Called p_strName.
    void End(Page p_iPage, const std::string& p_strName, const CFailure& p_objFailure);

private:
    void Show();
    void NoteOrigin();
    [[nodiscard]] std::string Text() const;
    [[nodiscard]] std::string Warning() const;
    /// The texts of those fields of the network page, with points between them.
    [[nodiscard]] std::string Shown(const std::vector<QString>& p_strFields) const;
    /// Whether those fields show what the printer has answered over this connection.
    [[nodiscard]] bool ArePrinters(const std::vector<QString>& p_strFields) const;

    const QTabWidget& m_objTabs;
    CToldPage& m_objParameter;
    CToldPage& m_objLan;
    const CReadBaseline& m_objLanFields;
    CLineTeller& m_objLine;
    IStatusLineView& m_objView;
    std::string m_strMaintenance;
    int m_iReadOver = 0;  // the connection over which the network page was read
    int m_iSentOver = 0;  // the same for the sending of it
};
