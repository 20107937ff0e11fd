#pragma once

#include "platform/qt/CQtSerialPort.h"
#include "tests/platform_qt/CFakeLineState.h"
#include "tests/platform_qt/CTestTerminal.h"

#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Keeps the events of a port and takes the characters, and fails the test for an event that comes
/// from inside a call.
class CSerialEventLog : public ISerialPortEvents {
public:
    explicit CSerialEventLog(CQtSerialPort& p_objPort)
        : m_objPort(p_objPort) {
        m_objPort.SetEvents(this);
    }
    CSerialEventLog(const CSerialEventLog&) = delete;
    CSerialEventLog& operator=(const CSerialEventLog&) = delete;
    ~CSerialEventLog() override { m_objPort.SetEvents(nullptr); }

    std::vector<std::int16_t> m_iEvents;  // all but those of a character
    std::string m_strData;
    int m_iReceived = 0;
    int m_iGone = 0;
    bool m_bInsideACall = false;
    bool m_bTakesData = true;
    std::function<void(std::int16_t)> m_fnOnEvent;

    void OnComm(std::int16_t p_iEvent) override {
        EXPECT_FALSE(m_bInsideACall) << p_iEvent;
        if (p_iEvent == SerialReceive) {
            ++m_iReceived;
            if (m_bTakesData) {
                const auto objData = m_objPort.Input();
                m_strData.append(objData.begin(), objData.end());
            }
        } else {
            m_iEvents.push_back(p_iEvent);
        }
        if (m_fnOnEvent) {
            m_fnOnEvent(p_iEvent);
        }
    }

    void OnGone() override {
        EXPECT_FALSE(m_bInsideACall);
        EXPECT_FALSE(m_objPort.IsOpen());
        ++m_iGone;
    }

private:
    CQtSerialPort& m_objPort;
};

/// COM1 is a pseudo-terminal, and the port is set up as the link to the printer does it.
class CSerialPortFixture : public ::testing::Test {
protected:
    static constexpr int LongEnough = 10'000;
    static constexpr int LongEnoughForNothing = 150;

    CSerialPortFixture()
        : m_objFormerHandler(qInstallMessageHandler(FailOnWarning)) {
        PlugIn();
        SetUpPort(m_objPort);
    }
    ~CSerialPortFixture() override { qInstallMessageHandler(m_objFormerHandler); }

    static void SetUpPort(CQtSerialPort& p_objPort) {
        p_objPort.SetSettings("9600,E,8,1");
        p_objPort.SetHandshaking(0);
        p_objPort.SetReceiveThreshold(1);
        p_objPort.SetInputLength(1);
        p_objPort.SetSendThreshold(1);
        p_objPort.SetPortNumber(1);
    }

    [[nodiscard]] std::string Path(const std::string& p_strName) const {
        return m_objDevices.filePath(QString::fromStdString(p_strName)).toStdString();
    }

    /// Makes COM1 a new line, nothing else than the one before.
    void PlugIn() {
        m_objLine = std::make_unique<CTestTerminal>();
        std::filesystem::remove(Path("com1"));
        std::filesystem::create_symlink(m_objLine->Name(), Path("com1"));
    }

    std::int32_t CallOpen() {
        m_objEvents.m_bInsideACall = true;
        const std::int32_t iResult = m_objPort.Open();
        m_objEvents.m_bInsideACall = false;
        return iResult;
    }

    void CallClose() {
        m_objEvents.m_bInsideACall = true;
        m_objPort.Close();
        m_objEvents.m_bInsideACall = false;
    }

    bool CallOutput(const std::string& p_strBytes) {
        m_objEvents.m_bInsideACall = true;
        const bool bTaken = m_objPort.Output(
            {reinterpret_cast<const std::uint8_t*>(p_strBytes.data()), p_strBytes.size()});
        m_objEvents.m_bInsideACall = false;
        return bTaken;
    }

    bool WaitForData(std::size_t p_iCount) {
        return QTest::qWaitFor([&] { return m_objEvents.m_strData.size() >= p_iCount; },
                               LongEnough);
    }

    bool WaitUntilClosed() {
        return QTest::qWaitFor([this] { return !m_objPort.IsOpen(); }, LongEnough);
    }

    QTemporaryDir m_objDevices;
    std::unique_ptr<CTestTerminal> m_objLine;
    CFakeLineState m_objLineState;
    CQtSerialPort m_objPort{m_objLineState, m_objDevices.path().toStdString()};
    CSerialEventLog m_objEvents{m_objPort};

private:
    /// The toolkit's complaints are failures here.
    static void FailOnWarning(QtMsgType p_iType, const QMessageLogContext& /*p_objContext*/,
                              const QString& p_strText) {
        if (p_iType != QtDebugMsg && p_iType != QtInfoMsg) {
            ADD_FAILURE() << p_strText.toStdString();
        }
    }

    QtMessageHandler m_objFormerHandler;
};
