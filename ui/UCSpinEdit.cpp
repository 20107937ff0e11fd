#include "ui/UCSpinEdit.h"

#include "model/MNumber.h"
#include "platform/IMessageBox.h"
#include "platform/qt/MText.h"
#include "ui/CSpinEditLook.h"
#include "ui/CSpinEditStyle.h"
#include "ui/MPress.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QStyleOptionSpinBox>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr int UnlimitedLength = 32767;  // the toolkit's own limit

/// True when the focus has moved on inside the window. Another window, a popup or the menu in
/// front keeps the field the one that is being edited, until the focus is back in the window.
bool IsLeaving(Qt::FocusReason p_iReason) {
    return p_iReason != Qt::ActiveWindowFocusReason && p_iReason != Qt::PopupFocusReason &&
           p_iReason != Qt::MenuBarFocusReason;
}

}  // namespace

UCSpinEdit::UCSpinEdit(IMessageBox& p_objBoxes, QWidget* p_objParent)
    : QAbstractSpinBox(p_objParent)
    , m_objBoxes(p_objBoxes)
    , m_objLook(new CSpinEditLook(*this))
    , m_iEditWidth(CSpinEditStyle::NativeWidth)
    , m_iButtonWidth(CSpinEditStyle::NativeWidth) {
    lineEdit()->setObjectName("CText");
    lineEdit()->installEventFilter(this);
    connect(lineEdit(), &QLineEdit::textChanged, this, [this](const QString& p_strText) {
        m_objLook->Update(m_objForm, p_strText);
        emit TextChanged();
    });
    setFocusPolicy(Qt::StrongFocus);
    connect(qApp, &QApplication::focusChanged, this,
            [this](const QWidget* /*p_objFormer*/, const QWidget* p_objNow) {
                TakeFocusChange(p_objNow);
            });
    ShowValue();
}

UCSpinEdit::~UCSpinEdit() {
    // The toolkit takes the focus from a field when all that is its own is gone already.
    disconnect(qApp, nullptr, this, nullptr);
}

bool UCSpinEdit::Enable() const {
    return m_bEnable;
}

void UCSpinEdit::SetEnable(bool p_bValue) {
    m_bEnable = p_bValue;
    if (!p_bValue) {
        // Before the toolkit moves the focus on, which would have the text checked.
        m_bFocusLent = false;
        ShowValue();
    }
    setEnabled(p_bValue);
}

int UCSpinEdit::EditWidth() const {
    return m_iEditWidth != CSpinEditStyle::NativeWidth ? m_iEditWidth : lineEdit()->width();
}

void UCSpinEdit::SetEditWidth(int p_iValue) {
    m_iEditWidth = std::max(p_iValue, 0);
    m_bEditCovers = m_iEditWidth >= width();
    LayOutParts();
}

bool UCSpinEdit::SpinButton() const {
    return m_bSpinButton;
}

void UCSpinEdit::SetSpinButton(bool p_bValue) {
    m_bSpinButton = p_bValue;
    LayOutParts();
}

int UCSpinEdit::SpinButtonWidth() const {
    if (m_iButtonWidth != CSpinEditStyle::NativeWidth) {
        return m_iButtonWidth;
    }
    QStyleOptionSpinBox objOption;
    initStyleOption(&objOption);
    return style()
        ->subControlRect(QStyle::CC_SpinBox, &objOption, QStyle::SC_SpinBoxUp, this)
        .width();
}

void UCSpinEdit::SetSpinButtonWidth(int p_iValue) {
    m_iButtonWidth = std::max(p_iValue, 0);
    m_iEditWidth = CSpinEditStyle::NativeWidth;
    m_bEditCovers = false;
    LayOutParts();
}

void UCSpinEdit::LayOutParts() {
    const bool bOwnWidths = !m_bEditCovers && (m_iEditWidth != CSpinEditStyle::NativeWidth ||
                                               m_iButtonWidth != CSpinEditStyle::NativeWidth);
    CSpinEditStyle* objFormer = m_objStyle;
    m_objStyle = bOwnWidths ? new CSpinEditStyle(m_iEditWidth, m_iButtonWidth) : nullptr;
    if (m_objStyle != nullptr) {
        m_objStyle->setParent(this);
    }
    setButtonSymbols(m_bSpinButton && !m_bEditCovers ? UpDownArrows : NoButtons);
    if (m_objStyle != nullptr || objFormer != nullptr) {
        setStyle(m_objStyle);
    }
    delete objFormer;
    updateGeometry();
}

