#pragma once

#include <QHash>
#include <QObject>
#include <QString>

#include <vector>

class QWidget;

/// What the fields of a page held when the printer was last read, and which of them show something
/// else now. Before the first reading it is what they begin with.
///
/// Only a reading that the page shows whole counts. What comes from a file, or is sent to the
/// printer, changes the fields and not this. A field is compared by what it shows, also while
/// somebody types in it.
class CReadBaseline : public QObject {
    Q_OBJECT

public:
    /// Watches p_objFields, which are lists, spin edits and text boxes and outlive this. Until
    /// Begin it holds what they show here.
    explicit CReadBaseline(std::vector<QWidget*> p_objFields);

    /// What the fields show now is what they begin with; nothing has been read.
    void Begin();

    /// What the fields show now has been read from the printer, but for those of p_strUnshown: they
    /// could not take what was read, which is told here as they would have shown it. These differ
    /// from now on.
    void NoteRead(const QHash<const QWidget*, QString>& p_strUnshown = {});

    /// Whether NoteRead was called since Begin.
    [[nodiscard]] bool WasRead() const { return m_bWasRead; }

    /// How many fields differ.
    [[nodiscard]] int ChangedCount() const { return m_iChanged; }

    /// Whether p_objField differs. False for a widget that is none of the fields.
    [[nodiscard]] bool IsChanged(const QWidget& p_objField) const;

    /// What p_objField held. Empty for a widget that is none of the fields.
    [[nodiscard]] QString Held(const QWidget& p_objField) const;

    /// Has p_objField show again what it held, as if a person had entered it.
    void PutBack(QWidget& p_objField) const;

    [[nodiscard]] const std::vector<QWidget*>& Fields() const { return m_objFields; }

    /// What a list, spin edit or text box shows.
    static QString Shown(const QWidget& p_objField);

signals:
    /// WasRead, ChangedCount, or which fields differ is not what it was.
    void Changed();

    /// p_objField shows something else than it did. Comes last.
    void FieldShown(QWidget* p_objField);

    /// IsChanged or Held of p_objField, or WasRead, is not what it was. Comes before Changed.
    void FieldChanged(QWidget* p_objField);

private:
    struct Holding {
        QString m_strText;
        bool m_bChanged = false;
    };

    void Watch(QWidget& p_objField);
    void Take(const QHash<const QWidget*, QString>& p_strUnshown, bool p_bWasRead);
    /// @return whether something is not what it was.
    bool Compare(QWidget& p_objField);

    std::vector<QWidget*> m_objFields;
    QHash<const QWidget*, Holding> m_objHeld;
    int m_iChanged = 0;
    bool m_bWasRead = false;
};
