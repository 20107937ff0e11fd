#include "tests/ui/faults/MFloods.h"

#include <random>
#include <string_view>

namespace {

constexpr std::size_t Block = 4096;

/// What the port has been asked is of no use here, and a lot.
void PourIntoPort(CScene& p_objScene, std::string_view p_strBytes) {
    for (std::size_t i = 0; i < p_strBytes.size(); i += Block) {
        p_objScene.m_objPort.Arrive(p_strBytes.substr(i, Block));
        p_objScene.m_objPort.m_strCalls.clear();
    }
}

}  // namespace

namespace MFloods {

std::string Junk(std::size_t p_iBytes) {
    constexpr std::string_view strNoHeads = "the quick brown fox, 0123456789; ";
    std::string strJunk;
    while (strJunk.size() < p_iBytes) {
        strJunk += strNoHeads.substr(0, p_iBytes - strJunk.size());
    }
    return strJunk;
}

std::string Chance(std::size_t p_iBytes) {
    std::minstd_rand objChance(7);  // NOLINT: the same in each run
    std::string strBytes;
    for (std::size_t i = 0; i < p_iBytes; ++i) {
        strBytes += static_cast<char>(objChance() >> 8);
    }
    return strBytes;
}

void Pour(CScene& p_objScene, const std::string& p_strBytes) {
    switch (p_objScene.Link()) {
    case LinkKind::Com:
        if (p_objScene.m_objPort.IsOpen()) {
            PourIntoPort(p_objScene, p_strBytes);
        }
        break;
    case LinkKind::Lan:
        if (p_objScene.m_objSocket.IsConnected()) {
            p_objScene.m_objSocket.Arrive(p_strBytes);
        }
        break;
    case LinkKind::Usb:
        if (p_objScene.m_objLibrary.m_strAnswers.empty()) {
            p_objScene.m_objLibrary.m_strAnswers.push_back(p_strBytes);
        }
        break;
    }
}

void Begin(CScene& p_objScene, const std::string& p_strBytes) {
    p_objScene.m_bFlood = true;
    Pour(p_objScene, p_strBytes);
    p_objScene.Later(CFakeEventLoop::StepMilliseconds, [&p_objScene, p_strBytes] {
        if (p_objScene.m_bFlood && !p_objScene.m_objEventLoop.IsClosing()) {
            Begin(p_objScene, p_strBytes);
        }
    });
}

}  // namespace MFloods