void UCSpinEdit::InitializeSpinEdit(const CItemValue& p_vValue, const CItemValue& p_vMax,
                                    const CItemValue& p_vMin, const CItemValue& p_vIncrement,
                                    std::int16_t p_iLength, std::int16_t p_iDecimalPoint,
                                    bool p_bHexaMode) {
    const std::int32_t iValue = MNumber::ToInt32(p_vValue);
    const std::int32_t iMax = MNumber::ToInt32(p_vMax);
    const std::int32_t iMin = MNumber::ToInt32(p_vMin);
    m_objForm.m_iIncrement = MNumber::ToInt32(p_vIncrement);
    m_iValue = iValue;
    m_objForm.m_iMax = iMax;
    m_objForm.m_iMin = iMin;
    m_objForm.m_bHexaMode = p_bHexaMode;
    m_bInitialized = true;
    m_iLength = p_iLength;
    m_objForm.m_iDecimalPoint = p_iDecimalPoint;
    if (p_iDecimalPoint >= 0 && p_iDecimalPoint <= 2) {
        m_objForm.m_iShownPlaces = p_iDecimalPoint;
    }
    ShowValue();
    TakeForm();
}

bool UCSpinEdit::IsInitialized() const {
    return m_bInitialized;
}

void UCSpinEdit::SetMax(const CItemValue& p_vValue) {
    m_objForm.m_iMax = MNumber::ToInt32(p_vValue);
    TakeForm();
}

void UCSpinEdit::SetMin(const CItemValue& p_vValue) {
    m_objForm.m_iMin = MNumber::ToInt32(p_vValue);
    TakeForm();
}

void UCSpinEdit::TakeForm() {
    m_objLook->Update(m_objForm, text());
    updateGeometry();
    update();
}

bool UCSpinEdit::SetValue(const CItemValue& p_vValue) {
    return Store(MNumber::ToDouble(p_vValue));
}

CItemValue UCSpinEdit::GetValue() const {
    if (m_objForm.m_iDecimalPoint != 0) {
        return m_iValue;
    }
    return MText::FromQt(lineEdit()->text());
}

bool UCSpinEdit::CommitText() {
    m_bFocusLent = false;
    const std::string strText = MText::FromQt(lineEdit()->text());
    if (m_objForm.m_bHexaMode) {
        return Store(MNumber::ReadHex(strText));
    }
    if (!MNumber::IsNumber(strText)) {
        ShowValue();
        return true;
    }
    return Store(m_objForm.TypedNumber(strText));
}

bool UCSpinEdit::Enter(const QString& p_strText) {
    ShowText(p_strText);
    return CommitText();
}

bool UCSpinEdit::CommitFields(const QWidget& p_objWindow) {
    // What has the focus does not count: a window in which the toolkit sees no focus move, because
    // it takes it for one behind, can hold any number of fields that were not checked.
    const QWidget* const objWindow = p_objWindow.window();
    for (QWidget* objNext = objWindow->nextInFocusChain(); objNext != objWindow;
         objNext = objNext->nextInFocusChain()) {
        auto* const objField = qobject_cast<UCSpinEdit*>(objNext);
        if (objField != nullptr && objField->HoldsUncheckedText() && !objField->CommitText()) {
            return false;
        }
    }
    return true;
}

bool UCSpinEdit::HoldsUncheckedText() const {
    return lineEdit()->text() != m_objForm.TextOf(m_iValue);
}

bool UCSpinEdit::Store(double p_dValue) {
    const bool bInRange = m_objForm.Contains(p_dValue);
    if (bInRange) {
        m_iValue = MNumber::RoundToInt32(p_dValue);
        ShowValue();
    } else {
        m_objBoxes.Show(RangeMessage, MessageIcon::None);
        ShowValue();
        SelectWhatHasTheFocus();
    }
    return bInRange;
}

void UCSpinEdit::SelectWhatHasTheFocus() const {
    // Not every system gives the focus back before the box is done with, and then as it was.
    QWidget* const objFocus = window()->focusWidget();
    if (auto* const Se = qobject_cast<UCSpinEdit*>(objFocus)) {
        Se->selectAll();
    } else if (auto* const txt = qobject_cast<QLineEdit*>(objFocus)) {
        txt->selectAll();
    }
}

QString UCSpinEdit::TextFor(const CItemValue& p_vValue) const {
    return m_objForm.TextOf(MNumber::RoundToInt32(MNumber::ToDouble(p_vValue)));
}

void UCSpinEdit::ShowValue() {
    ShowText(m_objForm.TextOf(m_iValue));
    update();  // the buttons show which way is left
}

void UCSpinEdit::ShowText(const QString& p_strText) {
    // The limit binds who types; it must not cut a value.
    const int iLimit = m_iLength > NoLengthLimit ? m_iLength : UnlimitedLength;
    lineEdit()->setMaxLength(std::max(iLimit, static_cast<int>(p_strText.size())));
    if (lineEdit()->text() != p_strText) {
        lineEdit()->setText(p_strText);
    }
}

void UCSpinEdit::stepBy(int p_iSteps) {
    const bool bUp = p_iSteps > 0;
    if (p_iSteps == 0 || !m_objForm.CanStep(m_iValue, bUp)) {
        return;
    }
    m_iValue = bUp ? m_iValue + m_objForm.m_iIncrement : m_iValue - m_objForm.m_iIncrement;
    ShowValue();
    selectAll();
}

