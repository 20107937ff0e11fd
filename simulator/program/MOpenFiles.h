#pragma once

#include <cstddef>

/// How many files, connections among them, the system lets this program have open at a time.
namespace MOpenFiles {

/// Makes them as many as this program may ask for, and tells how many these are; on a system that
/// sets no such limit the highest number there is.
std::size_t Raise();

}  // namespace MOpenFiles
