#pragma once

#include "tests/ui/CMainWindow.h"

/// What a person does with the fields of the window.
namespace MPage {

/// Puts every list, field and text of the three pages somewhere else than where it stands.
void ChangeEverything(CMainWindow& p_objWindow);

/// Texts for one field, which is on the page of a button, or on the first page for a button that
/// is on none.
struct Texts {
    const char* m_strField;
    const char* m_strRight;
    const char* m_strOutOfRange;
};
Texts TextsBeside(CMainWindow& p_objWindow, const std::string& p_strButton);

}  // namespace MPage
