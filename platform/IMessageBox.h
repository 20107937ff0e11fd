#pragma once

#include <cstdint>
#include <string>

/// The picture beside a message.
enum class MessageIcon : std::uint8_t { None, Exclamation, Critical };

/// Modal message boxes and the beep. Texts are one byte a character, ISO 8859-1; "\r\n" breaks a
/// line.
///
/// A box returns when the person has answered it; events are handled meanwhile. Once the program
/// is closing no box appears and the calls return at once.
class IMessageBox {
public:
    /// The caption of every box that names none of its own.
    static constexpr const char* ProgramTitle = "Varden Setting Tool";

    virtual ~IMessageBox() = default;

    /// Shows p_strText with one OK button.
    virtual void Show(const std::string& p_strText, MessageIcon p_iIcon,
                      const std::string& p_strTitle) = 0;

    /// Asks p_strText with the buttons Yes and No, without an icon, under the program's title.
    /// @return true for Yes; false for No and for a box that was closed.
    virtual bool AskYesNo(const std::string& p_strText) = 0;

    /// The system's short attention sound.
    virtual void Beep() = 0;

    /// The same with the program's title.
    void Show(const std::string& p_strText, MessageIcon p_iIcon) {
        Show(p_strText, p_iIcon, ProgramTitle);
    }
};
