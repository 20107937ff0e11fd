#include "ui/MProgram.h"

#include <cstdlib>
#include <exception>
#include <ostream>

int MProgram::Run(const std::function<void()>& p_fnStart, const std::function<int()>& p_fnLoop,
                  std::ostream& p_objErrors) {
    try {
        p_fnStart();
    } catch (const std::exception& objError) {
        p_objErrors << "varden-setting-tool: cannot start: " << objError.what() << std::endl;
        return EXIT_FAILURE;
    }
    return p_fnLoop();
}
