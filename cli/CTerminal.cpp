#include "cli/CTerminal.h"

#include "cli/MUtf8.h"

#include <iostream>

#ifdef _WIN32
#include <cstdio>
#include <io.h>
#else
#include <unistd.h>
#endif

bool CTerminal::CanAsk() const {
#ifdef _WIN32
    return ::_isatty(::_fileno(stdin)) != 0 && ::_isatty(::_fileno(stderr)) != 0;
#else
    return ::isatty(STDIN_FILENO) != 0 && ::isatty(STDERR_FILENO) != 0;
#endif
}

std::optional<std::string> CTerminal::Ask(const std::string& p_strQuestion) {
    m_objInterrupt.SetLastNote("\n");  // whatever comes behind the program has a line of its own
    std::cerr << MUtf8::Printable(p_strQuestion) << std::flush;
    std::string strLine;
    const bool bRead = static_cast<bool>(std::getline(std::cin, strLine));
    m_objInterrupt.SetLastNote({});
    if (!bRead) {
        std::cerr << "\n";
        return std::nullopt;
    }
    return strLine;
}
