#include "simulator/program/COptions.h"

#include "simulator/CPrinter.h"

#include <QCommandLineParser>
#include <QFile>

#include <optional>

namespace {

constexpr unsigned LongestWait = 3'600'000;  // milliseconds: an hour
constexpr unsigned MostBytes = 65'535;
constexpr unsigned MostCommands = 1'000'000;

constexpr const char* Description =
    "Plays a Varden label printer on the network or on a serial line: it answers the setting "
    "tool's\n"
    "commands, keeps the settings it is sent, and can be told to answer badly. Faults can be\n"
    "combined.\n"
    "\n"
    "What passes is printed: \"> \" a command received and what it means, \"< \" bytes sent, \"! "
    "\"\n"
    "what went wrong. A byte that cannot be printed is shown by its code, such as <01> or <FF>.\n"
    "Ctrl-C ends the program and prints how many commands of each kind came.\n"
    "\n"
    "  varden-printer-simulator                         a printer that behaves, on 127.0.0.1:8000\n"
    "  varden-printer-simulator --serial --alias /dev/com1   a printer on the serial port COM1\n"
    "  varden-printer-simulator --usb varden-setting-tool   the tool, with a printer on USB\n"
    "  varden-printer-simulator --status 14             a printer that has run out of ribbon\n"
    "  varden-printer-simulator --delay 900 --pieces 5  slow answers, bit by bit";

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
        {"silent", "Carries commands out, but never answers."},
        {"delay", "Waits so many milliseconds before each answer.", "MS"},
        {"pieces", "Sends each answer in pieces of so many bytes.", "N"},
        {"gap", "The milliseconds between two pieces, 10 unless given.", "MS"},
        {"cut", "Sends only the first so many bytes of each answer, never the rest.", "N"},
        {"junk", "Sends junk in place of each answer."},
        {"junk-before", "Sends junk right in front of each answer."},
        {"close-after", "Closes a connection once so many of its commands are answered; 0 closes it at once. A serial line is pulled out a moment later, and a new one takes its place, also under the alias.", "N"},
    });
    // clang-format on
}

/// Reads the options of one command line; remembers the first thing that is wrong.
class CReader {
public:
    explicit CReader(const QCommandLineParser& p_objParser)
        : m_objParser(p_objParser) {}

    /// The option's number, or nothing when it is not given or wrong.
    std::optional<unsigned> Number(const QString& p_strOption, unsigned p_iLowest,
                                   unsigned p_iHighest) {
        if (!m_objParser.isSet(p_strOption)) {
            return std::nullopt;
        }
        const QString strValue = m_objParser.value(p_strOption);
        bool bNumber = false;
        const unsigned iNumber = strValue.toUInt(&bNumber);
        if (!bNumber || iNumber < p_iLowest || iNumber > p_iHighest) {
            Wrong(p_strOption, QString("a number from %1 to %2").arg(p_iLowest).arg(p_iHighest));
            return std::nullopt;
        }
        return iNumber;
    }

    void Wrong(const QString& p_strOption, const QString& p_strExpected) {
        if (m_strError.isEmpty()) {
            m_strError = QString("--%1 needs %2, not \"%3\".")
                             .arg(p_strOption, p_strExpected, m_objParser.value(p_strOption));
        }
    }

    void Misplaced(const QString& p_strError) {
        if (m_strError.isEmpty()) {
            m_strError = p_strError;
        }
    }

    [[nodiscard]] const QString& Error() const { return m_strError; }

private:
    const QCommandLineParser& m_objParser;
    QString m_strError;
};

void ReadAddress(const QCommandLineParser& p_objParser, CReader& p_objReader,
                 COptions& p_objOptions) {
    if (p_objParser.isSet("host") &&
        !p_objOptions.m_objHost.setAddress(p_objParser.value("host"))) {
        p_objReader.Wrong("host", "an IP address");
    }
    if (const auto iPort = p_objReader.Number("port", 0, 65'535)) {
        p_objOptions.m_iPort = static_cast<std::uint16_t>(*iPort);
    }
    if (p_objParser.isSet("status")) {
        p_objOptions.m_strStatus = p_objParser.value("status").toStdString();
        if (!CPrinter::IsStatus(p_objOptions.m_strStatus)) {
            p_objReader.Wrong("status", "two printable characters");
        }
    }
}

void ReadSerial(const QCommandLineParser& p_objParser, CReader& p_objReader,
                COptions& p_objOptions) {
    p_objOptions.m_bSerial = p_objParser.isSet("serial");
    p_objOptions.m_strAlias = QFile::encodeName(p_objParser.value("alias")).toStdString();
    if (p_objParser.isSet("alias")) {
        if (p_objOptions.m_strAlias.empty()) {
            p_objReader.Wrong("alias", "a path");
        }
        if (!p_objOptions.m_bSerial) {
            p_objReader.Misplaced("--alias goes with --serial only.");
        }
    }
    if (p_objOptions.m_bSerial && (p_objParser.isSet("host") || p_objParser.isSet("port"))) {
        p_objReader.Misplaced("--host and --port do not go with --serial.");
    }
}

void ReadUsb(const QCommandLineParser& p_objParser, CReader& p_objReader, COptions& p_objOptions) {
    if (!p_objParser.isSet("usb")) {
        return;
    }
    p_objOptions.m_strUsbProgram = p_objParser.positionalArguments();
    if (p_objOptions.m_strUsbProgram.isEmpty()) {
        p_objReader.Misplaced("--usb needs a program to run.");
    }
    if (p_objOptions.m_bSerial || p_objParser.isSet("host") || p_objParser.isSet("port")) {
        p_objReader.Misplaced("--host, --port and --serial do not go with --usb.");
    }
}

CFaultSettings ReadFaults(const QCommandLineParser& p_objParser, CReader& p_objReader) {
    CFaultSettings objFaults;
    objFaults.m_bSilent = p_objParser.isSet("silent");
    objFaults.m_bJunk = p_objParser.isSet("junk");
    objFaults.m_bJunkBefore = p_objParser.isSet("junk-before");
    objFaults.m_iDelay =
        std::chrono::milliseconds(p_objReader.Number("delay", 0, LongestWait).value_or(0));
    objFaults.m_iPieces = p_objReader.Number("pieces", 1, MostBytes).value_or(0);
    if (const auto iGap = p_objReader.Number("gap", 0, LongestWait)) {
        objFaults.m_iGap = std::chrono::milliseconds(*iGap);
    }
    objFaults.m_iCut = p_objReader.Number("cut", 0, MostBytes);
    objFaults.m_iCloseAfter = p_objReader.Number("close-after", 0, MostCommands);
    return objFaults;
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
    CReader objReader(objParser);
    ReadAddress(objParser, objReader, *this);
    ReadSerial(objParser, objReader, *this);
    ReadUsb(objParser, objReader, *this);
    m_objFaults = ReadFaults(objParser, objReader);
    m_strError = objReader.Error();
}

QString COptions::HelpText() {
    QCommandLineParser objParser;
    AddOptions(objParser);
    return objParser.helpText();
}
