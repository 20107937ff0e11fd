#pragma once

#include "ui/MBinding.h"

#include <QHash>
#include <QString>

class QComboBox;
class QLineEdit;
class QWidget;
class UCSpinEdit;

/// Copies values between the items of a catalogue and the controls of one page.
///
/// Both directions visit the rows in order and stop with an exception at the first that fails;
/// what came before keeps its new value, nothing is rolled back.
class CFormBinding {
public:
    /// Finds the controls by their object names below p_objPage, which outlives this. Throws
    /// std::logic_error when one is missing or of another kind than its row says, when a row lacks
    /// an item, and when a field of the page has no row or two.
    CFormBinding(const QWidget& p_objPage, const std::vector<MBinding::Row>& p_objRows);

    /// Shows the items' values, or their defaults when p_bDefaultValue is true. Throws
    /// std::out_of_range for a list position that does not exist and CConversionError for a
    /// value that is no number. A number outside a spin edit's range is refused by the spin edit
    /// with its message, and the refresh goes on.
    /// @return true when it completes.
    bool Refresh(const CItemManager& p_objItemManager, bool p_bDefaultValue);

    /// The spin edits that refused their value in the last Refresh, with the value as they would
    /// have shown it.
    [[nodiscard]] const QHash<const QWidget*, QString>& Refused() const { return m_strRefused; }

    /// The controls, in the order of the rows.
    [[nodiscard]] std::vector<QWidget*> Controls() const;

    /// Stores what the controls show. Throws CConversionError for a signed value that is no
    /// number.
    /// @return true when it completes.
    bool Store(const CItemManager& p_objItemManager) const;

private:
    /// A row with its control; only the one of the row's kind is set.
    struct Bound {
        MBinding::Row m_objRow;
        QComboBox* m_cmb = nullptr;
        UCSpinEdit* m_Se = nullptr;
        QLineEdit* m_txt = nullptr;

        [[nodiscard]] QWidget* Control() const;
    };

    static Bound Bind(const QWidget& p_objPage, const MBinding::Row& p_objRow);
    void RefreshOne(const Bound& p_objBound, const CItemManager& p_objItemManager,
                    bool p_bDefaultValue);
    void Show(UCSpinEdit& p_Se, const CItemValue& p_vValue);
    static void StoreOne(const Bound& p_objBound, const CItemManager& p_objItemManager);

    std::vector<Bound> m_objBound;
    QHash<const QWidget*, QString> m_strRefused;
};
