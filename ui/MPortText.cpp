#include "ui/MPortText.h"

#include <algorithm>

namespace {

/// Maker and product, of which the system may know neither, and the one may begin with the other.
QString WhatItIs(const CSerialPortEntry& p_objPort) {
    const QString strMaker = QString::fromStdString(p_objPort.m_strManufacturer).trimmed();
    QString strProduct = QString::fromStdString(p_objPort.m_strDescription).trimmed();
    if (strProduct.startsWith(strMaker, Qt::CaseInsensitive)) {
        return strProduct;
    }
    return strProduct.isEmpty() ? strMaker + " adapter" : strMaker + " " + strProduct;
}

}  // namespace

QString MPortText::Of(int p_iNumber, const std::vector<CSerialPortEntry>& p_objPorts) {
    const auto objFound = std::ranges::find_if(p_objPorts, [&](const CSerialPortEntry& p_objPort) {
        return std::ranges::find(p_objPort.m_iComNumbers, p_iNumber) !=
               p_objPort.m_iComNumbers.end();
    });
    if (objFound == p_objPorts.end()) {
        return "no such port";
    }
    const QString strDevice = QString::fromStdString(objFound->m_strDevice);
    const QString strWhat = WhatItIs(*objFound);
    return strWhat.isEmpty() ? strDevice : strDevice + ": " + strWhat;
}
