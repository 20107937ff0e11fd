// What the rooms without a toolkit take of the processor: Google Benchmark's figures, by its
// options.

#include "files/CSettingsFile.h"
#include "files/MParameterFile.h"
#include "link/CAnswerAssembler.h"
#include "model/CItemManager.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace {

/// One file in memory, for reading.
class CMemoryStore : public IFileStore {
public:
    explicit CMemoryStore(std::string p_strContent)
        : m_strContent(std::move(p_strContent)) {}

    [[nodiscard]] bool Exists(const std::string& /*p_strPath*/) const override { return true; }
    std::unique_ptr<IFileReader> OpenToRead(const std::string& /*p_strPath*/) override {
        return std::make_unique<CReader>(m_strContent);
    }
    std::unique_ptr<IFileWriter> OpenToWrite(const std::string& /*p_strPath*/) override {
        return nullptr;
    }

private:
    class CReader : public IFileReader {
    public:
        explicit CReader(const std::string& p_strContent)
            : m_objLeft(p_strContent) {}
        [[nodiscard]] std::uint64_t Size() const override { return m_objLeft.size(); }
        std::optional<std::size_t> Read(std::span<char> p_arrBuffer) override {
            const std::size_t iCount = std::min(p_arrBuffer.size(), m_objLeft.size());
            std::copy_n(m_objLeft.begin(), iCount, p_arrBuffer.begin());
            m_objLeft = m_objLeft.subspan(iCount);
            return iCount;
        }

    private:
        std::span<const char> m_objLeft;
    };

    std::string m_strContent;
};

/// A printer's answer to a read of the parameters: the set command's own fields.
std::vector<std::uint8_t> ParameterAnswer(const CItemManager& p_objItems) {
    ItemArray objItems;
    GroupItems(p_objItems, MAnswer::Parameter, objItems);
    std::string strAnswer = "{1";
    for (const ItemRef& objItem : objItems) {
        strAnswer += objItem->GetValueString();
    }
    strAnswer += "|}";
    return {strAnswer.begin(), strAnswer.end()};
}

void DistributeAnswer(benchmark::State& p_objState) {
    const CItemManager objItems;
    const std::vector<std::uint8_t> objAnswer = ParameterAnswer(objItems);
    for (auto objRound : p_objState) {
        benchmark::DoNotOptimize(
            MAnswer::DistributeAnswer(objItems, objAnswer, MAnswer::Parameter));
    }
}
BENCHMARK(DistributeAnswer);

void AssembleAnswer(benchmark::State& p_objState) {
    const CItemManager objItems;
    const std::vector<std::uint8_t> objAnswer = ParameterAnswer(objItems);
    CAnswerAssembler objAssembler;
    for (auto objRound : p_objState) {
        for (const std::uint8_t iByte : objAnswer) {
            benchmark::DoNotOptimize(objAssembler.Append(iByte, objAnswer.size()));
        }
    }
}
BENCHMARK(AssembleAnswer);

void BuildCommands(benchmark::State& p_objState) {
    const CItemManager objItems;
    for (auto objRound : p_objState) {
        benchmark::DoNotOptimize(MCommand::SetCommands(objItems));
    }
}
BENCHMARK(BuildCommands);

void LoadFile(benchmark::State& p_objState) {
    const CItemManager objItems;
    std::string strContent;
    for (const std::string& strLine : MParameterFile::BuildLines(objItems)) {
        strContent += strLine + "\r\n";
    }
    CMemoryStore objStore(strContent);
    const CSettingsFile objFile({&MParameterFile::BuildLines, &MParameterFile::StoreLine}, objItems,
                                objStore);
    for (auto objRound : p_objState) {
        benchmark::DoNotOptimize(objFile.Load("file"));
    }
}
BENCHMARK(LoadFile);

}  // namespace

BENCHMARK_MAIN();
