#pragma once

#include "platform/IStateStore.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

/// State in memory, which fails where a test says so and tells what was done with it.
class CFakeStateStore : public IStateStore {
public:
    std::map<std::string, std::string> m_strFiles;    ///< by their names
    std::map<std::string, std::string> m_strHolders;  ///< locks that are taken, and by whom
    std::string m_strNoLock;                          ///< why no lock can be had; empty: they can
    std::set<std::string> m_strUnreadable;            ///< files that are there and cannot be read
    std::vector<std::string> m_strDone;  ///< "lock a", "write b", "remove b", "unlock a"

    /// Lets write or remove number p_iOperation, counted from 1, fail, and it alone.
    void FailAt(int p_iOperation) { m_iFailAt = p_iOperation; }
    /// Writes and removes so far.
    [[nodiscard]] int Operations() const { return m_iOperations; }

    std::unique_ptr<ILock> Lock(const std::string& p_strName, const std::string& p_strHolder,
                                std::string& p_strWhy, bool& p_bHeld) override {
        const auto objHeld = m_strHolders.find(p_strName);
        p_bHeld = objHeld != m_strHolders.end();
        if (p_bHeld || !m_strNoLock.empty()) {
            p_strWhy = p_bHeld ? objHeld->second : m_strNoLock;
            return nullptr;
        }
        m_strHolders[p_strName] = p_strHolder;
        m_strDone.push_back("lock " + p_strName);
        return std::make_unique<CLock>(*this, p_strName);
    }

    bool Write(const std::string& p_strName, const std::string& p_strBytes) override {
        m_strDone.push_back("write " + p_strName);
        if (!Succeeds()) {
            return false;
        }
        m_strFiles[p_strName] = p_strBytes;
        return true;
    }

    [[nodiscard]] std::optional<std::string> Read(const std::string& p_strName) const override {
        const auto objFound = m_strFiles.find(p_strName);
        return objFound == m_strFiles.end() || m_strUnreadable.contains(p_strName)
                   ? std::nullopt
                   : std::optional(objFound->second);
    }

    [[nodiscard]] bool Stands(const std::string& p_strName) const override {
        return m_strFiles.contains(p_strName);
    }

    bool Remove(const std::string& p_strName) override {
        m_strDone.push_back("remove " + p_strName);
        if (!Succeeds()) {
            return false;
        }
        m_strFiles.erase(p_strName);
        return true;
    }

    [[nodiscard]] std::vector<std::string> Names(const std::string& p_strEnd) const override {
        std::vector<std::string> strNames;
        for (const auto& [strName, strBytes] : m_strFiles) {
            if (strName.ends_with(p_strEnd)) {
                strNames.push_back(strName);
            }
        }
        return strNames;
    }

    [[nodiscard]] std::string Path(const std::string& p_strName) const override {
        return "/state/" + p_strName;
    }

private:
    class CLock : public ILock {
    public:
        CLock(CFakeStateStore& p_objStore, std::string p_strName)
            : m_objStore(p_objStore)
            , m_strName(std::move(p_strName)) {}
        CLock(const CLock&) = delete;
        CLock& operator=(const CLock&) = delete;
        ~CLock() override {
            m_objStore.m_strHolders.erase(m_strName);
            m_objStore.m_strDone.push_back("unlock " + m_strName);
        }

    private:
        CFakeStateStore& m_objStore;
        std::string m_strName;
    };

    bool Succeeds() { return ++m_iOperations != m_iFailAt; }

    int m_iOperations = 0;
    int m_iFailAt = 0;
};
