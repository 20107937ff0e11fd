#include "tests/fuzz/CSettingsFileFuzz.h"

#include "model/CConversionError.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

using MFuzz::Require;

namespace {

constexpr std::size_t BlockSize = 4096;
constexpr std::size_t SmallPiece = 7;

/// A file of the bytes given, which comes in pieces and may fail at its end.
class CBytesStore : public IFileStore {
public:
    CBytesStore(std::string_view p_strBytes, std::size_t p_iPiece, bool p_bFails)
        : m_strBytes(p_strBytes)
        , m_iPiece(p_iPiece)
        , m_bFails(p_bFails) {}

    std::size_t m_iGiven = 0;

    [[nodiscard]] bool Exists(const std::string& /*p_strPath*/) const override { return true; }

    std::unique_ptr<IFileReader> OpenToRead(const std::string& /*p_strPath*/) override {
        m_iGiven = 0;
        return std::make_unique<CReader>(*this);
    }

    std::unique_ptr<IFileWriter> OpenToWrite(const std::string& /*p_strPath*/) override {
        return nullptr;
    }

private:
    class CReader : public IFileReader {
    public:
        explicit CReader(CBytesStore& p_objStore)
            : m_objStore(p_objStore) {}

        [[nodiscard]] std::uint64_t Size() const override { return m_objStore.m_strBytes.size(); }

        std::optional<std::size_t> Read(std::span<char> p_arrBuffer) override {
            const std::size_t iCount = m_objStore.m_strBytes.copy(
                p_arrBuffer.data(), std::min(p_arrBuffer.size(), m_objStore.m_iPiece),
                m_objStore.m_iGiven);
            m_objStore.m_iGiven += iCount;
            if (iCount == 0 && m_objStore.m_bFails) {
                return std::nullopt;
            }
            return iCount;
        }

    private:
        CBytesStore& m_objStore;
    };

    std::string_view m_strBytes;
    std::size_t m_iPiece;
    bool m_bFails;
};

/// The lines of a file, cut in the plainest way.
std::vector<std::string> CutLines(std::string_view p_strBytes) {
    std::vector<std::string> strLines;
    while (!p_strBytes.empty()) {
        const std::size_t iEnd = std::min(p_strBytes.find_first_of("\r\n"), p_strBytes.size());
        strLines.emplace_back(p_strBytes.substr(0, iEnd));
        p_strBytes.remove_prefix(iEnd);
        p_strBytes.remove_prefix(p_strBytes.starts_with("\r\n") ? 2 : p_strBytes.empty() ? 0 : 1);
    }
    return strLines;
}

/// What the items would be saved as; nothing when one of them is no number.
std::optional<std::vector<std::string>> Rendered(const CSettingsFile::Format& p_objFormat,
                                                 const CItemManager& p_objItems) {
    try {
        return p_objFormat.m_objBuildLines(p_objItems);
    } catch (const CConversionError&) {
        return std::nullopt;
    }
}

/// What holds for every file that is read to its end or to its first wrong line.
void CheckReading(const CSettingsFile::Format& p_objFormat, std::string_view p_strBytes,
                  std::size_t p_iPiece) {
    CBytesStore objFileStore(p_strBytes, p_iPiece, false);
    const CItemManager objItems;
    const bool bLoaded = CSettingsFile(p_objFormat, objItems, objFileStore).Load("");

    const CItemManager objExpected;
    std::size_t iUsed = 0;
    bool bGood = true;
    for (const std::string& strLine : CutLines(p_strBytes)) {
        bGood = bGood && p_objFormat.m_objStoreLine(strLine, objExpected);
        if (!bGood) {
            break;
        }
        iUsed += strLine.size() + 2;
    }
    Require(bLoaded == bGood, "a file loads when each of its lines does");
    MFuzz::RequireSame(objItems, objExpected);
    Require(objFileStore.m_iGiven <= iUsed + 2 * BlockSize, "it ends at a wrong line");
}

/// What holds for a file that cannot be read to its end.
void CheckFailure(const CSettingsFile::Format& p_objFormat, std::string_view p_strBytes) {
    CBytesStore objFileStore(p_strBytes, BlockSize, true);
    Require(!CSettingsFile(p_objFormat, CItemManager(), objFileStore).Load(""),
            "a file that cannot be read does not load");
}

/// What holds for the items that a file has filled: they can be saved and come back, unless one of
/// them is no number, or too long a number for its field.
void CheckSaving(const CSettingsFile::Format& p_objFormat, std::string_view p_strBytes) {
    CBytesStore objFileStore(p_strBytes, BlockSize, false);
    const CItemManager objItems;
    CSettingsFile(p_objFormat, objItems, objFileStore).Load("");
    const auto strSaved = Rendered(p_objFormat, objItems);
    if (!strSaved) {
        return;
    }
    const CItemManager objAgain;
    const bool bFits = std::ranges::all_of(*strSaved, [&](const std::string& p_strLine) {
        return p_objFormat.m_objStoreLine(p_strLine, objAgain);
    });
    Require(!bFits || Rendered(p_objFormat, objAgain) == strSaved, "what is saved comes back");
}

}  // namespace

void CSettingsFileFuzz::Run(const CSettingsFile::Format& p_objFormat, MFuzz::Input p_objInput) {
    const std::string strBytes(p_objInput.begin(), p_objInput.end());
    CheckReading(p_objFormat, strBytes, BlockSize);
    CheckReading(p_objFormat, strBytes, SmallPiece);
    CheckFailure(p_objFormat, strBytes);
    CheckSaving(p_objFormat, strBytes);
}
