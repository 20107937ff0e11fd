#include "ui/FmInterfaceSetup.h"

#include "link/CInterface.h"
#include "model/CConversionError.h"
#include "model/MNumber.h"
#include "ui/CAddressParts.h"
#include "ui/CFieldTexts.h"
#include "ui/CListGuard.h"
#include "ui/MPortText.h"
#include "ui/UCSpinEdit.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStringList>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

struct FmInterfaceSetup::SerialList {
    const char* m_strName = nullptr;
    const char* m_strLabel = nullptr;
    QStringList m_strEntries;  ///< a position is the value of the item
    ItemRef CInterface::*m_objItem = nullptr;
};

// Unlike those of the printer's own serial port these texts have a blank before the unit, and
// the unit in the singular.
// clang-format off
const std::vector<FmInterfaceSetup::SerialList> FmInterfaceSetup::Lists{
    {"cmbComPort", "COM PORT", {"COM1", "COM2", "COM3", "COM4", "COM5", "COM6", "COM7", "COM8", "COM9"}, &CInterface::m_objComPortIndex},
    {"cmbSpeed", "SPEED", {"2400 bps", "4800 bps", "9600 bps", "19200 bps", "38400 bps", "115200 bps"}, &CInterface::m_objSpeedIndex},
    {"cmbDataLeg", "DATA LENG.", {"7 bit", "8 bit"}, &CInterface::m_objDataLengthIndex},
    {"cmbStopBit", "STOP BIT", {"1 bit", "2 bit"}, &CInterface::m_objStopBitIndex},
    {"cmbParity", "PARITY", {"NONE", "EVEN", "ODD"}, &CInterface::m_objParityIndex},
};
// clang-format on

namespace {

struct Octet {
    const char* m_strName;
    const char* m_strAccessibleName;
    ItemRef CInterface::*m_objItem;
};

constexpr auto Octets = std::to_array<Octet>({
    {"SeLan1", "IP-Address 1", &CInterface::m_objIpAddress1},
    {"SeLan2", "IP-Address 2", &CInterface::m_objIpAddress2},
    {"SeLan3", "IP-Address 3", &CInterface::m_objIpAddress3},
    {"SeLan4", "IP-Address 4", &CInterface::m_objIpAddress4},
});

constexpr int LabelColumn = 0;
constexpr int FieldColumn = 1;

}  // namespace

FmInterfaceSetup::FmInterfaceSetup(IMessageBox& p_objBoxes, QWidget* p_objParent)
    : QDialog(p_objParent)
    , m_objBoxes(p_objBoxes)
    , m_objListGuard(new CListGuard(this)) {
    setObjectName("FmInterfaceSetup");
    setWindowTitle("Interface Setup");
    setModal(true);
    QFont objFont = font();
    objFont.setFamily("Arial");
    setFont(objFont);
    LayOut();
}

void FmInterfaceSetup::LayOut() {
    auto* objColumn = new QVBoxLayout(this);
    objColumn->setSizeConstraint(QLayout::SetFixedSize);
    BuildSerialGroup();
    BuildLanGroup();
    AlignGroups();
    BuildButtons();
}

void FmInterfaceSetup::BuildSerialGroup() {
    m_objSerialGroup = new QGroupBox("RS-232C", this);
    m_objSerialGroup->setObjectName("FrRs232cSetup");
    auto* objGrid = new QGridLayout(m_objSerialGroup);
    objGrid->setColumnStretch(FieldColumn, 1);
    std::transform(
        Lists.begin(), Lists.end(), std::back_inserter(m_objLists),
        [this, objGrid](const SerialList& p_objList) { return AddList(p_objList, *objGrid); });
    layout()->addWidget(m_objSerialGroup);
}

QComboBox* FmInterfaceSetup::AddList(const SerialList& p_objList, QGridLayout& p_objGrid) {
    auto* objLabel = new QLabel(p_objList.m_strLabel, m_objSerialGroup);
    auto* objList = new QComboBox(m_objSerialGroup);
    objList->setObjectName(p_objList.m_strName);
    objList->setAccessibleName(p_objList.m_strLabel);
    objLabel->setBuddy(objList);
    // To some systems a list's name is what it shows.
    CFieldTexts::Of(*objList).Set(CFieldTexts::Part::Where, p_objList.m_strLabel);
    m_objListGuard->Guard(*objList);
    const int iRow = p_objGrid.rowCount();
    p_objGrid.addWidget(objLabel, iRow, LabelColumn);
    p_objGrid.addWidget(objList, iRow, FieldColumn);
    return objList;
}

void FmInterfaceSetup::BuildLanGroup() {
    static_assert(Octets.size() == OctetCount);
    m_objLanGroup = new QGroupBox("LAN", this);
    m_objLanGroup->setObjectName("FrLanSetup");
    auto* objGrid = new QGridLayout(m_objLanGroup);
    auto* objLabel = new QLabel("IP-Address", m_objLanGroup);
    objGrid->addWidget(objLabel, 0, LabelColumn);
    auto* objAddress = new QHBoxLayout;
    objAddress->setSpacing(objLabel->fontMetrics().horizontalAdvance('.'));
    objGrid->addLayout(objAddress, 0, FieldColumn);
    objGrid->setColumnStretch(FieldColumn, 1);
    for (std::size_t i = 0; i < Octets.size(); ++i) {
        auto* objField = new UCSpinEdit(m_objBoxes, m_objLanGroup);
        objField->setObjectName(Octets[i].m_strName);
        objField->setAccessibleName(Octets[i].m_strAccessibleName);
        objField->SetEditWidth(objField->width());
        m_objOctets[i] = objField;
        if (i > 0) {
            objAddress->addWidget(new QLabel(".", m_objLanGroup));
        }
        objAddress->addWidget(objField, 1);
    }
    objLabel->setBuddy(m_objOctets.front());
    new CAddressParts({m_objOctets.begin(), m_objOctets.end()}, this);
    layout()->addWidget(m_objLanGroup);
}

