# FAT32: mkfs.fat formats a sparse 64 MiB image file with a fixed volume id and label; every field
# is checked against the boot sector as mtools' minfo reports it. The jump and the boot code are
# mkfs.fat's own bytes, which no report prints: they are read from the file with od.
out="$1"
img="$out/fat32-mkfs.img"
rm -f "$img"
truncate -s 64M "$img"
mkfs.fat -F 32 -i 1234ABCD -n TOLMOFAT32 -S 512 -s 1 -h 0 "$img" >/dev/null
minfo -i "$img" :: >report.txt
. "$(dirname "${BASH_SOURCE[0]}")/sample-bytes.sh"
bytes() { hex_bytes "$img" "$1" "$2"; }
{
  echo "jump $(bytes 0 3)"
  echo "boot $(bytes 90 16)"
} >bytes.txt
python3 - report.txt bytes.txt >"$out/fat32-mkfs.expect" <<'PY'
import re, sys
report = open(sys.argv[1]).read()
raw = dict(line.split(" ", 1) for line in open(sys.argv[2]).read().splitlines())
def number(label):
    return int(re.search(r"^" + re.escape(label) + r"[:=] ?(\S+)", report, re.M).group(1), 0)
def text(label):
    return re.search(r"^" + re.escape(label) + r'[:=]"([^"]*)"', report, re.M).group(1)
print("pattern fat32")
print("sample fat32-mkfs.img")
print("format little dec ascii")
print('field oemName = "%s"' % text("banner"))
print("field bytesPerSector = %d" % int(re.search(r"^sector size: (\d+) bytes", report, re.M).group(1)))
print("field sectorsPerCluster = %d" % int(re.search(r"^cluster size: (\d+) sectors", report, re.M).group(1)))
print("field reservedSectors = %d" % int(re.search(r"^reserved \(boot\) sectors: (\d+)", report, re.M).group(1)))
print("field fatCount = %d" % number("fats"))
print("field rootEntryCount = %d" % number("max available root directory slots"))
print("field totalSectors16 = %d" % int(re.search(r"^small size: (\d+)", report, re.M).group(1)))
print("field sectorsPerFat16 = %d" % number("sectors per fat"))
print("field sectorsPerTrack = %d" % number("sectors per track"))
print("field headCount = %d" % number("heads"))
print("field hiddenSectors = %d" % number("hidden sectors"))
print("field totalSectors32 = %d" % int(re.search(r"^big size: (\d+)", report, re.M).group(1)))
print("field sectorsPerFat32 = %d" % number("Big fatlen"))
print("field rootCluster = %d" % number("rootCluster"))
print("field fsInfoSector = %d" % number("infoSector location"))
print("field backupBootSector = %d" % number("backup boot sector"))
print('field volumeLabel = "%s"' % text("disk label"))
print('field fileSystemType = "%s"' % text("disk type"))
print("format little hex bytes")
print("field jumpBoot = " + raw["jump"])
print("field media = 0x%02X" % number("media descriptor byte"))
print("field extendedFlags = 0x%04X" % number("Extended flags"))
print("field fsVersion = 0x%04X" % number("FS version"))
print("field reserved = " + " ".join(["00"] * 12))
print("field driveNumber = 0x%02X" % number("physical drive id"))
print("field reserved1 = 0x%02X" % number("reserved"))
print("field bootSignature = 0x%02X" % number("dos4"))
print("field volumeId = 0x%s" % re.search(r"^serial number: (\S+)", report, re.M).group(1).upper())
print("field bootCode = " + raw["boot"] + " ...")
print("field signature = 55 AA")
PY
