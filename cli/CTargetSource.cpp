#include "cli/CTargetSource.h"

#include "cli/CProgress.h"
#include "cli/MFailureText.h"
#include "cli/MWhyText.h"

#include <memory>
#include <vector>

namespace {

/// A printer, and who hears of it.
struct Opened {
    Opened(const CTarget& p_objTarget, COutput& p_objOutput, IPrinterConnector& p_objPrinters)
        : m_objProgress(p_objTarget, p_objOutput)
        , m_objPrinter(
              p_objPrinters.Connect(p_objTarget, IPrinterConnector::DefaultPause, m_objProgress)) {}

    CProgress m_objProgress;
    std::unique_ptr<IPrinter> m_objPrinter;
};

std::vector<const MSettings::Row*> AllRows() {
    std::vector<const MSettings::Row*> objRows;
    for (const MSettings::Row& objRow : MSettings::All()) {
        objRows.push_back(&objRow);
    }
    return objRows;
}

CLoadedSettings Loaded(const std::string& p_strName, const CReadReport& p_objReport) {
    CLoadedSettings objLoaded{p_strName, p_objReport.m_objSnapshot, {}};
    objLoaded.m_bSent = p_objReport.m_bSent;
    for (const MSettings::Row& objRow : MSettings::All()) {
        const CReadReport::Why iWhy = p_objReport.WhyUnknown(objRow);
        if (iWhy == CReadReport::Why::Unreadable) {
            objLoaded.m_strUnreadable.emplace(objRow.m_strName);
        }
        if (iWhy != CReadReport::Why::Known) {
            objLoaded.m_strWhyUnknown.emplace(objRow.m_strName, MWhyText::Text(iWhy));
        }
    }
    return objLoaded;
}

}  // namespace

ISettingsSource::Fetch CTargetSource::Open(const std::string& p_strName, COutput& p_objOutput) {
    const CTarget objTarget = CTarget::Parse(p_strName);
    const auto objOpened = std::make_shared<Opened>(objTarget, p_objOutput, m_objPrinters);
    return [objTarget, objOpened, &objAccess = m_objAccess] {
        const CReadReport objReport = objOpened->m_objPrinter->Read(AllRows());
        if (!objReport.m_objFailure.IsNone()) {
            throw MFailureText::OfRead(objReport, objTarget, objAccess);
        }
        return Loaded(objTarget.m_strText, objReport);
    };
}
