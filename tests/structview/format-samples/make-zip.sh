# ZIP: Info-ZIP zip archives a deflated text file and a stored binary one (-n .bin) under long
# names, with no extra fields (-X) and an archive comment (-z). Every header value comes from
# zipinfo -v's report of the archive: it prints each central directory entry in words (dates,
# versions, attributes, offsets), which are coded back into the header's numbers here.
out="$1"
folder=a-folder-with-a-long-enough-name-for-the-test
mkdir -p "$folder"
seq 1 500 >"$folder/numbers-listed-one-per-line.txt"
printf '\0\1\2\3binary' >"$folder/raw-bytes-stored-as-they-are.bin"
touch -d '2023-11-14 22:13:20' "$folder"/*
echo "Tolmo sample archive" | TZ=UTC zip -X -q -z -n .bin "$out/zip-two-files.zip" \
  "$folder/numbers-listed-one-per-line.txt" "$folder/raw-bytes-stored-as-they-are.bin"
TZ=UTC zipinfo -v "$out/zip-two-files.zip" >zipinfo.txt
python3 - "$out" zipinfo.txt <<'PY'
import re, sys

out, report = sys.argv[1], open(sys.argv[2]).read()

def number(pattern, text=report):
    return int(re.search(pattern, text).group(1))

systems = {"MS-DOS, OS/2 or NT FAT": 0, "Unix": 3}
methods = {"none (stored)": 0, "deflated": 8}
months = ["Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"]

def entry_fields(block):
    value = lambda label: re.search(r"^  " + re.escape(label) + r":\s+(.*)$", block, re.M).group(1).strip()
    name = re.search(r"^  (\S.*)$", block.split("\n", 3)[2], re.M).group(1)
    year, month, day, clock = value("file last modified on (DOS date/time)").split()
    hour, minute, second = (int(part) for part in clock.split(":"))
    made_by = systems[value("file system or operating system of origin")] << 8 | round(float(value("version of encoding software")) * 10)
    needed = systems[value("minimum file system compatibility required")] << 8 | round(float(value("minimum software version required to extract")) * 10)
    assert value("file security status") == "not encrypted" and value("extended local header") == "no"
    unix_mode = int(re.search(r"Unix file attributes \((\d+) octal\)", block).group(1), 8)
    dos_attributes = int(re.search(r"MS-DOS file attributes \(([0-9A-Fa-f]+) hex\)", block).group(1), 16)
    return {
        "name": name,
        "versionMadeBy": made_by,
        "versionNeeded": needed,
        "flags": 0,  # not encrypted, no data descriptor, normal deflation, plain ASCII names
        "compression": methods[value("compression method")],
        "modifiedTime": hour << 11 | minute << 5 | second // 2,
        "modifiedDate": (int(year) - 1980) << 9 | (months.index(month) + 1) << 5 | int(day),
        "crc32": int(value("32-bit CRC value (hex)"), 16),
        "compressedSize": int(value("compressed size").split()[0]),
        "uncompressedSize": int(value("uncompressed size").split()[0]),
        "fileNameLength": int(value("length of filename").split()[0]),
        "extraFieldLength": int(value("length of extra field").split()[0]),
        "commentLength": int(value("length of file comment").split()[0]),
        "diskNumberStart": int(value("disk number on which file begins").split()[1]) - 1,
        "internalAttributes": 1 if value("apparent file type") == "text" else 0,
        "externalAttributes": unix_mode << 16 | dos_attributes,
        "localHeaderOffset": int(value("offset of local header from start of archive").split()[0]),
    }

entries = [entry_fields(block) for block in re.split(r"\nCentral directory entry #\d+:\n", report)[1:]]
central_size = number(r"The central directory is (\d+) ")
central_offset = number(r"is (\d+) \([0-9A-F]+h\)\.")
end_offset = number(r"Actual end-cent-dir record offset:\s+(\d+)")
comment_length = number(r"The zipfile comment is (\d+) bytes long")
comment = re.search(r"zipfile comment begins =+\n(.*)\n=+ zipfile comment ends", report, re.S).group(1)
assert "constitutes the sole disk" in report
assert number(r"central directory contains (\d+) entries") == len(entries) == 2

def name_rows(name):
    # Names longer than 64 characters show their first 64 and "..." as text, and their first 16 bytes in hex.
    assert len(name) > 64
    hex_bytes = " ".join("%02X" % ord(c) for c in name[:16]) + " ..."
    return ['format little hex ascii', 'field fileName = "%s..."' % name[:64], "format little hex", "field fileName = " + hex_bytes]

local_fields = ["versionNeeded", "flags", "compression", "modifiedTime", "modifiedDate", "crc32",
                "compressedSize", "uncompressedSize", "fileNameLength", "extraFieldLength"]
central_fields = ["versionMadeBy"] + local_fields + ["commentLength", "diskNumberStart", "internalAttributes",
                                                     "externalAttributes", "localHeaderOffset"]
central_at = central_offset
for index, entry in enumerate(entries, 1):
    lines = ["pattern zip-local-file", "sample zip-two-files.zip", "offset %d" % entry["localHeaderOffset"],
             "format little hex", "field signature = 0x04034B50", "format little dec"]
    lines += ["field %s = %d" % (field, entry[field]) for field in local_fields]
    lines += name_rows(entry["name"])
    open("%s/zip-local-file-%d.expect" % (out, index), "w").write("\n".join(lines) + "\n")

    lines = ["pattern zip-central-directory", "sample zip-two-files.zip", "offset %d" % central_at,
             "format little hex", "field signature = 0x02014B50", "format little dec"]
    lines += ["field %s = %d" % (field, entry[field]) for field in central_fields]
    lines += name_rows(entry["name"])
    open("%s/zip-central-directory-%d.expect" % (out, index), "w").write("\n".join(lines) + "\n")
    central_at += 46 + entry["fileNameLength"] + entry["extraFieldLength"] + entry["commentLength"]
assert central_at == central_offset + central_size

lines = ["pattern zip-end-of-central-directory", "sample zip-two-files.zip", "offset %d" % end_offset,
         "format little hex", "field signature = 0x06054B50", "format little dec",
         "field diskNumber = 0", "field centralDirectoryDisk = 0",
         "field entriesOnThisDisk = %d" % len(entries), "field totalEntries = %d" % len(entries),
         "field centralDirectorySize = %d" % central_size, "field centralDirectoryOffset = %d" % central_offset,
         "field commentLength = %d" % comment_length, "format little hex ascii", 'field comment = "%s"' % comment]
open("%s/zip-end-of-central-directory.expect" % out, "w").write("\n".join(lines) + "\n")
PY
