#include "ui/CToldPage.h"

#include "ui/CReadBaseline.h"

#include <QWidget>

CToldPage::CToldPage(ISettingsPage& p_objPage, const CReadBaseline& p_objBaseline)
    : m_objPage(p_objPage)
    , m_objBaseline(p_objBaseline) {
    connect(&p_objBaseline, &CReadBaseline::FieldShown, this, &CToldPage::Changed);
    connect(&p_objBaseline, &CReadBaseline::Changed, this, &CToldPage::Changed);
}

void CToldPage::NoteEnd(const CPageNote& p_objNote) {
    m_objState.m_objEnded = p_objNote;
    if (SetOrigin(p_objNote)) {
        m_strAtOrigin = ShownTexts();
        emit Came();
    }
    emit Changed();
}

bool CToldPage::SetOrigin(const CPageNote& p_objNote) {
    switch (p_objNote.m_iKind) {
    case CPageNote::Kind::Read:
        m_objState.m_iOrigin = CPageState::Origin::Read;
        return true;
    case CPageNote::Kind::Sent:
        m_objState.m_iOrigin = CPageState::Origin::Sent;
        return true;
    case CPageNote::Kind::Loaded:
        m_objState.m_iOrigin = CPageState::Origin::File;
        m_objState.m_strFile = p_objNote.m_strText;
        return true;
    default:
        return false;
    }
}

void CToldPage::Begin() {
    m_objState.m_objEnded.reset();
    emit Changed();
}

CPageState CToldPage::State() const {
    CPageState objState = m_objState;
    objState.m_iChanged = m_objBaseline.ChangedCount();
    const bool bKept = objState.m_iOrigin == CPageState::Origin::File ||
                       objState.m_iOrigin == CPageState::Origin::Sent;
    objState.m_bEdited = bKept && ShownTexts() != m_strAtOrigin;
    return objState;
}

std::vector<QString> CToldPage::ShownTexts() const {
    std::vector<QString> strTexts;
    for (const QWidget* const objField : m_objBaseline.Fields()) {
        strTexts.push_back(CReadBaseline::Shown(*objField));
    }
    return strTexts;
}
