#pragma once

#include "model/CItemManager.h"
#include "simulator/CDecodedCommand.h"
#include "simulator/MCommandKind.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The printer behind the wire: its settings, and what it answers to a command.
///
/// One printer is shared by all connections; it must outlive them. A settings answer is "{", the
/// group's digit, the group's fields at their exact widths, and "|}". A status answer has 13
/// bytes:
///
///     position   0     1     2, 3          4 to 10   11    12
///     bytes      0x01  0x02  status code   "0"       0x03  0x04
///
/// The font code is kept in the numbering of the set command and answered in the printer's own,
/// so that whoever reads it back sees what was set.
class CPrinter {
public:
    /// The status code with which a command is refused.
    static constexpr const char* CommandError = "06";

    struct Reply {
        CDecodedCommand m_objCommand;
        std::string m_strAnswer;  ///< the bytes to send
        std::string m_strNote;    ///< the answer for people, such as "status 00 (ON LINE)"
    };

    struct Count {
        std::size_t m_iAccepted = 0;
        std::size_t m_iRefused = 0;

        bool operator==(const Count&) const = default;
    };

    /// All settings at the catalogue's defaults, the status "00".
    CPrinter() = default;

    /// The status code of the answers to everything that is not refused: two printable 7-bit
    /// characters. Throws std::invalid_argument for anything else.
    void SetStatus(std::string p_strStatus);
    [[nodiscard]] static bool IsStatus(std::string_view p_strStatus);

    /// Carries one whole command out ("{" to "|}"), whatever stands in it. A command that is not
    /// exactly as it must be changes no setting and is answered with CommandError.
    Reply Handle(std::string_view p_strCommand);

    /// The settings; they change with every set command.
    [[nodiscard]] const CItemManager& Items() const { return m_objItems; }

    /// How many commands of a kind have come.
    [[nodiscard]] Count Commands(MCommandKind::Kind p_iKind) const;

    /// One line for each kind that has come, such as "read settings: 3", refused ones told apart.
    [[nodiscard]] std::string DescribeCounts() const;

    /// The 13 bytes of a status answer. p_strStatus has two characters.
    [[nodiscard]] static std::string StatusAnswer(std::string_view p_strStatus);
    /// The settings answer of group p_iGroup, 0 to 4.
    [[nodiscard]] std::string SettingsAnswer(std::int16_t p_iGroup) const;

private:
    void CarryOut(const CDecodedCommand& p_objCommand);
    void RestoreDefaults();

    CItemManager m_objItems;
    std::string m_strStatus = "00";
    std::array<Count, MCommandKind::KindCount> m_objCounts{};
};
