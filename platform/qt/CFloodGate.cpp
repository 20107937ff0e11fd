#include "platform/qt/CFloodGate.h"

#include <algorithm>

void CFloodGate::Arrive(Time p_objNow) {
    if (p_objNow - m_objBegin >= Slot) {
        m_objBegin = p_objNow;
        m_objSlot = {0, 0};
    }
    ++m_objSlot.m_iArrivals;
}

std::chrono::milliseconds CFloodGate::Left(Time p_objNow) const {
    using std::chrono::milliseconds;
    return std::max(std::chrono::ceil<milliseconds>(m_objBegin + Slot - p_objNow), milliseconds(1));
}
