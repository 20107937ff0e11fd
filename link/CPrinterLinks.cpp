#include "link/CPrinterLinks.h"

void CPrinterLinks::SetLink(std::int16_t p_iInterface, ILink& p_objLink) {
    m_objLinks.at(static_cast<std::size_t>(p_iInterface)) = &p_objLink;
}

bool CPrinterLinks::OpenLink(std::int16_t p_iInterface) {
    ILink* const objLink = Find(p_iInterface);
    return objLink != nullptr && objLink->Open();
}

void CPrinterLinks::StopOpening() {
    for (ILink* const objLink : m_objLinks) {
        if (objLink != nullptr) {
            objLink->StopOpening();
        }
    }
}

bool CPrinterLinks::CloseLink(std::int16_t p_iInterface) {
    ILink* const objLink = Find(p_iInterface);
    return objLink == nullptr || objLink->Close();
}

ILink* CPrinterLinks::Find(std::int16_t p_iInterface) const {
    const bool bExists = p_iInterface >= 0 && static_cast<std::size_t>(p_iInterface) < Count;
    return bExists ? m_objLinks[static_cast<std::size_t>(p_iInterface)] : nullptr;
}
