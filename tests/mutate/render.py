"""A source in which every change is there at once, and a number chooses the one that is on."""

HEAD = b"namespace MMutation { bool On(int p_iNumber) noexcept; }\n#line 1\n"


class Rendered:
    """What is made of one file, and where in it which sites stand."""

    def __init__(self, source, sites, constants):
        self.source = source
        self.pieces = [HEAD]
        self.length = len(HEAD)
        self.alternatives = []  # (start, end, site) in what comes out
        self.groups = []  # (start, end, sites)
        self.constants = []  # (start, end, constant): its declaration in what comes out
        self.replaced = {c[0]: c for c in constants}
        spans = {}
        for site in sites:
            spans.setdefault((site.start, site.end), []).append(site)
        self.write(0, len(source), sorted(spans.items(), key=lambda i: (i[0][0], -i[0][1])))
        self.text = b"".join(self.pieces)

    def put(self, text):
        self.pieces.append(text)
        self.length += len(text)

    def plain(self, start, end):
        """The source as it is, with what was a constexpr as a const."""
        for at in sorted(p for p in self.replaced if start <= p < end):
            constant = self.replaced[at]
            self.put(self.source[start:at])
            self.put(constant[2].encode())
            start = constant[1]
        self.put(self.source[start:end])

    def write(self, start, end, spans):
        while spans:
            (first, last), sites = spans[0]
            inside = 1
            while inside < len(spans) and spans[inside][0][1] <= last:
                inside += 1
            self.plain(start, first)
            self.group(first, last, sites, spans[1:inside])
            start = last
            spans = [s for s in spans[inside:] if s[0][0] >= last]
        self.plain(start, end)

    def group(self, start, end, sites, spans):
        begun = self.length
        closing = []
        for site in [s for s in sites if s.how in ("drop", "skip")]:
            if site.how == "drop":
                self.put(b"(MMutation::On(%d) ? static_cast<void>(0) : static_cast<void>(" % site.number)
                closing.append(b"))")
            else:
                self.put(b"if (!MMutation::On(%d)) " % site.number)
                closing.append(b"")
        for site in [s for s in sites if s.how == "negate"]:
            self.put(b"(MMutation::On(%d) != static_cast<bool>(" % site.number)
            closing.append(b"))")
        values = [s for s in sites if s.how in ("value", "row")]
        if values:
            self.put(b"(")
            for site in values:
                self.put(b"MMutation::On(%d) ? (" % site.number)
                at = self.length
                self.put(site.new.encode())
                self.alternatives.append((at, self.length, site))
                self.put(b") : ")
            table = getattr(values[0], "table", "") if values[0].how == "row" else ""
            self.put(table.encode() + (b"" if table else b"("))
            closing.append(b")" if table else b"))")
        self.write(start, end, spans)
        for text in reversed(closing):
            self.put(text)
        self.groups.append((begun, self.length, sites))

    def offset(self, line, column):
        """Where a line and column of a diagnostic are; lines count behind the head."""
        at = len(HEAD)
        for _ in range(line - 1):
            at = self.text.find(b"\n", at) + 1
        return at + column - 1

    def at(self, line, column):
        """The sites to blame for what is wrong there: those of the alternative, or else of the group."""
        where = self.offset(line, column)
        inside = [a for a in self.alternatives if a[0] <= where < a[1]]
        if inside:
            return [min(inside, key=lambda a: a[1] - a[0])[2]]
        groups = [g for g in self.groups if g[0] <= where < g[1]]
        return list(min(groups, key=lambda g: g[1] - g[0])[2]) if groups else []


def alone(source, site):
    """The source with this one change and no other."""
    return source[:site.start] + site.text().encode() + source[site.end:]
