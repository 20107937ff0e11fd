"""The changes, the faults and what may come of them: the table of docs/write.md."""

import os

LAN, COM, USB = "LAN", "serial", "USB"
LINKS = [LAN, COM, USB]

BEGIN = "<!-- made by tests/writes: outcomes -->"
END = "<!-- end of outcomes -->"


class Change:
    """The words of a command line. MOVED stands for an address that is free."""

    def __init__(self, name, words, links, network=False, reach=2):
        self.name, self.words, self.links = name, words, links
        self.network, self.reach = network, reach

    def that_changes_nothing(self):
        return Change(self.name, ["feed-adj=0"], self.links)


CHANGES = [
    Change("an adjustment", ["feed-adj=-1.5"], LINKS),
    Change("parameters and adjustments",
           ["font-code=PC-852", "feed-key=PRINT", "x-adj=3.5", "--stop-bit-is", "1bit"], LINKS),
    Change("names of the network",
           ["default-gateway=10.0.0.1", "dhcp-host-name=hall 3"], LINKS, network=True),
    Change("address and port",
           ["feed-adj=-1.5", "ip-address=MOVED", "socket-port=18001", "--allow-link-change"],
           [LAN], network=True, reach=4),
    Change("the line's speed",
           ["cut-adj=2", "speed=19200bps", "--stop-bit-is", "1bit", "--allow-link-change"], [COM]),
]


class Fault:
    """Something that goes wrong, and the exit codes that may come of it."""

    slowness = 0

    def __init__(self, name, codes, by_link=None):
        self.name, self._codes, self._by_link = name, codes, by_link or {}

    def codes(self, link):
        return self._by_link.get(link, self._codes)

    def at_each_moment(self, link, change, commands):
        """Pairs of a cell's name and the simulator's options."""
        raise NotImplementedError


class Always(Fault):
    """The same options, whatever passes."""

    def __init__(self, name, codes, options, by_link=None, slowness=0):
        super().__init__(name, codes, by_link)
        self._options, self.slowness = options, slowness

    def at_each_moment(self, link, change, commands):
        yield self.name, self._options


class PowerCut(Fault):
    """The power goes within, or with the end of, each command that passes."""

    def __init__(self, name, codes, options, slowness, by_link=None):
        super().__init__(name, codes, by_link)
        self._options, self.slowness = options, slowness

    def at_each_moment(self, link, change, commands):
        passed = 0
        for number, command in enumerate(commands, 1):
            for where, count in (("within", passed + 2), ("behind", passed + len(command))):
                yield (f"{self.name}, {where} command {number} of {len(commands)}",
                       ["--power-cut", str(count), *self._options])
            passed += len(command)


def heads(commands):
    """What the commands that set something begin with."""
    found = []
    for command in commands:
        head = command[:command.index(",") + 1] if command.startswith(("{Z2", "{IP")) else command[:4]
        if command.startswith(("{Z2", "{I")) and head not in found:
            found.append(head)
    return found


class OfCommands(Fault):
    """Something for each command that sets something; HEAD in an option stands for it."""

    def __init__(self, name, codes, variants, by_link=None):
        super().__init__(name, codes, by_link)
        self._variants = variants

    def at_each_moment(self, link, change, commands):
        for head in heads(commands):
            for options in self._variants:
                options = [option.replace("HEAD", head) for option in options]
                yield f"{self.name} {' '.join(options)}", options


class OfReadings(Fault):
    """A request for settings is refused: each of them, in its turn."""

    def at_each_moment(self, link, change, commands):
        for number, _ in enumerate([text for text in commands if text.startswith("{Z5")], 1):
            yield (f"{self.name}, number {number}",
                   ["--refuse", "{Z5", "--refuse-only", str(number)])


ITEMS = {
    "an adjustment": ["FeedAdjustment", "FeedDirection"],
    "parameters and adjustments": ["FontCode", "FeedKeyFunction", "XCoordinateAdjustment"],
    "names of the network": ["Gateway1", "Gateway4", "DhcpClientHost"],
    "address and port": ["FeedAdjustment", "SocketPortNumber"],
    "the line's speed": ["CutPosAdjustment", "CommunicationSpeed"],
}


