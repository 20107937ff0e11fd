#pragma once

#include "flows/MFailureBox.h"
#include "link/CComLink.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"
#include "tests/fakes/CFakeSerialPort.h"
#include "tests/fakes/CLinkFixture.h"

#include <gtest/gtest.h>

#include <string>

/// The serial port as the interface, its link over a double of the port, not open.
class CComLinkFixture : public CLinkFixture {
protected:
    CComLinkFixture() {
        m_objInterface.SetActiveInterface(CInterface::SerialInterface);
        m_objLinks.SetLink(CInterface::SerialInterface, m_objComLink);
    }

    /// Opens the link and forgets how.
    void OpenQuietly() {
        ASSERT_TRUE(m_objComLink.Open());
        m_objPort.m_strCalls.clear();
    }

    /// Sends p_strCommand and gives what the link hands back.
    bool Exchange(const std::string& p_strCommand, std::int16_t p_iLength = 13) {
        m_strError.clear();
        Bytes objBuffer;
        std::int16_t iCount = 0;
        CFailure objFailure;
        const bool bSent = m_objComLink.Exchange(MWire::ToBytes(p_strCommand), objBuffer,
                                                 objFailure, iCount, p_iLength);
        m_strError = MFailureBox::HandlerText(objFailure);
        return bSent;
    }

    void BeginRead(std::int16_t p_iGroup) {
        m_objRouter.SetAnswerSelector(p_iGroup);
        ASSERT_TRUE(Exchange(MCommand::ReadRequest(p_iGroup), MAnswer::ReceiveLength(p_iGroup)));
    }

    [[nodiscard]] std::string Stored(std::int16_t p_iGroup) const {
        return MWire::StoredFields(m_objItemManager, p_iGroup);
    }

    void ExpectNothingStored() {
        const CItemManager objUntouched;
        for (std::int16_t iGroup = 0; iGroup < 5; ++iGroup) {
            EXPECT_EQ(Stored(iGroup), MWire::StoredFields(objUntouched, iGroup)) << iGroup;
        }
    }

    std::string m_strError;
    CFakeSerialPort m_objPort{m_objEventLoop};
    CComLink m_objComLink{m_objPort,  m_objInterface, m_objRouter,
                          m_objState, m_objEvents,    m_objWaiter};
};
