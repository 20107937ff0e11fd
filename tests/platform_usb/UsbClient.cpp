#include "platform/usb/CUsbLibrary.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <iostream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

// Does on USB what its arguments say, in their order, and prints the result of each: "open",
// "send:TEXT", "receive:LENGTH", "close", "wait:MILLISECONDS". Ends with 0 when each could be
// understood.

namespace {

/// Nothing happens in it.
class CIdleLoop : public IEventLoop {
public:
    void Yield() override { std::this_thread::sleep_for(std::chrono::milliseconds(1)); }
    [[nodiscard]] bool IsClosing() const override { return false; }
    void RequestClose() override {}
};

std::string Receive(IUsbLibrary& p_objLibrary, std::size_t p_iLength) {
    std::vector<std::uint8_t> objBuffer(p_iLength);
    const std::int32_t iCount = p_objLibrary.Dll_rcvUSB(objBuffer);
    std::string strResult = std::to_string(iCount) + " ";
    for (std::int32_t i = 0; i < iCount; ++i) {
        const auto cByte = static_cast<char>(objBuffer[static_cast<std::size_t>(i)]);
        strResult += cByte >= ' ' ? cByte : '.';
    }
    return strResult;
}

bool Do(IUsbLibrary& p_objLibrary, std::string_view p_strStep) {
    const std::size_t iColon = std::min(p_strStep.find(':'), p_strStep.size());
    const std::string_view strName = p_strStep.substr(0, iColon);
    const std::string strValue(p_strStep.substr(std::min(iColon + 1, p_strStep.size())));
    std::cout << "client: " << strName << ' ';
    if (strName == "open") {
        std::cout << p_objLibrary.Dll_openUSB() << std::endl;
    } else if (strName == "send") {
        const std::vector<std::uint8_t> objBytes(strValue.begin(), strValue.end());
        std::cout << p_objLibrary.Dll_sendUSB(objBytes) << std::endl;
    } else if (strName == "receive") {
        std::cout << Receive(p_objLibrary, std::stoul(strValue)) << std::endl;
    } else if (strName == "close") {
        std::cout << p_objLibrary.Dll_closeUSB() << std::endl;
    } else if (strName == "wait") {
        std::this_thread::sleep_for(std::chrono::milliseconds(std::stoul(strValue)));
        std::cout << std::endl;
    } else {
        return false;
    }
    return true;
}

}  // namespace

int main(int p_iCount, char** p_strArguments) {
    try {
        CIdleLoop objEventLoop;
        CUsbLibrary objLibrary(objEventLoop);
        const std::vector<std::string_view> strSteps(p_strArguments + 1, p_strArguments + p_iCount);
        const bool bAll = std::ranges::all_of(
            strSteps, [&](std::string_view p_strStep) { return Do(objLibrary, p_strStep); });
        return bAll ? 0 : 2;
    } catch (const std::exception& objError) {
        std::cerr << objError.what() << std::endl;
        return 3;
    }
}
