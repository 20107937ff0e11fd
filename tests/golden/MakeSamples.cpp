#include "tests/golden/MGolden.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

// Writes the settings files that the tests compare with (golden/) and those that they expect to be
// refused (broken/) below the folder that is its one argument.

namespace {

using MGolden::Adjustments;
using MGolden::All;
using MGolden::Dhcp;
using MGolden::File;
using MGolden::IpAddress;
using MGolden::Item;
using MGolden::Parameters;
using MGolden::SocketPort;

struct Sample {
    const char* m_strName;
    std::string m_strBytes;
};

const std::string CrLf = "\r\n";

std::string SetFile(MGolden::Column p_objColumn) {
    return File({All(Parameters, p_objColumn), All(Adjustments, p_objColumn)});
}

/// With a host name, which no column has.
std::string LanFile(MGolden::Column p_objColumn, const std::string& p_strHost) {
    MGolden::Texts strLines;
    for (const std::string& strLine : MGolden::LanSetCommands()) {
        strLines.push_back(All(strLine, p_objColumn));
    }
    strLines.back() = MGolden::With(strLines.back(), {{"DhcpClientHost", p_strHost}});
    return File(strLines);
}

/// p_strText with p_strPart at p_iPlace in the place of as many characters.
std::string Put(std::string p_strText, std::size_t p_iPlace, const std::string& p_strPart) {
    return p_strText.replace(p_iPlace, p_strPart.size(), p_strPart);
}

/// Without its last characters.
std::string Cut(std::string p_strText, std::size_t p_iCharacters) {
    p_strText.resize(p_strText.size() - p_iCharacters);
    return p_strText;
}

std::vector<Sample> Golden() {
    return {
        {"parameter-default.dt1", File(MGolden::SetCommands())},
        {"parameter-lowest.dt1", SetFile(&Item::m_strLowest)},
        {"parameter-highest.dt1", SetFile(&Item::m_strHighest)},
        {"lan-default.dt2", File(MGolden::LanSetCommands())},
        {"lan-lowest.dt2", LanFile(&Item::m_strLowest, "\x01" + std::string(15, '\xFF'))},
        {"lan-highest.dt2", LanFile(&Item::m_strHighest, std::string(16, '\xFE'))},
    };
}

std::vector<Sample> BrokenParameters() {
    return {
        {"blank-before-head.dt1", " " + File({Parameters})},
        {"blank-line-at-end.dt1", File(MGolden::SetCommands()) + CrLf},
        {"blank-line-first.dt1", CrLf + File({Parameters})},
        {"byte-order-mark.dt1", "\xEF\xBB\xBF" + File({Parameters})},
        {"group-3.dt1", File({Put(Parameters, 4, "3")})},
        {"group-and-length-crossed.dt1", File({Put(Parameters, 4, "2")})},
        {"head-alone.dt1", "{Z2;"},
        {"head-and-digit.dt1", "{Z2;1"},
        {"lan-line.dt1", File({IpAddress})},
        {"line-1-too-long.dt1", File({Parameters + std::string("|")})},
        {"line-1-too-short.dt1", File({Cut(Parameters, 1)})},
        {"line-2-too-long.dt1", File({Adjustments + std::string("|")})},
        {"line-2-too-short.dt1", File({Cut(Adjustments, 1)})},
        {"lower-case-head.dt1", File({Put(Parameters, 0, "{z2;")})},
        {"no-line-end.dt1", std::string(5000, 'x')},
        {"torn.dt1", File({Parameters}) + std::string(Adjustments).substr(0, 20)},
        {"two-lines-in-one.dt1", File({Parameters + std::string(Adjustments)})},
        {"zeros.dt1", std::string(64, '\0')},
    };
}

std::vector<Sample> BrokenLan() {
    std::string strWideHost = Cut(Dhcp, 18);
    for (int i = 0; i < 16; ++i) {
        strWideHost += "\xC3\xBF";
    }
    return {
        {"address-too-long.dt2", File({IpAddress + std::string("|")})},
        {"address-too-short.dt2", File({Cut(IpAddress, 1)})},
        {"blank-line-at-end.dt2", File(MGolden::LanSetCommands()) + CrLf},
        {"dhcp-short-form-too-long.dt2", File({Cut(Dhcp, 16)})},
        {"dhcp-short-form-too-short.dt2", File({Cut(Dhcp, 18)})},
        {"dhcp-too-long.dt2", File({Dhcp + std::string("|")})},
        {"dhcp-too-short.dt2", File({Cut(Dhcp, 1)})},
        {"group-1.dt2", File({Put(IpAddress, 4, "1")})},
        {"group-5.dt2", File({Put(IpAddress, 4, "5")})},
        {"head-alone.dt2", "{IP;"},
        {"host-name-in-two-bytes-each.dt2", File({strWideHost + "|}"})},
        {"long-host-name.dt2", File({Cut(Dhcp, 18) + "seventeen-letters|}"})},
        {"parameter-line.dt2", File({Parameters})},
        {"port-too-long.dt2", File({SocketPort + std::string("|")})},
        {"port-too-short.dt2", File({Cut(SocketPort, 1)})},
        {"torn.dt2", File({IpAddress}) + std::string(MGolden::Gateway).substr(0, 10)},
        {"unknown-head.dt2", File({Put(IpAddress, 0, "{IX;")})},
        {"zeros.dt2", std::string(57, '\0')},
    };
}

void Write(const std::filesystem::path& p_strFolder, const std::vector<Sample>& p_objSamples) {
    std::filesystem::create_directories(p_strFolder);
    for (const Sample& objSample : p_objSamples) {
        std::ofstream objFile(p_strFolder / objSample.m_strName, std::ios::binary);
        objFile.exceptions(std::ios::badbit | std::ios::failbit);
        objFile << objSample.m_strBytes << std::flush;
    }
}

}  // namespace

int main(int p_iArguments, char** p_strArguments) {
    if (p_iArguments != 2) {
        std::cerr << "usage: varden_settings_samples FOLDER\n";
        return EXIT_FAILURE;
    }
    const std::filesystem::path strFolder = p_strArguments[1];
    Write(strFolder / "golden", Golden());
    Write(strFolder / "broken", BrokenParameters());
    Write(strFolder / "broken", BrokenLan());
    return EXIT_SUCCESS;
}
