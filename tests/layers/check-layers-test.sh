#!/usr/bin/env bash
# Proves that check-layers.sh finds every kind of offence, each at its line, and nothing else.
set -euo pipefail
export LC_ALL=C

check=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)/check-layers.sh
tree=$(mktemp -d)
trap 'rm -rf -- "$tree"' EXIT
failures=0

fail() {
    echo "FAILED: $1" >&2
    failures=$((failures + 1))
}

# put FILE: writes standard input to FILE of the tree.
put() {
    mkdir -p -- "$tree/$(dirname -- "$1")"
    cat >"$tree/$1"
}

# expect NAME CODE EXPECTED: runs the check and compares its exit code and what it reports.
expect() {
    local name=$1 code=$2 expected=$3 got=0 report
    report=$(bash "$check" "$tree" 2>&1) || got=$?
    [[ $got -eq $code ]] || fail "$name: exit code $got instead of $code"
    report=$(sed '/^check-layers: /d' <<<"$report" | sort)
    if [[ $report != "$(sort <<<"$expected")" ]]; then
        fail "$name: reported and expected differ"
        diff <(echo "$report") <(sort <<<"$expected") >&2 || true
    fi
}

# --- a tree without sources cannot be called clean ------------------------------------------
expect "an empty tree" 2 ""

# --- a clean tree: words in comments and texts are no offence, rooms may be missing ----------
put model/CGood.h <<'SOURCE'
// #include "ui/FmMain.h" is what a model never does; nor QMessageBox.
#pragma once
#include <string>
#include <cstdint>
/* #include <QWidget>
   QTcpSocket */
class CGood { std::string m_str = "QFileDialog // \" libusb"; int m_i = 1'000; };  // QSerialPort
SOURCE
put model/MGood.cpp <<'SOURCE'
#include "model/CGood.h"
namespace MGood { enum class Kind : int; }
SOURCE
put model/CGood.cpp <<<'#include "model/CGood.h"'
put platform/qt/CQtGood.h <<'SOURCE'
#pragma once
#include <QMessageBox>
class CQtGood final : public QMessageBox {};
SOURCE
put platform/usb/CUsbGood.cpp <<<$'#include <libusb.h>\n#include <sys/ioctl.h>\nint CUsbGood = libusb_init(nullptr);'
put platform/usb/CUsbGood.h <<<$'#pragma once\nstruct libusb_context;\nclass CUsbGood {};'
put simulator/usb/CWire.cpp <<<$'#include "simulator/CRules.h"\n#include <linux/usbdevice_fs.h>\nclass CWire {};'
put ui/FmGood.h <<'SOURCE'
#pragma once
#include "platform/qt/CQtGood.h"
#include <QWidget>
class FmGood : public QWidget { QMessageBoxes m_objOtherName; };
SOURCE
put ui/FmGood.cpp <<'SOURCE'
#include "ui/FmGood.h"
#include "FmGood.moc"
SOURCE
put app/main.cpp <<<'#include "ui/FmGood.h"'
put app/Version.h.in <<<'#include "../anything.h"'
put simulator/main.cpp <<<$'#include "simulator/program/CServer.h"\n#include <QCoreApplication>'
put simulator/program/CServer.cpp <<<$'#include <QTcpSocket>\nclass CServer {};'
put tests/model/AnyName.cpp <<<'#include <QTcpSocket>'
put build/dev/Generated.h <<<'#include "../anything.h"'
expect "a clean tree" 0 ""

# --- every kind of offence, once or more -----------------------------------------------------
rm -rf -- "${tree:?}"/*
put model/CNoPragma.h <<<'class CNoPragma {};'
put model/CWrongName.h <<<$'#pragma once\nclass COtherName {};'
put model/COnlyNamed.h <<<$'#pragma once\n// class COnlyNamed\nclass COnlyNamedAlmost {};'
put model/CAlone.cpp <<<'int Unnamed();'
put model/MUsesQt.cpp <<<$'namespace MUsesQt {}\n#include <QString>\n#include <QtGlobal>\n#include <qglobal.h>\n# include <QtCore/QString>'
put files/MUsesUsb.cpp <<<$'namespace MUsesUsb {}\n\n#include <libusb-1.0/libusb.h>'
put link/MUsesSystem.cpp <<<$'#include <sys/socket.h>\n#include <termios.h>\nnamespace MUsesSystem {}'
put link/MRelative.cpp <<<$'#include "CItem.h"\n#include "../ui/FmMain.h"\nnamespace MRelative {}'
put ui/MUsesOutside.cpp <<'SOURCE'
namespace MUsesOutside {
void F() { QMessageBox::about(nullptr, "", ""); }
QFileDialog* /* a dialog */ d;
/* a comment
   ends here */ QTcpSocket s;
auto p = new QSerialPort;  // a port
int i = 1'000; int j = libusb_init(nullptr);
}
SOURCE
put app/main.cpp <<<$'#include <libusb.h>\nint main() {}'
put simulator/CRules.cpp <<<$'#include "simulator/program/CServer.h"\n#include <QTimer>\nclass CRules {};'
put simulator/usb/MUsesUsb.cpp <<<$'#include <libusb.h>\n#include <QString>\nnamespace MUsesUsb {}'
put platform/usb/MUsesQt.cpp <<<$'#include <QString>\nnamespace MUsesQt { QTcpSocket* s; }'
put platform/qt/MUsesUsb.cpp <<<$'#include <libusb-1.0/libusb.h>\nnamespace MUsesUsb { libusb_context* c; }'
put gadgets/CNowhere.h <<<$'#pragma once\nclass CNowhere {};'
put CNowhereEither.cpp <<<'class CNowhereEither {};'
expect "a tree of offences" 1 'CNowhereEither.cpp:1: a source file outside every room
app/main.cpp:1: libusb belongs in platform/usb: libusb.h
files/MUsesUsb.cpp:3: libusb belongs in platform/usb: libusb-1.0/libusb.h
platform/qt/MUsesUsb.cpp:1: libusb belongs in platform/usb: libusb-1.0/libusb.h
platform/qt/MUsesUsb.cpp:2: what lies outside belongs in platform/usb: libusb_context
platform/usb/MUsesQt.cpp:1: Qt header in platform/usb: QString
platform/usb/MUsesQt.cpp:2: what lies outside belongs in platform/qt or platform/widgets: QTcpSocket
simulator/usb/MUsesUsb.cpp:1: libusb belongs in platform/usb: libusb.h
simulator/usb/MUsesUsb.cpp:2: Qt header in simulator/usb: QString
gadgets/CNowhere.h:1: a source file outside every room
link/MRelative.cpp:1: an include names the room of its file: CItem.h
link/MRelative.cpp:2: an include names the room of its file: ../ui/FmMain.h
link/MUsesSystem.cpp:1: a header outside the standard library in link: sys/socket.h
link/MUsesSystem.cpp:2: a header outside the standard library in link: termios.h
model/CAlone.cpp:1: neither a header nor a class or module named CAlone
model/CNoPragma.h:1: no #pragma once
model/COnlyNamed.h:1: no class or module named COnlyNamed
model/CWrongName.h:1: no class or module named CWrongName
model/MUsesQt.cpp:2: Qt header in model: QString
model/MUsesQt.cpp:3: Qt header in model: QtGlobal
model/MUsesQt.cpp:4: Qt header in model: qglobal.h
model/MUsesQt.cpp:5: Qt header in model: QtCore/QString
simulator/CRules.cpp:1: simulator may not know simulator/program: simulator/program/CServer.h
simulator/CRules.cpp:2: Qt header in simulator: QTimer
ui/MUsesOutside.cpp:2: what lies outside belongs in platform/qt or platform/widgets: QMessageBox
ui/MUsesOutside.cpp:3: what lies outside belongs in platform/qt or platform/widgets: QFileDialog
ui/MUsesOutside.cpp:5: what lies outside belongs in platform/qt or platform/widgets: QTcpSocket
ui/MUsesOutside.cpp:6: what lies outside belongs in platform/qt or platform/widgets: QSerialPort
ui/MUsesOutside.cpp:7: what lies outside belongs in platform/usb: libusb_init'

