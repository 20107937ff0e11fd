#include "cli/MSettingsFile.h"

#include "cli/CCommandLines.h"
#include "cli/MJsonSettings.h"
#include "files/MLanFile.h"
#include "files/MParameterFile.h"
#include "protocol/MSettingRoute.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <optional>
#include <system_error>

namespace {

using MSettingRoute::Command;
using MSettingsFile::Kind;

constexpr CSettingsFile::Format ParameterFormat{&MParameterFile::BuildLines,
                                                &MParameterFile::StoreLine};
constexpr CSettingsFile::Format LanFormat{&MLanFile::BuildLines, &MLanFile::StoreLine};

const CSettingsFile::Format& FormatOf(Kind p_iKind) {
    return p_iKind == Kind::Parameters ? ParameterFormat : LanFormat;
}

/// Why a file did not open, as far as the system tells.
std::string WhyNot(const std::string& p_strPath, bool p_bToWrite) {
    namespace fs = std::filesystem;
    const fs::path objPath(p_strPath);
    std::error_code objError;
    const fs::file_type iType = fs::status(objPath, objError).type();
    if (iType == fs::file_type::directory) {
        return "it is a folder";
    }
    if (iType == fs::file_type::not_found && !p_bToWrite) {
        return "there is no such file";
    }
    const fs::path objFolder = objPath.has_parent_path() ? objPath.parent_path() : fs::path(".");
    if (p_bToWrite && !fs::is_directory(objFolder, objError)) {
        return "there is no folder " + objFolder.string();
    }
    if (iType != fs::file_type::regular && iType != fs::file_type::not_found) {
        return "it is no ordinary file";
    }
    return p_bToWrite ? "the system does not let it be written"
                      : "the system does not let it be read";
}

CCommandError Unreadable(const std::string& p_strPath, const std::string& p_strCause) {
    return {MExitCode::Wrong, {"Cannot read " + p_strPath, p_strCause, p_strPath, {}}};
}

/// The file's bytes.
std::string Bytes(IFileStore& p_objFiles, const std::string& p_strPath) {
    constexpr std::size_t iBlock = 16'384;
    const std::unique_ptr<IFileReader> objReader = p_objFiles.OpenToRead(p_strPath);
    if (!objReader) {
        throw Unreadable(p_strPath, WhyNot(p_strPath, false));
    }
    std::string strBytes;
    std::array<char, iBlock> arrBlock{};
    for (;;) {
        const std::optional<std::size_t> iCount = objReader->Read(arrBlock);
        if (!iCount) {
            throw Unreadable(p_strPath, "reading it fails");
        }
        if (*iCount == 0) {
            return strBytes;
        }
        strBytes.append(arrBlock.data(), *iCount);
        if (strBytes.size() > MSettingsFile::LargestFile) {
            throw Unreadable(p_strPath, "it is larger than 1 MiB, and no settings file is");
        }
    }
}

bool WriteJson(IFileStore& p_objFiles, const std::string& p_strPath,
               const CSnapshot& p_objSnapshot) {
    const std::unique_ptr<IFileWriter> objWriter = p_objFiles.OpenToWrite(p_strPath);
    return objWriter && objWriter->Write(MJsonSettings::Text(p_objSnapshot)) && objWriter->Commit();
}

}  // namespace

namespace MSettingsFile {

Kind KindOf(const std::string& p_strPath) {
    std::string strExtension = std::filesystem::path(p_strPath).extension().string();
    std::ranges::transform(strExtension, strExtension.begin(),
                           [](unsigned char p_c) { return static_cast<char>(std::tolower(p_c)); });
    for (const Kind iKind : {Kind::Parameters, Kind::Lan, Kind::Json}) {
        if (strExtension == std::string(".") + Name(iKind)) {
            return iKind;
        }
    }
    throw CCommandError(MExitCode::Wrong, {p_strPath + " is no settings file's name",
                                           {},
                                           p_strPath,
                                           "a settings file's name ends with .dt1, .dt2 or .json"});
}

const char* Name(Kind p_iKind) {
    switch (p_iKind) {
    case Kind::Parameters:
        return "dt1";
    case Kind::Lan:
        return "dt2";
    case Kind::Json:
        break;
    }
    return "json";
}

bool CanHold(Kind p_iKind, const MSettings::Row& p_objRow) {
    const Command iCommand = MSettingRoute::CarriedBy(p_objRow);
    const bool bParameters = iCommand == Command::Parameters || iCommand == Command::Adjustments;
    switch (p_iKind) {
    case Kind::Parameters:
        return bParameters;
    case Kind::Lan:
        return !bParameters && iCommand != Command::None;
    case Kind::Json:
        break;
    }
    return true;
}

CFileContent Read(IFileStore& p_objFiles, const std::string& p_strPath) {
    const Kind iKind = KindOf(p_strPath);
    const std::string strBytes = Bytes(p_objFiles, p_strPath);
    return iKind == Kind::Json ? MJsonSettings::Read(strBytes)
                               : CCommandLines(FormatOf(iKind)).Read(strBytes);
}

CCommandError Unwritable(const std::string& p_strPath) {
    return {MExitCode::Failed,
            {"Cannot write " + p_strPath, WhyNot(p_strPath, true), p_strPath, {}}};
}

void Write(IFileStore& p_objFiles, const std::string& p_strPath, const CSnapshot& p_objSnapshot) {
    const Kind iKind = KindOf(p_strPath);
    const bool bWritten =
        iKind == Kind::Json
            ? WriteJson(p_objFiles, p_strPath, p_objSnapshot)
            : CSettingsFile(FormatOf(iKind), p_objSnapshot.Items(), p_objFiles).Save(p_strPath);
    if (!bWritten) {
        throw Unwritable(p_strPath);
    }
}

}  // namespace MSettingsFile
