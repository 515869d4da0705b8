"""Archives made to do harm: names that lead out, links, doubles, bombs, false numbers."""
import io
import stat
import struct
import zipfile

RECORDS = "_ExpNotes.dat"


def made(entries, tail=b""):
    """An archive of (name or ZipInfo, bytes, or a number of millions of zeros) as the standard library writes it."""
    out = io.BytesIO()
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, data in entries:
            if isinstance(data, bytes):
                archive.writestr(name, data)
                continue
            with archive.open(name, "w") as member:
                for _ in range(data):
                    member.write(bytes(1_000_000))
    return out.getvalue() + tail


def special(name, mode):
    info = zipfile.ZipInfo(name)
    info.create_system = 3
    info.external_attr = mode << 16
    return info


def patched(data, mark, at, form, value, which=0):
    """The archive with a number changed in the which-th record that begins with the mark."""
    place = -1
    for _ in range(which + 1):
        place = data.index(mark, place + 1)
    out = bytearray(data)
    struct.pack_into(form, out, place + at, value)
    return bytes(out)


CENTRAL, LOCAL, END = b"PK\x01\x02", b"PK\x03\x04", b"PK\x05\x06"


def hostile(records):
    """(name, bytes, whether the notes may be taken) around a record file that is good."""
    good = [(RECORDS, records), ("0000001.txt", b"text")]
    plain = made(good)
    for name in ["../../evil.txt", "/tmp/evil.txt", "..\\..\\evil.txt", "C:\\evil.txt", "e" * 5000, "a\x01b", "."]:
        yield f"name {name[:20]!r}", made(good + [(name, b"evil")]), True
    yield "NUL in a name", made(good + [("evil_.txt", b"evil")]).replace(b"evil_.txt", b"evil\0.txt"), True
    yield "doubles", made([(RECORDS, records), ("0000001.txt", b"1"), ("0000001.TXT", b"2"), ("x/0000001.txt", b"3")]), True
    yield "records twice", made(good + [("x/" + RECORDS.upper(), b"evil")]), True
    for mode, kind in [(stat.S_IFLNK, "link"), (stat.S_IFBLK, "device"), (stat.S_IFIFO, "pipe")]:
        yield kind, made(good + [(special("0000002.txt", mode | 0o777), b"/etc/passwd")]), False
    yield "bomb beside", made(good + [("0000002.txt", 200)]), False
    yield "bomb of records", made([(RECORDS, 100)]), False
    yield "bomb that lies", patched(made(good + [("0000002.txt", 100)]), CENTRAL, 24, "<I", 9, 2), True
    yield "encrypted", patched(patched(plain, CENTRAL, 8, "<H", 1), LOCAL, 6, "<H", 1), False
    yield "wrong CRC", patched(patched(plain, CENTRAL, 16, "<I", 7), LOCAL, 14, "<I", 7), False
    yield "4 GB claimed", patched(plain, CENTRAL, 24, "<I", 0xfffffff0), False
    yield "65,535 entries claimed", patched(patched(plain, END, 8, "<H", 65535), END, 10, "<H", 65535), False
    yield "overlap", patched(plain, CENTRAL, 42, "<I", 0, 1), False
    yield "another name inside", plain.replace(RECORDS.encode(), b"_ExpNotes.txt", 1), False
    yield "directory elsewhere", patched(plain, END, 16, "<I", 5), False
    yield "in front of the archive", b"#!/bin/sh\n" + plain, False
    yield "behind the archive", plain + b"something", True
    end = plain.index(END)
    for cut in range(0, len(plain), max(1, len(plain) // 40)):
        yield f"cut at {cut}", plain[:cut], False
    yield "directory cut", plain[:end - 10] + plain[end:], False
