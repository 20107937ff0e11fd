#include "tests/cli/MOutcomes.h"

#include <iostream>

/// Prints docs/outcomes.md.
int main() {
    std::cout << MOutcomes::Page();
}
