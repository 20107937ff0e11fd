#pragma once

#include <QDialog>

#include <array>
#include <cstdint>
#include <vector>

class CInterface;
class CListGuard;
struct CSerialPortEntry;
class IMessageBox;
class QComboBox;
class QGridLayout;
class QGroupBox;
class UCSpinEdit;

/// The dialog in which the person edits the link settings: the serial port and its line settings,
/// or the printer's address, whichever belongs to the chosen interface.
///
/// It edits the CInterface that it is given in place, and only on SET.
class FmInterfaceSetup : public QDialog {
    Q_OBJECT

public:
    /// @param p_objBoxes shows the address fields' range box; not owned, must outlive the dialog.
    explicit FmInterfaceSetup(IMessageBox& p_objBoxes, QWidget* p_objParent = nullptr);

    /// Shows the settings of p_objInterface, which must outlive the dialog, and enables the group
    /// that belongs to the interface index: the LAN group for 1, the serial group for any other
    /// (USB has no settings; its group is the serial one).
    /// @return false when an item holds what its list or field cannot show: a position that the
    ///         list does not have, or a text that is not a number. The dialog is not to be shown
    ///         then.
    bool InitializeItem(CInterface& p_objInterface, std::int16_t p_iInterfaceIndex);

    /// Has each entry of the list of serial ports tell in its tool tip which device it stands for
    /// and what that is, by p_objPorts, or that there is no such port.
    void TellPorts(const std::vector<CSerialPortEntry>& p_objPorts);

    /// True unless the dialog was closed with SET.
    [[nodiscard]] bool CancelFlag() const;

    /// CANCEL, Esc and the close box all come here.
    void reject() override;

private:
    struct SerialList;

    void BuildSerialGroup();
    void BuildLanGroup();
    void AlignGroups();
    void BuildButtons();
    void LayOut();
    QComboBox* AddList(const SerialList& p_objList, QGridLayout& p_objGrid);

    void InitializeAddress();
    bool InitializeLists();
    void EnableGroups();
    void OnSet();
    void StoreSerial();
    void StoreAddress();

    [[nodiscard]] bool EditsLan() const;

    static constexpr int OctetCount = 4;
    static const std::vector<SerialList> Lists;

    IMessageBox& m_objBoxes;
    CListGuard* m_objListGuard;
    CInterface* m_objInterface = nullptr;
    std::int16_t m_iInterfaceIndex = 0;
    bool m_bCancelFlag = true;

    QGroupBox* m_objSerialGroup = nullptr;
    QGroupBox* m_objLanGroup = nullptr;
    std::vector<QComboBox*> m_objLists;  ///< in the order of Lists
    std::array<UCSpinEdit*, OctetCount> m_objOctets{};
};
