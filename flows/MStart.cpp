#include "flows/MStart.h"

void MStart::ShowSettings(ISettingsPage& p_objParameterPage, ISettingsPage& p_objLanPage) {
    try {
        if (p_objParameterPage.Refresh()) {
            p_objLanPage.Refresh();
        }
    } catch (...) {
        // There is nothing to tell at a start: nothing was asked for.
    }
}
