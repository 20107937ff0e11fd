#include "ui/CPageTeller.h"

#include "ui/CReadBaseline.h"
#include "ui/CToldPage.h"

#include <QTabWidget>

#include <algorithm>

namespace {

const std::vector<QString> AddressFields{"SeIpAddress1", "SeIpAddress2", "SeIpAddress3",
                                         "SeIpAddress4"};
const std::vector<QString> PortFields{"SeSocetPort"};
const std::vector<QString> ListensFields{"cmbPort"};
constexpr const char* Listens = "ON";

/// "192.168.10.20:8000" in its parts.
MPageText::Place PlaceOf(const std::string& p_strWhere) {
    const std::size_t iColon = p_strWhere.rfind(':');
    return {p_strWhere.substr(0, iColon), p_strWhere.substr(iColon + 1)};
}

}  // namespace

CPageTeller::CPageTeller(const QTabWidget& p_objTabs, CToldPage& p_objParameter,
                         CToldPage& p_objLan, const CReadBaseline& p_objLanFields,
                         CLineTeller& p_objLine, IStatusLineView& p_objView)
    : m_objTabs(p_objTabs)
    , m_objParameter(p_objParameter)
    , m_objLan(p_objLan)
    , m_objLanFields(p_objLanFields)
    , m_objLine(p_objLine)
    , m_objView(p_objView) {
    connect(&m_objTabs, &QTabWidget::currentChanged, this, &CPageTeller::Show);
    connect(&m_objParameter, &CToldPage::Changed, this, &CPageTeller::Show);
    connect(&m_objLan, &CToldPage::Changed, this, &CPageTeller::Show);
    connect(&m_objLan, &CToldPage::Came, this, &CPageTeller::NoteOrigin);
    m_objLine.OnLanPlace([this] { Show(); });
    Show();
}

CPageTeller::~CPageTeller() {
    m_objLine.OnLanPlace(nullptr);
}

void CPageTeller::Begin(Page p_iPage) {
    switch (p_iPage) {
    case Page::Parameter:
        m_objParameter.Begin();
        break;
    case Page::Lan:
        m_objLan.Begin();
        break;
    case Page::Maintenance:
        m_strMaintenance.clear();
        Show();
        break;
    }
}

void CPageTeller::End(Page p_iPage, const std::string& p_strName, const CFailure& p_objFailure) {
    if (p_iPage == Page::Maintenance) {
        m_strMaintenance = MPageText::Failed(p_strName, p_objFailure);
        Show();
    }
}

void CPageTeller::NoteOrigin() {
    const int iConnection = m_objLine.LanPlace().empty() ? 0 : m_objLine.LanConnections();
    const CPageState::Origin iOrigin = m_objLan.State().m_iOrigin;
    if (iOrigin == CPageState::Origin::Read) {
        m_iReadOver = iConnection;
    } else if (iOrigin == CPageState::Origin::Sent) {
        m_iSentOver = iConnection;
    }
}

void CPageTeller::Show() {
    m_objView.ShowPage(Text());
}

std::string CPageTeller::Text() const {
    switch (static_cast<Page>(m_objTabs.currentIndex())) {
    case Page::Parameter:
        return MPageText::Of(m_objParameter.State());
    case Page::Lan:
        return MPageText::Of(m_objLan.State(), Warning());
    case Page::Maintenance:
        break;
    }
    return m_strMaintenance;
}

std::string CPageTeller::Warning() const {
    const std::string strWhere = m_objLine.LanPlace();
    const CPageState objState = m_objLan.State();
    const bool bSent = objState.m_iOrigin == CPageState::Origin::Sent && !objState.m_bEdited &&
                       m_iSentOver == m_objLine.LanConnections();
    if (strWhere.empty() || bSent) {  // what was sent has moved it already
        return {};
    }
    const MPageText::Place objFrom = PlaceOf(strWhere);
    MPageText::Place objTo = objFrom;
    if (!ArePrinters(AddressFields)) {
        objTo.m_strAddress = Shown(AddressFields);
    }
    if (!ArePrinters(PortFields)) {
        objTo.m_strPort = Shown(PortFields);
    }
    objTo.m_bListens = ArePrinters(ListensFields) || Shown(ListensFields) == Listens;
    return MPageText::Move(objFrom, objTo);
}

std::string CPageTeller::Shown(const std::vector<QString>& p_strFields) const {
    QStringList strTexts;
    for (const QWidget* const objField : m_objLanFields.Fields()) {
        if (std::ranges::find(p_strFields, objField->objectName()) != p_strFields.end()) {
            strTexts.append(CReadBaseline::Shown(*objField));
        }
    }
    return strTexts.join('.').toStdString();
}

bool CPageTeller::ArePrinters(const std::vector<QString>& p_strFields) const {
    return m_iReadOver == m_objLine.LanConnections() &&
           std::ranges::none_of(m_objLanFields.Fields(), [&](const QWidget* p_objField) {
               return m_objLanFields.IsChanged(*p_objField) &&
                      std::ranges::find(p_strFields, p_objField->objectName()) != p_strFields.end();
           });
}
