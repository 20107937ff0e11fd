#pragma once

#include "simulator/CFaultSettings.h"
#include "simulator/usb/CUsbBehaviour.h"
#include "simulator/usb/CUsbTransfers.h"
#include "simulator/usb/CUsbWire.h"
#include "simulator/usb/CUsbWorld.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

struct _UMockdevIoctlBase;  // NOLINT(readability-identifier-naming): the library's name

/// A printer plugged into an emulated system: it answers programs' system calls on its device
/// file, on a thread of its own, by the rules of the simulator's printer.
class CEmulatedPrinter {
public:
    /// None of the references is owned; all outlive this. The log is called on the other thread.
    /// @param p_iNumber tells several devices of a world apart: 1 to 9, in their order on the bus.
    CEmulatedPrinter(CUsbWorld& p_objWorld, CPrinter& p_objPrinter, ISimulatorLog& p_objLog,
                     CUsbBehaviour p_objBehaviour = {}, const CFaultSettings& p_objFaults = {},
                     int p_iNumber = 1);
    /// Unplugs it and waits until no program has it open any more, ten seconds at most.
    ~CEmulatedPrinter();
    CEmulatedPrinter(const CEmulatedPrinter&) = delete;
    CEmulatedPrinter& operator=(const CEmulatedPrinter&) = delete;

    /// Calls p_fnGone once it is off the bus, on whichever thread that comes to pass.
    void OnUnplugged(std::function<void()> p_fnGone);

    /// Calls p_fnCall while the other thread keeps still and away from the printer.
    void Hold(const std::function<void()>& p_fnCall) const;

    /// Takes it off the bus; transfers under way end with the behaviour's error. It stays off.
    void Unplug();

    /// Everything that was sent to it so far.
    [[nodiscard]] std::string Taken() const;
    /// True while the system's own driver has the interface.
    [[nodiscard]] bool HasDriver() const;
    /// True while a program has claimed the interface.
    [[nodiscard]] bool IsClaimed();
    /// How often a program has claimed it.
    [[nodiscard]] int Claims() const;
    /// The alternate setting of the interface that was chosen last; 0 at first.
    [[nodiscard]] unsigned Alternate() const;
    /// The endpoints that programs have asked to be cleared, in order.
    [[nodiscard]] std::vector<unsigned> Cleared() const;
    /// How many programs have it open.
    [[nodiscard]] std::size_t Clients();

private:
    struct Deleter {
        void operator()(_UMockdevIoctlClient* p_objClient) const;
    };
    using Client = std::unique_ptr<_UMockdevIoctlClient, Deleter>;

    static int OnCall(_UMockdevIoctlBase* p_objHandler, _UMockdevIoctlClient* p_objClient,
                      void* p_objSelf);
    static void OnConnected(_UMockdevIoctlBase* p_objHandler, _UMockdevIoctlClient* p_objClient,
                            void* p_objSelf);

    void Connect();
    void ForgetGone();
    bool Answer(_UMockdevIoctlClient* p_objClient);
    bool AnswerTransfer(_UMockdevIoctlClient* p_objClient);
    void Claim(_UMockdevIoctlClient* p_objClient, bool p_bPutAside);
    void Release(_UMockdevIoctlClient* p_objClient);
    void TellDriver(_UMockdevIoctlClient* p_objClient) const;
    void ForDriver(_UMockdevIoctlClient* p_objClient);
    void Choose(_UMockdevIoctlClient* p_objClient);
    void ClearHalt(_UMockdevIoctlClient* p_objClient);
    void UnplugNow();
    [[nodiscard]] std::string Record() const;

    CUsbWorld& m_objWorld;
    const CUsbBehaviour m_objBehaviour;
    const int m_iNumber;
    mutable std::mutex m_objMutex;  // guards all that follows
    CUsbWire m_objWire;
    CUsbTransfers m_objTransfers;
    _UMockdevIoctlBase* m_objHandler;
    const _UMockdevIoctlClient* m_objOwner = nullptr;  // who has claimed the interface
    bool m_bDriver;
    bool m_bGone = false;
    std::function<void()> m_fnGone;
    int m_iClaims = 0;
    unsigned m_iAlternate = 0;
    std::vector<Client> m_objClients;  // in the order of their opening
};
