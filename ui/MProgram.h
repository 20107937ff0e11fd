#pragma once

#include <functional>
#include <iosfwd>

/// The program around its window.
namespace MProgram {

/// Makes and shows the window by p_fnStart, then runs p_fnLoop until the program ends.
///
/// An exception out of p_fnStart is told on p_objErrors, and nothing is run then.
/// @return the program's exit code: p_fnLoop's, or 1 when the start failed.
int Run(const std::function<void()>& p_fnStart, const std::function<int()>& p_fnLoop,
        std::ostream& p_objErrors);

}  // namespace MProgram
