#pragma once

#include "flows/IStatusLineView.h"

#include <QStatusBar>

class CElidedLabel;
class QHBoxLayout;
class QProgressBar;
class QToolButton;

/// The line at the foot of the window: how it stands with the link, what is being done and how far
/// it is, and what the page in front holds. Each place is called by its name and its text, and
/// assistive programs hear when it changes.
///
/// Its height is always the same, and it never asks the window to be wider.
class CStatusLine : public QStatusBar, public IStatusLineView {
    Q_OBJECT

public:
    explicit CStatusLine(QWidget* p_objParent);

    void ShowLink(const std::string& p_strText) override;
    void ShowDoing(const std::string& p_strText, std::int16_t p_iStep,
                   std::int16_t p_iSteps) override;
    void ShowStop(bool p_bCanStop) override;
    void ShowPage(const std::string& p_strText) override;

signals:
    /// "Stop" was pressed, or Esc while it stood there.
    void StopPressed();

protected:
    void changeEvent(QEvent* p_objEvent) override;

private:
    void MakeBar();
    void MakeStop();
    void KeepHeight();

    QWidget* m_objPlaces;
    QWidget* m_objStrut;
    CElidedLabel* m_lblLink;
    CElidedLabel* m_lblDoing;
    QProgressBar* m_barDoing;
    QHBoxLayout* m_objLayout = nullptr;
    QToolButton* m_btnStop = nullptr;  // there is one only while it can be pressed
    CElidedLabel* m_lblPage;
};
