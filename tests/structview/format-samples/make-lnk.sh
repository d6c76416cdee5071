# Windows shortcut: no Debian package writes .lnk files, so the sample is built here from the
# published Shell Link layout: the header, then the description and relative path strings that its
# flags announce, then the terminal block. liblnk's lnkinfo reads it back, and the times, target
# size, attributes, strings and icon index are checked against what lnkinfo reports. The show
# command and hot key are the values written here: the lnkinfo of Debian 12 prints the target size
# in their place, so they cannot be cross-checked with it.
out="$1"
lnk="$out/lnk-built.lnk"
python3 - "$lnk" <<'PY'
import struct, sys
def filetime(unix_seconds):
    return (unix_seconds + 11644473600) * 10000000
def counted(text):
    return struct.pack("<H", len(text)) + text.encode("utf-16-le")
clsid = bytes.fromhex("0114020000000000C000000000000046")
flags = 0x04 | 0x08 | 0x80       # HasName, HasRelativePath, IsUnicode
header = struct.pack("<I16sIIQQQIiIHHII", 0x4C, clsid, flags, 0x20, filetime(1700000000), filetime(1700000100),
                     filetime(1700000200), 12345, 2, 3, 0x0654, 0, 0, 0)
assert len(header) == 0x4C
with open(sys.argv[1], "wb") as handle:
    handle.write(header + counted("Tolmo sample") + counted("..\\tolmo.exe") + bytes(4))
PY
lnkinfo "$lnk" >report.txt
python3 - report.txt >"$out/lnk-built.expect" <<'PY'
import calendar, re, sys, time
report = open(sys.argv[1]).read()
def field(label):
    return re.search(r"^\t" + re.escape(label) + r"\s*: (.*)$", report, re.M).group(1).strip()
def filetime(label):
    text = field(label)
    stamp, fraction = re.match(r"(\w+ \d+, \d+ \d+:\d+:\d+)\.(\d+) UTC", text).groups()
    seconds = calendar.timegm(time.strptime(stamp, "%b %d, %Y %H:%M:%S"))
    return (seconds + 11644473600) * 10000000 + int(fraction) // 100
assert field("Description") == "Tolmo sample" and field("Relative path") == "..\\tolmo.exe"
flags = 0x80
if "Contains a description string" in report:
    flags |= 0x04
if "Contains a relative path string" in report:
    flags |= 0x08
print("pattern lnk")
print("sample lnk-built.lnk")
print("format little hex bytes")
print("field headerSize = 0x0000004C")
print("field linkClsid = 01 14 02 00 00 00 00 00 C0 00 00 00 00 00 00 46")
print("field linkFlags = 0x%08X" % flags)
print("field fileAttributes = 0x%08X" % int(field("File attribute flags"), 16))
print("field showCommand = 0x00000003")
print("field hotKey = 0x0654")
print("field reserved1 = 0x0000")
print("field reserved2 = 0x00000000")
print("field reserved3 = 0x00000000")
print("format little dec")
print("field creationTime = %d" % filetime("Creation time"))
print("field accessTime = %d" % filetime("Access time"))
print("field writeTime = %d" % filetime("Modification time"))
print("field fileSize = %d" % int(field("File size").split()[0]))
print("field iconIndex = %d" % int(field("Icon index")))
PY
