#include "tests/ui/recorder/MFileCells.h"

#include "tests/ui/recorder/MFlows.h"
#include "tests/ui/recorder/MPage.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace {

using Kind = MFiles::Kind;

constexpr std::size_t LongerThanAnyName = 600;
constexpr std::uint32_t AllFiles = 2;
constexpr int MostOperations = 5;
constexpr std::int64_t WhileTheDialogStands = 50;

/// Prepares the pressing of the button: what is chosen in the dialog, and what lies on the disk.
struct Fault {
    std::string m_strName;
    std::function<void(CScene&, const Kind&)> m_fnPrepare;
    MFlows::Links m_iLinks = MFlows::Lan;  ///< what is in the file is the same on every link
};
using Faults = std::vector<Fault>;

/// What becomes of a sound file's content.
struct Damage {
    const char* m_strName;
    std::string (*m_fnDamage)(const std::string&);
};

std::size_t EndOfFirstLine(const std::string& p_strBytes) {
    return p_strBytes.find('\n') + 1;
}

/// The first half of the lines, the last of them without its end.
std::string FirstHalf(const std::string& p_strBytes) {
    const auto iLines = std::ranges::count(p_strBytes, '\n');
    std::size_t iEnd = 0;
    for (std::ptrdiff_t i = 0; i < (iLines + 1) / 2; ++i) {
        iEnd = p_strBytes.find('\n', iEnd) + 1;
    }
    return p_strBytes.substr(0, iEnd - std::string_view("\r\n").size());
}

void Drop(std::string& p_strBytes, char p_cByte) {
    std::erase(p_strBytes, p_cByte);
}

/// Behind the first field of each line: that one is the command's.
std::string Fill(std::string p_strBytes, char p_cByte) {
    bool bInside = false;
    for (char& cByte : p_strBytes) {
        if (cByte == ',') {
            bInside = true;
        } else if (cByte == '|') {
            bInside = false;
        } else if (bInside) {
            cByte = p_cByte;
        }
    }
    return p_strBytes;
}

const std::vector<Damage>& Damages() {
    // clang-format off
    static const std::vector<Damage> objDamages{
        {"nothing wrong", [](const std::string& p_str) { return p_str; }},
        {"an empty file", [](const std::string&) { return std::string(); }},
        {"the first line is missing", [](const std::string& p_str) { return p_str.substr(EndOfFirstLine(p_str)); }},
        {"only the first line", [](const std::string& p_str) { return p_str.substr(0, EndOfFirstLine(p_str)); }},
        {"the first line comes last", [](const std::string& p_str) { return p_str.substr(EndOfFirstLine(p_str)) + p_str.substr(0, EndOfFirstLine(p_str)); }},
        {"one line more", [](const std::string& p_str) { return p_str + p_str.substr(0, EndOfFirstLine(p_str)); }},
        {"ends in its middle", FirstHalf},
        {"ends in its first line", [](const std::string& p_str) { return p_str.substr(0, EndOfFirstLine(p_str) / 2); }},
        {"no end of the last line", [](const std::string& p_str) { return p_str.substr(0, p_str.find_last_not_of("\r\n") + 1); }},
        {"lines end with LF alone", [](const std::string& p_str) { std::string strBytes = p_str; Drop(strBytes, '\r'); return strBytes; }},
        {"no line ends", [](const std::string& p_str) { std::string strBytes = p_str; Drop(strBytes, '\r'); Drop(strBytes, '\n'); return strBytes; }},
        {"empty lines between", [](const std::string& p_str) { return "\r\n" + p_str.substr(0, EndOfFirstLine(p_str)) + "\r\n" + p_str.substr(EndOfFirstLine(p_str)); }},
        {"a line too long", [](const std::string& p_str) { return std::string(LongerThanAnyName, 'x') + "\r\n" + p_str; }},
        {"nines in all fields", [](const std::string& p_str) { return Fill(p_str, '9'); }},
        {"letters in all fields", [](const std::string& p_str) { return Fill(p_str, 'X'); }},
        {"blanks in all fields", [](const std::string& p_str) { return Fill(p_str, ' '); }},
        {"bytes above 128 in all fields", [](const std::string& p_str) { return Fill(p_str, '\xE4'); }},
        {"junk", [](const std::string&) { return std::string("\x7F" "ELF\x02\x01\x00\xFF\r\n{Z2;", 13); }},
    };
    // clang-format on
    return objDamages;
}

