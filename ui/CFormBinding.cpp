#include "ui/CFormBinding.h"

#include "model/CConversionError.h"
#include "model/MNumber.h"
#include "platform/qt/MText.h"
#include "ui/MControl.h"
#include "ui/UCSpinEdit.h"

#include <QComboBox>
#include <QLineEdit>

#include <stdexcept>

namespace {

/// What people call a field.
std::string NameOf(const QWidget& p_objField) {
    return p_objField.accessibleName().toStdString();
}

void Select(QComboBox& p_cmb, const CItemValue& p_vValue) {
    const std::int16_t iPosition = MNumber::ToInt16(p_vValue);
    if (iPosition < 0 || iPosition >= p_cmb.count()) {
        throw std::out_of_range(NameOf(p_cmb) + " has no entry for " + std::to_string(iPosition));
    }
    p_cmb.setCurrentIndex(iPosition);
}

template <typename Control>
void ExpectBoundFields(const QWidget& p_objPage, const std::vector<MBinding::Row>& p_objRows) {
    MControl::ExpectOneRowEach<Control>(
        p_objPage, p_objRows,
        [](const MBinding::Row& p_objRow) -> const std::string& { return p_objRow.m_strControl; },
        "bindings");
}

/// A Hexadecimal item reads what it is given as hexadecimal digits, so it gets the position so.
CItemValue PositionFor(const CItem& p_objItem, int p_iPosition) {
    if (p_objItem.m_iDataType == ItemDataType::Hexadecimal) {
        return MNumber::HexText(p_iPosition);
    }
    return p_iPosition;
}

}  // namespace

CFormBinding::CFormBinding(const QWidget& p_objPage, const std::vector<MBinding::Row>& p_objRows) {
    for (const MBinding::Row& objRow : p_objRows) {
        m_objBound.push_back(Bind(p_objPage, objRow));
    }
    ExpectBoundFields<QComboBox>(p_objPage, p_objRows);
    ExpectBoundFields<UCSpinEdit>(p_objPage, p_objRows);
    ExpectBoundFields<QLineEdit>(p_objPage, p_objRows);
}

CFormBinding::Bound CFormBinding::Bind(const QWidget& p_objPage, const MBinding::Row& p_objRow) {
    Bound objBound{p_objRow};
    const QString strName = QString::fromStdString(p_objRow.m_strControl);
    switch (p_objRow.m_iKind) {
    case MBinding::Kind::List:
        objBound.m_cmb = &MControl::Find<QComboBox>(p_objPage, strName);
        break;
    case MBinding::Kind::SpinEdit:
    case MBinding::Kind::SignedPair:
        objBound.m_Se = &MControl::Find<UCSpinEdit>(p_objPage, strName);
        break;
    case MBinding::Kind::TextBox:
        objBound.m_txt = &MControl::Find<QLineEdit>(p_objPage, strName);
        break;
    }
    const bool bPair = p_objRow.m_iKind == MBinding::Kind::SignedPair;
    if (p_objRow.m_objItem == nullptr || (p_objRow.m_objDirection != nullptr) != bPair) {
        throw std::logic_error("the binding of \"" + p_objRow.m_strControl +
                               "\" has other items than its kind takes");
    }
    return objBound;
}

QWidget* CFormBinding::Bound::Control() const {
    for (QWidget* const objControl : std::initializer_list<QWidget*>{m_cmb, m_Se, m_txt}) {
        if (objControl != nullptr) {
            return objControl;
        }
    }
    return nullptr;
}

std::vector<QWidget*> CFormBinding::Controls() const {
    std::vector<QWidget*> objControls;
    for (const Bound& objBound : m_objBound) {
        objControls.push_back(objBound.Control());
    }
    return objControls;
}

bool CFormBinding::Refresh(const CItemManager& p_objItemManager, bool p_bDefaultValue) {
    m_strRefused.clear();
    for (const Bound& objBound : m_objBound) {
        try {
            RefreshOne(objBound, p_objItemManager, p_bDefaultValue);
        } catch (const CConversionError& objError) {
            throw CConversionError(NameOf(*objBound.Control()), objError);
        }
    }
    return true;
}

bool CFormBinding::Store(const CItemManager& p_objItemManager) const {
    for (const Bound& objBound : m_objBound) {
        StoreOne(objBound, p_objItemManager);
    }
    return true;
}

void CFormBinding::RefreshOne(const Bound& p_objBound, const CItemManager& p_objItemManager,
                              bool p_bDefaultValue) {
    const MBinding::Row& objRow = p_objBound.m_objRow;
    const CItemValue& vValue = (p_objItemManager.*objRow.m_objItem)->GetValue(p_bDefaultValue);
    switch (objRow.m_iKind) {
    case MBinding::Kind::List:
        Select(*p_objBound.m_cmb, vValue);
        break;
    case MBinding::Kind::SpinEdit:
        Show(*p_objBound.m_Se, vValue);
        break;
    case MBinding::Kind::SignedPair: {
        const CItem& objDirection = *(p_objItemManager.*objRow.m_objDirection);
        Show(*p_objBound.m_Se,
             MNumber::ToText(objDirection.GetValue(p_bDefaultValue)) + MNumber::ToText(vValue));
        break;
    }
    case MBinding::Kind::TextBox:
        p_objBound.m_txt->setText(MText::ToQt(MNumber::ToText(vValue)));
        break;
    }
}

void CFormBinding::Show(UCSpinEdit& p_Se, const CItemValue& p_vValue) {
    if (!p_Se.SetValue(p_vValue)) {
        m_strRefused[&p_Se] = p_Se.TextFor(p_vValue);
    }
}

void CFormBinding::StoreOne(const Bound& p_objBound, const CItemManager& p_objItemManager) {
    const MBinding::Row& objRow = p_objBound.m_objRow;
    CItem& objItem = *(p_objItemManager.*objRow.m_objItem);
    switch (objRow.m_iKind) {
    case MBinding::Kind::List:
        objItem.SetValue(PositionFor(objItem, p_objBound.m_cmb->currentIndex()));
        break;
    case MBinding::Kind::SpinEdit:
        objItem.SetValue(p_objBound.m_Se->GetValue());
        break;
    case MBinding::Kind::SignedPair: {
        const CItemValue vValue = p_objBound.m_Se->GetValue();
        (p_objItemManager.*objRow.m_objDirection)->SetValue(MNumber::SignOf(vValue));
        objItem.SetValue(vValue);
        break;
    }
    case MBinding::Kind::TextBox:
        objItem.SetValue(MText::FromQt(p_objBound.m_txt->text()));
        break;
    }
}