QMenu* UCSpinEdit::MakeMenu() {
    QMenu* const objMenu = lineEdit()->createStandardContextMenu();
    objMenu->setAttribute(Qt::WA_DeleteOnClose);
    for (QAction* const objAction : objMenu->actions()) {
        if (objAction->text().startsWith(QLineEdit::tr("&Paste"))) {
            // As the key does it, which others may take.
            objAction->disconnect(lineEdit());
            connect(objAction, &QAction::triggered, this, [this] {
                QKeyEvent objKey(QEvent::KeyPress, Qt::Key_V, Qt::ControlModifier);
                QApplication::sendEvent(this, &objKey);
            });
        }
    }
    objMenu->addSeparator();
    const auto AddStep = [&](const char* p_strText, int p_iSteps) {
        QAction* const objStep =
            objMenu->addAction(p_strText, this, [this, p_iSteps] { stepBy(p_iSteps); });
        objStep->setEnabled(m_objForm.CanStep(m_iValue, p_iSteps > 0));
    };
    AddStep("Step &up", 1);
    AddStep("Step &down", -1);
    return objMenu;
}

QAbstractSpinBox::StepEnabled UCSpinEdit::stepEnabled() const {
    StepEnabled iEnabled = StepNone;
    iEnabled.setFlag(StepUpEnabled, m_objForm.CanStep(m_iValue, true));
    iEnabled.setFlag(StepDownEnabled, m_objForm.CanStep(m_iValue, false));
    return iEnabled;
}

QSize UCSpinEdit::sizeHint() const {
    ensurePolished();
    const QFontMetrics objMetrics = fontMetrics();
    const int iTypingSpace = objMetrics.horizontalAdvance('0');  // for the cursor and a slip
    const int iText = std::max({objMetrics.horizontalAdvance(m_objForm.TextOf(m_objForm.m_iMax)),
                                objMetrics.horizontalAdvance(m_objForm.TextOf(m_objForm.m_iMin)),
                                objMetrics.horizontalAdvance(m_objForm.TextOf(m_iValue))});
    QStyleOptionSpinBox objOption;
    initStyleOption(&objOption);
    return style()->sizeFromContents(QStyle::CT_SpinBox, &objOption,
                                     {iText + iTypingSpace, lineEdit()->sizeHint().height()}, this);
}

QSize UCSpinEdit::minimumSizeHint() const {
    return sizeHint();
}

bool UCSpinEdit::eventFilter(QObject* p_objWatched, QEvent* p_objEvent) {
    // A style of its own keeps the control out of a change of the application's style; its text
    // box takes part.
    if (p_objEvent->type() == QEvent::StyleChange && m_objStyle != nullptr) {
        LayOutParts();
    }
    return QAbstractSpinBox::eventFilter(p_objWatched, p_objEvent);
}

void UCSpinEdit::contextMenuEvent(QContextMenuEvent* p_objEvent) {
    MakeMenu()->popup(p_objEvent->globalPos());
    p_objEvent->accept();
}

void UCSpinEdit::focusOutEvent(QFocusEvent* p_objEvent) {
    QAbstractSpinBox::focusOutEvent(p_objEvent);
    m_bFocusLent = !IsLeaving(p_objEvent->reason());
    if (!m_bFocusLent) {
        CommitText();
    }
}

void UCSpinEdit::TakeFocusChange(const QWidget* p_objNow) {
    // The menu bar gives the focus back, but not when the person goes on by a click elsewhere.
    if (!m_bFocusLent || p_objNow == nullptr || p_objNow->window() != window() ||
        qobject_cast<const QMenuBar*>(p_objNow) != nullptr) {
        return;
    }
    m_bFocusLent = false;
    if (p_objNow != this) {
        CommitText();
    }
}

void UCSpinEdit::keyPressEvent(QKeyEvent* p_objEvent) {
    switch (p_objEvent->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
        stepBy(p_objEvent->key() == Qt::Key_Up ? 1 : -1);
        p_objEvent->accept();
        break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        p_objEvent->ignore();
        break;
    default:
        QAbstractSpinBox::keyPressEvent(p_objEvent);
        break;
    }
}

void UCSpinEdit::mousePressEvent(QMouseEvent* p_objEvent) {
    // With its mouse button long released, nothing would end the buttons' auto-repeat.
    if (!MPress::HasWaited(*p_objEvent)) {
        QAbstractSpinBox::mousePressEvent(p_objEvent);
    }
}

void UCSpinEdit::wheelEvent(QWheelEvent* p_objEvent) {
    if (!hasFocus()) {
        m_iWheelRest = 0;
        p_objEvent->ignore();  // so that the page scrolls
        return;
    }
    m_iWheelRest += p_objEvent->angleDelta().y();
    const int iNotches = m_iWheelRest / QWheelEvent::DefaultDeltasPerStep;
    m_iWheelRest -= iNotches * QWheelEvent::DefaultDeltasPerStep;
    for (int i = 0; i < std::abs(iNotches); ++i) {
        stepBy(iNotches);
    }
    p_objEvent->accept();
}
