"""A plain reader of plotter files, written from docs/format.md alone.

It knows nothing of the library: what the library calls sound, this has to read, and to the same items.
"""
import json
import struct
import zlib

READ = 511
DEEPEST = 128


class Refused(Exception):
    """The format does not allow this."""


def ansi(data):
    """Windows-1252; a byte that it does not define is the character of the same number."""
    text = []
    for byte in data:
        try:
            text.append(bytes([byte]).decode("cp1252"))
        except UnicodeDecodeError:
            text.append(chr(byte))
    return "".join(text)


def adler(data, start):
    low, high = start & 0xFFFF, start >> 16
    for byte in data:
        low = (low + byte) % 65521
        high = (high + low) % 65521
    return high << 16 | low


def reads(body):
    """What a reader takes at a time, without line feed and carriage return."""
    at = 0
    while at < len(body):
        end = body.find(b"\n", at, at + READ)
        stop = min(at + READ, len(body)) if end < 0 else end + 1
        piece = body[at:stop]
        if piece.endswith(b"\n"):
            piece = piece[:-1]
            if piece.endswith(b"\r"):
                piece = piece[:-1]
        yield piece.split(b"\0", 1)[0]
        at = stop


class Decoder:
    def __init__(self, body):
        try:
            body.decode("utf-8")
            self.utf8 = True
        except UnicodeDecodeError:
            self.utf8 = False

    def text(self, piece):
        if self.utf8:
            try:
                return piece.decode("utf-8")
            except UnicodeDecodeError:
                pass
        return ansi(piece)


def add(block, name, kind, value):
    if any(each[0] == name and each[1] == kind for each in block):
        raise Refused(f"{name!r} stands twice")
    block.append((name, kind, value))


def body_items(body):
    """The items of body text: (name, type, value), where the value of a block is its items."""
    decoder = Decoder(body)
    root = []
    levels = [root]
    pieces = iter(reads(body))
    for piece in pieces:
        if not piece:
            continue
        line = decoder.text(piece).lstrip(" ")
        equals = line.find("=")
        if equals < 0:
            # A brace ends the block only where there is one.
            if len(levels) > 1 and "}" in line:
                levels.pop()
                continue
            brace = line.find("{")
            if brace < 0:
                raise Refused(f"no item: {line!r}")
            name = valid_name(line[:brace])
            if len(levels) > DEEPEST:
                raise Refused("too deep")
            block = []
            add(levels[-1], name, "block", block)
            levels.append(block)
            continue
        if len(levels) > 1 and "}" in line[:equals]:
            raise Refused(f"a brace before '=': {line!r}")
        name = valid_name(line[:equals])
        value = line[equals + 1:]
        if not value:
            raise Refused(f"no value: {line!r}")
        if value.startswith('"'):
            add(levels[-1], name, "string", value[1:])
        elif value.startswith("\\"):
            value = value[1:]
            while "\\" not in value:
                try:
                    value += decoder.text(next(pieces))
                except StopIteration:
                    raise Refused("a binary value without end") from None
            add(levels[-1], name, "binary", value[:value.find("\\")])
        elif value.upper() in ("TRUE", "FALSE") and value.isascii():
            add(levels[-1], name, "boolean", value.upper() == "TRUE")
        else:
            add(levels[-1], name, "number", value)
    return root


def valid_name(text):
    name = text.rstrip(" ")
    if not name or " " in name:
        raise Refused(f"no name: {text!r}")
    return name


def number_text(value):
    if isinstance(value, int):
        if not -2**63 <= value < 2**64:
            raise Refused("more than 64 bits")
        return str(value)
    return f"{value:.6f}"


def json_block(members):
    """The items of an object, whose members are pairs."""
    block = []
    is_binary = any(name == "voidprop" and value is True for name, value in members)
    for name, value in dict(members).items():
        if isinstance(value, bool):
            if name != "voidprop":
                block.append((name, "boolean", value))
        elif isinstance(value, (int, float)):
            block.append((name, "number", number_text(value)))
        elif isinstance(value, str):
            block.append((name, "binary" if is_binary and name == "value" else "string", value))
        elif isinstance(value, Members):
            block.append((name, "block", json_block(value.pairs)))
    return sorted(block, key=lambda item: item[0].encode("utf-16-be", "surrogatepass"))


class Members:
    """An object of JSON, apart from an array."""

    def __init__(self, pairs):
        self.pairs = pairs


def no_number(word):
    raise ValueError(f"{word} is no JSON")


def json_items(data):
    try:
        text = data.decode("utf-8")
    except UnicodeDecodeError:
        text = ansi(data)
    begin = text.find("{")
    if begin < 0:
        raise Refused("no JSON")
    try:
        top = json.loads(text[begin:], object_pairs_hook=Members, parse_constant=no_number)
    except (ValueError, RecursionError) as fault:
        raise Refused(str(fault)) from None
    found = dict(top.pairs).get("data")
    if not isinstance(found, Members):
        raise Refused("no object data")
    return json_block(found.pairs)


def read(data, verify=False):
    """The items of a file."""
    if len(data) < 16 or data[15:16] != b"2":
        return json_items(data)
    if len(data) < 60:
        raise Refused("no header")
    stored, body_bytes, stream_bytes = struct.unpack("<III", data[48:60])
    inflater = zlib.decompressobj()
    try:
        body = inflater.decompress(data[60:])
    except zlib.error as fault:
        raise Refused(str(fault)) from None
    if not inflater.eof:
        raise Refused("the stream ends early")
    if verify:
        stream = data[60:len(data) - len(inflater.unused_data)]
        header = data[:48]
        kinds = [b"PIAFILEVERSION_2.0," + kind + b"VER1,compress\r\npmzlibcodec" for kind in (b"CTB", b"STB", b"PC3")]
        if (header not in kinds or body_bytes != len(body) or stream_bytes != len(stream)
                or adler(data[52:60] + stream, 0) != stored or inflater.unused_data):
            raise Refused("the header does not hold")
    return body_items(body)


def pack(body, kind=b"CTB"):
    """A version-2 file."""
    stream = zlib.compress(body, 6)
    lengths = struct.pack("<II", len(body), len(stream))
    header = b"PIAFILEVERSION_2.0," + kind + b"VER1,compress\r\npmzlibcodec"
    return header + struct.pack("<I", adler(lengths + stream, 0)) + lengths + stream
