#pragma once

#include "platform/IDeviceAccess.h"
#include "simulator/CPrinter.h"
#include "tests/cli/faults/CFaultDoubles.h"
#include "tests/cli/faults/MFaults.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// The simulator's printer at the other end of one of the doubles, and one fault on the way to it:
/// at one command, or from it on.
class CFaultyPrinter {
public:
    /// Nothing goes wrong unless told otherwise.
    struct Plan {
        MFaults::Kind m_iKind = MFaults::Kind::None;
        std::size_t m_iAt = 0;  ///< the number of the command that it meets, counted from 0
        bool m_bOnce = false;   ///< all that come behind it are spared
    };

    /// None is owned; all outlive this.
    CFaultyPrinter(MFaults::Link p_iLink, CFakeEventLoop& p_objEventLoop,
                   CEndingInterrupt& p_objInterrupt);
    CFaultyPrinter(const CFaultyPrinter&) = delete;
    CFaultyPrinter& operator=(const CFaultyPrinter&) = delete;

    CFaultySocket m_objSocket;
    CFaultySerialPort m_objSerialPort;
    CFaultyUsb m_objUsb;
    CPrinter m_objPrinter;
    /// Every command that has come whole, whether it was carried out or not.
    std::vector<std::string> m_strCommands;
    /// Where whoever opens the link goes: "HOST:PORT", or a line's format. The printer goes where
    /// its settings name, and is nowhere else.
    std::string m_strPlace;

    /// From now on this goes wrong, and commands count from 0 again.
    void Begin(const Plan& p_objPlan);

    /// The program is over: what would come of the fault yet comes of it no more, but for answers.
    void Rest() { m_objPlan = {}; }

    /// What was pulled out is plugged in again.
    void ComeBack();

    /// Where the printer is now, as m_strPlace has it.
    [[nodiscard]] std::string Place() const;

    /// How often anything was given to the link to be sent.
    [[nodiscard]] int Sendings() const {
        return m_objSocket.m_iSendings + m_objSerialPort.m_iSendings + m_objUsb.m_iSendings;
    }

    /// The same when Ctrl-C came; nothing is given to the link behind it.
    [[nodiscard]] int SendingsAtCtrlC() const { return m_iSendingsAtCtrlC; }

    /// Told of each command that it has carried out, or not.
    std::function<void()> m_fnCarried;

    /// Whether a printer is plugged in, as the list of those on USB has it.
    bool IsPluggedIn();

    /// What the system says of the device.
    [[nodiscard]] CDeviceState DeviceState() const;

    /// Whether every link is as it was before.
    [[nodiscard]] bool IsAllClosed() const;

private:
    using Kind = MFaults::Kind;
    using Bytes = std::shared_ptr<const std::string>;

    bool IsHit(std::size_t p_iNumber);
    [[nodiscard]] std::size_t Next() const { return m_strCommands.size() - m_iBefore; }
    void Opening();
    void OpenLan(Kind p_iKind);
    void OpenCom(Kind p_iKind);
    void OpenUsb(Kind p_iKind);
    void Sending(std::size_t p_iOut);
    void TakeNone(std::size_t p_iOut);
    void BreakSending(std::size_t p_iOut);
    void Take(const std::string& p_strBytes);
    void Spoil(const std::string& p_strCommand, const std::string& p_strAnswer);
    void SpoilWay(const std::string& p_strAnswer);
    [[nodiscard]] std::string Spoiled(const std::string& p_strCommand,
                                      const std::string& p_strAnswer) const;
    [[nodiscard]] std::string Fields(const std::string& p_strAnswer, char p_cField) const;
    [[nodiscard]] std::string OnLink(const std::string& p_strAnswer) const;
    void Deliver(const std::string& p_strBytes, std::int64_t p_iDelay, std::size_t p_iPiece = 0);
    void DeliverPiece(const Bytes& p_strBytes, std::size_t p_iFrom, std::size_t p_iPiece,
                      int p_iConnection);
    void Arrive(const std::string& p_strBytes);
    [[nodiscard]] std::int64_t Whole(const std::string& p_strAnswer) const;
    void Stream();
    [[nodiscard]] std::function<void()> OfConnection(const std::function<void()>& p_fnEvent);
    void Leave();
    void InterruptIn(std::int64_t p_iMilliseconds);

    MFaults::Link m_iLink;
    CFakeEventLoop& m_objEventLoop;
    CEndingInterrupt& m_objInterrupt;
    Plan m_objPlan;
    bool m_bUsed = false;  // of a plan that is for once
    bool m_bGone = false;  // pulled out
    std::size_t m_iBefore = 0;
    int m_iSendingsAtCtrlC = 0;
};
