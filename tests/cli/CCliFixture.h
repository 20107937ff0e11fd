#pragma once

#include "cli/CDefaultsSource.h"
#include "cli/CFileSource.h"
#include "cli/CProgram.h"
#include "cli/CTargetSource.h"
#include "platform/qt/CQtFileStore.h"
#include "platform/qt/CStateFolder.h"
#include "tests/cli/CFakeInterrupt.h"
#include "tests/cli/CFakePrinters.h"
#include "tests/cli/CFakeTerminal.h"
#include "tests/cli/CJsonSchema.h"
#include "tests/fakes/CFakeFileStore.h"
#include "tests/platform_qt/CFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <sstream>
#include <string>
#include <vector>

class CFakeSerialPorts : public ISerialPortLister {
public:
    std::vector<CSerialPortEntry> SerialPorts() override { return m_objEntries; }
    std::vector<CSerialPortEntry> m_objEntries;
};

class CFakeUsbPrinters : public IUsbPrinterLister {
public:
    std::vector<CUsbPrinterEntry> UsbPrinters() override { return m_objEntries; }
    std::vector<CUsbPrinterEntry> m_objEntries;
};

class CFakeAccess : public IDeviceAccess {
public:
    [[nodiscard]] CDeviceState Look(const std::string& p_strDevice) const override {
        const auto objFound = m_objStates.find(p_strDevice);
        return objFound != m_objStates.end() ? objFound->second : CDeviceState{};
    }
    std::map<std::string, CDeviceState> m_objStates;
};

/// The program without a process: command lines in, what it prints out. Files are real ones, in a
/// folder of the test's own. Every JSON that is printed is held against the schema.
class CCliFixture : public ::testing::Test {
protected:
    using Json = nlohmann::ordered_json;
    using Arguments = std::vector<std::string>;

    /// What one command line has brought.
    struct Ran {
        int m_iCode = -1;
        std::string m_strOut;
        std::string m_strError;
        Json m_objJson;  // what is on standard output, of a command line with --json
    };

    Ran Run(const Arguments& p_strArguments) {
        std::ostringstream objOut;
        std::ostringstream objError;
        CProgram objProgram(Environment());
        COutput objOutput(objOut, objError, m_objInterrupt, m_iWidth, m_iErrorWidth);
        Ran objRan;
        objRan.m_iCode = objProgram.Run(p_strArguments, objOutput);
        objRan.m_strOut = objOut.str();
        objRan.m_strError = objError.str();
        if (std::ranges::find(p_strArguments, "--json") != p_strArguments.end()) {
            EXPECT_EQ(CJsonSchema::OfOutputs().Complaint(objRan.m_strOut), "");
            objRan.m_objJson = Json::parse(objRan.m_strOut, nullptr, false);
            const bool bError =
                objRan.m_iCode != MExitCode::Done && objRan.m_iCode != MExitCode::Different;
            EXPECT_EQ(objRan.m_objJson.contains("error"), bError);
        }
        return objRan;
    }

    /// The same with --json behind.
    Ran RunJson(Arguments p_strArguments) {
        p_strArguments.emplace_back("--json");
        return Run(p_strArguments);
    }

    CEnvironment Environment() {
        return Environment(m_objFiles, m_objSerialPorts,
                           {&m_objDefaults, &m_objTargets, &m_objFileSource});
    }
    CEnvironment Environment(IFileStore& p_objFiles, ISerialPortLister& p_objSerialPorts,
                             const std::vector<ISettingsSource*>& p_objSources) {
        return {p_objFiles,
                p_objSerialPorts,
                m_objUsbPrinters,
                m_objAccess,
                m_objPrinters,
                m_objTerminal,
                p_objSources,
                [this](const std::string& p_strFolder) {
                    return std::make_unique<CStateFolder>(
                        p_strFolder.empty() ? m_objFolder.Path("state") : p_strFolder);
                }};
    }

    /// The path of a file of the test, with that content.
    std::string Make(const std::string& p_strName, const std::string& p_strContent) {
        m_objFolder.Make(p_strName, p_strContent);
        return m_objFolder.Path(p_strName);
    }

    /// One of the files that varden_settings_samples makes.
    static std::string TestFile(const std::string& p_strName) {
        return std::string(VARDEN_TEST_FILES) + "/" + p_strName;
    }

    static std::vector<std::string> Keys(const Json& p_objJson) {
        std::vector<std::string> strKeys;
        for (const auto& objMember : p_objJson.items()) {
            strKeys.push_back(objMember.key());
        }
        return strKeys;
    }

    static bool Has(const std::string& p_strText, const std::string& p_strPart) {
        return p_strText.find(p_strPart) != std::string::npos;
    }

    CFolder m_objFolder;
    CQtFileStore m_objRealFiles;
    CFakeFileStore m_objFiles{m_objRealFiles};  // fails where a test says so
    CFakeSerialPorts m_objSerialPorts;
    CFakeUsbPrinters m_objUsbPrinters;
    CFakeAccess m_objAccess;
    CFakePrinters m_objPrinters;
    CFakeTerminal m_objTerminal;
    CFakeInterrupt m_objInterrupt;
    CDefaultsSource m_objDefaults;
    CTargetSource m_objTargets{m_objPrinters, m_objAccess};
    CFileSource m_objFileSource{m_objFiles};
    std::size_t m_iWidth = 0;
    std::size_t m_iErrorWidth = 0;
};
