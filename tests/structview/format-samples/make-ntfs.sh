# NTFS: mkntfs formats a sparse 64 MiB image file with a fixed sector size, cluster size and
# geometry (its options give those fields), and ntfsinfo -m reports the MFT placing and the record
# sizes. The total sector count is the image's size in sectors less the backup boot sector, as
# mkntfs lays it out. The serial number is random and the jump and boot code are mkfs's own bytes:
# those three are read from the file with od.
out="$1"
img="$out/ntfs-mkntfs.img"
rm -f "$img"
truncate -s 64M "$img"
mkntfs -F -f -T -s 512 -c 4096 -p 0 -H 255 -S 63 -L TOLMONTFS --quick "$img" >/dev/null 2>&1
ntfsinfo -m "$img" >report.txt
. "$(dirname "${BASH_SOURCE[0]}")/sample-bytes.sh"
bytes() { hex_bytes "$img" "$1" "$2"; }
{
  echo "size $(stat -c %s "$img")"
  echo "jump $(bytes 0 3)"
  echo "serial $(od -An -tx8 -j 72 -N 8 "$img" | tr -d ' ' | tr a-f A-F)"
  echo "boot $(bytes 84 16)"
} >raw.txt
python3 - report.txt raw.txt >"$out/ntfs-mkntfs.expect" <<'PY'
import re, sys
report = open(sys.argv[1]).read()
raw = dict(line.split(" ", 1) for line in open(sys.argv[2]).read().splitlines())
def number(label):
    return int(re.search(r"^\s*" + re.escape(label) + r": (\S+)", report, re.M).group(1), 0)
sector, cluster = number("Sector Size"), number("Cluster Size")
def record_code(size):
    return size // cluster if size >= cluster else 256 - (size.bit_length() - 1)
total = int(raw["size"]) // sector - 1
assert total // (cluster // sector) == number("Volume Size in Clusters")
print("pattern ntfs")
print("sample ntfs-mkntfs.img")
print("format little dec ascii")
print('field oemId = "NTFS    "')
print("field bytesPerSector = %d" % sector)
print("field sectorsPerCluster = %d" % (cluster // sector))
for name in ("reservedSectors", "fatCount", "rootEntryCount", "totalSectors16", "sectorsPerFat", "totalSectors32", "checksum"):
    print("field %s = 0" % name)
print("field sectorsPerTrack = 63")
print("field headCount = 255")
print("field hiddenSectors = 0")
print("field totalSectors = %d" % total)
print("field mftCluster = %d" % number("LCN of Data Attribute for FILE_MFT"))
print("field mftMirrorCluster = %d" % number("LCN of Data Attribute for File_MFTMirr"))
print("format little hex bytes")
print("field jumpBoot = " + raw["jump"])
print("field media = 0xF8")
print("field driveNumber = 0x80")
print("field reserved1 = 0x00")
print("field extendedBootSignature = 0x80")
print("field reserved2 = 0x00")
print("field clustersPerMftRecord = 0x%02X" % record_code(number("MFT Record Size")))
print("field clustersPerIndexRecord = 0x%02X" % record_code(number("Index Block Size")))
print("field reserved3 = 00 00 00")
print("field reserved4 = 00 00 00")
print("field volumeSerialNumber = 0x" + raw["serial"])
print("field bootCode = " + raw["boot"] + " ...")
print("field signature = 55 AA")
PY
