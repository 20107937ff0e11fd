#include "cli/CPrinterConnector.h"

#include "cli/CCommandError.h"
#include "jobs/MCompare.h"
#include "model/MSettingText.h"
#include "platform/qt/CQtSerialPort.h"
#include "platform/usb/CUsbPrinterLister.h"
#include "simulator/MItemNames.h"
#include "tests/cli/CFakeInterrupt.h"
#include "tests/fakes/CFakeSessionEvents.h"
#include "tests/jobs/MOtherSettings.h"
#include "tests/platform_qt/CFakeLineState.h"
#include "tests/platform_qt/CFolder.h"
#include "tests/platform_qt/CRefusedPort.h"
#include "tests/platform_qt/CTestResolver.h"
#include "tests/platform_qt/CTestTerminal.h"
#include "tests/platform_qt/CUnreachablePort.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cerrno>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

// Real printers, as far as software can be one: what a target's name leads to.

namespace {

using Kind = CFailure::Kind;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int PatienceMs = 30'000;

class CPrinterConnectorTest : public ::testing::Test {
protected:
    static constexpr CPrinterLimits ShortLimits{1, 0.5, 1, 0};

    std::unique_ptr<IPrinter> Connect(const std::string& p_strTarget) {
        return m_objConnector.Connect(CTarget::Parse(p_strTarget), milliseconds(0), m_objEvents);
    }

    CFailure Failure(const std::string& p_strTarget) {
        const auto iStart = steady_clock::now();
        const CStatusReport objReport = Connect(p_strTarget)->Status();
        m_iTook = std::chrono::duration_cast<milliseconds>(steady_clock::now() - iStart);
        EXPECT_EQ(objReport.m_strCode, "");
        m_bSent = objReport.m_bSent;
        return objReport.m_objFailure;
    }

    [[nodiscard]] std::string LanTarget(const std::string& p_strHost = "127.0.0.1") const {
        return "lan:" + p_strHost + ":" + std::to_string(m_objSimulator.Port());
    }

    [[nodiscard]] QStringList DumpOption() const {
        return {"--dump", QString::fromStdString(m_objFolder.Path("dump"))};
    }

    /// The printer's settings by its own word.
    CItemManager Dumped() {
        EXPECT_TRUE(m_objSimulator.Dump(PatienceMs));
        const auto objDump = nlohmann::json::parse(m_objFolder.Content("dump"), nullptr, false);
        const auto& objSettings = objDump["printers"][0]["settings"];
        CItemManager objItems;
        for (const CItemManager::Row& objRow : CItemManager::Rows()) {
            (objItems.*objRow.m_objSlot)
                ->SetValue(objSettings[MItemNames::Of(objRow)].get<std::string>());
        }
        return objItems;
    }

    static std::vector<const MSettings::Row*> All() {
        std::vector<const MSettings::Row*> objRows;
        for (const MSettings::Row& objRow : MSettings::All()) {
            objRows.push_back(&objRow);
        }
        return objRows;
    }

    /// Changes and reads everything; what was read is what the printer has.
    void ExpectToReadEverything(const std::string& p_strTarget) {
        const auto objPrinter = Connect(p_strTarget);
        for (const std::string& strCommand : MOtherSettings::Commands()) {
            EXPECT_EQ(objPrinter->Send(strCommand).m_strCode, "00") << strCommand;
        }
        const CReadReport objReport = objPrinter->Read(All());
        EXPECT_TRUE(objReport.m_objFailure.IsNone());
        const auto objCompared = MCompare::Compare(objReport.m_objSnapshot, CSnapshot(Dumped()));
        for (const MSettings::Row* const objRow : objCompared.m_objDifferent) {
            ADD_FAILURE() << objRow->m_strName;
        }
        ASSERT_EQ(objCompared.m_objUnknown.size(), 1U);
        EXPECT_EQ(objCompared.m_objUnknown.front()->m_strName, "stop-bit");
        std::size_t iItems = 0;
        std::size_t iChanged = 0;
        for (const MSettings::Row* const objRow : objCompared.m_objSame) {
            iItems += objRow->Items().size();
            iChanged += MSettingText::Same(*objRow, objReport.m_objSnapshot.Items(), {}) ? 0 : 1;
        }
        EXPECT_EQ(iItems, 73U);
        EXPECT_GT(iChanged, 40U) << "nothing that stands at its default shows anything";
    }

