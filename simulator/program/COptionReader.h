#pragma once

#include <QCommandLineParser>
#include <QString>

#include <optional>

/// Reads the options of one command line; remembers the first thing that is wrong.
class COptionReader {
public:
    /// @param p_objParser not owned, must outlive this.
    explicit COptionReader(const QCommandLineParser& p_objParser)
        : m_objParser(p_objParser) {}

    [[nodiscard]] bool IsSet(const QString& p_strOption) const {
        return m_objParser.isSet(p_strOption);
    }
    [[nodiscard]] QString Value(const QString& p_strOption) const {
        return m_objParser.value(p_strOption);
    }
    /// All values of an option that was given several times.
    [[nodiscard]] QStringList Values(const QString& p_strOption) const {
        return m_objParser.values(p_strOption);
    }

    /// The option's number, or nothing when it is not given or wrong.
    std::optional<unsigned> Number(const QString& p_strOption, unsigned p_iLowest,
                                   unsigned p_iHighest);

    /// The option's value is none of those expected; the latest one, unless it is named.
    void Wrong(const QString& p_strOption, const QString& p_strExpected);
    void Wrong(const QString& p_strOption, const QString& p_strExpected, const QString& p_strValue);
    /// Something else is wrong: a whole sentence.
    void Misplaced(const QString& p_strError);

    /// One sentence; empty while nothing is wrong.
    [[nodiscard]] const QString& Error() const { return m_strError; }

private:
    const QCommandLineParser& m_objParser;
    QString m_strError;
};
