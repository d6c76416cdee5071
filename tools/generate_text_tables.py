#!/usr/bin/env python3
"""Writes the code page tables and the character class table of src/encoding.

The build never runs this script: its output is committed. Run it again only when the source data
changes:

    tools/generate_text_tables.py [--codepages DIR] [--unicode-data FILE] [--output DIR]

Sources:
  DIR/bestfit{874,932,936,949,950,1258}.txt  Microsoft's published "best fit" code page tables
  DIR/windows-51949-2000.ucm                  EUC-KR as dumped from Windows 2000 (ICU's ucm format)
  FILE                                        UnicodeData.txt (Debian package unicode-data)
"""

import argparse
import os
import re
import sys

SCRIPT = "tools/generate_text_tables.py"
BESTFIT_PAGES = (874, 932, 936, 949, 950, 1258)


class CodePage:
    """Everything the runtime needs of one page, as plain dictionaries."""

    def __init__(self, number, source):
        self.number = number
        self.source = source
        self.default_byte = 0x3F
        self.default_unicode = 0x003F
        self.single = {}      # byte -> UTF-16 unit
        self.leads = set()    # lead bytes of two-byte characters
        self.pairs = {}       # (lead, trail) -> UTF-16 unit
        self.encode = {}      # UTF-16 unit -> bytes as a 16-bit value (lead byte high)

    def decode_value(self, value):
        if value > 0xFF:
            return self.pairs.get((value >> 8, value & 0xFF), self.default_unicode)
        if value in self.leads:
            return self.default_unicode
        return self.single.get(value, self.default_unicode)


def data_lines(path):
    # The files are in their own code pages, but everything outside comments is ASCII.
    with open(path, "rb") as file:
        for raw in file:
            line = raw.split(b";", 1)[0].decode("ascii").strip()
            if line:
                yield line.split()


def read_bestfit(path, number):
    page = CodePage(number, os.path.basename(path))
    section = None
    lead_ranges = []
    lead = None
    declared = {}  # section (a lead byte for its table) -> record count its tag announces
    for fields in data_lines(path):
        tag = fields[0].upper()
        if tag in ("MBTABLE", "WCTABLE"):
            declared[tag] = int(fields[1])
        elif tag == "DBCSTABLE":
            declared[lead_ranges[0]] = int(fields[1])
        if tag == "CODEPAGE":
            if int(fields[1]) != number:
                sys.exit(f"{path}: code page {fields[1]}, expected {number}")
        elif tag == "CPINFO":
            page.default_byte = int(fields[2], 16)
            page.default_unicode = int(fields[3], 16)
        elif tag in ("MBTABLE", "WCTABLE", "DBCSRANGE"):
            section = tag
        elif tag == "DBCSTABLE":
            section = tag
            lead = lead_ranges.pop(0)
        elif tag == "ENDCODEPAGE":
            break
        elif section == "MBTABLE":
            page.single[int(fields[0], 16)] = int(fields[1], 16)
        elif section in ("DBCSRANGE", "DBCSTABLE") and _looks_like_range(fields):
            # A lead byte range; its tables follow, one per lead byte in order.
            first, last = int(fields[0], 16), int(fields[1], 16)
            lead_ranges.extend(range(first, last + 1))
            page.leads.update(range(first, last + 1))
        elif section == "DBCSTABLE":
            page.pairs[(lead, int(fields[0], 16))] = int(fields[1], 16)
        elif section == "WCTABLE":
            page.encode[int(fields[0], 16)] = int(fields[1], 16)
    check_counts(path, page, declared)
    return page


def check_counts(path, page, declared):
    # Every section must hold as many records as its tag announces, or the file was misread.
    found = {"MBTABLE": len(page.single), "WCTABLE": len(page.encode)}
    for lead in page.leads:
        found[lead] = sum(1 for pair_lead, _ in page.pairs if pair_lead == lead)
    for section, count in declared.items():
        if found.get(section) != count:
            sys.exit(f"{path}: section {section} announces {count} records, {found.get(section)} read")


