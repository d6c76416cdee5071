# MBR: sfdisk partitions a sparse 64 MiB image file; the entries are checked against its own JSON
# report of the table. The CHS bytes, which sfdisk does not print, are worked out here from the
# start and end sectors with the 255-head, 63-sector geometry that it takes for an image file.
out="$1"
img="$out/mbr-sfdisk.img"
rm -f "$img"
truncate -s 64M "$img"
sfdisk -q "$img" <<'TABLE'
label: dos
label-id: 0x1234abcd
unit: sectors

start=2048, size=20480, type=c, bootable
start=22528, size=40960, type=83
start=63488, type=7
TABLE
sfdisk -J "$img" >table.json
python3 - "$img" table.json >"$out/mbr-sfdisk.expect" <<'PY'
import json, sys
table = json.load(open(sys.argv[2]))["partitiontable"]
print("pattern mbr")
print("sample mbr-sfdisk.img")
print("format little hex")
print("field bootCode = " + " ".join(["00"] * 16) + " ...")
print("field diskSignature = 0x%08X" % int(table["id"], 16))
print("field copyProtect = 0x0000")
print("field bootSignature = 55 AA")

def chs(lba):
    cylinder, rest = divmod(lba, 255 * 63)
    head, sector = divmod(rest, 63)
    if cylinder > 1023:
        cylinder, head, sector = 1023, 254, 62
    return "%02X %02X %02X" % (head, (sector + 1) | ((cylinder >> 2) & 0xC0), cylinder & 0xFF)

parts = table["partitions"]
for index in range(4):
    name = "partition%d" % (index + 1)
    if index < len(parts):
        part = parts[index]
        start, size = part["start"], part["size"]
        print("format little hex")
        print("field %s.status = 0x%02X" % (name, 0x80 if part.get("bootable") else 0))
        print("field %s.type = 0x%02X" % (name, int(part["type"], 16)))
        print("field %s.firstChs = %s" % (name, chs(start)))
        print("field %s.lastChs = %s" % (name, chs(start + size - 1)))
        print("format little dec")
        print("field %s.firstLba = %d" % (name, start))
        print("field %s.sectorCount = %d" % (name, size))
    else:
        print("format little hex")
        for member, value in (("status", "0x00"), ("type", "0x00"), ("firstChs", "00 00 00"),
                              ("lastChs", "00 00 00"), ("firstLba", "0x00000000"), ("sectorCount", "0x00000000")):
            print("field %s.%s = %s" % (name, member, value))
PY
