# DEX: smali assembles a one-class program into a .dex file; the header's fields are checked
# against dexdump -f. Three fields dexdump leaves out or shortens are worked out here: the Adler-32
# checksum and SHA-1 signature are computed from the file (and must agree with the parts dexdump
# prints), the endian tag is the format's constant, and the map list offset is read from the file
# with od and checked to fall in the data section.
out="$1"
dex="$out/dex-smali.dex"
cat >Hello.smali <<'SMALI'
.class public LHello;
.super Ljava/lang/Object;

.method public static main([Ljava/lang/String;)V
    .registers 2
    sget-object v0, Ljava/lang/System;->out:Ljava/io/PrintStream;
    const-string v1, "Tolmo sample"
    invoke-virtual {v0, v1}, Ljava/io/PrintStream;->println(Ljava/lang/String;)V
    return-void
.end method
SMALI
rm -f "$dex"
smali assemble -o "$dex" Hello.smali
dexdump -f "$dex" >report.txt
od -An -tu4 -j 52 -N 4 "$dex" | tr -d ' ' >map-offset.txt
python3 - "$dex" report.txt map-offset.txt >"$out/dex-smali.expect" <<'PY'
import hashlib, re, sys, zlib
data = open(sys.argv[1], "rb").read()
report = open(sys.argv[2]).read()
map_offset = int(open(sys.argv[3]).read())
def field(name):
    return re.search(r"^" + name + r"\s+: (.*)$", report, re.M).group(1).strip()
def number(name):
    return int(field(name).split()[0], 0)
checksum = zlib.adler32(data[12:])
signature = hashlib.sha1(data[32:]).hexdigest()
assert "%08x" % checksum == field("checksum"), field("checksum")
assert field("signature") == signature[:4] + "..." + signature[-4:], field("signature")
assert number("data_off") <= map_offset < number("data_off") + number("data_size")
version = re.match(r"'dex\\n(\d\d\d)\\0'", field("magic")).group(1)
print("pattern dex")
print("sample dex-smali.dex")
print("format little hex bytes")
print("field magic = 64 65 78 0A " + " ".join("%02X" % ord(c) for c in version) + " 00")
print("field checksum = 0x%08X" % checksum)
print("field signature = " + " ".join("%02X" % b for b in bytes.fromhex(signature)[:16]) + " ...")
print("field endianTag = 0x12345678")
print("format little dec")
print("field mapOffset = %d" % map_offset)
for name, label in (("fileSize", "file_size"), ("headerSize", "header_size"), ("linkSize", "link_size"),
                    ("linkOffset", "link_off"), ("stringIdsSize", "string_ids_size"), ("stringIdsOffset", "string_ids_off"),
                    ("typeIdsSize", "type_ids_size"), ("typeIdsOffset", "type_ids_off"), ("protoIdsSize", "proto_ids_size"),
                    ("protoIdsOffset", "proto_ids_off"), ("fieldIdsSize", "field_ids_size"), ("fieldIdsOffset", "field_ids_off"),
                    ("methodIdsSize", "method_ids_size"), ("methodIdsOffset", "method_ids_off"),
                    ("classDefsSize", "class_defs_size"), ("classDefsOffset", "class_defs_off"),
                    ("dataSize", "data_size"), ("dataOffset", "data_off")):
    print("field %s = %d" % (name, number(label)))
PY