class Stuck(Fault):
    """Each setting that changes keeps its value; with something more for each command."""

    def __init__(self, name, codes, more=None):
        super().__init__(name, codes)
        self._more = more

    def at_each_moment(self, link, change, commands):
        for item in ITEMS[change.name]:
            for head in heads(commands) if self._more else [""]:
                more = self._more(head) if self._more else []
                yield f"{self.name}: {item} {head}", ["--stuck", item, *more]


class WhileUndone(Fault):
    """The power goes at moments behind those of a change without a fault."""

    def __init__(self, name, codes, options, slowness):
        super().__init__(name, codes)
        self._options, self.slowness = options, slowness

    def at_each_moment(self, link, change, commands):
        passed = sum(len(command) for command in commands)
        for more in range(0, 200, 17):
            yield (f"{self.name}, byte {passed + more}",
                   ["--stuck", ITEMS[change.name][0], "--power-cut", str(passed + more),
                    *self._options])


SLOW = 10
FAULTS = [
    Always("nothing", {0}, []),
    Always("answers come after 0.3 s", {0}, ["--delay", "300"], slowness=3),
    Always("answers come in pieces of 5 bytes", {0}, ["--pieces", "5", "--gap", "1"]),
    Always("texts are filled with the byte 0xFF", {0}, ["--fill", "ff"], {COM: {1}}),
    Always("junk comes in front of answers", {0}, ["--junk-before"], {USB: {1}}, SLOW),
    Always("no answers", {1}, ["--silent"], slowness=SLOW),
    Always("only 3 bytes of an answer come", {1}, ["--cut", "3"], slowness=SLOW),
    Always("junk in place of answers", {1}, ["--junk"], slowness=SLOW),
    Always("the printer hangs up at once", {1}, ["--close-after", "0"]),
    Always("it hangs up behind the first answer", {1}, ["--close-after", "1"]),
    Always("it reports a paper jam", {1}, ["--status", "11"]),
    Always("it reports a code that nobody knows", {1}, ["--status", "99"]),
    Always("it is running, and reports so", {0}, ["--status", "02"]),
    OfCommands("it refuses a command, once", {1}, [["--refuse", "HEAD", "--refuse-only", "1"]]),
    OfCommands("it refuses a command, always", {1}, [["--refuse", "HEAD"]]),
    OfReadings("a request for settings is refused", {0, 1, 5}),
    Stuck("a setting keeps its value", {1}),
    Stuck("a setting keeps its value, and what undoes the rest is refused once", {1, 5},
          lambda head: ["--refuse", head, "--refuse-only", "2"]),
    WhileUndone("a setting keeps its value, and the power goes for 0.3 s while the rest is undone",
                {1, 5}, ["--power-back", "300"], 5),
    WhileUndone("a setting keeps its value, and the power goes for good while the rest is undone",
                {1, 5}, ["--power-back", "never"], SLOW),
    OfCommands("only the first fields of a command are stored", {0, 1},
               [["--half-of", "HEAD", "--half-fields", count] for count in ("0", "1", "3", "11")]),
    OfCommands("only the first bytes of a command's fields are stored", {0, 1},
               [["--half-of", "HEAD", "--half-bytes", count] for count in ("1", "3", "8", "14")]),
    PowerCut("the power goes, and is back after 0.3 s", {0, 1}, ["--power-back", "300"], 5),
    PowerCut("the power goes, is back after 0.3 s, and everything is forgotten", {0, 1},
             ["--power-back", "300", "--forget"], 5),
    PowerCut("the power goes for good", {1, 5}, ["--power-back", "never"], SLOW),
]


def table():
    """The table as the page has it."""
    lines = ["| What goes wrong | " + " | ".join(LINKS) + " |", "|---|" + "---|" * len(LINKS)]
    for fault in FAULTS:
        codes = [" or ".join(str(code) for code in sorted(fault.codes(link))) for link in LINKS]
        lines.append(f"| {fault.name} | " + " | ".join(codes) + " |")
    return "\n".join(lines)


def page(path, write):
    """Whether the page has the table between its marks, after writing it there if asked to."""
    with open(path, encoding="utf-8") as file:
        text = file.read()
    before, rest = text.split(BEGIN)
    after = rest.split(END)[1]
    wanted = f"{before}{BEGIN}\n\n{table()}\n\n{END}{after}"
    if write and wanted != text:
        temporary = path + ".new"
        with open(temporary, "w", encoding="utf-8") as file:
            file.write(wanted)
        os.replace(temporary, path)
        return True
    return wanted == text
