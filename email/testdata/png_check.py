"""The soundness of a PNG file, for the mail tests: its signature, chunks
from IHDR to IEND with good CRCs, and IDAT data that inflates."""
import struct
import zlib


def png_problem(data):
    """(None, (width, height)) for a sound PNG, else (what is wrong, None)."""
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        return "no PNG signature", None
    pos, names, idat, size = 8, [], b"", None
    while pos < len(data):
        if pos + 12 > len(data):
            return "truncated chunk", None
        length, name = struct.unpack(">I4s", data[pos:pos + 8])
        body = data[pos + 8:pos + 8 + length]
        (crc,) = struct.unpack(">I", data[pos + 8 + length:pos + 12 + length])
        if zlib.crc32(name + body) != crc:
            return f"bad CRC in {name!r}", None
        names.append(name)
        if name == b"IHDR":
            size = struct.unpack(">II", body[:8])
        elif name == b"IDAT":
            idat += body
        pos += 12 + length
    if not names or names[0] != b"IHDR" or names[-1] != b"IEND":
        return f"chunks {names}", None
    try:
        zlib.decompress(idat)
    except zlib.error as e:
        return f"IDAT doesn't inflate: {e}", None
    return None, size
