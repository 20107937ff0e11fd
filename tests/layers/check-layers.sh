#!/usr/bin/env bash
# Checks that the rooms of the source tree keep to themselves.
#
#   check-layers.sh [ROOT]        ROOT: the tree to check, by default the one this script is in
#
# Every offence is printed as FILE:LINE: what is wrong; the exit code is 1 when there is one, 2 when
# nothing could be checked. What is refused:
#   - an include of a room that the including room may not know (cmake/rooms.txt)
#   - a header that is neither the project's nor the standard library's, where only those belong
#   - Qt or libusb outside the rooms that stand on them
#   - a message box, a file dialog, a socket or a serial port by name, outside platform/qt and
#     platform/widgets
#   - libusb by name, outside platform/usb
#   - a file that is not named after the class or module in it
#   - a header without #pragma once
#   - a source file outside every room
set -euo pipefail
export LC_ALL=C

home=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." && pwd)
list=$home/cmake/rooms.txt
cd -- "${1:-$home}" || exit 2

mapfile -t sources < <(find . \( -path ./build -o -path './.*' -o -path './cmake-build-*' \) -prune -o \
    -type f \( -name '*.h' -o -name '*.cpp' \) -print | sed 's|^\./||' | sort)
if [[ ${#sources[@]} -eq 0 ]]; then
    echo "check-layers: no sources in $PWD" >&2
    exit 2
fi

# A header and a source of the same name belong together; awk is told which headers there are.
printf '%s\n' "${sources[@]}" | awk -v list="$list" '
# Reads the list of rooms: folder : what it may know : what of the outside it may use.
function Table(    text, part) {
    while ((getline text < list) > 0) {
        if (text !~ /^[a-z]/) continue
        split(text, part, ":")
        gsub(/ /, "", part[1])
        Know(part[1], part[2])
        if (part[3] ~ /toolkit/) toolkit[part[1]] = 1
        if (part[3] ~ /outside/) outside[part[1]] = 1
        if (part[3] ~ /usb/) usb[part[1]] = 1
        if (part[3] ~ /system/) systemHeaders[part[1]] = 1
    }
    close(list)
}

function Know(p_room, p_rooms,    i, n, names) {
    rooms[p_room] = 1
    knows[p_room, p_room] = 1
    n = split(p_rooms, names, " ")
    for (i = 1; i <= n; i++) knows[p_room, names[i]] = 1
}

# The innermost room that a path lies in, or "".
function RoomOf(p_path) {
    while (sub("/[^/]*$", "", p_path)) if (p_path in rooms) return p_path
    return ""
}

function Offence(p_text) {
    printf "%s:%d: %s\n", file, line, p_text
    offences++
}

# The line without comments, and in word without the contents of its texts; inComment is kept
# from line to line.
function Strip(p_line,    i, n, c, two, quote) {
    if (!inComment && p_line !~ /["\047]|\/\/|\/\*/) { code = p_line; word = p_line; return }
    code = ""; word = ""; quote = ""
    n = length(p_line)
    for (i = 1; i <= n; i++) {
        c = substr(p_line, i, 1); two = substr(p_line, i, 2)
        if (inComment) {
            if (two == "*/") { inComment = 0; i++ }
        } else if (quote != "") {
            code = code c
            if (c == "\\") { code = code substr(p_line, ++i, 1) }
            else if (c == quote) quote = ""
        } else if (two == "//") {
            return
        } else if (two == "/*") {
            inComment = 1; i++
        } else {
            # A quote between digits groups them.
            if (c == "\"" || (c == "\047" && substr(p_line, i - 1, 1) !~ /[0-9A-Fa-f]/)) quote = c
            code = code c; word = word c
        }
    }
}

function CheckInclude(p_form, p_name,    target) {
    target = RoomOf(p_name)
    if (target != "") {
        if (!((room, target) in knows) && !((room, "*") in knows))
            Offence(room " may not know " target ": " p_name)
    } else if (p_name ~ /^(Q[A-Z]|Qt|q[a-z]+\.h$)/) {
        if (!(room in toolkit)) Offence("Qt header in " room ": " p_name)
    } else if (p_name ~ /^libusb/) {
        if (!(room in usb)) Offence("libusb belongs in platform/usb: " p_name)
    } else if (p_form == "\"" && p_name !~ /\.moc$/) {
        Offence("an include names the room of its file: " p_name)
    } else if (!(room in toolkit) && !(room in systemHeaders) && p_name !~ /^[a-z_0-9]+$/) {
        Offence("a header outside the standard library in " room ": " p_name)
    }
}

# Finds names that only p_home may use, in rooms for which that holds.
function CheckNames(p_holds, p_home, p_names,    name) {
    if (p_holds && match(word, "(^|[^A-Za-z0-9_])(" p_names ")([^A-Za-z0-9_]|$)")) {
        name = substr(word, RSTART, RLENGTH)
        gsub(/[^A-Za-z0-9_]/, "", name)
        Offence("what lies outside belongs in " p_home ": " name)
    }
}

function CheckLine(    name) {
    if (code ~ /^[ \t]*#[ \t]*include[ \t]*[<"]/) {
        name = code
        sub(/^[ \t]*#[ \t]*include[ \t]*/, "", name)
        CheckInclude(substr(name, 1, 1), substr(name, 2, match(substr(name, 2), /[>"]/) - 1))
    } else {
        CheckNames(!(room in outside), "platform/qt or platform/widgets", "QMessageBox|QFileDialog|QTcpSocket|QSerialPort")
        CheckNames(!(room in usb), "platform/usb", "libusb_?[A-Za-z0-9_]*")
    }
    if (code ~ /^[ \t]*#[ \t]*pragma[ \t]+once/) pragma = 1
    if (!named && index(word, base) && match(word, "(^|[^A-Za-z0-9_])(class|struct|namespace|enum|enum class)[ \t]+([A-Za-z0-9_:]+[ \t]+)*" base "([^A-Za-z0-9_]|$)")) named = 1
}

function CheckFile(    header) {
    # The simulator has its rules and its program in one folder; its main is the program.
    room = file == "simulator/main.cpp" ? "simulator/program" : RoomOf(file)
    base = file; sub(/.*\//, "", base); sub(/\.[a-z]+$/, "", base)
    header = file ~ /\.h$/
    line = 1
    if (room == "") { Offence("a source file outside every room"); return }

    inComment = 0; pragma = 0; named = 0
    for (line = 1; (getline text < file) > 0; line++) { Strip(text); CheckLine() }
    close(file)

    line = 1
    if (header && !pragma) Offence("no #pragma once")
    if (room == "tests" || base == "main" || named) return
    if (header) Offence("no class or module named " base)
    else if (!((substr(file, 1, length(file) - 4) ".h") in files))
        Offence("neither a header nor a class or module named " base)
}

BEGIN { Table() }
{ files[$0] = 1; order[++count] = $0 }
END {
    for (k = 1; k <= count; k++) { file = order[k]; CheckFile() }
    exit offences > 0
}'
echo "check-layers: ${#sources[@]} files keep to their rooms"
