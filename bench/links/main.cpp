// Measures the tool's window at work with a printer beside it, and prints one JSON object: each
// figure's values, in milliseconds or in parts of a hundred.
//
//   varden-bench-links [FIGURE=COUNT]...     such as "read=5 next-command=100"; all when none is
//   named

#include "bench/links/CBenchPrinter.h"
#include "bench/links/CBenchWindow.h"
#include "link/CInterface.h"

#include <QApplication>
#include <QTemporaryDir>

#include <array>
#include <atomic>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <poll.h>
#include <string>
#include <string_view>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using Values = std::vector<double>;

constexpr double Hundred = 100;
constexpr double SliceSeconds = 1;
/// What READ waits on purpose, and for the printer's three answers.
constexpr double ReadPauses = 3000;
constexpr double ReadAnswers = 15;

double Share(const CBenchWindow::Spent& p_objSpent) {
    return Hundred * p_objSpent.m_dProcessor / p_objSpent.m_dWall;
}

/// A pseudo-terminal as COM1 that floods the window while this lives.
class CSerialFlood {
public:
    explicit CSerialFlood(const std::filesystem::path& p_strFolder)
        : m_iFar(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
        ::grantpt(m_iFar);
        ::unlockpt(m_iFar);
        std::filesystem::create_symlink(::ptsname(m_iFar), p_strFolder / "com1");
    }
    ~CSerialFlood() {
        m_bOver = true;
        if (m_objThread.joinable()) {
            m_objThread.join();
        }
        ::close(m_iFar);
    }
    CSerialFlood(const CSerialFlood&) = delete;
    CSerialFlood& operator=(const CSerialFlood&) = delete;

    void Begin() {
        m_objThread = std::thread([this] {
            const std::string strBlock(1024, '~');
            while (!m_bOver) {
                pollfd objPoll{m_iFar, POLLOUT, 0};
                if (::poll(&objPoll, 1, 20) > 0 &&
                    ::write(m_iFar, strBlock.data(), strBlock.size()) < 0) {
                    std::this_thread::yield();
                }
            }
        });
    }

private:
    int m_iFar;
    std::atomic<bool> m_bOver = false;
    std::thread m_objThread;
};

/// What all figures work with: the window, connected to a printer that answers.
class CScene {
public:
    CScene()
        : m_objWindow(m_objPrinter.Port(), m_objDevices.path().toStdString()) {
        m_objWindow.Open(CInterface::LanInterface);
        m_objWindow.Press("btnLanSet");
        m_objPrinter.TakeGaps();
    }

    Values Idle(int p_iCount) {
        Values dValues;
        for (int i = 0; i < p_iCount; ++i) {
            dValues.push_back(Share(m_objWindow.Wait(SliceSeconds)));
        }
        return dValues;
    }

    Values Waiting(int p_iCount) {
        m_objPrinter.Be(CBenchPrinter::Manner::Silent);
        Values dValues;
        for (int i = 0; i < p_iCount; ++i) {
            dValues.push_back(Share(m_objWindow.Press("btnGetStatus")));
        }
        m_objPrinter.Be(CBenchPrinter::Manner::Answers);
        return dValues;
    }

    /// The commands of LAN SET follow each other's answers at once.
    Values NextCommand(int p_iCount) {
        Values dValues;
        for (int i = 0; i < p_iCount; ++i) {
            m_objPrinter.TakeGaps();
            m_objWindow.Press("btnLanSet");
            const Values dGaps = m_objPrinter.TakeGaps();
            // The first is that from the round before.
            dValues.insert(dValues.end(), dGaps.begin() + 1, dGaps.end());
        }
        return dValues;
    }

    Values Read(int p_iCount) {
        Values dValues;
        for (int i = 0; i < p_iCount; ++i) {
            dValues.push_back(m_objWindow.Press("btnRead").m_dWall - ReadPauses - ReadAnswers);
        }
        return dValues;
    }