    CUsbPrinterLister m_objUsbPrinters;
    CFakeInterrupt m_objInterrupt;
    CPrinterConnector m_objConnector{m_objUsbPrinters, m_objInterrupt, ShortLimits};
    CFakeSessionEvents m_objEvents;
    CFolder m_objFolder;
    CSimulatorProcess m_objSimulator;
    milliseconds m_iTook{0};
    bool m_bSent = false;
};

/// Passes bytes on between ::1 and a port of 127.0.0.1.
class CLongAddress {
public:
    explicit CLongAddress(std::uint16_t p_iPort) {
        EXPECT_TRUE(m_objServer.listen(QHostAddress::LocalHostIPv6));
        QObject::connect(&m_objServer, &QTcpServer::newConnection, [this, p_iPort] {
            QTcpSocket* const objOne = m_objServer.nextPendingConnection();
            auto* const objOther = new QTcpSocket(objOne);
            objOther->connectToHost(QHostAddress::LocalHost, p_iPort);
            objOther->waitForConnected();
            QObject::connect(objOne, &QTcpSocket::readyRead,
                             [=] { objOther->write(objOne->readAll()); });
            QObject::connect(objOther, &QTcpSocket::readyRead,
                             [=] { objOne->write(objOther->readAll()); });
        });
    }

