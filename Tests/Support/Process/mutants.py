"""Mutants of packages: damage to the bytes of the zip, to the parts below the compression, and to their names."""
import base64
import re
import struct

import packages

# What a terminal would act on, what is no text, and what readers stumble over.
HOSTILE = [text.encode() for text in (
    "\x1b[2J\x1b[31m", "\x9b31m", "\x9d0;title\x07", "\u202eevil\u202c", "\u2066\u2069", "\x7f", "\r", "\n", "\r\nov-pipeline: ",
    "\0", "\u2028", "\ufeff", "%s%n%n", "../" * 40 + "etc", "A" * 20000, "\U0001f5a8\u0301" * 300, "")]
HOSTILE += [b"\xff\xfe", b"\xc0\x80", b"\xed\xa0\x80", b"\xf4\x90\x80\x80", b"\xe2\x82"]
VALUES = HOSTILE + [b"0", b"-1", b"2147483648", b"18446744073709551616", b"1e400", b"NaN", b"&#x9b;31m", b"&#10;&#13;",
                    b"&#x202e;", b"&lt;", b"&nothing;", b"psk:", b":", b"//host/share", b"/a/../b", b"/%2e%2e/%00", b"x" * 200]
MARKUP = [b"<!DOCTYPE a [<!ENTITY b 'c'>]>", b"<![CDATA[", b"]]>", b"<!--", b"<?xml version='1.1'?>", b"<?pi \xc2\x9b?>",
          b"xmlns:psf='urn:other'", b"<a " + b"b='' " * 2000 + b">", b"<a>" * 3000, b"<psf:Feature name='psk:X'>" * 300]
TAG = re.compile(rb"<[^<>]+>")
VALUE = re.compile(rb"=\s*(\"[^\"]*\"|'[^']*')")
TEXT = re.compile(rb">([^<>]+)<")
ELEMENT = re.compile(rb"<([\w:.]+)[^<>]*>[^<>]*</\1>|<[\w:.]+[^<>]*/>")
BASE64 = re.compile(rb"(?<=>)T0EB[A-Za-z0-9+/=]+(?=<)")


def flip(data, rng):
    data = bytearray(data)
    for _ in range(rng.choice((1, 1, 2, 8, 64)) if data else 0):
        data[rng.randrange(len(data))] ^= 1 << rng.randrange(8)
    return bytes(data)


def cut(data, rng):
    return data[:rng.randrange(len(data) + 1)]


def swap(data, rng):
    """Two neighbouring chunks change places, or one stands twice, or one is missing."""
    a, b, c = sorted(rng.randrange(len(data) + 1) for _ in range(3))
    return data[:a] + rng.choice((data[b:c] + data[a:b], data[a:b] * 2 + data[b:c], data[b:c])) + data[c:]


def damage(data, rng):
    return rng.choice((flip, flip, cut, swap))(data, rng)


def headers(data, rng):
    """One field of one header of the zip is another number."""
    found = [match.start() for match in re.finditer(rb"PK(\x01\x02|\x03\x04|\x05\x06|\x07\x08)", data)]
    if not found:
        return flip(data, rng)
    start = rng.choice(found)
    at = start + rng.randrange(4, 46 if data[start + 2] == 1 else 30 if data[start + 2] == 3 else 20)
    number = rng.choice((0, 1, 8, 9, 0x7F, 0xFF, 0xFFFF, 0x7FFFFFFF, 0xFFFFFFFE, 0xFFFFFFFF, rng.randrange(1 << 32)))
    field = struct.pack("<I", number)[:rng.choice((1, 2, 4))]
    return data[:at] + field + data[at + len(field):]


def within(pattern, data, rng, change):
    """Changes one of the places that the pattern finds in a window of the data."""
    start = rng.randrange(max(1, len(data) - 4000))
    found = list(pattern.finditer(data, start, start + 4000))
    if not found:
        return damage(data, rng)
    place = rng.choice(found)
    group = place.lastindex if pattern in (VALUE, TEXT) else 0
    return data[:place.start(group)] + change(place.group(group)) + data[place.end(group):]


def other_value(data, rng):
    def change(quoted):
        value = rng.choice(VALUES)
        return quoted[:1] + rng.choice((value, quoted[1:-1] + value, value + quoted[1:-1])) + quoted[-1:]
    return within(VALUE, data, rng, change)


def other_text(data, rng):
    return within(TEXT, data, rng, lambda text: rng.choice((rng.choice(VALUES), text + rng.choice(VALUES))))


def other_element(data, rng):
    times = rng.choice((0, 0, 2, 2, 3, 1000))
    return within(ELEMENT, data, rng, lambda element: element * times)


def more_markup(data, rng):
    markup = rng.choice(MARKUP)
    return within(TAG, data, rng, lambda tag: rng.choice((tag + markup, markup + tag, tag[:-1] + b" " + markup + tag[-1:])))


def other_settings(data, rng):
    """The driver's settings in a ticket, damaged below their check sum, which is made to fit."""
    place = BASE64.search(data)
    if not place:
        return other_value(data, rng)
    store = damage(base64.b64decode(place.group())[:-4], rng)
    check = 0x811C9DC5
    for byte in store:
        check = (check ^ byte) * 0x01000193 & 0xFFFFFFFF
    return data[:place.start()] + base64.b64encode(store + struct.pack("<I", check)) + data[place.end():]


PART_MUTATIONS = (damage, damage, other_value, other_value, other_value, other_text, other_element, other_element,
                  more_markup, other_settings)
MARKED_UP = (b".rels", b".xml", b".fdseq", b".fdoc", b".fpage", b".dict", b".piece")


def mutate_parts(items, rng):
    items = list(items)
    marked_up = [i for i, (name, _) in enumerate(items) if name.lower().endswith(MARKED_UP)] or range(len(items))
    for _ in range(rng.choice((1, 1, 2, 4))):
        i = rng.choice(marked_up)
        items[i] = items[i][0], rng.choice(PART_MUTATIONS)(items[i][1], rng)
    return items


def mutate_names(items, rng):
    """An item is missing, stands twice, has the bytes of another, or another name, which those who name it follow or not."""
    items = list(items)
    i, j = rng.randrange(len(items)), rng.randrange(len(items))
    name, data = items[i]
    kind = rng.randrange(6)
    if kind == 0:
        del items[i]
    elif kind == 1:
        items.insert(j, (rng.choice((name, name.upper(), name + b"/")), damage(data, rng)))
    elif kind == 2:
        items[i], items[j] = (name, items[j][1]), (items[j][0], data)
    else:
        at = rng.randrange(len(name) + 1)
        other = name[:at] + rng.choice(HOSTILE) + name[at:]
        items[i] = other, data
        if kind > 3:
            last, other_last = name.rsplit(b"/", 1)[-1], other.rsplit(b"/", 1)[-1]
            written = other_last if kind == 4 else b"".join(
                b"%%%02X" % c if c < 33 or c > 126 else bytes([c]) for c in other_last)
            items = [(n, d.replace(last, written)) for n, d in items]
    return items


def mutant(original, rng):
    """The bytes of a package that is like the original, a file's bytes, but not quite."""
    items = packages.unpack(original)
    kind = rng.random()
    if items and kind < 0.6:
        return packages.pack(mutate_parts(items, rng))
    if items and kind < 0.75:
        return packages.pack(mutate_names(items, rng))
    return headers(original, rng) if kind < 0.85 else damage(original, rng)
