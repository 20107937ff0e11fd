#pragma once

#include "protocol/MCommand.h"
#include "ui/CPageBuilder.h"

#include <QWidget>

#include <cstdint>
#include <optional>

class QComboBox;
class QLabel;
class UCSpinEdit;

/// The page "Maintenance Mode": one frame a service function, each with a button "SEND".
class UCMaintenanceMode : public QWidget {
public:
    /// The lists and spin edits are still empty afterwards; the window fills those of all pages.
    UCMaintenanceMode(const CPageBuilder& p_objBuilder, QWidget* p_objParent);

    /// Shows the result of a head check; an empty text clears it.
    void ShowHeadCheck(const QString& p_strText);

    /// The positions of the lists; -1 when nothing is chosen.
    [[nodiscard]] std::int16_t RamClearMode() const;
    [[nodiscard]] std::int16_t Destination() const;
    [[nodiscard]] std::int16_t ThresholdSensor() const;
    [[nodiscard]] std::int16_t DiagPrintType() const;

    /// What the test print's fields show. Throws CConversionError for a text that is no number.
    [[nodiscard]] MCommand::TestPrintFields TestPrint() const;

private:
    /// The fields of the test print.
    struct TestPrintControls {
        QComboBox& m_cmbPattern;
        UCSpinEdit& m_SeLabelLen;
        UCSpinEdit& m_SeIssueCount;
        QComboBox& m_cmbPrintSpeed;
        QComboBox& m_cmbSensor;
        QComboBox& m_cmbType;
        QComboBox& m_cmbPrtType;
    };

    QWidget* MakeHeadCheck(const CPageBuilder& p_objBuilder);
    QWidget* MakeRamClear(const CPageBuilder& p_objBuilder);
    QWidget* MakeThresholdCalib(const CPageBuilder& p_objBuilder);
    QWidget* MakeSensorAdjust(const CPageBuilder& p_objBuilder);
    QWidget* MakeTestPrint(const CPageBuilder& p_objBuilder);
    QWidget* MakeDiagPrint(const CPageBuilder& p_objBuilder);

    QLabel* m_lblHeadCheck = nullptr;
    QComboBox* m_cmbRamClear = nullptr;
    QComboBox* m_cmbDestination = nullptr;
    QComboBox* m_cmbThresholdCalib = nullptr;
    QComboBox* m_cmbDiagPrint = nullptr;
    std::optional<TestPrintControls> m_objTestPrint;
};