/// Faults that every one of the four buttons meets. A file is chosen by p_strPath.
Faults CommonFaults(const std::function<std::string(const Kind&)>& p_strPath) {
    const auto fnChoose = [p_strPath](CScene& p_objScene, const Kind& p_objKind) {
        p_objScene.m_objFileDialog.Choose(p_strPath(p_objKind));
    };
    // clang-format off
    Faults objFaults{
        {"cancelled", [](CScene&, const Kind&) {}, MFlows::Any},
        {"cancelled, a name typed", [=](CScene& p_objScene, const Kind& p_objKind) { p_objScene.m_objFileDialog.CancelAfterTyping(p_strPath(p_objKind)); }},
        {"a name too long", [](CScene& p_objScene, const Kind&) { p_objScene.m_objFileDialog.Choose("/" + std::string(LongerThanAnyName, 'n')); }},
        {"a name of blanks", [](CScene& p_objScene, const Kind&) { p_objScene.m_objFileDialog.Choose("   ", AllFiles); }},
        {"blanks around the name", [=](CScene& p_objScene, const Kind& p_objKind) { p_objScene.m_objFileDialog.Choose("  " + p_strPath(p_objKind) + "  "); }},
        {"the window closed while the dialog stands", [=](CScene& p_objScene, const Kind& p_objKind) { fnChoose(p_objScene, p_objKind); p_objScene.Later(WhileTheDialogStands, [&p_objScene] { p_objScene.Close(); }); }, MFlows::Any},
        {"the dialog fails", [=](CScene& p_objScene, const Kind& p_objKind) { fnChoose(p_objScene, p_objKind); p_objScene.m_objFileDialog.WhileShown([] { throw std::runtime_error("no dialog"); }); }},
        {"a status while the dialog stands", [=](CScene& p_objScene, const Kind& p_objKind) { fnChoose(p_objScene, p_objKind); p_objScene.Later(WhileTheDialogStands, [&p_objScene] { p_objScene.m_objWire.Deliver(p_objScene.m_objWire.StatusAnswer("15")); }); }, MFlows::Any},
        {"settings while the dialog stands", [=](CScene& p_objScene, const Kind& p_objKind) { fnChoose(p_objScene, p_objKind); p_objScene.Later(WhileTheDialogStands, [&p_objScene] { p_objScene.m_objWire.Deliver(p_objScene.m_objWire.SettingsAnswer(0)); }); }, MFlows::Any},
        {"the link ends while the dialog stands", [=](CScene& p_objScene, const Kind& p_objKind) { fnChoose(p_objScene, p_objKind); p_objScene.Later(WhileTheDialogStands, [&p_objScene] { p_objScene.PrinterCloses(); p_objScene.Unplug(); }); }, MFlows::Any},
        {"everything chosen otherwise", [=](CScene& p_objScene, const Kind& p_objKind) { MPage::ChangeEverything(p_objScene.m_objWindow); fnChoose(p_objScene, p_objKind); }, MFlows::Any},
        {"a right text is being typed", [=](CScene& p_objScene, const Kind& p_objKind) { const auto objTexts = MPage::TextsBeside(p_objScene.m_objWindow, p_objKind.m_strSave); p_objScene.m_objWindow.Type(objTexts.m_strField, objTexts.m_strRight); fnChoose(p_objScene, p_objKind); }},
        {"a text out of range is being typed", [=](CScene& p_objScene, const Kind& p_objKind) { const auto objTexts = MPage::TextsBeside(p_objScene.m_objWindow, p_objKind.m_strSave); p_objScene.m_objWindow.Type(objTexts.m_strField, objTexts.m_strOutOfRange); fnChoose(p_objScene, p_objKind); }},
    };
    // clang-format on
    for (int i = 1; i <= MostOperations; ++i) {
        objFaults.push_back({"file operation " + std::to_string(i) + " fails",
                             [=](CScene& p_objScene, const Kind& p_objKind) {
                                 fnChoose(p_objScene, p_objKind);
                                 p_objScene.m_objFiles.FailAt(i);
                             }});
    }
    return objFaults;
}

std::string NewFile(const Kind& p_objKind) {
    return std::string("/new") + p_objKind.m_strEnding;
}

