#!/usr/bin/env bash
# Asks udev what it does with a device that is plugged in: to a printer it gives the group lp and the tag
# uaccess, to anything else nothing. Fails when it says otherwise, or finds fault with our rule.
#
# Runs as root in a system whose own udev may be asked, with the rule where udev reads it; needs udev
# and umockdev, which shows it devices that are not there. udev has no checker of rules in Debian 12;
# that our lines are read without complaint is seen in what it logs here.
set -euo pipefail

rule=70-varden-printer.rules
work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT
code=0

# describe NUMBER NAME [CLASS...]: a device with an interface of each class, for umockdev.
describe() {
    local number=$1 name=$2 class interface=0 interfaces='' length=9
    for class in "${@:3}"; do
        interfaces+=$(printf '0904%02X0001%s010200' "$interface" "$class")
        interfaces+=07050102400000  # an endpoint
        interface=$((interface + 1))
        length=$((length + 9 + 7))
    done
    cat <<TEXT
P: /devices/pci0000:00/0000:00:14.0/usb1/1-$number
N: bus/usb/001/00$number
E: DEVTYPE=usb_device
E: DEVNAME=/dev/bus/usb/001/00$number
E: BUSNUM=001
E: DEVNUM=00$number
E: MAJOR=189
E: MINOR=$number
E: SUBSYSTEM=usb
A: idVendor=1209
A: idProduct=0001
A: product=$name
A: bDeviceClass=00
H: descriptors=$(printf '120100020000004009120100000100000001')$(printf '0902%02X00%02X0100C000' "$length" "$interface")$interfaces

TEXT
}

# what_udev_does NUMBER: what it says of that device when it is plugged in.
what_udev_does() {
    LC_ALL=C umockdev-run --device "$work/devices" -- udevadm test --action=add \
        "/sys/devices/pci0000:00/0000:00:14.0/usb1/1-$1" 2>&1
}

# expect NUMBER NAME GROUP MODE TAG: GROUP and TAG may be "-", for none.
expect() {
    local said group mode tag=-
    said=$(what_udev_does "$1") || { echo "$2: udevadm failed:" && echo "$said"; code=1; return; }
    if grep "$rule" <<<"$said" | grep -iE 'invalid|unknown|fail|ignor|error'; then
        echo "udev finds fault with $rule." >&2
        code=1
    fi
    group=$(sed -n "s/.*$rule:[0-9]* GROUP \([0-9]*\).*/\1/p" <<<"$said")
    mode=$(sed -n "s/.*$rule:[0-9]* MODE \([0-7]*\).*/\1/p" <<<"$said")
    # TAGS would be those that the device ever had.
    [[ ! $said =~ CURRENT_TAGS=[^$'\n']*:uaccess: ]] || tag=uaccess
    if [[ ${group:--} == "$3" && ${mode:--} == "$4" && $tag == "$5" ]]; then
        echo "udev: $2: group ${group:--}, mode ${mode:--}, tag $tag"
    else
        printf '%s: group %s, mode %s, tag %s; to be: %s, %s, %s. udev said:\n%s\n' "$2" \
            "${group:--}" "${mode:--}" "$tag" "$3" "$4" "$5" \
            "$(grep -v -e '^Reading' -e '^Trying' <<<"$said")" >&2
        code=1
    fi
}

{
    describe 1 'a printer' 07
    describe 2 'a printer with a scanner before it' FF 07
    describe 3 'a disk' 08
    describe 4 'a keyboard' 03
} >"$work/devices"
lp=$(getent group lp | cut -d : -f 3)
expect 1 'a printer' "$lp" 0660 uaccess
expect 2 'a printer with a scanner before it' "$lp" 0660 uaccess
expect 3 'a disk' - - -
expect 4 'a keyboard' - - -
exit "$code"
