#include "ui/CFieldTexts.h"

#include <QStringList>
#include <QWidget>

CFieldTexts::CFieldTexts(QWidget& p_objControl)
    : QObject(&p_objControl)
    , m_objControl(p_objControl) {}

CFieldTexts& CFieldTexts::Of(QWidget& p_objControl) {
    auto* objTexts = p_objControl.findChild<CFieldTexts*>({}, Qt::FindDirectChildrenOnly);
    if (objTexts == nullptr) {
        objTexts = new CFieldTexts(p_objControl);
    }
    return *objTexts;
}

void CFieldTexts::Set(Part p_iPart, const QString& p_strText) {
    QString& strPart = m_strParts[static_cast<std::size_t>(p_iPart)];
    if (strPart != p_strText) {
        strPart = p_strText;
        Tell();
    }
}

void CFieldTexts::Tell() {
    QStringList strSeen;
    QStringList strDescribed;
    for (std::size_t i = 0; i < m_strParts.size(); ++i) {
        if (m_strParts[i].isEmpty()) {
            continue;
        }
        strDescribed.append(m_strParts[i]);
        if (static_cast<Part>(i) != Part::Where) {
            strSeen.append(m_strParts[i]);
        }
    }
    // What a printer says can look like markup.
    m_objControl.setToolTip(strSeen.isEmpty() ? QString()
                                              : "<p style='white-space:pre'>" +
                                                    strSeen.join('\n').toHtmlEscaped() + "</p>");
    m_objControl.setAccessibleDescription(strDescribed.join("; "));
}
