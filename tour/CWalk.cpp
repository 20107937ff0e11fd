#include "tour/CWalk.h"

#include "platform/qt/MText.h"
#include "tests/simulator/CSimulatorProcess.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QTimer>

#include <stdexcept>
#include <utility>

namespace {

constexpr int PatienceMilliseconds = 30'000;
constexpr int PollMilliseconds = 20;
constexpr const char* PageName = "walk-through.md";
constexpr const char* SetupTitle = "Interface Setup";

/// Of the window's picture what tells how it stands: its head, its foot, and a gap for the rest.
QImage HeadAndFoot(const QImage& p_objWindow) {
    constexpr int iHead = 96;
    constexpr int iFoot = 32;
    constexpr int iGap = 8;
    const int iWidth = p_objWindow.width();
    QImage objImage(iWidth, iHead + iGap + iFoot, QImage::Format_RGB32);
    objImage.fill(Qt::white);
    QPainter objPainter(&objImage);
    objPainter.drawImage(0, 0, p_objWindow, 0, 0, iWidth, iHead);
    objPainter.drawImage(0, iHead + iGap, p_objWindow, 0, p_objWindow.height() - iFoot, iWidth,
                         iFoot);
    objPainter.end();
    return objImage.convertToFormat(QImage::Format_Indexed8, Qt::ThresholdDither);
}

std::string Code(const std::string& p_strText) {
    return p_strText.empty() ? "nothing" : "`" + p_strText + "`";
}

}  // namespace

CWalk::CWalk(CTour& p_objTour, QString p_strFolder)
    : m_objTour(p_objTour)
    , m_strFolder(std::move(p_strFolder)) {}

void CWalk::Begin(const QString& p_strFolder) {
    QDir(p_strFolder).mkpath("pictures/walk");
    QFile objPage(QDir(p_strFolder).filePath(PageName));
    if (!objPage.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        throw std::runtime_error("cannot write the page of the walk");
    }
    objPage.write(R"(# A walk along the line at the foot of the window

Connecting, reading, a fault, mending it, writing: over each link, with a simulated printer. What was
done stands above each picture, what the line said below it. `varden-tour --walk docs` has made this
page; but for what was done every word is the window's own. The pictures show the window's head and
foot.
)");
}

void CWalk::Write(const std::string& p_strText) const {
    QFile objPage(QDir(m_strFolder).filePath(PageName));
    if (!objPage.open(QIODevice::Append)) {
        throw std::runtime_error("cannot write the page of the walk");
    }
    objPage.write(QByteArray::fromStdString(p_strText));
}

void CWalk::Section(const std::string& p_strTitle, const QString& p_strPictures) {
    m_objTour.Heading(p_strTitle);
    m_strPictures = p_strPictures;
    m_iStop = 0;
    Write("\n## " + p_strTitle + "\n");
}

std::string CWalk::Place(const char* p_strName, const QString& p_strLabel) const {
    const auto* const lbl = m_objTour.Window().findChild<QLabel*>(p_strLabel);
    return std::string(p_strName) + " " + Code(lbl->text().toStdString());
}

void CWalk::Stop(const std::string& p_strDone) {
    QApplication::processEvents();
    const QString strPicture =
        QString("pictures/walk/%1-%2.png").arg(m_strPictures).arg(++m_iStop, 2, 10, QChar('0'));
    if (!HeadAndFoot(m_objTour.Window().grab().toImage())
             .save(QDir(m_strFolder).filePath(strPicture), nullptr, 0)) {
        throw std::runtime_error("cannot save " + strPicture.toStdString());
    }
    const std::string strLine = Place("Link", "lblLink") + ", Doing " +
                                Place("", "lblDoing").substr(1) + ", " + Place("Page", "lblPage");
    Write("\n**" + p_strDone + "**\n\n" + (m_strBoxes.empty() ? "" : m_strBoxes + "\n") + "![" +
          p_strDone + "](" + strPicture.toStdString() + ")\n\n" + strLine + "\n");
    m_strBoxes.clear();
    m_objTour.Note(p_strDone + ": " + strLine);
}

void CWalk::DealWithBox() {
    const auto* const objBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (objBox == nullptr) {
        return;
    }
    QString strText = objBox->text();
    m_strBoxes += "A box: " + Code(strText.replace(QChar('\n'), QChar(' ')).toStdString()) + "\n";
    m_objTour.ClickCaption("OK");
}

void CWalk::Press(const QString& p_strButton) {
    QTimer objPerson;
    QObject::connect(&objPerson, &QTimer::timeout, [this] { DealWithBox(); });
    objPerson.start(PollMilliseconds);
    m_objTour.Click(p_strButton);
}

void CWalk::Later(int p_iMilliseconds, const std::string& p_strDone,
                  const std::function<void()>& p_fnThen) {
    QTimer::singleShot(p_iMilliseconds, &m_objTour.Window(), [this, p_strDone, p_fnThen] {
        Stop(p_strDone);
        if (p_fnThen) {
            p_fnThen();
        }
    });
}

void CWalk::PressAndLook(const QString& p_strButton, int p_iMilliseconds,
                         const std::string& p_strDone, const std::function<void()>& p_fnThen) {
    Later(p_iMilliseconds, p_strDone, p_fnThen);
    Press(p_strButton);
}

void CWalk::SetUp(const QString& p_strAddress, int p_iMilliseconds, const std::string& p_strDone,
                  const std::function<void()>& p_fnThen) {
    QTimer objPerson;
    QObject::connect(&objPerson, &QTimer::timeout, [&] {
        const QWidget* const objDialog = QApplication::activeModalWidget();
        if (objDialog == nullptr || objDialog->windowTitle() != SetupTitle) {
            DealWithBox();
            return;
        }
        objPerson.stop();
        const QStringList strParts = p_strAddress.split('.', Qt::SkipEmptyParts);
        for (qsizetype i = 0; i < strParts.size(); ++i) {
            m_objTour.Type(QString("SeLan%1").arg(i + 1), strParts[i]);
        }
        if (!p_strDone.empty()) {
            Later(p_iMilliseconds, p_strDone, p_fnThen);
        }
        objPerson.start();
        m_objTour.Click("btnSet");
    });
    objPerson.start(PollMilliseconds);
    m_objTour.Click("btnSetup");
    m_objTour.TakeKeyboard();
}

void CWalk::AwaitLink(const std::string& p_strText) {
    const auto* const lbl = m_objTour.Window().findChild<QLabel*>("lblLink");
    CSimulatorProcess::WaitUntil([&] { return lbl->text().toStdString() == p_strText; },
                                 PatienceMilliseconds);
    m_objTour.Expect("the line", lbl->text().toStdString(), p_strText);
}
