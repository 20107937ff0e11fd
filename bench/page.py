"""What was measured as a page, with what it is to be and whether it is."""

from figures import Figure, Ratio, shown, table

TOOL, PLAIN, EMPTY = "window: tool", "window: plain", "window: empty"


class Aim:
    """What a figure is to be."""

    def __init__(self, what, limit, unit, value):
        self.what, self._limit, self._unit, self._value = what, limit, unit, value

    def row(self, figures):
        """What it is about, the aim, what it is, and how it stands; nothing when it was not measured."""
        try:
            value, spread = self._value(figures)
        except KeyError:
            return None
        met = value <= self._limit
        aim = f"at most {shown(self._limit) if self._limit else 0}{self._unit}"
        found = f"{shown(value)}{self._unit}"
        return [self.what, aim, found, spread, "met" if met else f"missed: {found}"]


def _median(name):
    return lambda figures: (figures[name].median, figures[name].spread())


def _share(name, share):
    return lambda figures: (figures[name].quantile(share), f"of {len(figures[name].values)}")


def _ratio(new, old):
    def value(figures):
        ratio = Ratio(figures[new], figures[old])
        return ratio.value, f"{ratio.low:.3f} to {ratio.high:.3f} in 19 of 20"
    return value


NEXT = "answer's last byte to the next command"

AIMS = [
    Aim("start, processor time: tool to plain window", 1.05, "", _ratio(f"{TOOL}, processor",
                                                                        f"{PLAIN}, processor")),
    Aim("start, wall time: tool to plain window", 1.05, "", _ratio(f"{TOOL}, wall", f"{PLAIN}, wall")),
    Aim("start, instructions: tool to plain window", 1.05, "", _ratio(f"{TOOL}, instructions",
                                                                      f"{PLAIN}, instructions")),
    Aim("memory: tool to plain window", 1.05, "", _ratio(f"{TOOL}, memory", f"{PLAIN}, memory")),
    Aim("processor, idle", 0.05, " %", _median("idle, processor")),
    Aim("processor, waiting for an answer", 1, " %", _median("waiting for an answer, processor")),
    Aim(f"{NEXT}, median", 0.2, " ms", _median(NEXT)),
    Aim(f"{NEXT}, 99 of 100", 1, " ms", _share(NEXT, 0.99)),
    Aim("READ beyond its three seconds of pauses", 5, " ms", _median("READ beyond its pauses")),
    *[Aim(f"processor, flood {kind}", 25, " %", _median(f"flood {kind}, processor"))
      for kind in ("of junk", "of heads of answers", "of single bytes", "on a serial line")],
    Aim("varden, start", 15, " ms", _median("varden --version, wall")),
    Aim("varden, own time of a command beside the printer's", 25, " ms", _median("varden status, own, wall")),
]


def aims(figures):
    return [row for row in (aim.row(figures) for aim in AIMS) if row]


def aims_table(figures):
    return table(["what", "aim", "found", "spread", ""], aims(figures))


def figures_table(figures):
    return table(["figure", "median", "10th to 90th percentile"],
                 [[name, f"{shown(figure.median)} {figure.unit}", figure.spread()]
                  for name, figure in figures.items()])


def pages_behind(figures):
    """What it would gain to build pages when they are first shown."""
    try:
        gain = figures[f"{PLAIN}, processor"].median - figures["window: front, processor"].median
    except KeyError:
        return []
    return ["## Pages that are not in front", "",
            f"The plain window starts {shown(gain)} ms of processor time sooner when only the page in front has",
            "controls; the tool could gain no more by making its other pages when they are first shown. It makes them",
            "at the start all the same: its window is as large as the largest of them asks for, its tables are held",
            "against all controls before anything is shown, and a printer's answer or a file may fill a page that",
            "nobody has looked at.", ""]


def page(measured):
    """The lines of docs/performance.md."""
    figures = {name: Figure.from_json(data) for name, data in measured["figures"].items()}
    lines = ["# How quick it is", "",
             "Written by `bench/performance`, which measures all of it in one run: what is compared runs in",
             "turn, so that what the computer does meanwhile spoils both alike.", "",
             f"Commit {measured['commit']}, on {measured['machine']}. The load was",
             f"{measured['load'][0]} before the run and {measured['load'][1]} behind it: where that is more than one,",
             "times are longer than they would be, and their ranges wider.",
             "", "## What it is to be, and what it is", "", *aims_table(figures), "",
             "*Ratios* are those of two medians, with the range in which they lie in 19 of 20 cases. A start",
             "is that of the whole program up to its first painted window. The *plain* window has as many",
             f"lists ({measured['controls']['plain']['lists']}), spin boxes "
             f"({measured['controls']['plain']['spin_boxes']}), labels "
             f"({measured['controls']['plain']['labels']}) and buttons "
             f"({measured['controls']['plain']['buttons']})",
             "in three tabs and in the same font, made of the bare toolkit (`bench/plain`); the *empty* one has",
             "nothing in it, the one called *front* only what is in front, and *libraries* is the plain one with the",
             "libraries loaded that the tool needs for networks, serial ports and USB: what it takes more than that is",
             "its own frames, menu, foot line, icon, tables and texts.", ""]
    lines += ["## All figures", "", *figures_table(figures), ""]
    lines += pages_behind(figures)
    return [line.rstrip() for line in lines]
