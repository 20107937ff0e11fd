#include "tests/ui/recorder/MCopiedProcess.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iterator>
#include <stdexcept>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

[[noreturn]] void Work(int p_iPipe, const std::function<std::string()>& p_fnWork) {
    std::string strResult;
    try {
        strResult = p_fnWork();
    } catch (const std::exception& objException) {
        strResult += std::string("FAILED: ") + objException.what() + "\n";
    }
    if (::testing::Test::HasFailure()) {
        strResult += "FAILED: an expectation\n";
    }
    for (std::size_t i = 0; i < strResult.size();) {
        const ssize_t iWritten = write(p_iPipe, strResult.data() + i, strResult.size() - i);
        if (iWritten <= 0) {
            break;
        }
        i += static_cast<std::size_t>(iWritten);
    }
    std::fflush(stdout);
    _exit(0);  // nothing that the original owns is put away twice
}

bool HasOtherThreads() {
    const std::filesystem::directory_iterator objThreads("/proc/self/task");
    return std::distance(begin(objThreads), end(objThreads)) > 1;
}

std::string ReadAll(int p_iPipe) {
    std::string strRead;
    std::array<char, 65536> arrBlock{};
    for (;;) {
        const ssize_t iRead = read(p_iPipe, arrBlock.data(), arrBlock.size());
        if (iRead > 0) {
            strRead.append(arrBlock.data(), static_cast<std::size_t>(iRead));
        } else if (iRead == 0 || errno != EINTR) {
            return strRead;
        }
    }
}

}  // namespace

namespace MCopiedProcess {

std::string Run(const std::function<std::string()>& p_fnWork) {
    if (HasOtherThreads()) {
        throw std::runtime_error("the copy would wait for threads that it does not have");
    }
    std::array<int, 2> iPipe{};
    if (pipe(iPipe.data()) != 0) {
        throw std::runtime_error("no pipe");
    }
    std::fflush(stdout);
    const pid_t iCopy = fork();
    if (iCopy == -1) {
        throw std::runtime_error("no process");
    }
    if (iCopy == 0) {
        close(iPipe[0]);
        Work(iPipe[1], p_fnWork);
    }
    close(iPipe[1]);
    std::string strResult = ReadAll(iPipe[0]);
    close(iPipe[0]);
    int iState = 0;
    while (waitpid(iCopy, &iState, 0) == -1 && errno == EINTR) {
        // asked again
    }
    if (!WIFEXITED(iState) || WEXITSTATUS(iState) != 0) {
        strResult += "FAILED: the process has come down\n";
    }
    return strResult;
}

}  // namespace MCopiedProcess
