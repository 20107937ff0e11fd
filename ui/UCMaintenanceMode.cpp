#include "ui/UCMaintenanceMode.h"

#include "model/MNumber.h"
#include "ui/CFieldTexts.h"
#include "ui/MControl.h"
#include "ui/UCSpinEdit.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

#include <array>

namespace {

constexpr const char* SendCaption = "SEND";

struct Field {
    const char* m_strCaption;
    const char* m_strName;
};

struct Step {
    const char* m_strCaption;
    const char* m_strButton;
    const char* m_strText;
};

// clang-format off
constexpr auto SensorSteps = std::to_array<Step>({
    {"REFLECT", "btnReflect", "Step1.Put white position on sensor, then click \"SEND\".\r\n"},
    {"TRANS", "btnTrans", "Step2.Put gap position on sensor, then click \"SEND\".\r\n"},
    {"PAPER END", "btnPaperEnd", "Step3.Put paper away, then click \"SEND\".\r\n"},
});

constexpr auto TestPrintFields = std::to_array<Field>({
    {"ISSUE COUNT", "SeIssueCount"},
    {"LABEL LEN", "SeLabelLen"},
    {"TYPE", "cmbType"},
    {"PRT TYPE", "cmbPrtType"},
    {"SENSOR", "cmbSensor"},
    {"PRINT SPEED", "cmbPrintSpeed"},
    {"PATTERN", "cmbPattern"},
});
// clang-format on

/// The grid of a frame, with little above and below: the left column has to fit on small screens.
QGridLayout* MakeGrid(QGroupBox& p_objFrame) {
    auto* const objGrid = new QGridLayout(&p_objFrame);
    QMargins objMargins = objGrid->contentsMargins();
    objMargins.setTop(objMargins.top() / 3);
    objMargins.setBottom(objMargins.bottom() / 3);
    objGrid->setContentsMargins(objMargins);
    return objGrid;
}

void AddSend(const CPageBuilder& p_objBuilder, QGridLayout& p_objGrid, int p_iRow,
             const char* p_strName) {
    p_objGrid.addWidget(p_objBuilder.MakeButton(p_objGrid.parentWidget(), p_strName, SendCaption),
                        p_iRow, 2, Qt::AlignRight);
}

std::int16_t Position(const QComboBox& p_cmb) {
    return static_cast<std::int16_t>(p_cmb.currentIndex());
}

}  // namespace

UCMaintenanceMode::UCMaintenanceMode(const CPageBuilder& p_objBuilder, QWidget* p_objParent)
    : QWidget(p_objParent) {
    auto* const objLeft = new QVBoxLayout;
    objLeft->addWidget(MakeHeadCheck(p_objBuilder));
    objLeft->addWidget(MakeRamClear(p_objBuilder));
    objLeft->addWidget(MakeThresholdCalib(p_objBuilder));
    objLeft->addWidget(MakeSensorAdjust(p_objBuilder));
    objLeft->addStretch(1);
    auto* const objRight = new QVBoxLayout;
    objRight->addWidget(MakeTestPrint(p_objBuilder));
    objRight->addWidget(MakeDiagPrint(p_objBuilder));
    objRight->addStretch(1);
    auto* const objColumns = new QHBoxLayout(this);
    objColumns->addLayout(objLeft, 1);
    objColumns->addLayout(objRight, 1);
}

void UCMaintenanceMode::ShowHeadCheck(const QString& p_strText) {
    m_lblHeadCheck->setText(p_strText);
}

std::int16_t UCMaintenanceMode::RamClearMode() const {
    return Position(*m_cmbRamClear);
}

std::int16_t UCMaintenanceMode::Destination() const {
    return Position(*m_cmbDestination);
}

std::int16_t UCMaintenanceMode::ThresholdSensor() const {
    return Position(*m_cmbThresholdCalib);
}

std::int16_t UCMaintenanceMode::DiagPrintType() const {
    return Position(*m_cmbDiagPrint);
}

MCommand::TestPrintFields UCMaintenanceMode::TestPrint() const {
    return {
        .m_iPattern = Position(m_objTestPrint->m_cmbPattern),
        .m_iLabelLength = MNumber::ToInt16(m_objTestPrint->m_SeLabelLen.GetValue()),
        .m_iIssueCount = MNumber::ToInt16(m_objTestPrint->m_SeIssueCount.GetValue()),
        .m_iPrintSpeed = Position(m_objTestPrint->m_cmbPrintSpeed),
        .m_iSensor = Position(m_objTestPrint->m_cmbSensor),
        .m_iCutType = Position(m_objTestPrint->m_cmbType),
        .m_iPrintType = Position(m_objTestPrint->m_cmbPrtType),
    };
}

QWidget* UCMaintenanceMode::MakeHeadCheck(const CPageBuilder& p_objBuilder) {
    QGroupBox* const Fr = p_objBuilder.MakeFrame(this, "FrHeadCheck", "HEAD CHECK");
    QGridLayout* const objGrid = MakeGrid(*Fr);
    m_lblHeadCheck = p_objBuilder.MakeLabel(Fr, {});
    m_lblHeadCheck->setObjectName("lblHeadCheck");
    m_lblHeadCheck->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    m_lblHeadCheck->setAccessibleDescription("HEAD CHECK");  // its name is what it shows
    objGrid->addWidget(m_lblHeadCheck, 0, 0, 1, 2);
    AddSend(p_objBuilder, *objGrid, 0, "btnHeadCheck");
    objGrid->setColumnStretch(1, 1);
    return Fr;
}

