#include "simulator/program/COptionReader.h"

std::optional<unsigned> COptionReader::Number(const QString& p_strOption, unsigned p_iLowest,
                                              unsigned p_iHighest) {
    if (!IsSet(p_strOption)) {
        return std::nullopt;
    }
    bool bNumber = false;
    const unsigned iNumber = Value(p_strOption).toUInt(&bNumber);
    if (!bNumber || iNumber < p_iLowest || iNumber > p_iHighest) {
        Wrong(p_strOption, QString("a number from %1 to %2").arg(p_iLowest).arg(p_iHighest));
        return std::nullopt;
    }
    return iNumber;
}

void COptionReader::Wrong(const QString& p_strOption, const QString& p_strExpected) {
    Wrong(p_strOption, p_strExpected, Value(p_strOption));
}

void COptionReader::Wrong(const QString& p_strOption, const QString& p_strExpected,
                          const QString& p_strValue) {
    Misplaced(QString("--%1 needs %2, not \"%3\".").arg(p_strOption, p_strExpected, p_strValue));
}

void COptionReader::Misplaced(const QString& p_strError) {
    if (m_strError.isEmpty()) {
        m_strError = p_strError;
    }
}
