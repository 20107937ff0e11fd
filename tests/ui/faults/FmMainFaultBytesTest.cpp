#include "platform/widgets/CQtPlatform.h"
#include "simulator/CPrinter.h"
#include "tests/ui/CMainWindow.h"
#include "tests/ui/CModalAnswer.h"
#include "tests/ui/faults/CListedMessageBox.h"
#include "tests/ui/faults/MFaultRecord.h"
#include "tests/ui/faults/MFloods.h"
#include "tests/ui/faults/MRealBytes.h"

#include <QFile>
#include <QSocketNotifier>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <regex>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

// Cells of the fault table with real bytes: the window on the real platform, and at the other end
// of the network or of a pseudo-terminal a printer that does what the cell says.

namespace {

constexpr const char* CommandEnd = "|}";
constexpr std::size_t Kilobyte = 1024;
constexpr int WhileMs = 100;

/// The printer's end of a link.
class CEnd {
public:
    virtual ~CEnd() = default;
    virtual void Write(const std::string& p_strBytes) = 0;
    virtual void Close() = 0;
    virtual void Reset() {}

    std::vector<std::string> m_strCommands;
    std::function<void(CEnd&, const std::string&)> m_fnCommand;

protected:
    void Take(const std::string& p_strBytes) {
        m_strTaken += p_strBytes;
        for (std::size_t i = m_strTaken.find(CommandEnd); i != std::string::npos;
             i = m_strTaken.find(CommandEnd)) {
            m_strCommands.push_back(m_strTaken.substr(0, i + 2));
            m_strTaken.erase(0, i + 2);
            m_fnCommand(*this, m_strCommands.back());
        }
    }

private:
    std::string m_strTaken;
};

class CNetworkEnd : public CEnd {
public:
    CNetworkEnd() {
        m_objServer.listen(QHostAddress::LocalHost);
        QObject::connect(&m_objServer, &QTcpServer::newConnection, &m_objServer, [this] {
            m_objSocket = m_objServer.nextPendingConnection();
            QObject::connect(m_objSocket, &QTcpSocket::readyRead, m_objSocket,
                             [this] { Take(m_objSocket->readAll().toStdString()); });
        });
    }

    [[nodiscard]] quint16 Port() const { return m_objServer.serverPort(); }

    void Write(const std::string& p_strBytes) override {
        m_objSocket->write(p_strBytes.data(), static_cast<qint64>(p_strBytes.size()));
        m_objSocket->flush();
    }
    void Close() override { m_objSocket->disconnectFromHost(); }
    void Reset() override {
        const linger objAtOnce{1, 0};
        setsockopt(static_cast<int>(m_objSocket->socketDescriptor()), SOL_SOCKET, SO_LINGER,
                   &objAtOnce, sizeof objAtOnce);
        m_objSocket->abort();
    }

private:
    QTcpServer m_objServer;
    QTcpSocket* m_objSocket = nullptr;
};

class CTerminalEnd : public CEnd {
public:
    explicit CTerminalEnd(const QString& p_strAlias)
        : m_iTerminal(posix_openpt(O_RDWR | O_NOCTTY)) {
        grantpt(m_iTerminal);
        unlockpt(m_iTerminal);
        QFile::link(ptsname(m_iTerminal), p_strAlias);
        m_objArrival.emplace(m_iTerminal, QSocketNotifier::Read);
        QObject::connect(&*m_objArrival, &QSocketNotifier::activated, &*m_objArrival, [this] {
            std::array<char, Kilobyte> arrBlock{};
            const ssize_t iRead = read(m_iTerminal, arrBlock.data(), arrBlock.size());
            Take({arrBlock.data(), static_cast<std::size_t>(std::max<ssize_t>(iRead, 0))});
        });
    }
    ~CTerminalEnd() override { CTerminalEnd::Close(); }