QWidget* UCMaintenanceMode::MakeRamClear(const CPageBuilder& p_objBuilder) {
    QGroupBox* const Fr = p_objBuilder.MakeFrame(this, "FrRamClear", "RAM CLEAR");
    QGridLayout* const objGrid = MakeGrid(*Fr);
    m_cmbRamClear = p_objBuilder.AddList(*objGrid, 0, 0, "MODE", "cmbRamClear");
    m_cmbDestination = p_objBuilder.MakeList(Fr, "cmbDestination");
    CPageBuilder::NameAfter(*m_cmbDestination, "DESTINATION");
    objGrid->addWidget(m_cmbDestination, 1, 1);
    AddSend(p_objBuilder, *objGrid, 1, "btnRamClear");
    objGrid->setColumnStretch(1, 1);
    connect(m_cmbRamClear, &QComboBox::currentIndexChanged, m_cmbDestination,
            [cmbDestination = m_cmbDestination](int p_iPosition) {
                cmbDestination->setEnabled(p_iPosition == MCommand::ClearParameters);
            });
    return Fr;
}

QWidget* UCMaintenanceMode::MakeThresholdCalib(const CPageBuilder& p_objBuilder) {
    QGroupBox* const Fr = p_objBuilder.MakeFrame(this, "FrThresholdCalib", "THRESHOLD CALIB");
    QGridLayout* const objGrid = MakeGrid(*Fr);
    m_cmbThresholdCalib = p_objBuilder.AddList(*objGrid, 0, 0, "SENSOR", "cmbThresholdCalib");
    AddSend(p_objBuilder, *objGrid, 0, "btnThresholdCalib");
    objGrid->setColumnStretch(1, 1);
    return Fr;
}

QWidget* UCMaintenanceMode::MakeSensorAdjust(const CPageBuilder& p_objBuilder) {
    QGroupBox* const Fr = p_objBuilder.MakeFrame(this, "FrSensorAdjust", "SENSOR ADJUST");
    QGridLayout* const objGrid = MakeGrid(*Fr);
    int iRow = 0;
    for (const Step& objStep : SensorSteps) {
        const Qt::Alignment iTop = Qt::AlignTop;  // the text's last line is empty
        QPushButton* const btn = p_objBuilder.MakeButton(Fr, objStep.m_strButton, SendCaption);
        CFieldTexts::Of(*btn).Set(CFieldTexts::Part::Where,
                                  Fr->title() + ", " + objStep.m_strCaption);
        QLabel* const lblCaption = p_objBuilder.MakeLabel(Fr, objStep.m_strCaption);
        QLabel* const lblText = p_objBuilder.MakeLabel(Fr, objStep.m_strText);
        const int iMargin = (btn->sizeHint().height() - lblCaption->sizeHint().height()) / 2;
        lblCaption->setContentsMargins(0, iMargin, 0, 0);
        lblText->setContentsMargins(0, iMargin, 0, 0);
        objGrid->addWidget(lblCaption, iRow, 0, iTop);
        objGrid->addWidget(lblText, iRow, 1, iTop);
        objGrid->addWidget(btn, iRow, 2, iTop | Qt::AlignRight);
        ++iRow;
    }
    objGrid->setColumnStretch(1, 1);
    return Fr;
}

QWidget* UCMaintenanceMode::MakeTestPrint(const CPageBuilder& p_objBuilder) {
    QGroupBox* const Fr = p_objBuilder.MakeFrame(this, "FrTestPrint", "TEST PRINT");
    QGridLayout* const objGrid = MakeGrid(*Fr);
    int iRow = 0;
    for (const Field& objField : TestPrintFields) {
        p_objBuilder.AddField(*objGrid, iRow++, 0, objField.m_strCaption, objField.m_strName);
    }
    m_objTestPrint.emplace(TestPrintControls{
        .m_cmbPattern = MControl::Find<QComboBox>(*Fr, "cmbPattern"),
        .m_SeLabelLen = MControl::Find<UCSpinEdit>(*Fr, "SeLabelLen"),
        .m_SeIssueCount = MControl::Find<UCSpinEdit>(*Fr, "SeIssueCount"),
        .m_cmbPrintSpeed = MControl::Find<QComboBox>(*Fr, "cmbPrintSpeed"),
        .m_cmbSensor = MControl::Find<QComboBox>(*Fr, "cmbSensor"),
        .m_cmbType = MControl::Find<QComboBox>(*Fr, "cmbType"),
        .m_cmbPrtType = MControl::Find<QComboBox>(*Fr, "cmbPrtType"),
    });
    AddSend(p_objBuilder, *objGrid, iRow - 1, "btnTestPrint");
    objGrid->setColumnStretch(1, 1);
    return Fr;
}

QWidget* UCMaintenanceMode::MakeDiagPrint(const CPageBuilder& p_objBuilder) {
    QGroupBox* const Fr = p_objBuilder.MakeFrame(this, "FmDiagPrint", "DIAG PRINT");
    QGridLayout* const objGrid = MakeGrid(*Fr);
    m_cmbDiagPrint = p_objBuilder.AddList(*objGrid, 0, 0, "PRT TYPE", "cmbDiagPrint");
    AddSend(p_objBuilder, *objGrid, 0, "btnDiagPrint");
    objGrid->setColumnStretch(1, 1);
    return Fr;
}
