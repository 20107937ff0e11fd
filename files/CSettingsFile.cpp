#include "files/CSettingsFile.h"

#include "files/CLineReader.h"

namespace {

constexpr std::string_view LineEnd = "\r\n";

}  // namespace

CSettingsFile::CSettingsFile(const Format& p_objFormat, const CItemManager& p_objItemManager,
                             IFileStore& p_objFileStore)
    : m_objFormat(p_objFormat)
    , m_objItemManager(p_objItemManager)
    , m_objFileStore(p_objFileStore) {}

bool CSettingsFile::Save(const std::string& p_strPath) const {
    const std::vector<std::string> strLines = m_objFormat.m_objBuildLines(m_objItemManager);
    const std::unique_ptr<IFileWriter> objWriter = m_objFileStore.OpenToWrite(p_strPath);
    if (!objWriter) {
        return false;
    }
    for (const std::string& strLine : strLines) {
        if (!objWriter->Write(strLine) || !objWriter->Write(LineEnd)) {
            return false;
        }
    }
    return objWriter->Commit();
}

bool CSettingsFile::Load(const std::string& p_strPath) const {
    const std::unique_ptr<IFileReader> objReader = m_objFileStore.OpenToRead(p_strPath);
    if (!objReader || objReader->Size() > LargestFile) {
        return false;
    }
    CLineReader objLines(*objReader, LargestFile);
    std::string strLine;
    for (;;) {
        switch (objLines.Next(strLine)) {
        case CLineReader::Result::Failure:
            return false;
        case CLineReader::Result::End:
            return true;
        case CLineReader::Result::Line:
            break;
        }
        if (!m_objFormat.m_objStoreLine(strLine, m_objItemManager)) {
            return false;
        }
    }
}