    void Write(const std::string& p_strBytes) override {
        EXPECT_EQ(write(m_iTerminal, p_strBytes.data(), p_strBytes.size()),
                  static_cast<ssize_t>(p_strBytes.size()));
    }
    void Close() override {
        if (m_iTerminal != -1) {
            m_objArrival.reset();
            close(std::exchange(m_iTerminal, -1));
        }
    }

private:
    int m_iTerminal;
    std::optional<QSocketNotifier> m_objArrival;
};

class FmMainFaultBytesTest : public ::testing::TestWithParam<MRealBytes::Cell> {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_objWindow.Open());
        if (GetParam().m_iLink == LinkKind::Lan) {
            auto objEnd = std::make_unique<CNetworkEnd>();
            m_objWindow.Form().Interface().m_objSocketPort->SetValue(objEnd->Port());
            m_objEnd = std::move(objEnd);
        } else {
            m_objEnd = std::make_unique<CTerminalEnd>(m_objDevices.filePath("com1"));
        }
        m_objEnd->m_fnCommand = [this](CEnd& p_objEnd, const std::string& p_strCommand) {
            Answer(p_objEnd, p_strCommand);
        };
        OpenLink();
    }

    void OpenLink() {
        m_objWindow.Choose("cmbInterface", static_cast<int>(GetParam().m_iLink));
        if (GetParam().m_iLink == LinkKind::Lan) {
            ASSERT_TRUE(m_objWindow.SetUp("127.0.0.1"));
            return;
        }
        const CModalAnswer objAnswer("FmInterfaceSetup", [](QWidget& p_objDialog) {
            QTest::mouseClick(p_objDialog.findChild<QPushButton*>("btnSet"), Qt::LeftButton);
        });
        m_objWindow.Click("btnSetup");
        ASSERT_TRUE(objAnswer.Done());
    }

    /// The first command meets the fault.
    void Answer(CEnd& p_objEnd, const std::string& p_strCommand) {
        const std::string strAnswer = m_objPrinter.Handle(p_strCommand).m_strAnswer;
        if (m_objEnd->m_strCommands.size() > 1) {
            p_objEnd.Write(strAnswer);
            return;
        }
        (this->*StruckBy(GetParam().m_strFault))(p_objEnd, strAnswer);
    }

    using Struck = void (FmMainFaultBytesTest::*)(CEnd& p_objEnd, const std::string& p_strAnswer);

    /// What the printer does in place of answering.
    static Struck StruckBy(const std::string& p_strFault) {
        using Test = FmMainFaultBytesTest;
        static const std::map<std::string, Struck> objFaults{
            {"none", &Test::Right},
            {"silent", &Test::Silent},
            {"single bytes", &Test::WriteSlowly},
            {"cut short: half of it", &Test::Half},
            {"two answers at once", &Test::Twice},
            {"another group's answer", &Test::OtherGroup},
            {"the status 99, which nobody knows", &Test::UnknownStatus},
            {"fields that are no numbers", &Test::NoNumbers},
            {"junk of 1 KB", &Test::SomeJunk},
            {"junk of 1 MB", &Test::MuchJunk},
            {"an endless stream of junk", &Test::EndlessJunk},
            {"closed or reset before the answer", &Test::Reset},
            {"closed or reset inside of the answer", &Test::CloseInside},
            {"pulled out before the answer", &Test::PullOut},
        };
        return objFaults.at(p_strFault);
    }

    void Right(CEnd& p_objEnd, const std::string& p_strAnswer) { p_objEnd.Write(p_strAnswer); }
    void Silent(CEnd& /*p_objEnd*/, const std::string& /*p_strAnswer*/) {}
    void Half(CEnd& p_objEnd, const std::string& p_strAnswer) {
        p_objEnd.Write(p_strAnswer.substr(0, p_strAnswer.size() / 2));
    }
    void Twice(CEnd& p_objEnd, const std::string& p_strAnswer) {
        p_objEnd.Write(p_strAnswer + p_strAnswer);
    }
    void OtherGroup(CEnd& p_objEnd, const std::string& /*p_strAnswer*/) {
        p_objEnd.Write(m_objPrinter.SettingsAnswer(1));
    }
    void UnknownStatus(CEnd& p_objEnd, const std::string& /*p_strAnswer*/) {
        p_objEnd.Write(CPrinter::StatusAnswer("99"));
    }
    void NoNumbers(CEnd& p_objEnd, const std::string& p_strAnswer) {
        std::string strAnswer = p_strAnswer;
        std::fill(strAnswer.begin() + 2, strAnswer.end() - 2, 'X');
        p_objEnd.Write(strAnswer);
    }
    void SomeJunk(CEnd& p_objEnd, const std::string& /*p_strAnswer*/) {
        p_objEnd.Write(MFloods::Junk(Kilobyte));
    }
    void MuchJunk(CEnd& p_objEnd, const std::string& /*p_strAnswer*/) {
        p_objEnd.Write(MFloods::Junk(Kilobyte * Kilobyte));
    }
    void EndlessJunk(CEnd& p_objEnd, const std::string& /*p_strAnswer*/) {
        QObject::connect(&m_objFlood, &QTimer::timeout, &m_objFlood,
                         [&p_objEnd] { p_objEnd.Write(MFloods::Junk(Kilobyte)); });
        m_objFlood.start(1);
    }
    void Reset(CEnd& p_objEnd, const std::string& /*p_strAnswer*/) { p_objEnd.Reset(); }
    void CloseInside(CEnd& p_objEnd, const std::string& p_strAnswer) {
        Half(p_objEnd, p_strAnswer);
        p_objEnd.Close();
    }
    void PullOut(CEnd& p_objEnd, const std::string& /*p_strAnswer*/) {
        QTimer::singleShot(WhileMs, [&p_objEnd] { p_objEnd.Close(); });
    }

    void WriteSlowly(CEnd& p_objEnd, const std::string& p_strRest) {
        p_objEnd.Write(p_strRest.substr(0, 1));
        if (p_strRest.size() > 1) {
            QTimer::singleShot(2, [this, &p_objEnd, strRest = p_strRest.substr(1)] {
                WriteSlowly(p_objEnd, strRest);
            });
        }
    }

    static CPlatform WithBoxes(const CPlatform& p_objReal, IMessageBox& p_objBoxes) {
        return {{p_objReal.m_objEventLoop, p_objReal.m_objClock, p_objReal.m_objTcpClient,
                 p_objReal.m_objSerialPort, p_objReal.m_objUsbLibrary},
                {p_objBoxes, p_objReal.m_objFileDialog, p_objReal.m_objFileStore,
                 p_objReal.m_strProgramFolder}};
    }

    QTemporaryDir m_objDevices;
    CQtPlatform m_objPlatform{m_objDevices.path().toStdString()};
    CListedMessageBox m_objBoxes;
    CMainWindow m_objWindow{WithBoxes(m_objPlatform.Interfaces(), m_objBoxes)};
    CPrinter m_objPrinter;
    std::unique_ptr<CEnd> m_objEnd;
    QTimer m_objFlood;
};