# --- every pair of rooms: who may know whom ----------------------------------------------------
rm -rf -- "${tree:?}"/*
rooms=(model protocol platform platform/qt platform/widgets platform/usb link files flows jobs cli simulator simulator/usb simulator/program ui app tour tests)
allowed=' protocol>model platform/qt>platform link>model link>protocol
 link>platform files>model files>protocol files>platform flows>model flows>protocol flows>link
 flows>files flows>platform simulator>model simulator>protocol simulator/program>simulator
 simulator/program>simulator/usb simulator/usb>simulator platform/usb>platform platform/qt>platform/usb
 ui>model ui>protocol ui>platform ui>platform/qt ui>link ui>files ui>flows app>ui
 app>platform/widgets platform/widgets>platform platform/widgets>platform/usb
 platform/widgets>platform/qt jobs>model jobs>protocol jobs>platform jobs>link cli>model
 cli>protocol cli>platform cli>platform/qt cli>platform/usb cli>link cli>files cli>jobs '
allowed=" ${allowed//$'\n'/ } "
expected=
for from in "${rooms[@]}"; do
    source="namespace MPairs {}"$'\n'
    line=1
    for to in "${rooms[@]}"; do
        source+="#include \"$to/CThing.h\""$'\n'
        line=$((line + 1))
        if [[ $from == "$to" || $from == tour || $from == tests || $allowed == *" $from>$to "* ]]; then
            continue
        fi
        expected+="$from/MPairs.cpp:$line: $from may not know $to: $to/CThing.h"$'\n'
    done
    put "$from/MPairs.cpp" <<<"$source"
done
expect "every pair of rooms" 1 "${expected%$'\n'}"

# --- angle brackets hide nothing -----------------------------------------------------------------
rm -rf -- "${tree:?}"/*
put model/main.cpp <<<$'\n#  include <ui/FmMain.h>'
expect "an include in angle brackets" 1 'model/main.cpp:2: model may not know ui: ui/FmMain.h'

[[ $failures -eq 0 ]] || exit 1
echo "check-layers-test: every offence was found"
