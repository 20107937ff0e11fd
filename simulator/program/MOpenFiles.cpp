#include "simulator/program/MOpenFiles.h"

#include <QtGlobal>

#include <limits>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace MOpenFiles {

std::size_t Raise() {
#ifdef Q_OS_UNIX
    rlimit objLimit{};
    if (::getrlimit(RLIMIT_NOFILE, &objLimit) == 0) {
        const rlimit objMost{objLimit.rlim_max, objLimit.rlim_max};
        const bool bRaised = ::setrlimit(RLIMIT_NOFILE, &objMost) == 0;
        return bRaised ? objLimit.rlim_max : objLimit.rlim_cur;
    }
#endif
    return std::numeric_limits<std::size_t>::max();
}

}  // namespace MOpenFiles