def _looks_like_range(fields):
    # A range record names two lead bytes; a mapping record a trail byte and a UTF-16 unit.
    return len(fields[1]) == 4


def read_ucm(path, number):
    page = CodePage(number, os.path.basename(path))
    page.leads = set(range(0xA1, 0xFF))
    in_map = False
    decode = {}
    best_fits = set()
    for raw in open(path, encoding="ascii"):
        line = raw.strip()
        if line == "CHARMAP":
            in_map = True
            continue
        if line == "END CHARMAP":
            break
        if not in_map or not line or line.startswith("#"):
            continue
        match = re.fullmatch(r"<U([0-9A-F]+)>\s+((?:\\x[0-9A-F]{2})+)\s+\|([0-3])", line)
        if not match:
            sys.exit(f"{path}: unreadable line {line!r}")
        unit = int(match.group(1), 16)
        data = bytes(int(h, 16) for h in match.group(2).split("\\x")[1:])
        kind = int(match.group(3))
        value = int.from_bytes(data, "big")
        if unit > 0xFFFF:
            continue
        if kind in (0, 1):
            page.encode[unit] = value
        if kind == 1:
            best_fits.add(unit)
        if kind in (0, 3):
            decode[data] = unit
    # Single bytes 0x00-0x9F stand for themselves; 0xFF keeps its own entry.
    for byte in range(0xA0):
        page.single[byte] = byte
    for data, unit in decode.items():
        if len(data) == 1:
            page.single[data[0]] = unit
        else:
            page.pairs[(data[0], data[1])] = unit
    for byte in range(0x81, 0xA0):
        page.encode.setdefault(byte, byte)
    # The runtime tells a best fit by its bytes reading back as another character; make sure they do.
    for unit, value in page.encode.items():
        if (page.decode_value(value) == unit) != (unit not in best_fits):
            sys.exit(f"{path}: U+{unit:04X} does not read back as its kind says")
    return page


def check_page(page):
    # Pairs need a lead byte, and the default character needs bytes to compare strict input against.
    problems = 0
    for unit, value in page.encode.items():
        if value > 0xFF and (value >> 8) not in page.leads:
            print(f"{page.source}: U+{unit:04X} encodes to a pair without a lead byte", file=sys.stderr)
            problems += 1
    if page.default_unicode not in page.encode:
        print(f"{page.source}: the default character has no bytes", file=sys.stderr)
        problems += 1
    if problems:
        sys.exit(1)


def hex_rows(values, width, per_line, indent="    "):
    lines = []
    for start in range(0, len(values), per_line):
        chunk = values[start:start + per_line]
        lines.append(indent + ", ".join(f"0x{v:0{width}X}" for v in chunk) + ",")
    return "\n".join(lines)


def two_level(values, fill):
    """Splits 65536 values into 256 blocks and keeps each distinct block once."""
    blocks = []
    index = []
    seen = {}
    for high in range(256):
        block = tuple(values.get((high << 8) | low, fill) for low in range(256))
        if block not in seen:
            seen[block] = len(blocks)
            blocks.append(block)
        index.append(seen[block])
    return index, blocks


