#pragma once

#include <cstdint>
#include <string>

/// The line at the foot of the window, as those see it who say what stands there. Texts are UTF-8.
class IStatusLineView {
public:
    virtual ~IStatusLineView() = default;

    /// How it stands with the link.
    virtual void ShowLink(const std::string& p_strText) = 0;

    /// What is being done, empty for nothing, and how far it is: at p_iStep of p_iSteps, which are
    /// fewer than two where nothing is counted.
    virtual void ShowDoing(const std::string& p_strText, std::int16_t p_iStep,
                           std::int16_t p_iSteps) = 0;

    /// Offers to stop what is being done, or does not any more.
    virtual void ShowStop(bool p_bCanStop) = 0;

    /// What the page in front holds.
    virtual void ShowPage(const std::string& p_strText) = 0;
};
