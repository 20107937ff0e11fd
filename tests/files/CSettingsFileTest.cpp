#include "files/CSettingsFile.h"

#include "files/CLineReader.h"
#include "files/MLanFile.h"
#include "files/MParameterFile.h"
#include "model/CConversionError.h"
#include "tests/fakes/CFakeFileStore.h"
#include "tests/files/MSettingsFields.h"
#include "tests/golden/MGolden.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace {

using MSettingsFields::Content;
using MSettingsFields::Field;
using MSettingsFields::Texts;

constexpr const char* Path = "/settings";
constexpr CSettingsFile::Format Parameter{&MParameterFile::BuildLines, &MParameterFile::StoreLine};
constexpr CSettingsFile::Format Lan{&MLanFile::BuildLines, &MLanFile::StoreLine};

const std::string Line1 = MGolden::All(MGolden::Parameters, &MGolden::Item::m_strHighest);
const std::string Line2 = MGolden::All(MGolden::Adjustments, &MGolden::Item::m_strOther);

/// Loads p_strBytes into p_objItems; what the loading says.
bool Load(const CSettingsFile::Format& p_objFormat, const std::string& p_strBytes,
          const CItemManager& p_objItems) {
    CFakeFileStore objFileStore;
    objFileStore.m_strFiles[Path] = p_strBytes;
    const bool bLoaded = CSettingsFile(p_objFormat, p_objItems, objFileStore).Load(Path);
    EXPECT_EQ(objFileStore.OpenFiles(), 0);
    EXPECT_EQ(objFileStore.m_strFiles[Path], p_strBytes);
    return bLoaded;
}

/// The bytes of the file that p_objItems are saved to.
std::string Saved(const CSettingsFile::Format& p_objFormat, const CItemManager& p_objItems) {
    CFakeFileStore objFileStore;
    objFileStore.m_strFiles[Path] = "a longer file than any that is saved" + std::string(500, '.');
    EXPECT_TRUE(CSettingsFile(p_objFormat, p_objItems, objFileStore).Save(Path));
    EXPECT_EQ(objFileStore.OpenFiles(), 0);
    return objFileStore.m_strFiles[Path];
}

struct GoldenCase {
    const char* m_strFile;
    CSettingsFile::Format m_objFormat;
    void (*m_fnFill)(const CItemManager&);
};

void PrintTo(const GoldenCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strFile;
}

class CSettingsFileGoldenTest : public ::testing::TestWithParam<GoldenCase> {};

TEST_P(CSettingsFileGoldenTest, IsSavedByteByByte) {
    const CItemManager objItems;
    GetParam().m_fnFill(objItems);
    EXPECT_EQ(Saved(GetParam().m_objFormat, objItems), Content(GetParam().m_strFile));
}

TEST_P(CSettingsFileGoldenTest, IsLoadedFieldByField) {
    const CItemManager objExpected;
    GetParam().m_fnFill(objExpected);
    const CItemManager objItems;
    EXPECT_TRUE(Load(GetParam().m_objFormat, Content(GetParam().m_strFile), objItems));
    EXPECT_EQ(Texts(objItems), Texts(objExpected));
}

const GoldenCase GoldenCases[] = {
    {"golden/parameter-default.dt1", Parameter, [](const CItemManager&) {}},
    {"golden/parameter-lowest.dt1", Parameter,
     [](const CItemManager& p_objItems) {
         SetAll(p_objItems, MSettingsFields::Parameter(), &Field::m_strLowest);
     }},
    {"golden/parameter-highest.dt1", Parameter,
     [](const CItemManager& p_objItems) {
         SetAll(p_objItems, MSettingsFields::Parameter(), &Field::m_strHighest);
     }},
    {"golden/lan-default.dt2", Lan, [](const CItemManager&) {}},
    {"golden/lan-lowest.dt2", Lan,
     [](const CItemManager& p_objItems) {
         SetAll(p_objItems, MSettingsFields::Lan(), &Field::m_strLowest);
         p_objItems.m_objDhcpClientHost->SetValue("\x01");
     }},
    {"golden/lan-highest.dt2", Lan,
     [](const CItemManager& p_objItems) {
         SetAll(p_objItems, MSettingsFields::Lan(), &Field::m_strHighest);
         p_objItems.m_objDhcpClientHost->SetValue(std::string(16, '\xFE'));
     }},
};

INSTANTIATE_TEST_SUITE_P(, CSettingsFileGoldenTest, ::testing::ValuesIn(GoldenCases));

struct LoadCase {
    const char* m_strName;
    std::string m_strBytes;
    bool m_bLoads;
    std::vector<std::string> m_strLines;  ///< what the items are then saved as
};

