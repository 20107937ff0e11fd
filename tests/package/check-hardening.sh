#!/usr/bin/env bash
# Reads in programs whether they were built as cmake/Hardening.cmake says. Fails, and names what is
# missing, when one was not.
#
#   check-hardening.sh PROBE PROGRAM...
#
# PROBE is hardening_probe.cpp, compiled with the programs' options. It shows whether calls of the C
# library are checked: in the programs there may be none that needs it.
set -euo pipefail
export LC_ALL=C
code=0

# Text that readelf has printed is looked at whole: a reader that ends early would stop it.
missing() {
    echo "$program: $1" >&2
    code=1
}

program=$1
[[ $(readelf --symbols --wide -- "$program") == *__memcpy_chk* ]] ||
    missing "does not check its calls of the C library (FORTIFY_SOURCE)"
for program in "${@:2}"; do
    head=$(readelf --file-header --wide -- "$program")
    segments=$(readelf --program-headers --wide -- "$program")
    dynamic=$(readelf --dynamic --wide -- "$program")
    symbols=$(readelf --dyn-syms --wide -- "$program")
    [[ $head =~ Type:\ +DYN && $dynamic =~ FLAGS_1[^$'\n']*PIE ]] ||
        missing "cannot be loaded anywhere (PIE)"
    [[ $segments == *GNU_RELRO* ]] || missing "its tables of addresses stay writable (RELRO)"
    [[ $dynamic =~ FLAGS_1[^$'\n']*NOW ]] || missing "looks addresses up later (BIND_NOW)"
    [[ $segments =~ GNU_STACK[^$'\n']*\ RW\  ]] || missing "has a stack that can be run"
    [[ $symbols == *__stack_chk_fail* ]] || missing "does not guard its stack"
done
[[ $code -ne 0 ]] || echo "hardening: complete"
exit "$code"
