#pragma once

#include "tests/ui/faults/CFaultCell.h"
#include "tests/ui/faults/CSeen.h"
#include "tests/ui/recorder/CStage.h"

#include <map>
#include <string>

/// Where the cells of the fault table are played, with the window and the doubles of the
/// recordings.
class CFaultStage {
public:
    CFaultStage();

    CSeen Play(const CFaultCell& p_objCell);

    using Values = std::map<std::string, std::string>;

    /// The items by their names, in their fields' texts, and the fields by theirs, as they are in a
    /// new window and behind a READ and a LAN READ.
    struct Known {
        Values m_strItems;
        Values m_strFields;
    };
    [[nodiscard]] const Known& New() const { return m_objNew; }
    [[nodiscard]] const Known& Read() const { return m_objRead; }
    [[nodiscard]] const Known& LanRead() const { return m_objLanRead; }

    /// The commands that would give a printer the settings that this one has.
    [[nodiscard]] const std::vector<std::string>& Settings() const { return m_objStage.Settings(); }

    /// What the two SETs send behind the two READs.
    std::vector<std::string> SentBehindReading();

private:
    Known After(const char* p_strButton);
    void Compare(CScene& p_objScene, CSeen& p_objSeen) const;
    void ComparePages(const Known& p_objNow, CSeen& p_objSeen) const;
    /// The flow once more, when the link and the printer are sound.
    [[nodiscard]] CSeen Again(CScene& p_objScene, const CFaultCell& p_objCell) const;

    CStage m_objStage;
    Known m_objNew;
    Known m_objRead;
    Known m_objLanRead;
};