void PrintTo(const LoadCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

class CSettingsFileLoadTest : public ::testing::TestWithParam<LoadCase> {};

TEST_P(CSettingsFileLoadTest, StoresTheLinesUpToTheFirstWrongOne) {
    const CItemManager objItems;
    EXPECT_EQ(Load(Parameter, GetParam().m_strBytes, objItems), GetParam().m_bLoads);
    EXPECT_EQ(MParameterFile::BuildLines(objItems), GetParam().m_strLines);
}

const std::string Default1 = MGolden::Parameters;
const std::string Default2 = MGolden::Adjustments;
using Lines = std::vector<std::string>;

const LoadCase LoadCases[] = {
    {"EmptyFile", "", true, Lines{Default1, Default2}},
    {"CrLf", Line1 + "\r\n" + Line2 + "\r\n", true, Lines{Line1, Line2}},
    {"Lf", Line1 + "\n" + Line2 + "\n", true, Lines{Line1, Line2}},
    {"Cr", Line1 + "\r" + Line2 + "\r", true, Lines{Line1, Line2}},
    {"LastWithoutEnd", Line1 + "\r\n" + Line2, true, Lines{Line1, Line2}},
    {"OnlyParameters", Line1 + "\r\n", true, Lines{Line1, Default2}},
    {"OnlyAdjustments", Line2 + "\r\n", true, Lines{Default1, Line2}},
    {"OtherOrder", Line2 + "\r\n" + Line1 + "\r\n", true, Lines{Line1, Line2}},
    {"LaterWins", Line1 + "\r\n" + Line2 + "\r\n" + Default1 + "\r\n", true,
     Lines{Default1, Line2}},
    {"BlankLineAtTheEnd", Line1 + "\r\n" + Line2 + "\r\n\r\n", false, Lines{Line1, Line2}},
    {"BlankLineFirst", "\r\n" + Line1 + "\r\n", false, Lines{Default1, Default2}},
    {"WrongLineBetween", Line1 + "\r\n{Z2;3" + Line1.substr(5) + "\r\n" + Line2 + "\r\n", false,
     Lines{Line1, Default2}},
    {"TornLine", Line1 + "\r\n" + Line2.substr(0, 20), false, Lines{Line1, Default2}},
    {"LongLineAfterAGoodOne", Line1 + "\r\n" + std::string(100'000, 'x'), false,
     Lines{Line1, Default2}},
    {"GoodLineAtTheEndOfALongOne", std::string(256, 'x') + Line1 + "\r\n", false,
     Lines{Default1, Default2}},
};

INSTANTIATE_TEST_SUITE_P(, CSettingsFileLoadTest, ::testing::ValuesIn(LoadCases),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST(CSettingsFileTest, RefusesEveryBrokenFile) {
    for (const auto& [strExtension, objFormat] :
         {std::pair(".dt1", Parameter), std::pair(".dt2", Lan)}) {
        const std::vector<std::string> strNames = MSettingsFields::BrokenFiles(strExtension);
        EXPECT_GE(strNames.size(), 18U);
        for (const std::string& strName : strNames) {
            EXPECT_FALSE(Load(objFormat, Content(strName), CItemManager())) << strName;
        }
    }
}

TEST(CSettingsFileTest, ALanFileMayHoldOneKindOfLine) {
    const CItemManager objItems;
    const CItemManager objExpected;
    objExpected.m_objSocketPortSetting->SetValue("0");
    objExpected.m_objSocketPortNumber->SetValue("09100");
    EXPECT_TRUE(Load(Lan, "{IS;0,09100|}\r\n", objItems));
    EXPECT_EQ(Texts(objItems), Texts(objExpected));
}

TEST(CSettingsFileTest, LaterLanLinesWin) {
    const CItemManager objItems;
    EXPECT_TRUE(
        Load(Lan, "{IP;3,001,002,003,004|}\n{IS;0,00001|}\n{IP;3,005,006,007,008|}\n", objItems));
    EXPECT_EQ(MLanFile::BuildLines(objItems)[1], "{IP;3,005,006,007,008|}");
    EXPECT_EQ(MLanFile::BuildLines(objItems)[3], "{IS;0,00001|}");
}

TEST(CSettingsFileTest, ALanFileMayBeEmptyAndMayNotEndWithABlankLine) {
    const CItemManager objItems;
    const std::vector<std::string> strBefore = Texts(objItems);
    EXPECT_TRUE(Load(Lan, "", objItems));
    EXPECT_EQ(Texts(objItems), strBefore);
    EXPECT_FALSE(Load(Lan, "{IS;0,00001|}\r\n\r\n", objItems));
    EXPECT_EQ(objItems.m_objSocketPortNumber->GetValueString(), "00001");
}

TEST(CSettingsFileTest, SavesALongHostNameWholeAndRefusesItOnLoad) {
    const CItemManager objItems;
    objItems.m_objDhcpClientHost->SetValue("seventeen-letters");
    const std::string strBytes = Saved(Lan, objItems);
    EXPECT_TRUE(strBytes.ends_with(",seventeen-letters|}\r\n"));
    const CItemManager objLoaded;
    objLoaded.m_objIpAddress1->SetValue(10);
    EXPECT_FALSE(Load(Lan, strBytes, objLoaded));
    EXPECT_EQ(objLoaded.m_objIpAddress1->GetValueString(), "192");
    EXPECT_EQ(objLoaded.m_objDhcpClientHost->GetValueString(), "");
}

TEST(CSettingsFileTest, AFileThatIsNotThereCannotBeLoaded) {
    CFakeFileStore objFileStore;
    const CItemManager objItems;
    EXPECT_FALSE(CSettingsFile(Parameter, objItems, objFileStore).Load(Path));
}

TEST(CSettingsFileTest, ReadsAnyNumberOfLines) {
    std::string strBytes;
    for (int i = 0; i < 20'000; ++i) {
        strBytes += "{IS;0," + std::to_string(10'000 + i) + "|}\n";
    }
    const CItemManager objItems;
    EXPECT_TRUE(Load(Lan, strBytes, objItems));
    EXPECT_EQ(objItems.m_objSocketPortNumber->GetValueString(), "29999");
}

/// A file without an end: the same text for ever, whatever size it is said to have.
class CEndlessStore : public IFileStore {
public:
    std::string m_strText = "x";
    std::uint64_t m_iSize = 0;
    std::size_t m_iGiven = 0;

    [[nodiscard]] bool Exists(const std::string& /*p_strPath*/) const override { return true; }

    std::unique_ptr<IFileReader> OpenToRead(const std::string& /*p_strPath*/) override {
        return std::make_unique<CReader>(*this);
    }

    std::unique_ptr<IFileWriter> OpenToWrite(const std::string& /*p_strPath*/) override {
        return nullptr;
    }

private:
    class CReader : public IFileReader {
    public:
        explicit CReader(CEndlessStore& p_objStore)
            : m_objStore(p_objStore) {}

        [[nodiscard]] std::uint64_t Size() const override { return m_objStore.m_iSize; }

        std::optional<std::size_t> Read(std::span<char> p_arrBuffer) override {
            const std::string& strText = m_objStore.m_strText;
            for (char& cByte : p_arrBuffer) {
                cByte = strText[m_objStore.m_iGiven++ % strText.size()];
            }
            return p_arrBuffer.size();
        }

    private:
        CEndlessStore& m_objStore;
    };
};

TEST(CSettingsFileTest, RefusesALineWithoutEndAtOnce) {
    for (const CSettingsFile::Format& objFormat : {Parameter, Lan}) {
        CEndlessStore objFileStore;
        const CItemManager objItems;
        EXPECT_FALSE(CSettingsFile(objFormat, objItems, objFileStore).Load(Path));
        EXPECT_GT(objFileStore.m_iGiven, 0U);
        EXPECT_LE(objFileStore.m_iGiven, 4096U);
    }
}

/// So many bytes of good lines.
std::string GoodLines(std::size_t p_iBytes) {
    const std::string strLine = "{IS;0,11111|}\n";
    const std::string strLong = "{IS;0,22222|}\r\n";  // one byte more, to make the count up
    std::string strBytes;
    while ((p_iBytes - strBytes.size()) % strLine.size() != 0) {
        strBytes += strLong;
    }
    while (strBytes.size() < p_iBytes) {
        strBytes += strLine;
    }
    return strBytes;
}

TEST(CSettingsFileSizeTest, TheLargestFileIsAMebibyteAndLoads) {
    const CItemManager objItems;
    const std::string strBytes = GoodLines(1'048'576);
    ASSERT_EQ(strBytes.size(), 1'048'576U);
    EXPECT_TRUE(Load(Lan, strBytes, objItems));
    EXPECT_EQ(objItems.m_objSocketPortNumber->GetValueString(), "11111");
}

TEST(CSettingsFileSizeTest, ALargerOneIsRefusedBeforeAnythingOfItIsRead) {
    for (const std::size_t iSize : {1'048'577U, 2'000'000U}) {
        const CItemManager objItems;
        const std::vector<std::string> strBefore = Texts(objItems);
        CFakeFileStore objFileStore;
        objFileStore.m_strFiles[Path] = GoodLines(iSize);
        ASSERT_EQ(objFileStore.m_strFiles[Path].size(), iSize);
        EXPECT_FALSE(CSettingsFile(Lan, objItems, objFileStore).Load(Path));
        EXPECT_EQ(Texts(objItems), strBefore);
        EXPECT_EQ(objFileStore.Operations(), 1) << "opened, and that is all";
        EXPECT_EQ(objFileStore.OpenFiles(), 0);
    }
}

TEST(CSettingsFileSizeTest, OneOfGigabytesIsRefusedAtOnce) {
    CEndlessStore objFileStore;
    objFileStore.m_strText = Line1 + "\r\n";
    objFileStore.m_iSize = std::uint64_t{1} << 40;
    const CItemManager objItems;
    EXPECT_FALSE(CSettingsFile(Parameter, objItems, objFileStore).Load(Path));
    EXPECT_EQ(objFileStore.m_iGiven, 0U);
    EXPECT_EQ(MParameterFile::BuildLines(objItems), (Lines{Default1, Default2}));
}

TEST(CSettingsFileSizeTest, OneThatGrowsWhileItIsReadIsRefusedWhenItIsTooLarge) {
    CEndlessStore objFileStore;
    objFileStore.m_strText = Line1 + "\r\n";
    objFileStore.m_iSize = objFileStore.m_strText.size();
    const CItemManager objItems;
    EXPECT_FALSE(CSettingsFile(Parameter, objItems, objFileStore).Load(Path));
    EXPECT_GT(objFileStore.m_iGiven, 1'000'000U);
    EXPECT_LE(objFileStore.m_iGiven, 1'048'576U + 4096U);
}

TEST(CSettingsFileTest, AFailureInTheMiddleOfReadingKeepsWhatWasStored) {
    CFakeFileStore objFileStore;
    for (int i = 0; i < 200; ++i) {  // more than one block
        objFileStore.m_strFiles[Path] += Line1 + "\r\n";
    }
    const CItemManager objItems;
    objFileStore.FailAt(3);  // opening, a block, and this one
    EXPECT_FALSE(CSettingsFile(Parameter, objItems, objFileStore).Load(Path));
    EXPECT_EQ(objFileStore.Operations(), 3);
    EXPECT_EQ(objFileStore.OpenFiles(), 0);
    EXPECT_EQ(MParameterFile::BuildLines(objItems), (Lines{Line1, Default2}));
}

TEST(CSettingsFileTest, AFailureOfAnyReadingOperationIsOne) {
    CFakeFileStore objFileStore;
    objFileStore.m_strFiles[Path] = Line1 + "\r\n" + Line2 + "\r\n";
    const CItemManager objItems;
    EXPECT_TRUE(CSettingsFile(Parameter, objItems, objFileStore).Load(Path));
    const int iOperations = objFileStore.Operations();
    EXPECT_GE(iOperations, 3);
    for (int i = 1; i <= iOperations; ++i) {
        objFileStore.FailAt(objFileStore.Operations() + i);
        EXPECT_FALSE(CSettingsFile(Parameter, objItems, objFileStore).Load(Path)) << i;
    }
}

TEST(CSettingsFileTest, AFailureOfAnyWritingOperationLeavesTheOldFile) {
    for (const CSettingsFile::Format& objFormat : {Parameter, Lan}) {
        CFakeFileStore objFileStore;
        const CItemManager objItems;
        EXPECT_TRUE(CSettingsFile(objFormat, objItems, objFileStore).Save(Path));
        const int iOperations = objFileStore.Operations();
        EXPECT_GE(iOperations, 4);
        for (int i = 1; i <= iOperations; ++i) {
            objFileStore.m_strFiles[Path] = "old";
            objFileStore.FailAt(objFileStore.Operations() + i);
            EXPECT_FALSE(CSettingsFile(objFormat, objItems, objFileStore).Save(Path)) << i;
            EXPECT_EQ(objFileStore.m_strFiles[Path], "old") << i;
            EXPECT_EQ(objFileStore.OpenFiles(), 0) << i;
        }
    }
}

TEST(CSettingsFileTest, OpensNothingWhenTheLinesCannotBeMade) {
    CFakeFileStore objFileStore;
    const CItemManager objItems;
    objItems.m_objSubnetMask4->SetValue("no number");
    EXPECT_THROW(CSettingsFile(Lan, objItems, objFileStore).Save(Path), CConversionError);
    EXPECT_EQ(objFileStore.Operations(), 0);
}

}  // namespace
