#pragma once

#include <QTemporaryDir>

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

/// A real folder that goes with the object. Names are relative to it.
class CFolder {
public:
    CFolder() = default;
    CFolder(const CFolder&) = delete;
    CFolder& operator=(const CFolder&) = delete;
    // The toolkit's own folder cannot remove names that it cannot express.
    ~CFolder() {
        for (const auto& objEntry : std::filesystem::directory_iterator(Path())) {
            std::filesystem::remove_all(objEntry.path());
        }
    }

    [[nodiscard]] std::string Path(const std::string& p_strName = {}) const {
        const std::string strFolder = m_objFolder.path().toStdString();
        return p_strName.empty() ? strFolder : strFolder + "/" + p_strName;
    }

    void Make(const std::string& p_strName, const std::string& p_strContent) const {
        std::ofstream(Path(p_strName), std::ios::binary) << p_strContent;
    }

    /// A file's bytes.
    [[nodiscard]] std::string Content(const std::string& p_strName) const {
        std::ifstream objFile(Path(p_strName), std::ios::binary);
        return objFile ? std::string(std::istreambuf_iterator<char>(objFile), {})
                       : "(cannot be read)";
    }

    /// The permissions of what a name leads to.
    [[nodiscard]] unsigned Mode(const std::string& p_strName) const {
        struct stat objStatus = {};
        return ::stat(Path(p_strName).c_str(), &objStatus) == 0 ? objStatus.st_mode & 07777U : 0U;
    }

    /// Everything in the folder, hidden or not, in order.
    [[nodiscard]] std::vector<std::string> Names() const {
        std::vector<std::string> strNames;
        for (const auto& objEntry : std::filesystem::directory_iterator(Path())) {
            strNames.push_back(objEntry.path().filename().string());
        }
        std::sort(strNames.begin(), strNames.end());
        return strNames;
    }

private:
    QTemporaryDir m_objFolder;
};
