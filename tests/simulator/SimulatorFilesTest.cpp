#include "simulator/CPrinter.h"
#include "tests/golden/MGolden.h"
#include "tests/simulator/CPrinterClient.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr int PatienceMs = 20'000;
constexpr std::size_t Status = 13;  // bytes

/// What the program writes for other programs.
class SimulatorFilesTest : public ::testing::Test {
protected:
    void Start(const QStringList& p_strArguments) {
        ASSERT_TRUE(m_objSimulator.Start(QStringList{"--log", m_strLog, "--dump", m_strDump} +
                                         p_strArguments))
            << m_objSimulator.ErrorText();
    }

    /// The events so far; every line must be one.
    [[nodiscard]] std::vector<QJsonObject> Events() const {
        std::vector<QJsonObject> objEvents;
        QFile objFile(m_strLog);
        EXPECT_TRUE(objFile.open(QFile::ReadOnly));
        while (!objFile.atEnd()) {
            const QJsonDocument objLine = QJsonDocument::fromJson(objFile.readLine());
            EXPECT_TRUE(objLine.isObject());
            objEvents.push_back(objLine.object());
        }
        return objEvents;
    }

    /// The names of the events of printer p_iPrinter.
    [[nodiscard]] std::string Names(int p_iPrinter) const {
        std::string strNames;
        for (const QJsonObject& objEvent : Events()) {
            if (objEvent["printer"] == p_iPrinter) {
                strNames += objEvent["event"].toString().toStdString() + " ";
            }
        }
        return strNames;
    }

    bool WaitForNames(int p_iPrinter, const std::string& p_strNames) const {
        return CSimulatorProcess::WaitUntil([&] { return Names(p_iPrinter) == p_strNames; },
                                            PatienceMs);
    }

    [[nodiscard]] QJsonArray Dumped() const {
        QFile objFile(m_strDump);
        EXPECT_TRUE(objFile.open(QFile::ReadOnly));
        return QJsonDocument::fromJson(objFile.readAll())["printers"].toArray();
    }

    /// What printer p_iPrinter, counted from 1, says of itself.
    [[nodiscard]] QJsonObject Dumped(int p_iPrinter) const {
        return Dumped().at(p_iPrinter - 1).toObject();
    }
    [[nodiscard]] QString DumpedFeed(int p_iPrinter) const {
        return Dumped(p_iPrinter)["settings"].toObject()["FeedAdjustment"].toString();
    }

    QTemporaryDir m_objFolder;
    const QString m_strLog = m_objFolder.filePath("log");
    const QString m_strDump = m_objFolder.filePath("dump");
    CSimulatorProcess m_objSimulator;
};

TEST_F(SimulatorFilesTest, TheLogHoldsAnEventForEverythingThatPasses) {
    Start({"--printers", "2"});
    {
        CPrinterClient objClient("127.0.0.2", m_objSimulator.Port());
        EXPECT_EQ(objClient.Ask("{WS|}", Status).size(), Status);
    }
    EXPECT_TRUE(WaitForNames(2, "listening connected received answered closed ")) << Names(2);
    EXPECT_EQ(Names(1), "listening ");
    double dLatest = 0;
    const std::string strAddress = "127.0.0.2:" + std::to_string(m_objSimulator.Port());
    for (const QJsonObject& objEvent : Events()) {
        EXPECT_GE(objEvent["time"].toDouble(), dLatest);
        dLatest = objEvent["time"].toDouble();
        EXPECT_EQ(objEvent["link"].toString(), "lan");
        const bool bSecond = objEvent["printer"] == 2;
        EXPECT_EQ(objEvent["address"].toString().toStdString() == strAddress, bSecond);
        EXPECT_EQ(objEvent.contains("connection"), objEvent["event"] != "listening");
    }
    EXPECT_GT(dLatest, 0);
    const auto objEvents = Events();
    EXPECT_EQ(objEvents.at(3)["command"].toString(), "{WS|}");
    EXPECT_EQ(objEvents.at(3)["accepted"].toBool(), true);
    EXPECT_EQ(objEvents.at(4)["bytes"].toString().toLatin1().toStdString(),
              CPrinter::StatusAnswer("00"));
    EXPECT_EQ(objEvents.at(5)["by"].toString(), "peer");
}

