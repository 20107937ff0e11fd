#pragma once

#include "protocol/MCommand.h"
#include "ui/CPageBuilder.h"

#include <QWidget>

class QLabel;

/// The page "Maintenance Mode": one frame a service function, each with a button "SEND".
class UCMaintenanceMode : public QWidget {
public:
    /// The lists and spin edits are still empty afterwards; the window fills those of all pages.
    UCMaintenanceMode(const CPageBuilder& p_objBuilder, QWidget* p_objParent);

    /// Shows the result of a head check; an empty text clears it.
    void ShowHeadCheck(const QString& p_strText);

    /// The position of one of the page's lists, by its name; -1 when nothing is chosen.
    [[nodiscard]] std::int16_t Position(const char* p_strList) const;

    /// What the test print's fields show. Throws CConversionError for a text that is no number.
    [[nodiscard]] MCommand::TestPrintFields TestPrint() const;

private:
    QWidget* MakeHeadCheck(const CPageBuilder& p_objBuilder);
    QWidget* MakeRamClear(const CPageBuilder& p_objBuilder);
    QWidget* MakeThresholdCalib(const CPageBuilder& p_objBuilder);
    QWidget* MakeSensorAdjust(const CPageBuilder& p_objBuilder);
    QWidget* MakeTestPrint(const CPageBuilder& p_objBuilder);
    QWidget* MakeDiagPrint(const CPageBuilder& p_objBuilder);

    QLabel* m_lblHeadCheck = nullptr;
};
