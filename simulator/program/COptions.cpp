#include "simulator/program/COptions.h"

#include "simulator/program/COptionReader.h"
#include "simulator/program/MFaultOptions.h"

#include <QFile>

namespace {

constexpr const char* Description =
    "Plays a Varden label printer on the network, on a serial line or on USB, or many on the\n"
    "network: it answers the setting tool's commands, keeps the settings it is sent, and can be\n"
    "told to answer badly, to store wrongly, to lose its power and to move. Faults can be "
    "combined.\n"
    "\n"
    "What passes is printed: \"> \" a command received and what it means, \"< \" bytes sent, \"! "
    "\"\n"
    "what went wrong. A byte that cannot be printed is shown by its code, such as <01> or <FF>.\n"
    "Ctrl-C ends the program and prints how many commands of each kind came. The signal USR1\n"
    "writes the settings (see --dump), USR2 takes the power for a while (see --power-back).\n"
    "\n"
    "  varden-printer-simulator                         a printer that behaves, on 127.0.0.1:8000\n"
    "  varden-printer-simulator --serial --alias /dev/com1   a printer on the serial port COM1\n"
    "  varden-printer-simulator --usb varden-setting-tool   the tool, with a printer on USB\n"
    "  varden-printer-simulator --printers 1000         as many, on 127.0.0.1 and what follows\n"
    "  varden-printer-simulator --status 14             a printer that has run out of ribbon\n"
    "  varden-printer-simulator --delay 900 --pieces 5  slow answers, bit by bit\n"
    "  varden-printer-simulator --power-cut 40 --forget the power goes in the middle of a SET";

void AddOptions(QCommandLineParser& p_objParser) {
    p_objParser.setApplicationDescription(Description);
    p_objParser.addPositionalArgument("PROGRAM", "With --usb: the program to run.",
                                      "[--usb PROGRAM [ARGUMENT...]]");
    p_objParser.setOptionsAfterPositionalArgumentsMode(
        QCommandLineParser::ParseAsPositionalArguments);
    // clang-format off
    p_objParser.addOptions({
        {{"h", "help"}, "Shows this text."},
        {"host", "The IP address to listen on, 127.0.0.1 unless given. 0.0.0.0 lets other computers connect.", "ADDRESS"},
        {"port", "The TCP port to listen on, 8000 unless given. 0 takes any free one; the first line printed tells which.", "PORT"},
        {"serial", "Plays on a serial line, a pseudo-terminal, in place of the network; the first line printed tells its name."},
        {"alias", "With --serial: makes a link of that name to the line, and removes it at the end. What is already there stays, and is an error.", "PATH"},
        {"usb", "Runs PROGRAM with its arguments in an emulated system in which the printer is plugged in on USB; ends with it, and with its exit code. The last of the options."},
        {"status", "The two characters of the status code in answers, 00 (ON LINE) unless given; 06 (Command Error) always answers a wrong command.", "CODE"},
        {"fill", "What fills host name and DHCP client identifier up in answers: blanks, unless given, or ff for the byte 0xFF.", "WITH"},
        {"printers", "So many printers, each with its own settings and its own address: that of --host and those that follow, all at the same port. One line for each tells where it listens.", "N"},
        {"by-port", "With --printers: all at the same address, each at its own port, from --port on; with --port 0 any free ones."},
        {"own-address", "The settings name from the start the address and the port at which the printer listens."},
        {"faulty", "With --printers: the faults below, and --status, are those of printer N only, the others behave. Can be given several times.", "N"},
        {"log", "Writes what passes into a file, for programs: one JSON object a line.", "FILE"},
        {"dump", "Writes the settings of all printers into a file, a JSON object, at the end and whenever the signal USR1 comes.", "FILE"},
    });
    // clang-format on
    p_objParser.addOptions(MFaultOptions::All());
}

void ReadAddress(COptionReader& p_objReader, COptions& p_objOptions) {
    if (p_objReader.IsSet("host") &&
        !p_objOptions.m_objHost.setAddress(p_objReader.Value("host"))) {
        p_objReader.Wrong("host", "an IP address");
    }
    if (const auto iPort = p_objReader.Number("port", 0, 65'535)) {
        p_objOptions.m_iPort = static_cast<std::uint16_t>(*iPort);
    }
}

void ReadManner(COptionReader& p_objReader, COptions& p_objOptions) {
    if (p_objReader.IsSet("status")) {
        p_objOptions.m_strStatus = p_objReader.Value("status").toStdString();
        if (!CPrinter::IsStatus(p_objOptions.m_strStatus)) {
            p_objReader.Wrong("status", "two printable characters");
        }
    }
    const QString strFill = p_objReader.Value("fill");
    if (strFill == "ff") {
        p_objOptions.m_cFill = CPrinter::Fill;
    } else if (p_objReader.IsSet("fill") && strFill != "blanks") {
        p_objReader.Wrong("fill", "blanks or ff");
    }
}

void ReadFile(COptionReader& p_objReader, const QString& p_strOption, std::string& p_strFile) {
    p_strFile = QFile::encodeName(p_objReader.Value(p_strOption)).toStdString();
    if (p_objReader.IsSet(p_strOption) && p_strFile.empty()) {
        p_objReader.Wrong(p_strOption, "a path");
    }
}

/// What is wrong with as many printers where they are to be; empty when nothing is.
QString FleetError(const COptions& p_objOptions) {
    const auto iLast = static_cast<quint32>(p_objOptions.m_iPrinters - 1);
    bool bFourNumbers = false;
    const quint32 iHost = p_objOptions.m_objHost.toIPv4Address(&bFourNumbers);
    if (p_objOptions.m_bOwnAddress && !bFourNumbers) {
        return "--own-address needs a --host of four numbers.";
    }
    if (iLast == 0) {
        return {};
    }
    if (p_objOptions.m_bByPort) {
        return p_objOptions.m_iPort > 0 && p_objOptions.m_iPort + iLast > 65'535
                   ? "There are not so many ports from --port on."
                   : QString();
    }
    if (!bFourNumbers || iHost == 0 || iHost + iLast < iHost) {
        return "--printers needs a --host of four numbers to count on from, or --by-port.";
    }
    return {};
}

void ReadFleet(COptionReader& p_objReader, COptions& p_objOptions) {
    p_objOptions.m_iPrinters =
        p_objReader.Number("printers", 1, COptions::MostPrinters).value_or(1);
    p_objOptions.m_bByPort = p_objReader.IsSet("by-port");
    p_objOptions.m_bOwnAddress = p_objReader.IsSet("own-address");
    if (const QString strError = FleetError(p_objOptions); !strError.isEmpty()) {
        p_objReader.Misplaced(strError);
    }
    for (const QString& strValue : p_objReader.Values("faulty")) {
        const unsigned iNumber = strValue.toUInt();
        if (iNumber < 1 || iNumber > p_objOptions.m_iPrinters) {
            p_objReader.Wrong("faulty", "the number of a printer", strValue);
        }
        p_objOptions.m_iFaulty.insert(iNumber);
    }
}

/// Whether options are given that only a printer on the network has.
bool OnNetwork(const COptionReader& p_objReader) {
    return p_objReader.IsSet("host") || p_objReader.IsSet("port");
}

bool OfFleet(const COptionReader& p_objReader) {
    return p_objReader.IsSet("printers") || p_objReader.IsSet("by-port") ||
           p_objReader.IsSet("own-address") || p_objReader.IsSet("faulty");
}

void ReadSerial(COptionReader& p_objReader, COptions& p_objOptions) {
    p_objOptions.m_bSerial = p_objReader.IsSet("serial");
    ReadFile(p_objReader, "alias", p_objOptions.m_strAlias);
    if (p_objReader.IsSet("alias") && !p_objOptions.m_bSerial) {
        p_objReader.Misplaced("--alias goes with --serial only.");
    }
    if (p_objOptions.m_bSerial && OnNetwork(p_objReader)) {
        p_objReader.Misplaced("--host and --port do not go with --serial.");
    }
    if (p_objOptions.m_bSerial && OfFleet(p_objReader)) {
        p_objReader.Misplaced("Several printers, and printers with addresses, are on the network.");
    }
}

void ReadUsb(COptionReader& p_objReader, const QStringList& p_strProgram, COptions& p_objOptions) {
    if (!p_objReader.IsSet("usb")) {
        return;
    }
    p_objOptions.m_strUsbProgram = p_strProgram;
    if (p_strProgram.isEmpty()) {
        p_objReader.Misplaced("--usb needs a program to run.");
    }
    if (p_objOptions.m_bSerial || OnNetwork(p_objReader)) {
        p_objReader.Misplaced("--host, --port and --serial do not go with --usb.");
    }
    if (OfFleet(p_objReader)) {
        p_objReader.Misplaced("Several printers, and printers with addresses, are on the network.");
    }
}

}  // namespace

COptions::COptions(const QStringList& p_strArguments) {
    QCommandLineParser objParser;
    AddOptions(objParser);
    const bool bParsed = objParser.parse(p_strArguments);
    m_bHelp = objParser.isSet("help");
    if (!bParsed) {
        m_strError = objParser.errorText();
        return;
    }
    if (!objParser.isSet("usb") && !objParser.positionalArguments().isEmpty()) {
        m_strError = QString("There is nothing to do with \"%1\".")
                         .arg(objParser.positionalArguments().constFirst());
        return;
    }
    COptionReader objReader(objParser);
    ReadAddress(objReader, *this);
    ReadManner(objReader, *this);
    ReadSerial(objReader, *this);
    ReadUsb(objReader, objParser.positionalArguments(), *this);
    ReadFleet(objReader, *this);
    ReadFile(objReader, "log", m_strEvents);
    ReadFile(objReader, "dump", m_strDump);
    m_objFaults = MFaultOptions::ReadAnswers(objReader);
    m_objStateFaults = MFaultOptions::ReadState(objReader);
    m_strError = objReader.Error();
}

bool COptions::IsFaulty(std::size_t p_iNumber) const {
    return m_iFaulty.empty() || m_iFaulty.contains(p_iNumber);
}

void COptions::Prepare(CPrinter& p_objPrinter, std::size_t p_iNumber) const {
    p_objPrinter.SetFill(m_cFill);
    if (IsFaulty(p_iNumber)) {
        p_objPrinter.SetStatus(m_strStatus);
        p_objPrinter.SetFaults(m_objStateFaults);
    }
}

std::string COptions::DescribeFaults() const {
    std::string strAnswers = m_objFaults.Describe();
    const std::string strState = m_objStateFaults.Describe();
    if (strState == CStateFaults().Describe()) {
        return strAnswers;
    }
    return strAnswers == CFaultSettings().Describe() ? strState : strAnswers + "; " + strState;
}

QString COptions::HelpText() {
    QCommandLineParser objParser;
    AddOptions(objParser);
    return objParser.helpText();
}
