#pragma once

#include "link/CAnswerRouter.h"
#include "link/CBusy.h"
#include "link/CExchangeManners.h"
#include "link/CInterface.h"
#include "link/COutcome.h"
#include "link/CPrinterLinks.h"
#include "link/CWaiter.h"
#include "link/ISessionEvents.h"

#include <functional>
#include <string>

/// One command to the printer and its answer: what every handler of the window is made of.
///
/// All of it is called from inside a handler's turn (CWaiter::Turn) and does nothing, quietly,
/// once the turn is over or the program closes.
class CCommandExchange {
public:
    /// How long nothing may come, in seconds, until settings that show no end are taken as they
    /// are: longer than the gaps that an adapter or a slow line leaves between characters.
    static constexpr double QuietSeconds = 0.25;

    /// A link as it is connected at one moment.
    struct Connection {
        std::int16_t m_iInterface;
        std::int64_t m_iNumber;  ///< ILink::Connection
    };

    /// None is owned; all outlive this.
    CCommandExchange(CInterface& p_objInterface, CPrinterLinks& p_objLinks,
                     CAnswerRouter& p_objRouter, CLinkState& p_objState, CBusy& p_objBusy,
                     CWaiter& p_objWaiter, ISessionEvents& p_objEvents,
                     const CExchangeManners& p_objManners = {});

    /// Fills p_objBytes with the code of each character. False for an empty text.
    static bool TextToBytes(const std::string& p_strText, Bytes& p_objBytes);

    void BeginBusy() { m_objBusy.BeginBusy(); }
    void EndBusy() { m_objBusy.EndBusy(); }

    /// Sends over the active link.
    ///
    /// @param p_objFailure as ILink::Exchange gives it.
    /// @param p_iReceivedCount as ILink::Exchange gives it.
    /// @param p_iReceiveLength as ILink::Exchange takes it.
    /// @param p_iAwaited what WaitReply waits for afterwards.
    /// @return true when the bytes went out; false also for an interface that does not exist, and
    ///         on USB for settings that were cut, or that no group was named for.
    /// On USB the answer, if one came, is in its place when this returns. Throws std::out_of_range
    /// when p_iReceiveLength leaves no room for the settings that came.
    bool SendCommand(CInterface& p_objInterface, const Bytes& p_objCommand,
                     Bytes& p_objReceiveBuffer, CFailure& p_objFailure,
                     std::int16_t& p_iReceivedCount, std::int16_t p_iReceiveLength,
                     AwaitedAnswer p_iAwaited);

    /// Waits until the answer is in; true when it is. After p_iSeconds it tells NoReply and returns
    /// false, also when the answer has come meanwhile while a
    /// box or dialog stood: the time is looked at first. Behind a handler that has run inside of
    /// it the wait begins anew, if the answer has not come by then; what such a handler was
    /// answered counts, because answers come in the order of their commands. False at once, without
    /// a box, when it has closed the LAN link or connected it anew. A wait over midnight lasts
    /// until the answer comes: the time of day starts again and the limit is never reached.
    bool WaitReply(std::int16_t p_iSeconds);

    /// The same for a known status code.
    bool WaitStatusReply(std::int16_t p_iSeconds);

    /// Lets p_iSeconds pass with the window alive. A pause over midnight does not end by itself.
    void Pause(std::int16_t p_iSeconds);

    /// Sends p_strCommand and waits for nothing; the handler tells nobody of a failure. Leaves the
    /// busy state alone. On USB the answer, if one comes, is in when this returns.
    COutcome Send(const std::string& p_strCommand);

    /// Sends p_strCommand and, on a link whose answers are awaited, waits for the answer. What has
    /// made it fail is told as the command's failure; on USB it is one when settings are awaited
    /// and none come whole, while to any other command no answer is fine. Leaves the busy state
    /// alone.
    COutcome Request(const std::string& p_strCommand, std::int16_t p_iReceiveLength,
                     AwaitedAnswer p_iAwaited);

    /// The active link as it is connected now.
    [[nodiscard]] Connection ActiveConnection() const;

    /// The same as Request for one of several commands that must not go on over another connection
    /// of the link than p_objBegun (an interface chosen meanwhile does take them). When that one is
    /// gone nothing is sent, and the link tells what that is. Done also when it has gone while the
    /// answer was awaited, which cannot come any more: the next command will tell.
    COutcome RequestOver(const Connection& p_objBegun, const std::string& p_strCommand,
                         std::int16_t p_iReceiveLength, AwaitedAnswer p_iAwaited);

    /// Asks for the settings of group p_iGroup, which fill that group's items when they come.
    /// On the LAN link and on USB they have come when it is done. Runs EndBusy, then tells of a
    /// failure.
    COutcome ReadGroup(std::int16_t p_iGroup);

    /// No more settings are awaited: those that still come fill no item.
    void EndReading();

    /// Clears the status shown and asks for it as SendMaintenance does.
    COutcome RequestStatus();

    /// Sends a maintenance command; busy meanwhile, and not any more when a failure is told.
    COutcome SendMaintenance(const std::string& p_strCommand);

    /// How the active link answers; Later when there is none.
    [[nodiscard]] ILink::Answering ActiveAnswering() const;

private:
    COutcome Attempt(const std::string& p_strCommand, std::int16_t p_iReceiveLength,
                     AwaitedAnswer p_iAwaited);
    /// Whether what was sent over p_objLink (null: none) is answered as it has to be, after a wait
    /// where there is one.
    bool IsAnswered(const ILink* p_objLink, AwaitedAnswer p_iAwaited, COutcome& p_objOutcome);
    bool WaitAnswer(std::int16_t p_iSeconds, AwaitedAnswer p_iAwaited, CFailure& p_objFailure);
    /// How many answers have come so far that a command with this wait takes for its own.
    [[nodiscard]] std::int64_t CountOf(AwaitedAnswer p_iAwaited) const;
    void JudgeUsbRead(bool p_bSent, COutcome& p_objOutcome) const;
    [[nodiscard]] std::int64_t ConnectionNumber(std::int16_t p_iInterface) const;
    [[nodiscard]] bool IsGone(const Connection& p_objConnection) const;
    void TellFailure(const COutcome& p_objOutcome);
    bool SendText(const std::string& p_strCommand, std::int16_t p_iReceiveLength,
                  AwaitedAnswer p_iAwaited, CFailure& p_objFailure, std::int16_t& p_iReceivedCount);
    bool WaitUntil(const std::function<bool()>& p_fnIsThere, std::int16_t p_iSeconds,
                   const ILink* p_objLink, CFailure& p_objFailure);

    CInterface& m_objInterface;
    CPrinterLinks& m_objLinks;
    CAnswerRouter& m_objRouter;
    CLinkState& m_objState;
    CBusy& m_objBusy;
    CWaiter& m_objWaiter;
    ISessionEvents& m_objEvents;
    CExchangeManners m_objManners;
    Bytes m_objReceiveBuffer;
};
