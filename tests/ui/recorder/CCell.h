#pragma once

#include "tests/ui/recorder/CScene.h"

#include <functional>
#include <string>
#include <vector>

/// One thing to record: what goes wrong, on which link, and what is pressed.
struct CCell {
    std::string m_strHeading;  ///< no other cell has the same
    std::string m_strButton;   ///< its page is in front when the cell begins
    LinkKind m_iLink = LinkKind::Com;
    bool m_bOpen = true;  ///< the link is open when it begins
    std::function<void(CScene&)> m_fnAct;
};

using Cells = std::vector<CCell>;
