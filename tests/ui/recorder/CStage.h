#pragma once

#include "tests/ui/recorder/CCell.h"
#include "tests/ui/recorder/CUnpainted.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Where cells are played, each with a window as it is right after its start, its link open or not.
///
/// To make a window takes ten times as long as to play a cell with it. So the stage makes one for
/// each beginning, and a copy of the process plays the cell: no cell sees what another has left,
/// and one that brings the process down spoils nothing but itself.
class CStage {
public:
    CStage();
    ~CStage();
    CStage(const CStage&) = delete;
    CStage& operator=(const CStage&) = delete;

    /// The cell's transcript, a line for each thing. What goes wrong with the playing itself, such
    /// as a wait without an end, stands in a last line that begins with "FAILED".
    std::string Play(const CCell& p_objCell);

    /// The same, with what p_fnEnd makes of the scene in place of the transcript.
    std::string Play(const CCell& p_objCell, const std::function<std::string(CScene&)>& p_fnEnd);

    /// The commands that have given the printer settings of its own: what the window sends that
    /// shows those.
    [[nodiscard]] const std::vector<std::string>& Settings() const { return m_strSettings; }

private:
    CScene& Scene(LinkKind p_iLink, bool p_bOpen);

    CUnpainted m_objUnpainted;
    std::map<std::pair<LinkKind, bool>, std::unique_ptr<CScene>> m_objScenes;
    std::vector<std::string> m_strSettings;  // commands that give the printer settings of its own
    std::map<std::string, std::string> m_strFiles;
    std::vector<std::string> m_strUsuallySaved;
};
