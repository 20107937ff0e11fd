#pragma once

#include "platform/IFileStore.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>

/// Files in memory, or a real store's, that fail at the operation that the test names.
///
/// Operations are counted from 1: every opening, read, write and commit. In memory a file is
/// written as the interface has it: what stood there stays until a commit.
class CFakeFileStore : public IFileStore {
public:
    /// Files in memory.
    CFakeFileStore() = default;
    /// The files of p_objReal, which is not owned and outlives this.
    explicit CFakeFileStore(IFileStore& p_objReal)
        : m_objReal(&p_objReal) {}

    std::map<std::string, std::string> m_strFiles;  ///< path and content, in memory
    std::set<std::string> m_strHidden;              ///< those of them that no listing shows

    /// Lets operation number p_iOperation fail, and it alone.
    void FailAt(int p_iOperation) { m_objCount.m_iFailAt = p_iOperation; }

    [[nodiscard]] int Operations() const { return m_objCount.m_iDone; }
    /// Readers and writers that still exist.
    [[nodiscard]] int OpenFiles() const { return m_objCount.m_iOpen; }

    [[nodiscard]] bool Exists(const std::string& p_strPath) const override {
        return m_objReal != nullptr
                   ? m_objReal->Exists(p_strPath)
                   : m_strFiles.contains(p_strPath) && !m_strHidden.contains(p_strPath);
    }

    std::unique_ptr<IFileReader> OpenToRead(const std::string& p_strPath) override {
        if (!m_objCount.Succeeds()) {
            return nullptr;
        }
        auto objInner =
            m_objReal != nullptr ? m_objReal->OpenToRead(p_strPath) : Remember(p_strPath);
        return objInner ? std::make_unique<CReader>(std::move(objInner), m_objCount) : nullptr;
    }

    std::unique_ptr<IFileWriter> OpenToWrite(const std::string& p_strPath) override {
        if (!m_objCount.Succeeds()) {
            return nullptr;
        }
        auto objInner = m_objReal != nullptr
                            ? m_objReal->OpenToWrite(p_strPath)
                            : std::make_unique<CMemoryWriter>(m_strFiles, p_strPath);
        return objInner ? std::make_unique<CWriter>(std::move(objInner), m_objCount) : nullptr;
    }

private:
    struct Count {
        int m_iDone = 0;
        int m_iFailAt = 0;
        int m_iOpen = 0;

        bool Succeeds() { return ++m_iDone != m_iFailAt; }
    };

    /// Counts as an open file as long as it exists.
    class COpen {
    public:
        explicit COpen(Count& p_objCount)
            : m_objCount(p_objCount) {
            ++m_objCount.m_iOpen;
        }
        ~COpen() { --m_objCount.m_iOpen; }
        COpen(const COpen&) = delete;
        COpen& operator=(const COpen&) = delete;

        Count& m_objCount;
    };

    class CReader : public IFileReader {
    public:
        CReader(std::unique_ptr<IFileReader> p_objInner, Count& p_objCount)
            : m_objInner(std::move(p_objInner))
            , m_objOpen(p_objCount) {}

        [[nodiscard]] std::uint64_t Size() const override { return m_objInner->Size(); }

        std::optional<std::size_t> Read(std::span<char> p_arrBuffer) override {
            return m_objOpen.m_objCount.Succeeds() ? m_objInner->Read(p_arrBuffer) : std::nullopt;
        }

    private:
        std::unique_ptr<IFileReader> m_objInner;
        COpen m_objOpen;
    };

    class CWriter : public IFileWriter {
    public:
        CWriter(std::unique_ptr<IFileWriter> p_objInner, Count& p_objCount)
            : m_objInner(std::move(p_objInner))
            , m_objOpen(p_objCount) {}

        bool Write(std::string_view p_strBytes) override {
            return m_objOpen.m_objCount.Succeeds() && m_objInner->Write(p_strBytes);
        }

        bool Commit() override { return m_objOpen.m_objCount.Succeeds() && m_objInner->Commit(); }

    private:
        std::unique_ptr<IFileWriter> m_objInner;
        COpen m_objOpen;
    };

    class CMemoryReader : public IFileReader {
    public:
        explicit CMemoryReader(std::string p_strBytes)
            : m_strBytes(std::move(p_strBytes)) {}

        [[nodiscard]] std::uint64_t Size() const override { return m_strBytes.size(); }

        std::optional<std::size_t> Read(std::span<char> p_arrBuffer) override {
            const std::size_t iCount = m_strBytes.copy(p_arrBuffer.data(), p_arrBuffer.size());
            m_strBytes.erase(0, iCount);
            return iCount;
        }

    private:
        std::string m_strBytes;
    };

    class CMemoryWriter : public IFileWriter {
    public:
        CMemoryWriter(std::map<std::string, std::string>& p_strFiles, std::string p_strPath)
            : m_strFiles(p_strFiles)
            , m_strPath(std::move(p_strPath)) {}

        bool Write(std::string_view p_strBytes) override {
            m_strBytes += p_strBytes;
            return true;
        }

        bool Commit() override {
            m_strFiles[m_strPath] = m_strBytes;
            return true;
        }

    private:
        std::map<std::string, std::string>& m_strFiles;
        std::string m_strPath;
        std::string m_strBytes;
    };

    std::unique_ptr<IFileReader> Remember(const std::string& p_strPath) const {
        const auto objFile = m_strFiles.find(p_strPath);
        return objFile != m_strFiles.end() ? std::make_unique<CMemoryReader>(objFile->second)
                                           : nullptr;
    }

    IFileStore* m_objReal = nullptr;
    Count m_objCount;
};
