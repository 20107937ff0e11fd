#pragma once

#include "model/CItemManager.h"
#include "simulator/CCommandCounts.h"
#include "simulator/CDecodedCommand.h"
#include "simulator/CPlace.h"
#include "simulator/CStateFaults.h"
#include "simulator/MStoring.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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
///
/// What is to go wrong with its state is CStateFaults'. It has power to begin with; without power
/// it takes no bytes and carries nothing out.
class CPrinter {
public:
    /// The status code with which a command is refused.
    static constexpr const char* CommandError = "06";

    /// What fills a text up to its field's width in an answer.
    static constexpr char Blank = ' ';
    static constexpr char Fill = '\xFF';

    struct Reply {
        CDecodedCommand m_objCommand;
        std::string m_strAnswer;   ///< the bytes to send
        std::string m_strNote;     ///< the answer for people, such as "status 00 (ON LINE)"
        bool m_bAccepted = false;  ///< carried out, not refused
        bool m_bMoved = false;     ///< Place() is another one now
        std::vector<MStoring::Mishap> m_objMishaps;  ///< what went wrong on purpose
    };

    using Count = CCommandCounts::Count;

    /// All settings at the catalogue's defaults, the status "00", no faults.
    CPrinter();

    /// The status code of the answers to everything that is not refused: two printable 7-bit
    /// characters. Throws std::invalid_argument for anything else.
    void SetStatus(std::string p_strStatus);
    [[nodiscard]] static bool IsStatus(std::string_view p_strStatus);

    /// What is to go wrong. Beforehand: what was sent so far counts for nothing.
    void SetFaults(CStateFaults p_objFaults) { m_objFaults = std::move(p_objFaults); }
    [[nodiscard]] const CStateFaults& Faults() const { return m_objFaults; }

    /// Blank or Fill; Blank unless set.
    void SetFill(char p_cFill) { m_cFill = p_cFill; }

    /// Beforehand: the settings name this place from the start.
    void SetPlace(const std::array<std::uint8_t, 4>& p_iAddress, std::uint16_t p_iPort);

    /// Carries one whole command out ("{" to "|}"), whatever stands in it. A command that is not
    /// exactly as it must be changes no setting and is answered with CommandError.
    Reply Handle(std::string_view p_strCommand);

    [[nodiscard]] bool IsOn() const { return m_bOn; }
    /// How many bytes more it takes: none without power, all but endless with it, unless the power
    /// is to be cut.
    [[nodiscard]] std::size_t MostTaken() const;
    /// So many bytes, at most MostTaken(), have come and are carried out. True when that was the
    /// time for the power to go: it has gone.
    bool Took(std::size_t p_iBytes);
    void PowerOff();
    /// With the settings as PowerOff has left them; gone to their place, if it is that kind.
    void PowerOn();

    /// Where it has gone to by its settings, and where these have been from the start. The same
    /// while nothing has made it move.
    [[nodiscard]] const CPlace& Place() const { return m_objPlace; }
    [[nodiscard]] const CPlace& FirstPlace() const { return m_objFirstPlace; }

    /// The settings; they change with every set command.
    [[nodiscard]] const CItemManager& Items() const { return m_objItems; }

    [[nodiscard]] const CCommandCounts& Counts() const { return m_objCounts; }
    [[nodiscard]] std::string DescribeCounts() const { return m_objCounts.Describe(); }
    /// How many commands of a kind have come.
    [[nodiscard]] Count Commands(MCommandKind::Kind p_iKind) const {
        return m_objCounts.Of(p_iKind);
    }

    /// The 13 bytes of a status answer. p_strStatus has two characters.
    [[nodiscard]] static std::string StatusAnswer(std::string_view p_strStatus);
    /// The settings answer of group p_iGroup, 0 to 4.
    [[nodiscard]] std::string SettingsAnswer(std::int16_t p_iGroup) const;

private:
    [[nodiscard]] bool RefusesOnPurpose(std::string_view p_strCommand);
    std::vector<MStoring::Mishap> CarryOut(const CDecodedCommand& p_objCommand,
                                           std::string_view p_strCommand);
    void RestoreDefaults();
    [[nodiscard]] std::vector<CItemValue> Values() const;
    void KeepFirst();

    CItemManager m_objItems;
    std::string m_strStatus = "00";
    char m_cFill = Blank;
    CStateFaults m_objFaults;
    CCommandCounts m_objCounts;
    std::size_t m_iToRefuse = 0;  // how many have come that begin as a refused one
    bool m_bOn = true;
    std::size_t m_iTaken = 0;          // bytes, ever
    std::vector<CItemValue> m_vFirst;  // the settings at the start, in the catalogue's order
    CPlace m_objFirstPlace;
    CPlace m_objPlace;
};
