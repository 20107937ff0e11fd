#pragma once

#include "flows/CReadWriteFlow.h"
#include "tests/fakes/CFakeSettingsPage.h"
#include "tests/fakes/CSessionFixture.h"

/// The four flows on a session with doubles on every side, pages among them.
class CReadWriteFlowFixture : public CSessionFixture {
protected:
    CFakeSettingsPage m_objParameterPage;
    CFakeSettingsPage m_objLanPage;
    CReadWriteFlow m_objFlow{m_objItemManager, m_objSession, m_objMessageBox, m_objParameterPage,
                             m_objLanPage};
};