/// What the doubles have words of their own for, and how many fields the printer has otherwise.
std::string Comparable(const std::string& p_strText) {
    const std::string strWords = std::regex_replace(
        p_strText, std::regex("Number=.*?(CancelDisplay=(True|False)| \\.\\.\\.)"), "Number=");
    return std::regex_replace(strWords, std::regex(" \\([^)]*\\)\"$"), "\"");
}

TEST_P(FmMainFaultBytesTest, EndsAsTheTableSays) {
    const CFaultCell objCell = MRealBytes::CellOf(GetParam());
    m_objWindow.BringToFront(GetParam().m_strButton == std::string("btnGetStatus")
                                 ? "btnHeadCheck"
                                 : GetParam().m_strButton);
    QTest::mouseClick(&m_objWindow.Button(GetParam().m_strButton), Qt::LeftButton);
    CSeen objSeen;
    objSeen.m_strTold = m_objBoxes.m_strShown;
    for (std::string& strTold : objSeen.m_strTold) {
        strTold = QString::fromStdString(strTold).replace("\r\n", "<0D><0A>").toStdString();
    }
    objSeen.m_strSent = m_objEnd->m_strCommands;
    objSeen.m_strStatus = m_objWindow.Shown("lblStatus").toStdString();
    objSeen.m_strPage = m_objWindow.Shown("lblPage").toStdString();
    const std::string strNow = MFaultRecord::Outcome(objCell, objSeen);
    std::ifstream objFile(VARDEN_FAULT_TABLE, std::ios::binary);
    const std::string strTable{std::istreambuf_iterator<char>(objFile), {}};
    const std::string strBefore = MFaultRecord::FromText(strTable).at(MFaultRecord::Key(objCell));
    for (const char* const strPart : {"told", "sent", "status", "foot"}) {
        EXPECT_EQ(Comparable(MFaultRecord::Part(strNow, strPart)),
                  Comparable(MFaultRecord::Part(strBefore, strPart)))
            << strPart;
    }
    EXPECT_EQ(m_objWindow.DisabledButtons(), QStringList());
}

INSTANTIATE_TEST_SUITE_P(, FmMainFaultBytesTest, ::testing::ValuesIn(MRealBytes::Cells()),
                         [](const auto& p_objInfo) { return MRealBytes::NameOf(p_objInfo.param); });

}  // namespace
