#pragma once

#include "cli/MExitCode.h"

#include <stdexcept>
#include <string>
#include <utility>

/// What ends a command before it has done what it was asked for.
class CCommandError : public std::runtime_error {
public:
    /// Texts in UTF-8, without a full stop at their end. All but the first are empty where nothing
    /// is known.
    struct Texts {
        std::string m_strWhat;    ///< what does not work: "No permission for /dev/ttyUSB0"
        std::string m_strCause;   ///< why: "there is no such file"
        std::string m_strTarget;  ///< the printer, port or file that it is about
        std::string m_strHint;    ///< the way out: "varden --help lists the commands"
    };

    CCommandError(MExitCode::Code p_iCode, Texts p_objTexts)
        : std::runtime_error(p_objTexts.m_strWhat)
        , m_iCode(p_iCode)
        , m_objTexts(std::move(p_objTexts)) {}

    [[nodiscard]] MExitCode::Code Code() const { return m_iCode; }
    [[nodiscard]] const Texts& Words() const { return m_objTexts; }

private:
    MExitCode::Code m_iCode;
    Texts m_objTexts;
};
