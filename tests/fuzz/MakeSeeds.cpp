#include "model/MSettings.h"
#include "tests/golden/MGolden.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

// Writes what the fuzz targets begin with, a folder for each target below the folder that is its
// one argument: what the golden tables hold, in the form that the target takes (MFuzzTargets).
// Settings files are not among it, which tests/golden writes.

namespace {

using std::string_literals::operator""s;

class CSeeds {
public:
    explicit CSeeds(std::filesystem::path p_strFolder)
        : m_strFolder(std::move(p_strFolder)) {}

    /// One more seed of a target.
    void Add(const std::string& p_strTarget, const std::string& p_strBytes) {
        const std::filesystem::path strFolder = m_strFolder / p_strTarget;
        std::filesystem::create_directories(strFolder);
        std::ofstream objFile(strFolder / std::to_string(++m_iCount), std::ios::binary);
        objFile.exceptions(std::ios::badbit | std::ios::failbit);
        objFile << p_strBytes << std::flush;
    }

private:
    std::filesystem::path m_strFolder;
    int m_iCount = 0;
};

const std::string Status = "\x01\x02"
                           "000000000\x03\x04"s;

/// Answers of one group to a tool that asks for one, the right one and another.
void AddAnswers(CSeeds& p_objSeeds) {
    for (int iGroup = 0; iGroup < 5; ++iGroup) {
        const std::string strDigit = std::to_string(iGroup);
        const std::string strAsked = std::to_string(iGroup + 1);  // 0 is no group
        const std::string strAnswer = MGolden::Answer(iGroup);
        const std::string strOther = MGolden::Answer((iGroup + 1) % 5);
        p_objSeeds.Add("distribute", strDigit + strAnswer);
        p_objSeeds.Add("lan-stream", strAsked + "7" + Status + strAnswer);
        p_objSeeds.Add("lan-stream", strAsked + "1" + strOther + "junk" + strAnswer + Status);
        p_objSeeds.Add("serial-line", strAsked + "0" + strAnswer + "\x13\x11" + Status);
        p_objSeeds.Add("serial-line", strAsked + "0" + strOther + strAnswer);
        p_objSeeds.Add("serial-line", strAsked + "1\x00\x1a"s + strAnswer);
        p_objSeeds.Add("usb-answer", strAsked + "0\x02 " + strAnswer);
        p_objSeeds.Add("usb-answer", strAsked + "0\x02 " + strOther);
        p_objSeeds.Add("usb-answer", strAsked + "1\x00\x1a\x02 "s + strAnswer);
        p_objSeeds.Add("command-reader", "9{Z5;" + strDigit + "|}{WS|}junk{Z5;");
    }
    p_objSeeds.Add("usb-answer", "00" + Status);
    for (const char* const strId : {"MFG:Varden;MDL:Label;CLS:PRINTER;",
                                    "MANUFACTURER: varden ;MDL:x", "mfg:Other;MFG:VARDEN"}) {
        const std::string strText = strId;
        p_objSeeds.Add("device-id", strText);
        p_objSeeds.Add("device-id", "\0"s + static_cast<char>(strText.size() + 2) + strText);
        p_objSeeds.Add("device-id", "\0"s + static_cast<char>(strText.size()) + strText + "\0\0;"s);
    }
}

void AddCommands(CSeeds& p_objSeeds) {
    std::string strAll = "9";
    for (const auto& strCommands : {MGolden::SetCommands(), MGolden::LanSetCommands()}) {
        for (const std::string& strCommand : strCommands) {
            p_objSeeds.Add("command-reader", "5" + strCommand);
            p_objSeeds.Add("command-reader",
                           "9" + MGolden::All(strCommand, &MGolden::Item::m_strOther));
            strAll += strCommand;
        }
    }
    p_objSeeds.Add("command-reader", strAll + "{Z4;0|}{Z4;00|}");
    p_objSeeds.Add("command-reader", "9{HD001,A|}{Z10|}{Z6;0|}{Z6;01|}{WT;1000,1|}");
    p_objSeeds.Add("command-reader", "9{Z3;001000070105700010000|}{IH;0," + std::string(300, '{'));
}

void AddCommandLines(CSeeds& p_objSeeds) {
    for (const char* const strTarget :
         {"lan:shop-3", "lan:10.0.0.7:9100", "lan:[fe80::1%eth0]:8000", "lan:::1",
          "lan:1::2:3.4.5.6", "com:/dev/ttyUSB0", "com:COM1,9600,E,8,1", "com:x,115200,N,7,2",
          "usb", "usb:1-2.3.4", "usb:A0001"}) {
        p_objSeeds.Add("target", strTarget);
    }
    for (const MSettings::Row& objRow : MSettings::All()) {
        const std::string strName(objRow.m_strName);
        std::string strValue = "1";
        std::string strJson = "1";
        if (objRow.m_iKind == MSettings::Kind::List) {
            strValue = objRow.m_strEntries.back();
            strJson = "\"" + strValue + "\"";
        } else if (objRow.m_iKind == MSettings::Kind::Address) {
            strValue = "10.0.0.7";
            strJson = "\"10.0.0.7\"";
        } else if (objRow.m_iKind == MSettings::Kind::Text || objRow.m_objRange.m_bHexa) {
            strValue = "3F";
            strJson = "\"3F\"";
        }
        p_objSeeds.Add("words", strName + "=" + strValue + "\n" + strName + "=" + strValue);
        p_objSeeds.Add("json-file",
                       R"({"varden": 1, "settings": {")" + strName + "\": " + strJson + "}}");
    }
    p_objSeeds.Add("json-file",
                   R"({"settings": {"feed-adj": -1.5, "feed-adj": 1e3, "x": [{}]}, "varden": 2})");
    p_objSeeds.Add("json-file",
                   std::string(20, '[') + R"("\u00ff\ud83d\ude00")" + std::string(20, ']'));
}

/// Steps of CExchangeFuzz: the manners and the interface, then a digit for each step.
void AddExchanges(CSeeds& p_objSeeds) {
    const std::string strArguments = "0";
    for (const std::string& strFirst : {"01"s, "00"s, "02"s, "31"s, "30"s, "32"s}) {
        for (char c = '\0'; c < 16; ++c) {
            const std::string strCommand = "0"s + strArguments + c;
            std::string strAnswers;  // each a little later, over the link that is open
            for (const char* const strGroup : {"0", "1", "4", "3", "5"}) {
                strAnswers +=
                    "2\x04"s + "1" + strFirst[1] + strGroup + (strGroup[0] == '5' ? "0000" : "0");
            }
            p_objSeeds.Add("exchange", strFirst + strAnswers + strCommand + strCommand);
            p_objSeeds.Add("exchange", strFirst + "2\x08"s + "140" + c + "0" + strCommand);
            p_objSeeds.Add("exchange", strFirst + "2\x02"s + "0" + strArguments + c + strCommand);
        }
    }
}

}  // namespace

int main(int p_iArguments, char** p_strArguments) {
    if (p_iArguments != 2) {
        std::cerr << "usage: varden_fuzz_seeds FOLDER\n";
        return EXIT_FAILURE;
    }
    CSeeds objSeeds(p_strArguments[1]);
    AddAnswers(objSeeds);
    AddCommands(objSeeds);
    AddCommandLines(objSeeds);
    AddExchanges(objSeeds);
    return EXIT_SUCCESS;
}
