#include "simulator/CPlace.h"

namespace {

std::uint32_t Number(const ItemRef& p_objItem) {
    // A decimal field of the printer's holds nothing but digits, five at most.
    return static_cast<std::uint32_t>(std::stoul(p_objItem->GetValueString()));
}

}  // namespace

CPlace CPlace::Of(const CItemManager& p_objItems) {
    CPlace objPlace;
    for (const ItemRef& objItem : {p_objItems.m_objIpAddress1, p_objItems.m_objIpAddress2,
                                   p_objItems.m_objIpAddress3, p_objItems.m_objIpAddress4}) {
        objPlace.m_strAddress +=
            (objPlace.m_strAddress.empty() ? "" : ".") + std::to_string(Number(objItem));
    }
    objPlace.m_iPort = Number(p_objItems.m_objSocketPortNumber);
    objPlace.m_bSocket = Number(p_objItems.m_objSocketPortSetting) != 0;
    return objPlace;
}
