#include "tests/cli/CCliFixture.h"
#include "tests/cli/CMetricsReader.h"

namespace {

class CStatusCommandTest : public CCliFixture {
protected:
    CMetricsReader Metrics(const std::string& p_strName = "a.prom") {
        return CMetricsReader(m_objFolder.Content(p_strName));
    }

    const std::string m_strMetrics = m_objFolder.Path("a.prom");
    CFakePrinter& m_objPrinter = m_objPrinters.m_objPrinters["usb"];
};

TEST_F(CStatusCommandTest, TellsCodeAndText) {
    EXPECT_EQ(Run({"status", "usb"}).m_strOut, "00 ON LINE\n");
    const Ran objRan = RunJson({"status", "usb"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson, Json::parse(R"({"target": "usb", "code": "00", "text": "ON LINE",
                                                "known": true, "seconds": 0.0254})"));
    EXPECT_EQ(Keys(objRan.m_objJson),
              (std::vector<std::string>{"target", "code", "text", "known", "seconds"}));
    EXPECT_EQ(m_objPrinters.m_strAsked, (std::vector<std::string>{"usb: status", "usb: status"}));
}

TEST_F(CStatusCommandTest, ATroubledPrinterHasBeenAskedAllTheSame) {
    m_objPrinter.m_strCode = "11";
    m_objPrinter.m_strText = "Paper JAM";
    EXPECT_EQ(Run({"status", "usb"}).m_strOut, "11 Paper JAM\n");
    EXPECT_EQ(RunJson({"status", "usb"}).m_iCode, 0);
}

TEST_F(CStatusCommandTest, AnUnknownCodeIsToldAsSuch) {
    m_objPrinter.m_strCode = "\xE4Z";
    m_objPrinter.m_strText = "";
    EXPECT_EQ(Run({"status", "usb"}).m_strOut, "\u00E4Z (an unknown code)\n");
    const Ran objRan = RunJson({"status", "usb"});
    EXPECT_EQ(objRan.m_iCode, 0);
    EXPECT_EQ(objRan.m_objJson["known"], false);
    EXPECT_EQ(objRan.m_objJson["code"], "\u00E4Z");
    EXPECT_EQ(objRan.m_objJson["text"], nullptr);
}

TEST_F(CStatusCommandTest, AKnownCodeMayHaveNoText) {
    m_objPrinter.m_strCode = "40";
    m_objPrinter.m_strText = "";
    EXPECT_EQ(Run({"status", "usb"}).m_strOut, "40\n");
    EXPECT_EQ(RunJson({"status", "usb"}).m_objJson["known"], true);
}

TEST_F(CStatusCommandTest, BlanksInFrontAreForTheWindowsLabel) {
    m_objPrinter.m_strCode = "55";
    m_objPrinter.m_strText = "  Save Mode";
    EXPECT_EQ(Run({"status", "usb"}).m_strOut, "55 Save Mode\n");
    EXPECT_EQ(RunJson({"status", "usb"}).m_objJson["text"], "Save Mode");
}

TEST_F(CStatusCommandTest, AFailureLeavesTheRestEmpty) {
    m_objPrinter.m_objFailure.m_iKind = CFailure::Kind::UsbNoAnswer;
    m_objPrinter.m_bSent = true;
    const Ran objRan = RunJson({"status", "usb"});
    EXPECT_EQ(objRan.m_iCode, MExitCode::Failed);
    for (const char* const strKey : {"code", "text", "known", "seconds"}) {
        EXPECT_EQ(objRan.m_objJson[strKey], nullptr) << strKey;
    }
    EXPECT_EQ(Run({"status", "usb"}).m_strOut, "");
}

TEST_F(CStatusCommandTest, ATerminalIsToldHowFarItIs) {
    m_iErrorWidth = 80;
    EXPECT_TRUE(Has(Run({"status", "usb"}).m_strError, "usb: asking for the status ..."));
}

// For a monitoring system.

TEST_F(CStatusCommandTest, WritesWhatAMonitoringSystemReads) {
    m_objPrinter.m_strCode = "11";
    m_objPrinter.m_strText = "Paper JAM";
    EXPECT_EQ(Run({"status", "usb", "--prometheus", m_strMetrics}).m_strOut, "11 Paper JAM\n");
    EXPECT_EQ(m_objFolder.Content("a.prom"),
              "# HELP varden_printer_reachable Whether the printer has told its status.\n"
              "# TYPE varden_printer_reachable gauge\n"
              "varden_printer_reachable{target=\"usb\"} 1\n"
              "# HELP varden_printer_status_code The code of the printer's status; 0 is on line.\n"
              "# TYPE varden_printer_status_code gauge\n"
              "varden_printer_status_code{target=\"usb\"} 11\n"
              "# HELP varden_printer_status_info The printer's status in words.\n"
              "# TYPE varden_printer_status_info gauge\n"
              "varden_printer_status_info{target=\"usb\",code=\"11\",text=\"Paper JAM\"} 1\n"
              "# HELP varden_printer_status_seconds How long the printer took to tell its status.\n"
              "# TYPE varden_printer_status_seconds gauge\n"
              "varden_printer_status_seconds{target=\"usb\"} 0.025\n");
    EXPECT_EQ(Metrics().Complaint(), "");
    EXPECT_EQ(Metrics().Value("varden_printer_status_code"), 11);
}

TEST_F(CStatusCommandTest, WhatCannotBeReachedIsWrittenToo) {
    m_objPrinter.m_objFailure.m_iKind = CFailure::Kind::UsbNotReady;
    Make("a.prom", "old");
    EXPECT_EQ(Run({"status", "usb", "--prometheus", m_strMetrics}).m_iCode,
              MExitCode::NotReachable);
    EXPECT_EQ(Metrics().Complaint(), "");
    EXPECT_EQ(Metrics().Names(), std::vector<std::string>{"varden_printer_reachable"});
    EXPECT_EQ(Metrics().Value("varden_printer_reachable"), 0);
}

TEST_F(CStatusCommandTest, WhatIsNotThereIsWrittenToo) {
    m_objPrinter.m_objRefused.emplace(MExitCode::NotReachable,
                                      CCommandError::Texts{"There is none", {}, {}, {}});
    EXPECT_EQ(Run({"status", "usb", "--prometheus", m_strMetrics}).m_iCode,
              MExitCode::NotReachable);
    EXPECT_EQ(Metrics().Value("varden_printer_reachable"), 0);
}

TEST_F(CStatusCommandTest, AWrongCommandLineWritesNothing) {
    EXPECT_EQ(Run({"status", "nonsense", "--prometheus", m_strMetrics}).m_iCode, MExitCode::Wrong);
    m_objPrinter.m_objRefused.emplace(MExitCode::Wrong,
                                      CCommandError::Texts{"There are several", {}, {}, {}});
    EXPECT_EQ(Run({"status", "usb", "--prometheus", m_strMetrics}).m_iCode, MExitCode::Wrong);
    EXPECT_TRUE(m_objFolder.Names().empty());
}

TEST_F(CStatusCommandTest, ANumberThatIsNoneIsLeftOut) {
    m_objPrinter.m_strCode = "A\"";
    m_objPrinter.m_strText = "";
    EXPECT_EQ(Run({"status", "usb", "--prometheus", m_strMetrics}).m_iCode, 0);
    EXPECT_EQ(Metrics().Complaint(), "");
    EXPECT_EQ(Metrics().Names(),
              (std::vector<std::string>{"varden_printer_reachable", "varden_printer_status_info",
                                        "varden_printer_status_seconds"}));
    EXPECT_EQ(Metrics().Label("varden_printer_status_info", "code"), "A\"");
}

TEST_F(CStatusCommandTest, AnyTargetIsALabel) {
    for (const std::string strTarget :
         {"com:/dev/a\\b", "com:/dev/\"q\"", "com:/dev/a\nb", "com:/dev/d\u00FC"}) {
        SCOPED_TRACE(strTarget);
        EXPECT_EQ(Run({"status", strTarget, "--prometheus", m_strMetrics}).m_iCode, 0);
        EXPECT_EQ(Metrics().Complaint(), "");
        EXPECT_EQ(Metrics().Label("varden_printer_reachable", "target"), strTarget);
    }
    EXPECT_EQ(Run({"status", "com:/dev/\xFF", "--prometheus", m_strMetrics}).m_iCode, 0);
    EXPECT_EQ(Metrics().Label("varden_printer_reachable", "target"), "com:/dev/<FF>");
}

TEST_F(CStatusCommandTest, AFileThatCannotBeWrittenIsAFailureAndTheOldOneStays) {
    for (int iOperation = 1; iOperation <= 3; ++iOperation) {
        Make("a.prom", "old");
        CFakeFileStore objFiles(m_objRealFiles);
        objFiles.FailAt(iOperation);
        const CEnvironment objEnvironment = Environment(objFiles, m_objSerialPorts, {});
        std::ostringstream objOut;
        std::ostringstream objError;
        COutput objOutput(objOut, objError, m_objInterrupt);
        EXPECT_EQ(CProgram(objEnvironment)
                      .Run({"status", "usb", "--prometheus", m_strMetrics}, objOutput),
                  MExitCode::Failed);
        EXPECT_TRUE(Has(objError.str(), "Cannot write " + m_strMetrics));
        EXPECT_EQ(m_objFolder.Content("a.prom"), "old");
    }
    EXPECT_EQ(m_objFolder.Names(), std::vector<std::string>{"a.prom"});
}

TEST_F(CStatusCommandTest, ThePrintersFailureGoesBeforeTheFiles) {
    m_objPrinter.m_objFailure.m_iKind = CFailure::Kind::UsbMismatch;
    const std::string strNowhere = m_objFolder.Path("no/a.prom");
    const Ran objRan = RunJson({"status", "usb", "--prometheus", strNowhere});
    EXPECT_EQ(objRan.m_iCode, MExitCode::NotReachable);
    EXPECT_EQ(objRan.m_objJson["error"]["what"], "usb is no Varden printer");
    EXPECT_TRUE(Has(objRan.m_strError, "varden: Cannot write " + strNowhere + "\n"));
}

}  // namespace