def write_code_page(page, output):
    check_page(page)
    single = [page.default_unicode if b in page.leads else page.single.get(b, page.default_unicode)
              for b in range(256)]
    leads = sorted(page.leads)
    lead_rows = [0] * 256
    for row, lead in enumerate(leads):
        lead_rows[lead] = row + 1
    encode_index, encode_blocks = two_level(page.encode, page.default_byte)

    name = f"CodePage{page.number}Table"
    text = []
    text.append(f"// Generated by {SCRIPT} from {page.source}; do not edit by hand.")
    text.append("#include \"encoding/CodePageTable.h\"")
    text.append("")
    text.append("namespace tlm {")
    text.append("")
    text.append("namespace {")
    text.append("")
    text.append("// Single bytes; a lead byte on its own decodes to the default character.")
    text.append("constexpr char16_t SingleBytes[256] = {")
    text.append(hex_rows(single, 4, 16))
    text.append("};")
    text.append("")
    text.append("// Row of each lead byte in Pairs, plus one; 0 for a byte that is no lead.")
    text.append("constexpr std::uint8_t LeadRows[256] = {")
    text.append(hex_rows(lead_rows, 2, 16))
    text.append("};")
    text.append("")
    if leads:
        text.append("// Per lead byte, every trail byte; a pair without a character holds the default character.")
        text.append(f"constexpr char16_t Pairs[{len(leads)}][256] = {{")
        for lead in leads:
            row = [page.pairs.get((lead, trail), page.default_unicode) for trail in range(256)]
            text.append(f"    {{ // lead 0x{lead:02X}")
            text.append(hex_rows(row, 4, 16, "        "))
            text.append("    },")
        text.append("};")
    else:
        text.append("constexpr char16_t (*Pairs)[256] = nullptr;")
    text.append("")
    text.append("// Bytes of each UTF-16 unit (lead byte high), best fits included: the block of a unit's high byte,")
    text.append("// then its low byte. A unit without bytes holds the default byte.")
    text.append("constexpr std::uint8_t EncodeRows[256] = {")
    text.append(hex_rows(encode_index, 2, 16))
    text.append("};")
    text.append("")
    text.append(f"constexpr std::uint16_t EncodeBlocks[{len(encode_blocks)}][256] = {{")
    for block in encode_blocks:
        text.append("    {")
        text.append(hex_rows(list(block), 4, 16, "        "))
        text.append("    },")
    text.append("};")
    text.append("")
    text.append("} // namespace")
    text.append("")
    text.append(f"extern const CodePageTable {name}{{")
    text.append(f"    {page.number}, 0x{page.default_byte:02X}, 0x{page.default_unicode:04X}, SingleBytes, LeadRows, Pairs,")
    text.append("    EncodeRows, EncodeBlocks};")
    text.append("")
    text.append("} // namespace tlm")
    path = os.path.join(output, f"{name}.cpp")
    with open(path, "w", encoding="ascii", newline="\n") as file:
        file.write("\n".join(text) + "\n")
    return path


CONTROL = 1
NONSPACING = 2
DIACRITIC = 4

EXTRA_CONTROLS = [0x070F, *range(0x200C, 0x2010), *range(0x202A, 0x202F), *range(0x206A, 0x2070), 0xFEFF,
                  *range(0xFFF9, 0xFFFC)]
EXTRA_NONSPACING = [*range(0x00C0, 0x00C6), *range(0x00C7, 0x00D0), *range(0x00D1, 0x00D7),
                    *range(0x00D8, 0x00DE), *range(0x00E0, 0x00E6), *range(0x00E7, 0x00F0),
                    *range(0x00F1, 0x00F7), *range(0x00F8, 0x00FE), 0x00FF, 0x06DE, *range(0x1929, 0x192C),
                    *range(0x302E, 0x3030)]
EXTRA_DIACRITICS = [0x005E, 0x0060, 0x00B7, 0x00D8, 0x00F8]


def read_unicode_data(path):
    """Yields (code point, name, category, bidi class, decomposition) for the BMP, ranges expanded."""
    first = None
    for line in open(path, encoding="utf-8"):
        fields = line.rstrip("\n").split(";")
        code = int(fields[0], 16)
        if code > 0xFFFF:
            break
        name, category, bidi, decomposition = fields[1], fields[2], fields[4], fields[5]
        if name.endswith(", First>"):
            first = code
            continue
        if name.endswith(", Last>"):
            for inner in range(first, code + 1):
                yield inner, name, category, bidi, decomposition
            continue
        yield code, name, category, bidi, decomposition


