#pragma once

#include <functional>
#include <string>

/// Work done in a copy of this process.
namespace MCopiedProcess {

/// What p_fnWork gives when it runs in a copy of the process as it is now, which it does not come
/// back from. Where it throws, fails an expectation or brings the copy down, a line that begins
/// with "FAILED" is added. Throws std::runtime_error when there can be no copy, also because this
/// process has more than one thread.
std::string Run(const std::function<std::string()>& p_fnWork);

}  // namespace MCopiedProcess
