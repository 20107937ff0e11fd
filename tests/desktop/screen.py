"""What a display shows, read from the file in which its server keeps it."""

import mmap
import struct
import zlib


class Screen:
    """The one screen of a display server that was started with -fbdir."""

    def __init__(self, path):
        with open(path, "rb") as file:
            self._memory = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        header = struct.unpack(">25I", self._memory[:100])
        self.width, self.height = header[4], header[5]
        self._line = header[12]  # bytes
        self._begin = header[0] + 12 * header[19]  # behind the colour map

    def pixels(self, left, top, width, height):
        """The rectangle's bytes: blue, green, red and one more of each pixel, line by line."""
        lines = []
        for y in range(top, top + height):
            begin = self._begin + y * self._line + 4 * left
            lines.append(self._memory[begin:begin + 4 * width])
        return b"".join(lines)

    def save(self, path):
        """Writes a picture of the screen, in the format PNG."""
        lines = []
        for y in range(self.height):
            line = self.pixels(0, y, self.width, 1)
            colours = bytearray(3 * self.width)
            colours[0::3], colours[1::3], colours[2::3] = line[2::4], line[1::4], line[0::4]
            lines.append(b"\0" + colours)
        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n")
            file.write(_chunk(b"IHDR", struct.pack(">2I5B", self.width, self.height, 8, 2, 0, 0, 0)))
            file.write(_chunk(b"IDAT", zlib.compress(b"".join(lines), 6)))
            file.write(_chunk(b"IEND", b""))


def _chunk(name, data):
    return struct.pack(">I", len(data)) + name + data + struct.pack(">I", zlib.crc32(name + data))