def class_flags(path):
    records = list(read_unicode_data(path))
    flags = {}
    for code, name, category, bidi, _ in records:
        value = 0
        if category in ("Cc", "Cf"):
            value |= CONTROL
        if category == "Mn" or bidi == "NSM":
            value |= NONSPACING
        if name.startswith("COMBINING") or re.search(r"MODIFIER LETTER\W", name):
            value |= DIACRITIC
        flags[code] = value
    # A precomposed character classifies as its first component (records come in code point order, and a
    # first component always precedes what it composes).
    for code, _, _, _, decomposition in records:
        if decomposition and not decomposition.startswith("<"):
            flags[code] = flags.get(code, 0) | flags.get(int(decomposition.split()[0], 16), 0)
    for code in EXTRA_CONTROLS:
        flags[code] = flags.get(code, 0) | CONTROL
    for code in EXTRA_NONSPACING:
        flags[code] = flags.get(code, 0) | NONSPACING
    for code in EXTRA_DIACRITICS:
        flags[code] = flags.get(code, 0) | DIACRITIC
    for code, _, _, _, decomposition in records:
        parts = decomposition.split()
        if len(parts) == 3 and parts[0].startswith("<"):
            flags[code] |= flags.get(int(parts[2], 16), 0) & DIACRITIC
    for code in range(0xD800, 0xE000):
        flags[code] = 0
    return flags


def write_class_table(path, output):
    flags = class_flags(path)
    # The runtime needs two answers: control, and combining (non-spacing or diacritic).
    packed = {}
    for code, value in flags.items():
        packed[code] = (1 if value & CONTROL else 0) | (2 if value & (NONSPACING | DIACRITIC) else 0)
    index, blocks = two_level(packed, 0)
    text = []
    text.append(f"// Generated by {SCRIPT} from UnicodeData.txt; do not edit by hand.")
    text.append("#include \"encoding/CharacterClassTable.h\"")
    text.append("")
    text.append("namespace tlm {")
    text.append("")
    text.append("namespace {")
    text.append("")
    text.append("// Block of each high byte of a UTF-16 unit.")
    text.append("constexpr std::uint8_t ClassRows[256] = {")
    text.append(hex_rows(index, 2, 16))
    text.append("};")
    text.append("")
    text.append("// Per block, the classes of each low byte: 1 control, 2 combining.")
    text.append(f"constexpr std::uint8_t ClassBlocks[{len(blocks)}][256] = {{")
    for block in blocks:
        text.append("    {")
        text.append(hex_rows(list(block), 1, 32, "        "))
        text.append("    },")
    text.append("};")
    text.append("")
    text.append("} // namespace")
    text.append("")
    text.append("std::uint8_t CharacterClassOf(char16_t unit)")
    text.append("{")
    text.append("    return ClassBlocks[ClassRows[unit >> 8]][unit & 0xFF];")
    text.append("}")
    text.append("")
    text.append("} // namespace tlm")
    out = os.path.join(output, "CharacterClassTable.cpp")
    with open(out, "w", encoding="ascii", newline="\n") as file:
        file.write("\n".join(text) + "\n")
    return out


def main():
    root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--codepages", default=os.path.join(root, "..", "shared", "codepages"))
    parser.add_argument("--unicode-data", default="/usr/share/unicode/UnicodeData.txt")
    parser.add_argument("--output", default=os.path.join(root, "src", "encoding"))
    args = parser.parse_args()

    written = []
    for number in BESTFIT_PAGES:
        page = read_bestfit(os.path.join(args.codepages, f"bestfit{number}.txt"), number)
        written.append(write_code_page(page, args.output))
    page = read_ucm(os.path.join(args.codepages, "windows-51949-2000.ucm"), 51949)
    written.append(write_code_page(page, args.output))
    written.append(write_class_table(args.unicode_data, args.output))
    for path in written:
        print(f"{path}: {os.path.getsize(path)} bytes")


if __name__ == "__main__":
    main()