std::string OldFile(const Kind& p_objKind) {
    return p_objKind.m_strOtherSettings;
}

Faults SaveFaults() {
    Faults objFaults = CommonFaults(NewFile);
    const auto fnAdd = [&objFaults](const char* p_strName,
                                    std::function<void(CScene&, const Kind&)> p_fnPrepare) {
        objFaults.push_back({p_strName, std::move(p_fnPrepare)});
    };
    // clang-format off
    fnAdd("a new file", [](CScene& p_objScene, const Kind& p_objKind) { p_objScene.m_objFileDialog.Choose(NewFile(p_objKind)); });
    fnAdd("a new file without an ending", [](CScene& p_objScene, const Kind&) { p_objScene.m_objFileDialog.Choose("/new"); });
    fnAdd("a new file without an ending, among all files", [](CScene& p_objScene, const Kind&) { p_objScene.m_objFileDialog.Choose("/new", AllFiles); });
    fnAdd("a new file with another ending", [](CScene& p_objScene, const Kind&) { p_objScene.m_objFileDialog.Choose("/new.DT1"); });
    fnAdd("an old file, not to be overwritten", [](CScene& p_objScene, const Kind& p_objKind) { p_objScene.m_objFileDialog.Choose(OldFile(p_objKind)); });
    fnAdd("an old file, to be overwritten", [](CScene& p_objScene, const Kind& p_objKind) { p_objScene.m_objFileDialog.Choose(OldFile(p_objKind)); p_objScene.m_objBoxes.m_bYes = true; });
    fnAdd("an old file, to be overwritten, which fails", [](CScene& p_objScene, const Kind& p_objKind) { p_objScene.m_objFileDialog.Choose(OldFile(p_objKind)); p_objScene.m_objBoxes.m_bYes = true; p_objScene.m_objFiles.FailAt(2); });
    fnAdd("an old file that is hidden", [](CScene& p_objScene, const Kind& p_objKind) { p_objScene.m_objFileDialog.Choose(OldFile(p_objKind)); p_objScene.m_objFiles.m_strHidden.insert(OldFile(p_objKind)); });
    // clang-format on
    return objFaults;
}

Faults LoadFaults() {
    Faults objFaults = CommonFaults(OldFile);
    for (const Damage& objDamage : Damages()) {
        objFaults.push_back(
            {objDamage.m_strName, [&objDamage](CScene& p_objScene, const Kind& p_objKind) {
                 const std::string strPath = OldFile(p_objKind);
                 p_objScene.AddFile(
                     strPath, objDamage.m_fnDamage(p_objScene.m_objFiles.m_strFiles[strPath]));
                 p_objScene.m_objFileDialog.Choose(strPath);
             }});
    }
    // clang-format off
    objFaults.push_back({"no such file", [](CScene& p_objScene, const Kind& p_objKind) { p_objScene.m_objFileDialog.Choose(NewFile(p_objKind)); }});
    objFaults.push_back({"the other kind of file", [](CScene& p_objScene, const Kind& p_objKind) {
        const Kind objOther = std::string(p_objKind.m_strLoad) == MFiles::Lan().m_strLoad ? MFiles::Parameters() : MFiles::Lan();
        p_objScene.m_objFileDialog.Choose(OldFile(objOther));
    }});
    // clang-format on
    return objFaults;
}

Cells Of(const Faults& p_objFaults, const Kind& p_objKind, const char* p_strButton) {
    Cells objCells;
    for (const LinkKind iLink : MFlows::AllLinks) {
        for (const Fault& objFault : p_objFaults) {
            if (!MFlows::Has(objFault.m_iLinks, iLink)) {
                continue;
            }
            objCells.push_back({std::string(MFlows::NameOf(iLink)) + ", " + p_strButton + ": " +
                                    objFault.m_strName,
                                p_strButton, iLink, true, [=](CScene& p_objScene) {
                                    objFault.m_fnPrepare(p_objScene, p_objKind);
                                    p_objScene.Press(p_strButton);
                                }});
        }
    }
    return objCells;
}

}  // namespace

namespace MFileCells {

Cells OfSave(const Kind& p_objKind) {
    return Of(SaveFaults(), p_objKind, p_objKind.m_strSave);
}

Cells OfLoad(const Kind& p_objKind) {
    return Of(LoadFaults(), p_objKind, p_objKind.m_strLoad);
}

}  // namespace MFileCells
