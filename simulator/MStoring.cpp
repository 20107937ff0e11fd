#include "simulator/MStoring.h"

#include "simulator/MPrintable.h"

#include <algorithm>
#include <limits>

namespace {

constexpr std::size_t All = std::numeric_limits<std::size_t>::max();

/// How much of a command is stored.
struct Room {
    std::size_t m_iFields = All;
    std::size_t m_iBytes = All;
};

Room RoomFor(std::string_view p_strCommand, const CStateFaults& p_objFaults) {
    return p_strCommand.starts_with(p_objFaults.m_strHalved)
               ? Room{p_objFaults.m_iFieldsKept.value_or(All),
                      p_objFaults.m_iBytesKept.value_or(All)}
               : Room();
}

/// The field's bytes as far as there is room, behind them what the item held there.
std::string Mixed(const std::string& p_strNew, const std::string& p_strOld, std::size_t p_iBytes) {
    return p_strNew.substr(0, p_iBytes) + p_strOld.substr(std::min(p_iBytes, p_strOld.size()));
}

std::string HalfText(const Room& p_objStored) {
    return "only " + std::to_string(p_objStored.m_iFields) +
           (p_objStored.m_iFields == 1 ? " field" : " fields") + " stored, " +
           MPrintable::ByteCount(p_objStored.m_iBytes);
}

}  // namespace

namespace MStoring {

bool IsStuck(const CStateFaults& p_objFaults, std::string_view p_strName) {
    const auto& strStuck = p_objFaults.m_strStuck;
    return std::find(strStuck.begin(), strStuck.end(), p_strName) != strStuck.end();
}

std::vector<Mishap> Store(const CDecodedCommand& p_objCommand, std::string_view p_strCommand,
                          const CStateFaults& p_objFaults) {
    std::vector<Mishap> objMishaps;
    const Room objRoom = RoomFor(p_strCommand, p_objFaults);
    Room objStored{0, 0};
    bool bHalf = false;
    for (const CDecodedCommand::Field& objField : p_objCommand.Fields()) {
        if (!objField.m_objItem) {
            continue;
        }
        const std::size_t iLeft = objRoom.m_iBytes - objStored.m_iBytes;
        const std::string strOld = objField.m_objItem->GetValueString();
        const std::size_t iWidth = objField.m_iWidth;
        if (objStored.m_iFields >= objRoom.m_iFields || iLeft == 0) {
            bHalf = true;
            break;
        }
        bHalf = bHalf || iLeft < iWidth;
        objStored.m_iBytes += std::min(iLeft, iWidth);
        objStored.m_iFields += iLeft < iWidth ? 0 : 1;
        if (IsStuck(p_objFaults, objField.m_strName)) {
            if (strOld != objField.m_strValue) {
                objMishaps.push_back({"unchanged", objField.m_strName + " does not change"});
            }
            continue;
        }
        objField.m_objItem->SetValue(iLeft < iWidth ? Mixed(objField.m_strValue, strOld, iLeft)
                                                    : objField.m_strValue);
    }
    if (bHalf) {
        objMishaps.push_back({"half-stored", HalfText(objStored)});
    }
    return objMishaps;
}

}  // namespace MStoring
