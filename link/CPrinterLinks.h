#pragma once

#include "link/CInterface.h"
#include "link/ILink.h"

#include <array>

/// The three links by the number of their interface (CInterface), each of which may be missing. A
/// missing link opens never, closes always and sends nothing.
class CPrinterLinks {
public:
    static constexpr std::size_t Count = 3;

    /// Registers the link of interface p_iInterface, which exists. Not owned, outlives this.
    void SetLink(std::int16_t p_iInterface, ILink& p_objLink);

    /// Opens the link of interface p_iInterface. False when it did not open, is missing, or when
    /// there is no such interface.
    bool OpenLink(std::int16_t p_iInterface);

    /// Ends the opening that waits, on whichever link, as ILink::StopOpening does.
    void StopOpening();

    /// Closes the link of interface p_iInterface; harmless when it is not open. True, always.
    bool CloseLink(std::int16_t p_iInterface);

    /// The link of interface p_iInterface, or null.
    [[nodiscard]] ILink* Find(std::int16_t p_iInterface) const;

private:
    std::array<ILink*, Count> m_objLinks{};
};
