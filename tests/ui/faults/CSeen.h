#pragma once

#include <string>
#include <vector>

/// What was seen of one cell of the fault table: what the person was told, what was sent, and how
/// everything stands when it is over.
struct CSeen {
    using Texts = std::vector<std::string>;

    Texts m_strTold;          ///< boxes and beeps of the flow, in their order
    Texts m_strSent;          ///< its whole commands, printable
    std::string m_strPartly;  ///< bytes of a command that did not go out whole
    Texts m_strLater;         ///< boxes behind it, when nothing runs any more
    Texts m_strBehind;        ///< sent or told though the window was closed, sent at rest
    Texts m_strRead;          ///< groups all of whose items are as the printer has them
    Texts m_strOther;         ///< groups with items that are neither so nor as before
    Texts m_strShown;  ///< groups of which the parameter page shows anything read: "0", or "0 part"
    std::string m_strParameterPage =
        "-";  ///< what it shows: "-" as before, "read", "part", "other"
    std::string m_strLanPage = "-";
    std::string m_strStatus;     ///< the label beside GET STATUS
    std::string m_strHeadCheck;  ///< the label of the head check
    std::string m_strLink;      ///< the line at the foot of the window: how it stands with the link
    std::string m_strDoing;     ///< what is being done
    std::string m_strPage;      ///< what the page in front holds
    std::string m_strDisabled;  ///< buttons that are disabled
    std::string m_strHeld;      ///< that the interface list is held, or a box stands
    int m_iRunning = 0;         ///< presses whose handlers are not back
    int m_iBehindFailure = 0;   ///< commands behind the first box that tells of a failure
    int m_iTaken = 0;           ///< presses of the flow's button while it was enabled
    int m_iRefused = 0;         ///< presses of it while it was disabled
    int m_iHalfSeconds = 0;     ///< how long the flow took
    bool m_bClosed = false;
    std::string m_strAgain;    ///< the flow once more, on the sound link: see SetAgain
    std::string m_strFailure;  ///< of the playing itself

    /// What was seen of the flow when its button was pressed once more, and back.
    void SetAgain(const CSeen& p_objAgain);
    [[nodiscard]] CSeen Again() const;

    [[nodiscard]] std::string Text() const;
    static CSeen FromText(const std::string& p_strText);
};