TEST_F(SimulatorFilesTest, TheLogTellsOfPowerAndOfMoves) {
    const std::string strMove = "{IP;2,127,000,000,099|}";
    Start({"--moves", "at-once", "--power-back", "10", "--power-cut",
           QString::number(strMove.size() + 5)});
    CPrinterClient objClient(m_objSimulator.Port());
    EXPECT_EQ(objClient.Ask(strMove, Status).size(), Status);
    const std::string strMoved = "listening connected received moved listening answered closed ";
    EXPECT_TRUE(WaitForNames(1, strMoved)) << Names(1);
    EXPECT_EQ(Events().back()["by"].toString(), "printer");
    EXPECT_EQ(Events().at(4)["address"].toString().toStdString(),
              "127.0.0.99:" + std::to_string(m_objSimulator.Port()));
    CPrinterClient objNext("127.0.0.99", m_objSimulator.Port());
    objNext.Send("{WS|}");
    EXPECT_TRUE(
        WaitForNames(1, strMoved + "connected received fault power closed power listening "))
        << Names(1);
    EXPECT_EQ(Events().at(9)["what"].toString(), "power-cut");
    EXPECT_EQ(Events().at(10)["on"].toBool(true), false);
    EXPECT_EQ(Events().at(12)["on"].toBool(), true);
}

#ifdef Q_OS_UNIX

TEST_F(SimulatorFilesTest, TheSettingsAreWrittenWheneverAskedAndAtTheEnd) {
    Start({"--printers", "2"});
    ASSERT_TRUE(m_objSimulator.Dump(PatienceMs));
    EXPECT_EQ(DumpedFeed(2), "000");
    CPrinterClient objClient("127.0.0.2", m_objSimulator.Port());
    objClient.Ask(
        MGolden::With(MGolden::Adjustments, {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}}),
        Status);
    ASSERT_TRUE(m_objSimulator.Dump(PatienceMs));
    EXPECT_EQ(Dumped().size(), 2);
    EXPECT_EQ(DumpedFeed(1), "000");
    EXPECT_EQ(DumpedFeed(2), "123");
    const QJsonObject objSecond = Dumped(2);
    EXPECT_EQ(objSecond["settings"].toObject().size(), std::ssize(MGolden::Items()));
    EXPECT_EQ(
        objSecond["answers"].toArray().at(0).toString().toStdString(),
        MGolden::With(MGolden::Answer(0), {{"FeedDirection", "-"}, {"FeedAdjustment", "123"}}));
    EXPECT_EQ(objSecond["answers"].toArray().size(), 5);
    EXPECT_EQ(objSecond["printer"].toInt(), 2);
    EXPECT_EQ(objSecond["link"].toString(), "lan");
    EXPECT_EQ(objSecond["address"].toString(), QString("127.0.0.2:%1").arg(m_objSimulator.Port()));
    EXPECT_EQ(objSecond["power"].toBool(), true);
    QFile::remove(m_strDump);
    EXPECT_EQ(m_objSimulator.Stop(), 0);
    EXPECT_EQ(Dumped().size(), 2);
}

TEST_F(SimulatorFilesTest, AFileThatCannotBeWrittenIsAnError) {
    m_objSimulator.Launch({"--port", "0", "--log", m_objFolder.filePath("no/log")});
    EXPECT_EQ(m_objSimulator.WaitForExit(PatienceMs), 1);
    EXPECT_NE(m_objSimulator.ErrorText().find("Cannot write "), std::string::npos);
    CSimulatorProcess objSimulator;
    ASSERT_TRUE(objSimulator.Start({"--dump", m_objFolder.filePath("no/dump")}));
    EXPECT_EQ(objSimulator.Stop(), 1);
    EXPECT_NE(objSimulator.ErrorText().find("no/dump."), std::string::npos);
}

#endif

}  // namespace
