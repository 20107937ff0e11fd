#pragma once

#include <QObject>
#include <QString>

#include <vector>

class UCSpinEdit;

/// Four spin edits that are an address together: a point leads from one to the next, and a whole
/// address that is pasted or dropped into any of them fills all.
class CAddressParts : public QObject {
    Q_OBJECT

public:
    /// p_objParts are four, in their order. p_objOwner owns this and outlives none of them.
    CAddressParts(std::vector<UCSpinEdit*> p_objParts, QObject* p_objOwner);

    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override;

private:
    bool GoOn(const QObject* p_objWatched) const;
    /// @return false for a text that is no address; nothing happens then.
    bool Fill(const QString& p_strText) const;

    std::vector<UCSpinEdit*> m_objParts;
};
