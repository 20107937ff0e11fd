#pragma once

#include <QLabel>

/// One line of text that may get less room than it needs: its end gives way then, and the whole
/// stands in the tooltip.
class CElidedLabel : public QLabel {
    Q_OBJECT

public:
    explicit CElidedLabel(QWidget* p_objParent);

    /// Shows p_strText as it is written, and is called by assistive programs p_strPlace and the
    /// text ("Link: COM1 closed"), who are told of the change. Nothing when it stands there
    /// already.
    void Show(const QString& p_strPlace, const QString& p_strText);

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* p_objEvent) override;
    void resizeEvent(QResizeEvent* p_objEvent) override;
    void showEvent(QShowEvent* p_objEvent) override;

private:
    [[nodiscard]] QString Elided() const;
    void TellWhole();
};
