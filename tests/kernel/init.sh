#!/bin/busybox sh
# The first program of the emulated machine: makes it ready, runs the tests, switches it off.
# The arguments for the tests stand in /arguments, one a line.
# shellcheck shell=sh
/bin/busybox --install -s /bin
export PATH=/bin

mount -t proc proc /proc
mount -t sysfs sysfs /sys
mount -t devtmpfs devtmpfs /dev

while read -r module; do
    insmod "/modules/$module" || echo "Module not loaded: $module"
done </modules/order

set --
while read -r argument; do
    set -- "$@" "$argument"
done </arguments

/varden_kernel_tests "$@"
result=$?
[ "$result" -eq 0 ] || { echo "The kernel's last lines:"; dmesg | tail -n 60; }
echo "The tests have ended with $result."
poweroff -f
