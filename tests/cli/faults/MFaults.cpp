#include "tests/cli/faults/MFaults.h"

namespace MFaults {

namespace {

const std::vector<Link> Every{Link::Lan, Link::Com, Link::Usb};

std::vector<Fault> OfTheWay() {
    return {
        {Kind::NothingThere, Where::Opening, "nothing is there", Every, true},
        {Kind::Refused, Where::Opening, "the connection is refused", {Link::Lan}},
        {Kind::NoRoute, Where::Opening, "no way leads there", {Link::Lan}},
        {Kind::NoName, Where::Opening, "the name is not known", {Link::Lan}},
        {Kind::NotPermitted, Where::Opening, "not permitted", Every},
        {Kind::Held, Where::Opening, "another program has it", {Link::Com, Link::Usb}},
        {Kind::NoPrinter, Where::Opening, "something else is there", Every},
        {Kind::NotIdentified, Where::Opening, "it does not tell what it is", {Link::Usb}},
        {Kind::NoReaction, Where::Opening, "the device does not react", {Link::Com}},
        {Kind::GoneAtOnce, Where::Opening,
         "it opens, and is closed or pulled out before anything is sent", Every},
        {Kind::NotTaken, Where::Any, "the command is not taken", Every, true},
        {Kind::BrokenSending, Where::Any, "reset, or pulled out, while the command goes out", Every,
         true},
    };
}

std::vector<Fault> OfAnswers() {
    return {
        {Kind::Silent, Where::Any, "no answer", Every, true},
        {Kind::Late, Where::Any, "the answer comes after 6 s", Every, true},
        {Kind::LateInTime, Where::Any, "the answer comes after 4 s", Every},
        {Kind::SingleBytes, Where::Any, "the answer comes byte by byte", Every},
        {Kind::Twice, Where::Any, "the answer comes twice at once", Every},
        {Kind::Cut, Where::Any, "the answer is cut in the middle", Every},
        {Kind::OtherGroup, Where::Settings, "another group's answer comes", Every},
        {Kind::OtherGroupFirst, Where::Settings, "another group's answer comes, then the right one",
         Every},
        {Kind::OtherKind, Where::Any,
         "settings come in place of a status, or a status in place of settings", Every},
        {Kind::Junk1, Where::Any, "1 byte of junk in place of the answer", Every},
        {Kind::Junk100, Where::Any, "100 bytes of junk in place of it", Every},
        {Kind::Junk64K, Where::Begin, "64 KiB of junk in place of it", Every},
        {Kind::Junk1M, Where::Begin, "1 MiB of junk in place of it", {Link::Lan}},
        {Kind::Endless, Where::Begin, "junk without an end", Every},
        {Kind::JunkBefore1, Where::Any, "1 byte of junk in front of the answer", Every},
        {Kind::JunkBefore100, Where::Any, "100 bytes of junk in front of it", Every},
        {Kind::ClosedBefore, Where::Any,
         "closed, or pulled out, between the command and its answer", Every, true},
        {Kind::ClosedInside, Where::Any, "closed, or pulled out, inside of the answer", Every,
         true},
        {Kind::ClosedAfter, Where::Any, "closed, or pulled out, behind the answer", Every},
        {Kind::Reset, Where::Any, "reset in place of the answer", {Link::Lan}},
        {Kind::OutOfRange, Where::Settings, "fields hold values out of their ranges", Every},
        {Kind::NoNumbers, Where::Settings, "fields hold no numbers", Every, true},
        {Kind::UnknownStatus, Where::Status, "the status is a code that nobody knows", Every},
        {Kind::ErrorStatus, Where::Status, "the status is an error (11, a paper jam)", Every, true},
        {Kind::Refusal, Where::Any, "the printer refuses the command (06)", Every, true},
    };
}

std::vector<Fault> OfCtrlC() {
    return {
        {Kind::InterruptedOpening, Where::Opening, "Ctrl-C while the link is opened", Every},
        {Kind::InterruptedSending,
         Where::Any,
         "Ctrl-C while the command goes out",
         {Link::Lan, Link::Com}},
        {Kind::InterruptedWaiting, Where::Any, "Ctrl-C while the answer is awaited", Every},
        {Kind::InterruptedBetween, Where::Followed, "Ctrl-C before the next command", Every},
    };
}

}  // namespace

std::span<const Fault> All() {
    static const std::vector<Fault> Rows = [] {
        std::vector<Fault> objRows = OfTheWay();
        for (const auto& fnFurther : {OfAnswers, OfCtrlC}) {
            const std::vector<Fault> objFurther = fnFurther();
            objRows.insert(objRows.end(), objFurther.begin(), objFurther.end());
        }
        return objRows;
    }();
    return Rows;
}

std::string_view Name(Link p_iLink) {
    switch (p_iLink) {
    case Link::Lan:
        return "LAN";
    case Link::Com:
        return "COM";
    case Link::Usb:
        break;
    }
    return "USB";
}

}  // namespace MFaults
