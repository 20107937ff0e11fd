#pragma once

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// How an emulated device shows itself on USB, and what is to go wrong there. Without changes it
/// is a printer that behaves. What goes wrong with the printer's answers is CFaultSettings'.
struct CUsbBehaviour {
    /// When the device is unplugged by itself.
    enum class Unplug : std::uint8_t {
        Never,
        AfterWrite,  ///< as soon as it has taken a command
        InWrite,     ///< while it is sent something
        InRead,      ///< while an answer is waited for
    };

    /// What becomes of a read while there is nothing to read.
    enum class Idle : std::uint8_t {
        Waits,
        IsEmpty,  ///< it ends at once without a byte
        Repeats,  ///< it ends at once with a status that nobody has asked for
    };

    /// By which kinds of endpoint the interface can be used.
    enum class Endpoints : std::uint8_t {
        Bulk,
        InterruptAndBulk,  ///< interrupt ones, which carry nothing, stand in front of the bulk ones
        Interrupt,
    };

    /// The bytes of a device identification: the text behind its length, which counts itself.
    static std::string DeviceId(std::string_view p_strText);

    std::uint8_t m_iClass = 7;  ///< of its one interface; 7 is the printer's
    Endpoints m_iEndpoints = Endpoints::Bulk;
    bool m_bAlternates = false;        ///< only its alternate setting 1 listens and answers
    bool m_bRefusesAlternate = false;  ///< and cannot be chosen
    bool m_bCannotBeOpened = false;    ///< programs see it, and no more
    std::string m_strDeviceId = DeviceId("MFG:Varden;CMD:VARDEN;MDL:Label Printer;CLS:PRINTER;");
    std::string m_strManufacturer = "Varden";    ///< as the system reads it when it is plugged in
    std::string m_strProduct = "Label Printer";  ///< the same
    std::string m_strSerialNumber;               ///< the same; empty: it has none
    bool m_bStallsDeviceId = false;              ///< does not tell its identification
    bool m_bHangsOnDeviceId = false;             ///< never answers the request for it
    bool m_bClaimBusy = false;                   ///< another program holds the interface
    std::string m_strDriver = "usblp";           ///< the system's driver bound to it; may be none
    bool m_bTakesNothing = false;                ///< whatever is sent waits for ever
    bool m_bTakesNoBytes = false;          ///< whatever is sent ends at once, without a byte taken
    bool m_bHalted = false;                ///< takes nothing until that endpoint is cleared
    bool m_bStaysHalted = false;           ///< which is refused
    int m_iReadError = 0;                  ///< what the first read behind a command ends with
    std::size_t m_iMostTaken = 0;          ///< the most bytes of one transfer; 0: all
    std::chrono::milliseconds m_iSlow{0};  ///< how long each transfer to it takes
    bool m_bGivesAtTheLastMoment = false;  ///< an answer comes as the waiting for it ends
    bool m_bEmptyBeforeAnswer = false;     ///< an empty packet comes first
    Idle m_iIdle = Idle::Waits;
    Unplug m_iUnplug = Unplug::Never;
    int m_iUnplugError = ESHUTDOWN;  ///< what becomes of transfers that were under way
};
