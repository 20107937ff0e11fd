#pragma once

#include "cli/CCommandError.h"
#include "cli/CTable.h"
#include "cli/IInterrupt.h"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

/// What the program tells, and where.
///
/// Without JSON people's texts and tables go to standard output, with it texts go to standard error
/// and tables nowhere: standard output is exactly one JSON object then, whatever happens. Notes and
/// failures go to standard error in either case. All texts are UTF-8.
class COutput {
public:
    /// None of the references is owned; all outlive this.
    /// @param p_iWidth how wide the terminal is; 0 when standard output is none.
    /// @param p_iErrorWidth the same of standard error.
    COutput(std::ostream& p_objOut, std::ostream& p_objError, IInterrupt& p_objInterrupt,
            std::size_t p_iWidth = 0, std::size_t p_iErrorWidth = 0);
    COutput(const COutput&) = delete;
    COutput& operator=(const COutput&) = delete;

    /// Turns JSON on, before anything is told.
    void ChooseJson();

    /// The object that is printed at the end, empty at first. To be filled when JSON is off, too.
    [[nodiscard]] nlohmann::ordered_json& Json() { return m_objJson; }

    /// A line for people.
    void Say(std::string_view p_strLine);
    /// A text that has its line ends, such as a script, as it is.
    void Print(std::string_view p_strText);
    void Show(const CTable& p_objTable);
    /// A line about what people should know besides.
    void Note(std::string_view p_strLine);
    /// How far the command is: one line on standard error, in place of the one before, and only
    /// where that is a terminal. It goes when anything else is told, and at the end.
    void ShowProgress(std::string_view p_strLine);
    /// Why the command ends; becomes the object's "error".
    void Fail(const CCommandError& p_objError);

    /// What Ctrl-C leaves behind from now on: in the object, and on standard error where there is
    /// more to say than that it was interrupted.
    void SetInterruption(const CCommandError::Texts& p_objTexts);

    /// Prints the object, where JSON is on. To be called once, at the end. False when standard
    /// output has not taken everything.
    bool Finish();

private:
    std::ostream& People();
    void ClearProgress();
    static std::string Line(const CCommandError::Texts& p_objTexts);

    std::ostream& m_objOut;
    std::ostream& m_objError;
    IInterrupt& m_objInterrupt;
    std::size_t m_iWidth;
    std::size_t m_iErrorWidth;
    std::size_t m_iProgress = 0;  // characters of the line of progress that is there
    bool m_bJson = false;
    std::string m_strInterruption;  // the line for standard error
    nlohmann::ordered_json m_objJson = nlohmann::ordered_json::object();
};
