# GPT: sgdisk makes a new table with a fixed disk GUID on a sparse 64 MiB image file. The header's
# values are what sgdisk -p reports; the two CRC-32 fields, which it does not print, are computed
# here from the file.
out="$1"
img="$out/gpt-sgdisk.img"
rm -f "$img"
truncate -s 64M "$img"
sgdisk -o -U 0F1E2D3C-4B5A-6978-8796-A5B4C3D2E1F0 -n 1:2048:+8M -t 1:8300 \
  -u 1:11111111-2222-3333-4444-555555555555 "$img" >/dev/null
sgdisk -p "$img" >report.txt
python3 - "$img" report.txt >"$out/gpt-sgdisk.expect" <<'PY'
import re, sys, uuid, zlib
data = open(sys.argv[1], "rb").read(64 * 512)
report = open(sys.argv[2]).read()
sectors = int(re.search(r"Disk \S+: (\d+) sectors", report).group(1))
guid = uuid.UUID(re.search(r"Disk identifier \(GUID\): (\S+)", report).group(1))
entries = int(re.search(r"holds up to (\d+) entries", report).group(1))
table_start = int(re.search(r"table begins at sector (\d+)", report).group(1))
first, last = map(int, re.search(r"First usable sector is (\d+), last usable sector is (\d+)", report).groups())
header = bytearray(data[512:512 + 92])
header[16:20] = bytes(4)
entry_size = 128
array = data[table_start * 512:table_start * 512 + entries * entry_size]
print("pattern gpt")
print("sample gpt-sgdisk.img")
print("offset 512")
print("format little hex ascii")
print('field signature = "EFI PART"')
print("field revision = 0x00010000")
print("field headerCrc32 = 0x%08X" % zlib.crc32(bytes(header)))
print("field reserved = 0x00000000")
print("field partitionArrayCrc32 = 0x%08X" % zlib.crc32(array))
print("format little hex bytes")
print("field diskGuid = " + " ".join("%02X" % b for b in guid.bytes_le))
print("format little dec")
print("field headerSize = 92")
print("field myLba = 1")
print("field alternateLba = %d" % (sectors - 1))
print("field firstUsableLba = %d" % first)
print("field lastUsableLba = %d" % last)
print("field partitionEntryLba = %d" % table_start)
print("field partitionEntryCount = %d" % entries)
print("field partitionEntrySize = %d" % entry_size)
PY
