#pragma once

#include "link/ILink.h"
#include "tests/fakes/CFakeClock.h"
#include "tests/fakes/MWire.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// Stands for the USB library: takes commands and answers each before Exchange returns.
class CUsbLinkDouble : public ILink {
public:
    explicit CUsbLinkDouble(const CFakeClock& p_objClock)
        : m_objClock(p_objClock) {}

    bool m_bSends = true;
    CFailure::Kind m_iFailure = CFailure::Kind::None;
    std::vector<std::string> m_strStatuses;  ///< the answers to come; none when empty
    std::vector<std::string> m_strSent;      ///< every command
    std::vector<std::int64_t> m_iSentTimes;  ///< the time of each

    [[nodiscard]] Answering HowItAnswers() const override { return Answering::AtOnce; }
    bool Open() override { return true; }
    bool Close() override { return true; }

    bool Exchange(const Bytes& p_objCommand, Bytes& p_objReceiveBuffer, CFailure& p_objFailure,
                  std::int16_t& p_iReceivedCount, std::int16_t p_iReceiveLength) override {
        EXPECT_EQ(p_iReceiveLength, 13);
        m_strSent.emplace_back(p_objCommand.begin(), p_objCommand.end());
        m_iSentTimes.push_back(m_objClock.Elapsed());
        p_objReceiveBuffer.assign(static_cast<std::size_t>(p_iReceiveLength), 0);
        p_objFailure.m_iKind = m_iFailure;
        p_iReceivedCount = 0;
        if (!m_strStatuses.empty()) {
            p_objReceiveBuffer = MWire::ToBytes(MWire::Status(m_strStatuses.front()));
            p_iReceivedCount = p_iReceiveLength;
            m_strStatuses.erase(m_strStatuses.begin());
        }
        return m_bSends;
    }

private:
    const CFakeClock& m_objClock;
};