    [[nodiscard]] std::string Target(const std::string& p_strHost) const {
        return "lan:[" + p_strHost + "]:" + std::to_string(m_objServer.serverPort());
    }

private:
    QTcpServer m_objServer;
};

// The network.

TEST_F(CPrinterConnectorTest, ReadsEverythingOverTheNetwork) {
    ASSERT_TRUE(m_objSimulator.Start(DumpOption()));
    ExpectToReadEverything(LanTarget());
}

TEST_F(CPrinterConnectorTest, ReadsWhatIsFilledUpWithTheByteFF) {
    ASSERT_TRUE(m_objSimulator.Start(DumpOption() + QStringList{"--fill", "ff"}));
    ExpectToReadEverything(LanTarget());
}

TEST_F(CPrinterConnectorTest, GoesToANameAndToAnAddressOfTheLongKind) {
    ASSERT_TRUE(m_objSimulator.Start());
    EXPECT_EQ(Connect(LanTarget("localhost"))->Status().m_strCode, "00");
    const CLongAddress objAddress(m_objSimulator.Port());
    EXPECT_EQ(Connect(objAddress.Target("::1"))->Status().m_strCode, "00");
    EXPECT_EQ(Connect(objAddress.Target("::1%lo"))->Status().m_strCode, "00");
}

TEST_F(CPrinterConnectorTest, TheStatusIsThePrinters) {
    ASSERT_TRUE(m_objSimulator.Start({"--status", "14"}));
    const CStatusReport objReport = Connect(LanTarget())->Status();
    EXPECT_EQ(objReport.m_strCode, "14");
    EXPECT_EQ(objReport.m_strText, "NO RIBBON");
    EXPECT_LT(objReport.m_dSeconds, 0.5);
}

TEST_F(CPrinterConnectorTest, ARefusalIsToldWithThePlace) {
    const CRefusedPort objPort;
    const std::string strPort = std::to_string(objPort.Number());
    const CFailure objFailure = Failure("lan:127.0.0.1:" + strPort);
    EXPECT_EQ(objFailure.m_iKind, Kind::LanNotConnected);
    EXPECT_EQ(objFailure.m_objSocket.m_iNumber, ECONNREFUSED);
    EXPECT_EQ(objFailure.m_strDevice, "127.0.0.1:" + strPort);
    EXPECT_FALSE(m_bSent);
    EXPECT_EQ(Failure("lan:[::1]:" + strPort).m_strDevice, "[::1]:" + strPort);
}

TEST_F(CPrinterConnectorTest, AnAddressThatNeverAnswersIsGivenUpInTime) {
    const CUnreachablePort objPort;
    ASSERT_TRUE(objPort.IsFull());
    const CFailure objFailure = Failure("lan:127.0.0.1:" + std::to_string(objPort.Number()));
    EXPECT_EQ(objFailure.m_iKind, Kind::TimeUp);
    EXPECT_FALSE(m_bSent);
    EXPECT_GE(m_iTook, milliseconds(1000));
    EXPECT_LT(m_iTook, milliseconds(1400));
}

TEST_F(CPrinterConnectorTest, SoIsANameThatIsLookedUpForEver) {
    CTestResolver::Instance().Set("slow.test", {{"127.0.0.1"}, 0, true});
    const CFailure objFailure = Failure("lan:slow.test");
    EXPECT_EQ(objFailure.m_iKind, Kind::TimeUp);
    EXPECT_LT(m_iTook, milliseconds(1400));
    CTestResolver::Instance().Release();
}

TEST_F(CPrinterConnectorTest, ASilentPrinterIsGivenUpInTime) {
    ASSERT_TRUE(m_objSimulator.Start({"--silent"}));
    EXPECT_EQ(Failure(LanTarget()).m_iKind, Kind::NoReply);
    EXPECT_TRUE(m_bSent);
    EXPECT_GE(m_iTook, milliseconds(1000));
    EXPECT_LT(m_iTook, milliseconds(1500));
}

TEST_F(CPrinterConnectorTest, APrinterThatHangsUpIsNotWaitedFor) {
    ASSERT_TRUE(m_objSimulator.Start({"--close-after", "1", "--cut", "3"}));
    EXPECT_EQ(Failure(LanTarget()).m_iKind, Kind::LanClosed);
    EXPECT_LT(m_iTook, milliseconds(700));
}

// The serial port.

TEST_F(CPrinterConnectorTest, ReadsEverythingOverASerialPort) {
    ASSERT_TRUE(m_objSimulator.StartSerial(DumpOption()));
    ExpectToReadEverything("com:" + m_objSimulator.Name());
}

TEST_F(CPrinterConnectorTest, ASerialPortWithNobodyBehindItIsGivenUpInTime) {
    const CTestTerminal objLine;
    const CFailure objFailure = Failure("com:" + objLine.Name() + ",115200,N,8,1");
    EXPECT_EQ(objFailure.m_iKind, Kind::NoReply);
    EXPECT_EQ(objFailure.m_strDevice, objLine.Name());
    EXPECT_TRUE(m_bSent);
    EXPECT_LT(m_iTook, milliseconds(1500));
}

TEST_F(CPrinterConnectorTest, ALateAnswerOfAnEarlierCallFillsNothingOnASerialPort) {
    ASSERT_TRUE(m_objSimulator.StartSerial({"--delay", "1200"}));
    const auto objPrinter = Connect("com:" + m_objSimulator.Name());
    const MSettings::Row* const objFeed = &MSettings::Get("feed-adj");
    const MSettings::Row* const objAddress = &MSettings::Get("ip-address");
    EXPECT_EQ(objPrinter->Read({&objFeed, 1}).m_objFailure.m_iKind, Kind::NoReply);
    const CReadReport objReport = objPrinter->Read({&objAddress, 1});
    EXPECT_EQ(objReport.m_objFailure.m_iKind, Kind::NoReply);
    EXPECT_FALSE(objReport.m_objSnapshot.IsKnown(*objAddress));
}

TEST_F(CPrinterConnectorTest, WhyASerialPortDoesNotOpenIsTheSystemsNumber) {
    const CFailure objMissing = Failure("com:/dev/there-is-none");
    EXPECT_EQ(objMissing.m_iKind, Kind::SerialNotOpened);
    EXPECT_EQ(objMissing.m_iNumber, ENOENT);
    EXPECT_EQ(objMissing.m_strDevice, "/dev/there-is-none");
    EXPECT_EQ(Failure("com:COM99").m_iNumber, ENOENT);
    EXPECT_EQ(Failure("com:COM99").m_strDevice, "COM99");
    EXPECT_EQ(Failure("com:null").m_iNumber, ENOTTY);
    EXPECT_FALSE(m_bSent);
}

TEST_F(CPrinterConnectorTest, APortThatIsHeldIsToldOf) {
    const CTestTerminal objLine;
    CFakeLineState objLineState;
    CQtSerialPort objOther(objLineState, CSerialPlace{objLine.Name(), "9600,E,8,1"});
    ASSERT_EQ(objOther.Open(), ISerialPort::Opened);
    EXPECT_EQ(Failure("com:" + objLine.Name()).m_iKind, Kind::SerialHeld);
}

}  // namespace
