#!/usr/bin/env bash
# Tries a package: looks at what is in it, and has it installed, used and removed in a bare Debian of this
# machine's release, made for it.
#
#   try-package.sh PACKAGE BUILD
#
# BUILD is the folder in which the package was built. Fetched packages are kept there, in archives, for
# the next time. They come from where this machine's apt has its own from: when nothing can be had from
# there, this fails.
set -euo pipefail

package=$(realpath -- "$1")
mkdir -p -- "$2/archives"
archives=$(realpath -- "$2/archives")
here=$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")
work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT

# What this machine's apt knows of its own release, as lines of a list of sources. mmdebstrap finds the
# keys by itself.
sources() {
    # shellcheck disable=SC2016  # the fields are for apt-get to fill in
    apt-get indextargets --format '$(RELEASE) $(REPO_URI) $(COMPONENT)' \
        'Created-By: Packages' | sort -u | while read -r release uri component; do
        case $release in
        "$1" | "$1-updates" | "$1-security")
            echo "deb $uri $release $component"
            ;;
        esac
    done
}

dpkg-deb --extract "$package" "$work/content"
cmake --build "$2" --target varden_hardening_probe
"$here/check-hardening.sh" \
    "$2"/CMakeFiles/varden_hardening_probe.dir/tests/package/hardening_probe.cpp.o \
    "$work"/content/usr/bin/*
desktop-file-validate "$work"/content/usr/share/applications/*.desktop
appstreamcli validate --no-net "$work"/content/usr/share/metainfo/*.metainfo.xml
"$here/../../contrib/desktop/make-icons" --check

release=$(. /etc/os-release && echo "${VERSION_CODENAME-}")
sources "$release" >"$work/sources.list"
if [[ ! -s $work/sources.list ]]; then
    echo "apt knows no place to fetch a bare Debian ($release) from; the package was not tried." >&2
    exit 3
fi

# What the package does is only seen in a system that has nothing else. It is thrown away at the end.
mmdebstrap --quiet --variant=apt --format=null --skip=essential/unlink \
    --setup-hook="mkdir -p \"\$1\"/var/cache/apt/archives" \
    --setup-hook="sync-in \"$archives\" /var/cache/apt/archives" \
    --customize-hook="copy-in \"$package\" \"$here/in-bare-root.sh\" \"$here/check-udev-rule.sh\" /mnt" \
    --customize-hook="chroot \"\$1\" bash /mnt/in-bare-root.sh" \
    --customize-hook="sync-out /var/cache/apt/archives \"$archives\"" \
    "$release" /dev/null "$work/sources.list" || {
    echo "The package did not come through the bare Debian, or that could not be made; see above." >&2
    exit 1
}
