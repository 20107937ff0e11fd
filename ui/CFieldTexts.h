#pragma once

#include <QObject>
#include <QString>

#include <array>
#include <cstdint>

class QWidget;

/// What a control says of itself beside its name: in its tool tip to who sees it, in its accessible
/// description to who does not. Several sides each have a part of it.
class CFieldTexts : public QObject {
    Q_OBJECT

public:
    /// In the order in which they are said.
    enum class Part : std::uint8_t {
        Wrong,  ///< what is wrong with what is typed there
        Read,   ///< what was read, when something else is shown
        Where,  ///< the frame around it; only described, since it is seen
        Range,  ///< what can be entered
        Note,   ///< what else is to be known
        Count,
    };

    /// The texts of p_objControl, which owns them.
    static CFieldTexts& Of(QWidget& p_objControl);

    /// Says p_strText from now on; an empty one says nothing.
    void Set(Part p_iPart, const QString& p_strText);

private:
    explicit CFieldTexts(QWidget& p_objControl);
    void Tell();

    QWidget& m_objControl;
    std::array<QString, static_cast<std::size_t>(Part::Count)> m_strParts;
};
