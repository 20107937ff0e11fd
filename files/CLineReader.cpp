#include "files/CLineReader.h"

#include <optional>

CLineReader::CLineReader(IFileReader& p_objReader, std::uint64_t p_iMost)
    : m_objReader(p_objReader)
    , m_iLeft(p_iMost) {}

CLineReader::Result CLineReader::Next(std::string& p_strLine) {
    p_strLine.clear();
    bool bAnything = false;
    for (;;) {
        char cByte = 0;
        switch (Peek(cByte)) {
        case Byte::Failure:
            return Result::Failure;
        case Byte::End:
            return bAnything ? Result::Line : Result::End;
        case Byte::Read:
            break;
        }
        bAnything = true;
        Skip();
        if (cByte == '\r' || cByte == '\n') {
            return FinishLine(cByte);
        }
        p_strLine += cByte;
        if (p_strLine.size() > LongestLine) {
            return Result::Line;
        }
    }
}

CLineReader::Result CLineReader::FinishLine(char p_cEnd) {
    char cNext = 0;
    if (p_cEnd == '\r') {
        switch (Peek(cNext)) {
        case Byte::Failure:
            return Result::Failure;
        case Byte::End:
            break;
        case Byte::Read:
            if (cNext == '\n') {
                Skip();
            }
            break;
        }
    }
    return Result::Line;
}

CLineReader::Byte CLineReader::Peek(char& p_cByte) {
    if (m_iPosition == m_iCount) {
        const std::optional<std::size_t> iRead = m_objReader.Read(m_arrBlock);
        if (!iRead || *iRead > m_iLeft) {
            return Byte::Failure;
        }
        m_iLeft -= *iRead;
        m_iPosition = 0;
        m_iCount = *iRead;
        if (m_iCount == 0) {
            return Byte::End;
        }
    }
    p_cByte = m_arrBlock[m_iPosition];
    return Byte::Read;
}
