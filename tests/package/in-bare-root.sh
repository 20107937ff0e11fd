#!/usr/bin/env bash
# Runs in a bare Debian, as root, beside the package: installs it as a person would, uses it, removes it,
# and finds nothing left. What it depends on is installed before, so that only the package itself makes a
# difference.
set -euo pipefail
cd /mnt
package=$(echo /mnt/*.deb)
name=$(dpkg-deb --field "$package" Package)
version=$(dpkg-deb --field "$package" Version)
person=technician
export DEBIAN_FRONTEND=noninteractive

wrong() {
    echo "WRONG: $*" >&2
    exit 1
}

install() {
    apt-get install -q -y --no-install-recommends "$@" </dev/null >/tmp/apt.log 2>&1 ||
        { cat /tmp/apt.log >&2; wrong "apt-get could not install $*"; }
}

# Every file with what can change of it, but for what apt and dpkg write of their own work.
files() {
    find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /tmp -o -path /var/cache/apt \
        -o -path /var/lib/apt -o -path '/var/lib/dpkg/*' ! -path '/var/lib/dpkg/info*' \
        -o -path /var/log \) -prune -o ! -type d -printf '%p %y %m %u %s %l\n' -o \
        -type d -printf '%p %y %m %u\n' | sort
}

as_person() {
    runuser -u "$person" -- env HOME="/home/$person" QT_QPA_PLATFORM=offscreen "$@"
}

# lives_and_ends NAME CODE PROGRAM...: the program is there two seconds later, and ends with CODE by
# SIGTERM.
lives_and_ends() {
    local name=$1 expected=$2 pid code=0
    # shellcheck disable=SC2086  # some words
    setpriv --reuid "$person" --regid "$person" --init-groups \
        env HOME="/home/$person" QT_QPA_PLATFORM=offscreen "${@:3}" >/tmp/said 2>&1 </dev/null &
    pid=$!
    sleep 2
    kill -TERM "$pid" 2>/dev/null || true
    wait "$pid" || code=$?
    [[ $code -eq $expected ]] || { cat /tmp/said >&2; wrong "$name ended with $code, not $expected"; }
    echo "$name: starts, lives, ends"
}

use_programs() {
    local said
    said=$(as_person varden --version) || wrong "varden does not start"
    [[ $said == "varden $version" ]] || wrong "varden --version says: $said"
    as_person varden ports >/dev/null || wrong "varden ports fails"
    said=$(as_person varden-printer-simulator --help) || wrong "the simulator does not start"
    lives_and_ends varden-setting-tool 143 varden-setting-tool  # by the signal
    lives_and_ends varden-printer-simulator 0 varden-printer-simulator --port 0
}

# The documents name files that are there.
look_at_documents() {
    local folder=/usr/share/doc/$name document link page program
    for document in "$folder"/*.md; do
        { grep -o ']([^)#:]*[)#]' "$document" || true; } | sed 's/^](//; s/[)#]$//' |
            while read -r link; do
                [[ -z $link || -e $folder/$link ]] || wrong "$document: there is no $link"
            done
    done
    grep -q 'License: Expat' "$folder/copyright" || wrong "no licence"
    [[ $(zcat "$folder/changelog.gz") == "$name ($version) "* ]] || wrong "no changelog"
    for program in $(dpkg --listfiles "$name" | sed -n 's/^\/usr\/bin\///p'); do
        page=/usr/share/man/man1/$program.1.gz
        [[ $(zcat "$page") == *".TH \"$program\""* ]] || wrong "no man page: $page"
    done
    echo "documents: complete"
}

# The entry in the menu names a program and an icon that are there.
look_at_entry() {
    local entry program icon size
    entry=$(echo /usr/share/applications/*.desktop)
    program=$(sed -n 's/^Exec=//p' "$entry")
    [[ -x /usr/bin/$program ]] || wrong "$entry starts $program, which is not there"
    icon=$(sed -n 's/^Icon=//p' "$entry")
    [[ $icon == "$(basename "$entry" .desktop)" ]] || wrong "$entry has the icon $icon"
    [[ -f /usr/share/metainfo/$icon.metainfo.xml ]] || wrong "nothing for software centres"
    for size in 16x16 48x48 256x256; do
        [[ -f /usr/share/icons/hicolor/$size/apps/$icon.png ]] || wrong "no icon of $size"
    done
    [[ -f /usr/share/icons/hicolor/scalable/apps/$icon.svg ]] || wrong "no scalable icon"
    echo "entry in the menu: complete"
}

# What is for many printers works from where it was installed: Ansible finds the collection by itself.
work_a_fleet() {
    local folder=/usr/share/varden/fleet simulator file said
    for file in watch-printers backup-printers varden-alerts.yml varden-dashboard.json \
        varden-{watch,backup}@.{service,timer}; do
        [[ -f $folder/$file ]] || wrong "there is no $folder/$file"
    done
    varden-printer-simulator >/dev/null 2>&1 </dev/null &
    simulator=$!
    mkdir /tmp/metrics
    echo lan:127.0.0.1 >/tmp/hall.printers
    sleep 2
    "$folder/watch-printers" /tmp/hall.printers /tmp/metrics || wrong "watch-printers fails"
    grep -q '^varden_printer_reachable.* 1$' /tmp/metrics/*.prom || wrong "the printer is not watched"
    "$folder/backup-printers" /tmp/hall.printers /tmp/backup || wrong "backup-printers fails"
    [[ $(git -C /tmp/backup log --format=%s) == "1 changed, 0 not read" ]] || wrong "nothing was backed up"
    as_person LC_ALL=C.UTF-8 ansible-doc varden.printer.settings >/dev/null || wrong "Ansible knows no collection"
    said=$(cd /home/"$person" && as_person LC_ALL=C.UTF-8 ansible-playbook -i 127.0.0.1, varden.printer.rollout \
        -e varden_rollout_hosts=all -e '{"varden_rollout_settings": {"feed-adj": -1.5}}' \
        -e varden_rollout_folder=/tmp/rollout 2>&1) || wrong "the rollout fails: $said"
    [[ $(varden read lan:127.0.0.1 feed-adj) == *-1.5* ]] || wrong "the rollout has changed nothing: $said"
    kill "$simulator"
    [[ -z $(find /usr/share/ansible -name __pycache__) ]] || wrong "Ansible leaves files in the collection"
    echo "many printers: watched, backed up, changed by Ansible"
}

useradd --create-home "$person"
apt-get satisfy -q -y --no-install-recommends "$(dpkg-deb --field "$package" Depends)" </dev/null \
    >/tmp/apt.log 2>&1 || { cat /tmp/apt.log >&2; wrong "what the package depends on is not to be had"; }
files >/tmp/before

install "$package"
use_programs
look_at_documents
look_at_entry
[[ -f /lib/udev/rules.d/70-varden-printer.rules ]] || wrong "the rule is not where udev reads it"

apt-get purge -q -y "$name" </dev/null >/tmp/apt.log 2>&1 ||
    { cat /tmp/apt.log >&2; wrong "it cannot be removed"; }
files >/tmp/after
diff /tmp/before /tmp/after >&2 || wrong "the system is not as it was before"
echo "removed: nothing is left"

# What the package only suggests comes last.
install udev umockdev ansible-core git jq "$package"
work_a_fleet
bash /mnt/check-udev-rule.sh || wrong "the rule of udev"
