#!/usr/bin/env bash
# Runs the tests of the program's USB code in an emulated machine with Debian's kernel.
#
#   run-kernel-tests.sh PROGRAM FOLDER [TEST-OPTION...]
#
# PROGRAM is the test program, FOLDER where the kernel is kept: it is fetched when it is not there.
# Fails when a case failed, the kernel stopped, or all of it took longer than three minutes.
set -euo pipefail

limit=180  # seconds
modules=(vhci_hcd usblp)

program=$(realpath -- "$1")
mkdir -p -- "$2"
folder=$(realpath -- "$2")
shift 2

# The package that the distribution's newest kernel is in.
kernel_package() {
    apt-cache depends linux-image-amd64 | sed -n 's/^ *Depends: \(linux-image-[^ ]*\)$/\1/p' | head -n 1
}

# Fetches and unpacks, but does not install, the kernel and its USB modules. What is there is
# complete: it gets its name last.
fetch_kernel() {
    [[ ! -d $folder/kernel ]] || return 0
    local part=$folder/part package
    rm -rf -- "$part"
    mkdir -- "$part"
    package=$(kernel_package)
    if [[ -z $package ]]; then
        echo "No package with a kernel is known: run apt-get update" >&2
        return 3
    fi
    echo "Fetching: $package"
    # Into a folder that apt's own user may not enter: it says so, and fetches as this one.
    (cd -- "$part" && apt-get download -q -o APT::Sandbox::User=root "$package") || return 3
    dpkg-deb --fsys-tarfile "$part"/*.deb | tar -x -C "$part" --wildcards './boot/vmlinuz-*' \
        './lib/modules/*/modules.*' './lib/modules/*/kernel/drivers/usb/*'
    rm -- "$part"/*.deb
    depmod -b "$part" "$(ls -- "$part/lib/modules")"
    mv -- "$part" "$folder/kernel"
}

# The modules and those that they need, in the order in which they are to be loaded.
module_files() {
    local module
    for module in "${modules[@]}"; do
        modprobe -d "$folder/kernel" -S "$(ls -- "$folder/kernel/lib/modules")" --show-depends \
            "$module"
    done | sed -n 's/^insmod \([^ ]*\).*/\1/p' | awk '!seen[$0]++'
}

# The shared libraries of the test program, the loader among them.
library_files() {
    ldd -- "$program" | sed -n 's/^.*[[:space:]]\(\/[^ ]*\) (0x[0-9a-f]*)$/\1/p'
}

# What the machine finds when it starts.
make_initial_files() {
    local root=$1 file
    mkdir -p -- "$root"/{bin,dev,modules,proc,sys}
    cp -- /bin/busybox "$root/bin/"
    cp -- "$(dirname -- "${BASH_SOURCE[0]}")/init.sh" "$root/init"
    chmod 755 "$root/init"
    cp -- "$program" "$root/varden_kernel_tests"
    library_files | while read -r file; do
        install -D -m 755 -- "$file" "$root$file"
    done
    module_files | while read -r file; do
        cp -- "$file" "$root/modules/"
        basename -- "$file"
    done >"$root/modules/order"
    shift
    printf '%s' "${@/%/$'\n'}" >"$root/arguments"
    (cd -- "$root" && find . | cpio --quiet -o -H newc -R 0:0) | gzip -1 >"$root.gz"
}

# Everything that the machine prints. A kernel that is in trouble stops at once.
run_machine() {
    timeout --kill-after=5 "$limit" qemu-system-x86_64 \
        -nodefaults -no-user-config -machine pc -accel tcg -cpu max -smp 1 -m 512 \
        -display none -serial stdio -no-reboot \
        -kernel "$folder"/kernel/boot/vmlinuz-* -initrd "$1" \
        -append "console=ttyS0 quiet loglevel=1 panic=-1 oops=panic" </dev/null | sed -u 's/\r$//'
}

if [[ $(dpkg --print-architecture) != amd64 ]]; then
    echo "The emulated machine is an amd64 one, and so must this be." >&2
    exit 3
fi
fetch_kernel
work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT
make_initial_files "$work/files" "$@"

result=0
run_machine "$work/files.gz" | tee "$work/log" || result=$?
echo "All of it took $SECONDS s."
if grep -qx 'The tests have ended with 0\.' "$work/log" && [[ $result -eq 0 ]]; then
    exit 0
elif [[ $result -eq 124 || $result -eq 137 ]]; then
    echo "It was switched off: it took longer than $limit s." >&2
elif ! grep -q 'The tests have ended with' "$work/log"; then
    echo "The machine stopped before the tests had ended." >&2
else
    echo "There were failures." >&2
fi
exit 1
