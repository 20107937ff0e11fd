"""Figures of many runs: their spread, their ratios, and tables of them."""

import random

# A figure that has grown by more than this is a regression.
LIMIT = 1.20
ROUNDS = 500


def quantile(values, share):
    """The value below which a share of all lies, between the two nearest."""
    ordered = sorted(values)
    place = share * (len(ordered) - 1)
    below = int(place)
    above = min(below + 1, len(ordered) - 1)
    return ordered[below] + (place - below) * (ordered[above] - ordered[below])


def median(values):
    return quantile(values, 0.5)


class Figure:
    """What was measured again and again: its values, in a unit, the less the better."""

    def __init__(self, values, unit, floor=0.0):
        """floor: a difference that means nothing, whatever the ratio."""
        if not values:
            raise ValueError("a figure without a value")
        self.values, self.unit, self.floor = [float(value) for value in values], unit, floor

    @property
    def median(self):
        return median(self.values)

    def quantile(self, share):
        return quantile(self.values, share)

    def spread(self):
        """For people: 10th to 90th percentile, and of how many."""
        return f"{shown(self.quantile(0.1))} to {shown(self.quantile(0.9))} of {len(self.values)}"

    def to_json(self):
        return {"unit": self.unit, "floor": self.floor, "values": self.values}

    @classmethod
    def from_json(cls, data):
        return cls(data["values"], data["unit"], data["floor"])


class Ratio:
    """How much more the one figure is than the other, and between what that lies in 19 of 20 cases."""

    def __init__(self, new, old):
        self.value = _divide(new.median, old.median)
        chance = random.Random(1)  # the same figures have the same ratio
        again = sorted(_divide(_resampled(new.values, chance), _resampled(old.values, chance))
                       for _ in range(ROUNDS))
        self.low, self.high = quantile(again, 0.025), quantile(again, 0.975)
        self.beyond_floor = new.median - old.median > old.floor

    def is_regression(self, limit=LIMIT):
        """More than the limit, and not by chance: nearly all of what it may be is slower."""
        return self.value > limit and self.low > 1 + (limit - 1) / 4 and self.beyond_floor

    def __str__(self):
        return f"{self.value:.3f} ({self.low:.3f} to {self.high:.3f})"


def _resampled(values, chance):
    return median(chance.choices(values, k=len(values)))


def _divide(new, old):
    if old > 0:
        return new / old
    return 1.0 if new <= 0 else float("inf")


def shown(value):
    """A number with three digits that count."""
    if value == 0:
        return "0"
    size = abs(value)
    digits = 0 if size >= 100 else 1 if size >= 10 else 2 if size >= 1 else 3
    text = f"{value:.{digits}f}"
    return "0" if float(text) == 0 else text


def table(headings, rows):
    """Lines of a table as pages have it, its columns aligned."""
    rows = [[str(cell) for cell in row] for row in rows]
    widths = [max(len(row[column]) for row in [headings, *rows]) for column in range(len(headings))]

    def line(cells):
        return "| " + " | ".join(cell.ljust(width) for cell, width in zip(cells, widths)) + " |"

    return [line(headings), "|" + "|".join("-" * (width + 2) for width in widths) + "|",
            *map(line, rows)]


def judge(old, new, limit=LIMIT):
    """The rows of the comparison of all figures that both have, and whether one is a regression."""
    rows, worse = [], False
    for name in (name for name in new if name in old):
        ratio = Ratio(new[name], old[name])
        regression = ratio.is_regression(limit)
        worse = worse or regression
        rows.append([name, f"{shown(old[name].median)} {old[name].unit}",
                     f"{shown(new[name].median)} {new[name].unit}", str(ratio),
                     "REGRESSION" if regression else ""])
    return rows, worse
