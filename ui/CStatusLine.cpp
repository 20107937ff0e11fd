#include "ui/CStatusLine.h"

#include "ui/CElidedLabel.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QShortcut>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr const char* StopCaption = "Stop";
constexpr int BarWidth = 90;
constexpr int BetweenPlaces = 18;
constexpr int AtTheSides = 6;

CElidedLabel* MakePlace(QWidget* p_objParent, const char* p_strName) {
    auto* const lbl = new CElidedLabel(p_objParent);
    lbl->setObjectName(p_strName);
    return lbl;
}

}  // namespace

CStatusLine::CStatusLine(QWidget* p_objParent)
    : QStatusBar(p_objParent)
    , m_objPlaces(new QWidget(this))
    , m_objStrut(new QWidget(m_objPlaces))
    , m_lblLink(MakePlace(m_objPlaces, "lblLink"))
    , m_lblDoing(MakePlace(m_objPlaces, "lblDoing"))
    , m_barDoing(new QProgressBar(m_objPlaces))
    , m_lblPage(MakePlace(m_objPlaces, "lblPage")) {
    setSizeGripEnabled(false);
    MakeBar();
    m_lblPage->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_objLayout = new QHBoxLayout(m_objPlaces);
    QHBoxLayout* const objLayout = m_objLayout;
    objLayout->setContentsMargins(AtTheSides, 0, AtTheSides, 0);
    objLayout->addWidget(m_objStrut);
    objLayout->addWidget(m_lblLink);
    objLayout->addSpacing(BetweenPlaces);
    objLayout->addWidget(m_lblDoing);
    objLayout->addWidget(m_barDoing);
    objLayout->addSpacing(BetweenPlaces);
    objLayout->addWidget(m_lblPage, 1);
    addPermanentWidget(m_objPlaces, 1);  // stays when a message would take the place of others
    ShowLink({});
    ShowDoing({}, 0, 0);
    ShowPage({});
    KeepHeight();
}

void CStatusLine::MakeBar() {
    m_barDoing->setObjectName("barDoing");
    m_barDoing->setAccessibleName("Progress");
    m_barDoing->setTextVisible(false);
    m_barDoing->setFixedWidth(BarWidth);
    m_barDoing->hide();
}

void CStatusLine::MakeStop() {
    m_btnStop = new QToolButton(m_objPlaces);
    m_btnStop->setObjectName("btnStop");
    m_btnStop->setText(StopCaption);
    m_btnStop->setToolTip("Ends the attempt to connect (Esc)");
    m_btnStop->setAccessibleDescription(m_btnStop->toolTip());
    m_btnStop->setFocusPolicy(Qt::TabFocus);
    connect(m_btnStop, &QToolButton::clicked, this, &CStatusLine::StopPressed);
    new QShortcut(Qt::Key_Escape, m_btnStop, this, &CStatusLine::StopPressed);
    m_objLayout->insertWidget(m_objLayout->indexOf(m_barDoing) + 1, m_btnStop);
    m_btnStop->show();
}

void CStatusLine::ShowLink(const std::string& p_strText) {
    m_lblLink->Show("Link", QString::fromStdString(p_strText));
}

void CStatusLine::ShowDoing(const std::string& p_strText, std::int16_t p_iStep,
                            std::int16_t p_iSteps) {
    const bool bCounted = p_iSteps > 1;
    if (bCounted) {
        m_barDoing->setRange(0, p_iSteps);
        m_barDoing->setValue(p_iStep);
    }
    m_barDoing->setVisible(bCounted);
    m_lblDoing->Show("Doing", QString::fromStdString(p_strText));
}

void CStatusLine::ShowStop(bool p_bCanStop) {
    if (p_bCanStop == (m_btnStop != nullptr)) {
        return;
    }
    if (p_bCanStop) {
        MakeStop();
        return;
    }
    m_btnStop->clearFocus();  // else some field gets it
    m_btnStop->hide();
    m_btnStop->setObjectName({});
    m_btnStop->deleteLater();
    m_btnStop = nullptr;
}

void CStatusLine::ShowPage(const std::string& p_strText) {
    m_lblPage->Show("Page", QString::fromStdString(p_strText));
}

void CStatusLine::changeEvent(QEvent* p_objEvent) {
    QStatusBar::changeEvent(p_objEvent);
    if (p_objEvent->type() == QEvent::FontChange || p_objEvent->type() == QEvent::StyleChange) {
        KeepHeight();
    }
}

void CStatusLine::KeepHeight() {
    QToolButton objStop(m_objPlaces);
    objStop.setText(StopCaption);
    const int iHeight = std::max(m_lblLink->sizeHint().height(), objStop.sizeHint().height());
    m_objStrut->setFixedSize(0, iHeight);
    m_barDoing->setFixedHeight(m_lblDoing->fontMetrics().height());
    // Before the window is seen, who asks for its size must not get the one of before.
    m_objLayout->invalidate();
    layout()->invalidate();
    layout()->activate();
    updateGeometry();
}
