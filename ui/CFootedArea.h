#pragma once

#include <QScrollArea>

/// A row of a page that does not scroll with it: it stays at the lower edge of what is seen as long
/// as its place on the page is below that. What it then hides comes out by scrolling on, since its
/// place is kept free.
class CPageFoot : public QWidget {
    Q_OBJECT

public:
    /// Makes the row on p_objPage, where Place() goes into the page's layout.
    explicit CPageFoot(QWidget* p_objPage);

    /// Keeps the row's place free.
    [[nodiscard]] QWidget* Place() { return m_objPlace; }

    bool event(QEvent* p_objEvent) override;

protected:
    void paintEvent(QPaintEvent* p_objEvent) override;

private:
    QWidget* m_objPlace;
};

/// A page that scrolls where the window is too small for it, with or without a foot that does not.
/// What gets the focus otherwise than by a click comes into sight.
class CFootedArea : public QScrollArea {
    Q_OBJECT

public:
    /// Takes p_objPage over. p_objFoot stands on it, or is null. With p_objParent in the window of
    /// p_objPage, the page keeps the font that it has there all the while.
    CFootedArea(QWidget* p_objPage, CPageFoot* p_objFoot, QWidget* p_objParent);
    ~CFootedArea() override;
    CFootedArea(const CFootedArea&) = delete;
    CFootedArea& operator=(const CFootedArea&) = delete;

    bool eventFilter(QObject* p_objWatched, QEvent* p_objEvent) override;

protected:
    void resizeEvent(QResizeEvent* p_objEvent) override;

private:
    void Show(QWidget& p_objFocus);
    void PlaceFoot();

    CPageFoot* m_objFoot;
};