    Values Flood(CBenchPrinter::Manner p_iManner, int p_iCount) {
        m_objPrinter.Be(p_iManner);
        m_objWindow.Wait(SliceSeconds / 4);
        Values dValues = Idle(p_iCount);
        m_objPrinter.Be(CBenchPrinter::Manner::Answers);
        // What was on its way passes, and the next figure begins with a new connection.
        m_objWindow.Open(CInterface::LanInterface);
        return dValues;
    }

    Values SerialFlood(int p_iCount) {
        Values dValues;
        {
            CSerialFlood objFlood(m_objDevices.path().toStdString());
            m_objWindow.Open(CInterface::SerialInterface);
            objFlood.Begin();
            m_objWindow.Wait(SliceSeconds / 4);
            dValues = Idle(p_iCount);
        }
        std::filesystem::remove(m_objDevices.filePath("com1").toStdString());
        m_objWindow.Open(CInterface::LanInterface);
        return dValues;
    }

private:
    QTemporaryDir m_objDevices;
    CBenchPrinter m_objPrinter;
    CBenchWindow m_objWindow;
};

/// A figure and how often it is measured when nobody says.
struct Figure {
    const char* m_strName;
    int m_iCount;
    Values (*m_fnMeasure)(CScene& p_objScene, int p_iCount);
};

using Manner = CBenchPrinter::Manner;

constexpr std::array Figures{
    Figure{"idle", 5, [](CScene& p_objScene, int p_iCount) { return p_objScene.Idle(p_iCount); }},
    Figure{"next-command", 250,
           [](CScene& p_objScene, int p_iCount) { return p_objScene.NextCommand(p_iCount); }},
    Figure{"waiting", 3,
           [](CScene& p_objScene, int p_iCount) { return p_objScene.Waiting(p_iCount); }},
    Figure{"read", 7, [](CScene& p_objScene, int p_iCount) { return p_objScene.Read(p_iCount); }},
    Figure{
        "flood-junk", 5,
        [](CScene& p_objScene, int p_iCount) { return p_objScene.Flood(Manner::Junk, p_iCount); }},
    Figure{
        "flood-heads", 5,
        [](CScene& p_objScene, int p_iCount) { return p_objScene.Flood(Manner::Heads, p_iCount); }},
    Figure{"flood-bytes", 5,
           [](CScene& p_objScene, int p_iCount) {
               return p_objScene.Flood(Manner::SingleBytes, p_iCount);
           }},
    Figure{"flood-serial", 5,
           [](CScene& p_objScene, int p_iCount) { return p_objScene.SerialFlood(p_iCount); }},
};

/// How often a figure is wanted; 0: not at all.
int Wanted(const Figure& p_objFigure, const std::vector<std::string>& p_strWanted) {
    const std::string strHead = std::string(p_objFigure.m_strName) + "=";
    for (const std::string& strOne : p_strWanted) {
        if (strOne.starts_with(strHead)) {
            return std::atoi(strOne.c_str() + strHead.size());
        }
    }
    return p_strWanted.empty() ? p_objFigure.m_iCount : 0;
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    try {
        const QApplication objApplication(p_iCount, p_strArguments);
        const std::vector<std::string> strWanted(p_strArguments + 1, p_strArguments + p_iCount);
        CScene objScene;
        std::cout << "{";
        const char* strBetween = "\n";
        for (const Figure& objFigure : Figures) {
            if (const int iCount = Wanted(objFigure, strWanted); iCount > 0) {
                std::cout << std::exchange(strBetween, ",\n") << '"' << objFigure.m_strName
                          << "\": [";
                const char* strComma = "";
                for (const double dValue : objFigure.m_fnMeasure(objScene, iCount)) {
                    std::cout << std::exchange(strComma, ", ") << dValue;
                }
                std::cout << "]" << std::flush;
            }
        }
        std::cout << "\n}\n";
        return EXIT_SUCCESS;
    } catch (const std::exception& objError) {
        std::cerr << objError.what() << "\n";
        return EXIT_FAILURE;
    }
}
