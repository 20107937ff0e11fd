// Does the same thing again and again over the real links, and prints what that has left behind:
// one JSON object.
//
//   varden-long-run WHAT ROUNDS SEED DEVICES PLACE...
//
// WHAT is "status", "rounds" (open, READ, SET, close) or "open". Each PLACE is "127.0.0.1:8000",
// "com1" of the folder DEVICES, or "usb"; each round goes to one of them by chance, "status" stays
// with the first.

#include "tests/long/CLongSession.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <malloc.h>
#include <random>
#include <string>
#include <vector>

namespace {

/// So many seconds pass in each: a pause of one takes 20 ms.
constexpr double Haste = 50;

std::int64_t CountFiles(const char* p_strFolder) {
    return std::distance(std::filesystem::directory_iterator(p_strFolder),
                         std::filesystem::directory_iterator());
}

/// What the program has of the system at one moment.
struct Holdings {
    std::int64_t m_iHeapBytes;
    std::int64_t m_iResidentKib;
    std::int64_t m_iDescriptors;
    std::int64_t m_iThreads;

    static Holdings Now() {
        ::malloc_trim(0);
        return {static_cast<std::int64_t>(::mallinfo2().uordblks), ResidentKib(),
                CountFiles("/proc/self/fd"), CountFiles("/proc/self/task")};
    }

    static std::int64_t ResidentKib() {
        std::ifstream objStatus("/proc/self/status");
        for (std::string strWord; objStatus >> strWord;) {
            if (strWord == "RssAnon:") {
                std::int64_t iKib = 0;
                objStatus >> iKib;
                return iKib;
            }
        }
        return -1;
    }
};

/// Of the processor, of this program alone: what others do does not count.
double ProcessorMilliseconds() {
    return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

bool Do(const std::string& p_strWhat, CLongSession& p_objSession, const std::string& p_strPlace) {
    if (p_strWhat == "status") {
        return p_objSession.AskStatus();
    }
    const bool bOpen = p_objSession.Open(p_strPlace);
    bool bDone = bOpen;
    if (p_strWhat == "rounds" && bOpen) {
        bDone = p_objSession.Read();
        bDone = p_objSession.Set() && bDone;
    }
    p_objSession.Close();
    return bDone;
}

/// The processor time of a round, from p_iFirst to before p_iEnd: the median.
double Median(const std::vector<double>& p_dTimes, std::size_t p_iFirst, std::size_t p_iEnd) {
    std::vector<double> dPart(p_dTimes.begin() + static_cast<std::ptrdiff_t>(p_iFirst),
                              p_dTimes.begin() + static_cast<std::ptrdiff_t>(p_iEnd));
    std::ranges::sort(dPart);
    return dPart.empty() ? 0 : dPart[dPart.size() / 2];
}

void Run(const std::string& p_strWhat, std::size_t p_iRounds, unsigned p_iSeed,
         const std::string& p_strDevices, const std::vector<std::string>& p_strPlaces) {
    CLongSession objSession(Haste, p_strDevices);
    if (p_strWhat == "status") {
        objSession.Open(p_strPlaces.front());
    }
    std::mt19937 objChance(p_iSeed);
    std::vector<double> dTimes;
    dTimes.reserve(p_iRounds);
    std::size_t iDone = 0;
    // By then everything has been made that is made once.
    const std::size_t iWarm = p_iRounds / 5;
    Holdings objBefore = Holdings::Now();
    for (std::size_t i = 0; i < p_iRounds; ++i) {
        if (i == iWarm) {
            objBefore = Holdings::Now();
        }
        const double dBegin = ProcessorMilliseconds();
        iDone += Do(p_strWhat, objSession, p_strPlaces[objChance() % p_strPlaces.size()]) ? 1 : 0;
        dTimes.push_back(ProcessorMilliseconds() - dBegin);
    }
    const Holdings objAfter = Holdings::Now();
    const std::size_t iFifth = p_iRounds / 5;
    std::cout << "{\"rounds\": " << p_iRounds << ", \"done\": " << iDone
              << ", \"heap_bytes\": " << objAfter.m_iHeapBytes - objBefore.m_iHeapBytes
              << ", \"resident_kib\": " << objAfter.m_iResidentKib - objBefore.m_iResidentKib
              << ", \"descriptors\": " << objAfter.m_iDescriptors - objBefore.m_iDescriptors
              << ", \"threads\": " << objAfter.m_iThreads - objBefore.m_iThreads
              << ", \"first_ms\": " << Median(dTimes, iWarm, iWarm + iFifth)
              << ", \"last_ms\": " << Median(dTimes, p_iRounds - iFifth, p_iRounds) << "}\n";
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    const QCoreApplication objApplication(p_iCount, p_strArguments);
    const std::vector<std::string> strWords(p_strArguments + 1, p_strArguments + p_iCount);
    if (strWords.size() < 5) {
        std::cerr << "varden-long-run WHAT ROUNDS SEED DEVICES PLACE...\n";
        return EXIT_FAILURE;
    }
    Run(strWords[0], std::stoul(strWords[1]), static_cast<unsigned>(std::stoul(strWords[2])),
        strWords[3], {strWords.begin() + 4, strWords.end()});
    return EXIT_SUCCESS;
}
