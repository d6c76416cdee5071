# ISO 9660: genisoimage writes a small image with fixed identifiers (its -V, -sysid, -volset,
# -publisher, -p and -A options) under TZ=UTC; every field of the primary volume descriptor is
# checked against isoinfo -d -debug, which prints the sizes, the path tables, the root extent and
# the dates. genisoimage takes no fixed date, so the dates are whatever isoinfo reports. The root
# record's 7-byte date and the application-use area are not printed by isoinfo: they are read from
# the file with od.
out="$1"
img="$out/iso9660-genisoimage.iso"
rm -f "$img"
mkdir -p tree
echo "Tolmo sample" >tree/readme.txt
touch -d @1700000000 tree/readme.txt tree
TZ=UTC genisoimage -quiet -V TOLMO_VOLUME -sysid TOLMOSYS -volset TOLMOSET -publisher "TOLMO PUBLISHER" \
  -p "TOLMO PREPARER" -A "TOLMO APPLICATION" -o "$img" tree
isoinfo -d -debug -i "$img" >report.txt
. "$(dirname "${BASH_SOURCE[0]}")/sample-bytes.sh"
bytes() { hex_bytes "$img" "$1" "$2"; }
{
  echo "rootdate $(bytes $((0x8000 + 156 + 18)) 7)"
  echo "appuse $(bytes $((0x8000 + 883)) 16)"
} >raw.txt
python3 - report.txt raw.txt >"$out/iso9660-genisoimage.expect" <<'PY'
import re, sys
report = open(sys.argv[1]).read()
raw = dict(line.split(" ", 1) for line in open(sys.argv[2]).read().splitlines())
def text(label):
    return re.search(r"^" + re.escape(label) + r":[ \t]*(.*)$", report, re.M).group(1).rstrip()
def number(label):
    return int(re.search(r"^" + re.escape(label) + r"\s+(\d+)", report, re.M).group(1))
def padded(value, width):
    # A blank-padded identifier as the ascii form shows it: at most 64 characters, then "...".
    value = value.ljust(width)
    return '"%s"' % (value[:64] + "..." if width > 64 else value)
def digits(label):
    return '"%s"' % re.sub(r"[ :.]", "", text(label))
root_extent, root_size = map(int, re.search(r"Root directory extent:\s+(\d+) size: (\d+)", report).groups())
both32 = {"volumeSpaceSize": number("Volume size is:"), "pathTableSize": number("Path table size is:")}
both16 = {"volumeSetSize": number("Volume set size is:"), "volumeSequenceNumber": number("Volume set sequence number is:"),
          "logicalBlockSize": number("Logical block size is:")}
root32 = {"extent": root_extent, "dataLength": root_size}
out = ["pattern iso9660", "sample iso9660-genisoimage.iso", "offset 0x8000"]
for order in ("little", "big"):
    suffix = "Le" if order == "little" else "Be"
    out.append("format %s dec ascii" % order)
    for name, value in list(both32.items()) + list(both16.items()):
        out.append("field %s%s = %d" % (name, suffix, value))
    for name, value in root32.items():
        out.append("field rootDirectory.%s%s = %d" % (name, suffix, value))
    out.append("field rootDirectory.volumeSequenceNumber%s = %d" % (suffix, both16["volumeSequenceNumber"]))
out.append("format little dec ascii")
out.append("field typeLPathTable = %d" % number("L Path table start:"))
out.append("field optionalTypeLPathTable = %d" % number("L Path opt table start:"))
out.append("format big dec ascii")
out.append("field typeMPathTable = %d" % number("M Path table start:"))
out.append("field optionalTypeMPathTable = %d" % number("M Path opt table start:"))
out.append("format little dec ascii")
out.append("field type = 1")
out.append('field standardId = "CD001"')
out.append("field version = 1")
out.append("field unused1 = 0")
out.append("field systemId = " + padded(text("System id"), 32))
out.append("field volumeId = " + padded(text("Volume id"), 32))
out.append("field volumeSetId = " + padded(text("Volume set id"), 128))
out.append("field publisherId = " + padded(text("Publisher id"), 128))
out.append("field dataPreparerId = " + padded(text("Data preparer id"), 128))
out.append("field applicationId = " + padded(text("Application id"), 128))
out.append("field copyrightFileId = " + padded(text("Copyright File id"), 37))
out.append("field abstractFileId = " + padded(text("Abstract File id"), 37))
out.append("field bibliographicFileId = " + padded(text("Bibliographic File id"), 37))
for name, label in (("creationDate", "Creation Date"), ("modificationDate", "Modification Date"),
                    ("expirationDate", "Expiration Date"), ("effectiveDate", "Effective Date")):
    out.append("field %s.digits = %s" % (name, digits(label)))
    out.append("field %s.gmtOffset = 0" % name)
out.append("field fileStructureVersion = %d" % number("File structure version:"))
out.append("field reserved1 = 0")
out.append("field rootDirectory.length = 34")
out.append("field rootDirectory.extendedAttributeLength = 0")
out.append("field rootDirectory.fileUnitSize = 0")
out.append("field rootDirectory.interleaveGap = 0")
out.append("field rootDirectory.nameLength = 1")
out.append("field rootDirectory.name = 0")
out.append("format little hex bytes")
out.append("field rootDirectory.fileFlags = 0x02")
out.append("field rootDirectory.recordingDate = " + raw["rootdate"])
out.append("field unused2 = " + " ".join(["00"] * 8))
out.append("field unused3 = " + " ".join(["00"] * 16) + " ...")
out.append("field applicationUse = " + raw["appuse"] + " ...")
out.append("field reserved2 = " + " ".join(["00"] * 16) + " ...")
print("\n".join(out))
PY
