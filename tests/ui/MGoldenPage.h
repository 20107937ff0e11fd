#pragma once

#include "tests/golden/MGolden.h"

#include <QStringList>

#include <vector>

/// What the controls of the Parameter Setting page are held against: a table written by hand, once
/// for all tests of the window.
namespace MGoldenPage {

struct Control {
    const char* m_strFrame;
    const char* m_strName;
    const char* m_strLabel;       ///< of the label that leads to it; null: none does
    const char* m_strAccessible;  ///< null: the label's text
    const char* m_strDefault;     ///< shown after the start
    const char* m_strTaught;      ///< shown when the settings of MTaughtPrinter have been read
    MGolden::Slot m_objItem;      ///< of a direction and a magnitude the latter
    QStringList m_strEntries{};   ///< of a list
};

/// In the order in which both directions visit them, and people read them.
const std::vector<Control>& Parameter();

}  // namespace MGoldenPage