void FmInterfaceSetup::AlignGroups() {
    // The two groups have a grid each; one width for both makes their fields begin in one line.
    int iWidth = 0;
    for (const auto* objGroup : {m_objSerialGroup, m_objLanGroup}) {
        for (const auto* objLabel : objGroup->findChildren<QLabel*>()) {
            iWidth = std::max(iWidth, objLabel->sizeHint().width());
        }
    }
    for (const auto* objGroup : {m_objSerialGroup, m_objLanGroup}) {
        static_cast<QGridLayout*>(objGroup->layout())->setColumnMinimumWidth(LabelColumn, iWidth);
    }
}

void FmInterfaceSetup::BuildButtons() {
    auto* btnSet = new QPushButton("SET", this);
    btnSet->setObjectName("btnSet");
    btnSet->setDefault(true);
    auto* btnCancel = new QPushButton("CANCEL", this);
    btnCancel->setObjectName("btnCancel");
    // A click leaves the focus where it is: OnSet looks at the field itself, and CANCEL must be
    // possible whatever has been typed.
    btnSet->setFocusPolicy(Qt::TabFocus);
    btnCancel->setFocusPolicy(Qt::TabFocus);
    auto* objRow = new QHBoxLayout;
    objRow->addStretch(1);
    objRow->addWidget(btnSet);
    objRow->addWidget(btnCancel);
    static_cast<QVBoxLayout*>(layout())->addLayout(objRow);
    connect(btnSet, &QPushButton::clicked, this, &FmInterfaceSetup::OnSet);
    connect(btnCancel, &QPushButton::clicked, this, &FmInterfaceSetup::reject);
}

bool FmInterfaceSetup::InitializeItem(CInterface& p_objInterface, std::int16_t p_iInterfaceIndex) {
    m_objInterface = &p_objInterface;
    m_iInterfaceIndex = p_iInterfaceIndex;
    try {
        InitializeAddress();
        if (!InitializeLists()) {
            return false;
        }
    } catch (const CConversionError&) {
        return false;
    }
    EnableGroups();
    return true;
}

void FmInterfaceSetup::InitializeAddress() {
    constexpr int iMax = 255;
    constexpr std::int16_t iLength = 5;
    for (std::size_t i = 0; i < Octets.size(); ++i) {
        const CItem& objItem = *(m_objInterface->*Octets[i].m_objItem);
        m_objOctets[i]->InitializeSpinEdit(objItem.GetValue(), iMax, 0, 1, iLength, 0);
    }
}

bool FmInterfaceSetup::InitializeLists() {
    for (std::size_t i = 0; i < Lists.size(); ++i) {
        QComboBox& objList = *m_objLists[i];
        objList.clear();
        objList.addItems(Lists[i].m_strEntries);
        const CItem& objItem = *(m_objInterface->*Lists[i].m_objItem);
        const std::int32_t iPosition = MNumber::ToInt32(objItem.GetValue());
        if (iPosition < 0 || iPosition >= objList.count()) {
            return false;
        }
        objList.setCurrentIndex(iPosition);
    }
    return true;
}

void FmInterfaceSetup::TellPorts(const std::vector<CSerialPortEntry>& p_objPorts) {
    QComboBox& cmbComPort = *m_objLists.front();
    for (int i = 0; i < cmbComPort.count(); ++i) {
        cmbComPort.setItemData(i, MPortText::Of(i + 1, p_objPorts), Qt::ToolTipRole);
    }
    const auto fnTell = [&cmbComPort] {
        CFieldTexts::Of(cmbComPort)
            .Set(CFieldTexts::Part::Note, cmbComPort.currentData(Qt::ToolTipRole).toString());
    };
    connect(&cmbComPort, &QComboBox::currentIndexChanged, &cmbComPort, fnTell);
    fnTell();
}

bool FmInterfaceSetup::EditsLan() const {
    return m_iInterfaceIndex == CInterface::LanInterface;
}

void FmInterfaceSetup::EnableGroups() {
    m_objSerialGroup->setEnabled(!EditsLan());
    for (QComboBox* objList : m_objLists) {
        objList->setEnabled(!EditsLan());
    }
    m_objLanGroup->setEnabled(EditsLan());
    for (UCSpinEdit* objField : m_objOctets) {
        objField->SetEnable(EditsLan());
    }
    if (EditsLan()) {
        m_objOctets.front()->setFocus(Qt::TabFocusReason);
        m_objOctets.front()->selectAll();
    }
}

bool FmInterfaceSetup::CancelFlag() const {
    return m_bCancelFlag;
}

void FmInterfaceSetup::OnSet() {
    if (m_objInterface == nullptr || !UCSpinEdit::CommitFields(*this)) {
        return;  // refused: the person corrects the field
    }
    if (EditsLan()) {
        StoreAddress();
    } else {
        StoreSerial();
    }
    m_bCancelFlag = false;
    accept();
}

void FmInterfaceSetup::StoreSerial() {
    for (std::size_t i = 0; i < Lists.size(); ++i) {
        (m_objInterface->*Lists[i].m_objItem)->SetValue(m_objLists[i]->currentIndex());
    }
}

void FmInterfaceSetup::StoreAddress() {
    for (std::size_t i = 0; i < Octets.size(); ++i) {
        (m_objInterface->*Octets[i].m_objItem)->SetValue(m_objOctets[i]->GetValue());
    }
}

void FmInterfaceSetup::reject() {
    m_bCancelFlag = true;
    QDialog::reject();
}
