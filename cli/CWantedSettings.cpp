#include "cli/CWantedSettings.h"

#include "cli/MSettingsFile.h"
#include "cli/MUtf8.h"
#include "model/MSettingText.h"
#include "protocol/MSettingRoute.h"

#include <algorithm>

namespace {

using MSettings::Row;

bool IsCarried(const Row& p_objRow) {
    return MSettingRoute::CarriedBy(p_objRow) != MSettingRoute::Command::None;
}

}  // namespace

void CWantedSettings::TakeFile(IFileStore& p_objFiles, const std::string& p_strPath) {
    const CFileContent objContent = MSettingsFile::Read(p_objFiles, p_strPath);
    if (!objContent.m_objProblems.empty()) {
        throw objContent.Error(p_strPath);
    }
    for (const Row& objRow : MSettings::All()) {
        if (!objContent.m_objSnapshot.IsKnown(objRow)) {
            continue;
        }
        if (!IsCarried(objRow)) {
            m_strLeftOut.emplace_back(objRow.m_strName);
            continue;
        }
        for (const MSettings::Slot objSlot : objRow.Items()) {
            (m_objWanted.Items().*objSlot)->m_vValue =
                (objContent.m_objSnapshot.Items().*objSlot)->m_vValue;
        }
        m_objWanted.SetKnown(objRow);
    }
}

void CWantedSettings::TakeWords(const std::vector<std::string>& p_strWords) {
    for (const std::string& strWord : p_strWords) {
        TakeWord(strWord);
    }
}

void CWantedSettings::TakeWord(const std::string& p_strWord) {
    const std::size_t iEquals = p_strWord.find('=');
    const std::string strName = p_strWord.substr(0, iEquals);
    if (iEquals == std::string::npos) {
        Add(strName, "a value is missing, as in speed=9600bps");
        return;
    }
    const Row* const objRow = MSettings::Find(strName);
    if (objRow == nullptr) {
        Add(strName, "there is no such setting");
        return;
    }
    if (!IsCarried(*objRow)) {
        Add(strName, "it can only be read: no command of the printer carries it");
        return;
    }
    if (std::ranges::find(m_strNamed, strName) != m_strNamed.end()) {
        Add(strName, "it is there twice");
        return;
    }
    m_strNamed.push_back(strName);
    Set(*objRow, p_strWord.substr(iEquals + 1), m_objWanted);
}

bool CWantedSettings::Set(const Row& p_objRow, const std::string& p_strValue,
                          CSnapshot& p_objSnapshot) {
    try {
        const auto strValue = MUtf8::ToLatin1(p_strValue);
        MSettingText::Set(p_objRow, p_objSnapshot.Items(), strValue ? *strValue : "\xFF");
        p_objSnapshot.SetKnown(p_objRow);
        return true;
    } catch (const CSettingError&) {
        Add(std::string(p_objRow.m_strName), "\"" + p_strValue + "\" is none of its values (" +
                                                 MSettingText::Allowed(p_objRow) + ")");
        return false;
    }
}

CSnapshot CWantedSettings::Value(const std::string& p_strName, const std::string& p_strValue) {
    CSnapshot objSnapshot;
    Set(MSettings::Get(p_strName), p_strValue, objSnapshot);
    return objSnapshot;
}

bool CWantedSettings::IsEmpty() const {
    return std::ranges::none_of(MSettings::All(),
                                [&](const Row& p_objRow) { return m_objWanted.IsKnown(p_objRow); });
}

void CWantedSettings::Add(const std::string& p_strSetting, const std::string& p_strReason) {
    m_objProblems.push_back({0, p_strSetting, p_strReason});
}
