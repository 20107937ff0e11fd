#pragma once

#include "platform/qt/CQtTcpClient.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

/// Keeps the events of a client, and fails the test for one that comes from inside a call.
class CTcpEventLog : public ITcpClientEvents {
public:
    explicit CTcpEventLog(ITcpClient& p_objClient)
        : m_objClient(p_objClient) {
        m_objClient.SetEvents(this);
    }
    CTcpEventLog(const CTcpEventLog&) = delete;
    CTcpEventLog& operator=(const CTcpEventLog&) = delete;
    ~CTcpEventLog() override { m_objClient.SetEvents(nullptr); }

    std::vector<std::string> m_strEvents;  // all but data and sent
    std::vector<SocketError> m_objErrors;
    std::string m_strData;
    std::size_t m_iLargestBlock = 0;
    int m_iSent = 0;
    bool m_bInsideACall = false;
    bool m_bTakesData = true;
    std::function<void()> m_fnOnData;

    [[nodiscard]] bool Has(const std::string& p_strEvent) const {
        return std::find(m_strEvents.begin(), m_strEvents.end(), p_strEvent) != m_strEvents.end();
    }

    void OnConnect() override { Add("connect"); }
    void OnClose() override { Add("close"); }
    void OnSendComplete() override {
        EXPECT_FALSE(m_bInsideACall);
        ++m_iSent;
    }
    void OnDataArrival() override {
        EXPECT_FALSE(m_bInsideACall);
        if (m_bTakesData) {
            TakeBlock();
        }
        if (m_fnOnData) {
            m_fnOnData();
        }
    }
    void OnError(const SocketError& p_objError) override {
        Add("error");
        m_objErrors.push_back(p_objError);
    }

    bool TakeBlock() {
        const auto objBlock = m_objClient.GetData();
        m_iLargestBlock = std::max(m_iLargestBlock, objBlock.size());
        m_strData.append(objBlock.begin(), objBlock.end());
        return !objBlock.empty();
    }

private:
    void Add(const char* p_strEvent) {
        EXPECT_FALSE(m_bInsideACall) << p_strEvent;
        m_strEvents.emplace_back(p_strEvent);
    }

    ITcpClient& m_objClient;
};
