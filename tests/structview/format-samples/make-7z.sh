# 7z: 7z archives a text file; 7z l -slt reports the archive's physical size and the size of its
# headers, which are the 32-byte signature header and the header proper at the end. The packed
# streams lie between them, so the next header's offset and size follow from those figures. The two
# CRCs are checksums no tool prints: they are computed here from the file's bytes. The format's minor
# version is read with od and must be one of those the format defines.
out="$1"
seq 1 3000 >numbers.txt
touch -d @1700000000 numbers.txt
7z a -bd "$out/7z-lzma2.7z" numbers.txt >/dev/null
listing="$(7z l -slt "$out/7z-lzma2.7z")"
physical_size="$(sed -n 's/^Physical Size = //p' <<<"$listing")"
headers_size="$(sed -n 's/^Headers Size = //p' <<<"$listing")"
[ "$physical_size" = "$(stat -c %s "$out/7z-lzma2.7z")" ]
next_size=$((headers_size - 32))
next_offset=$((physical_size - headers_size))
crc32_of() { python3 -c 'import sys, zlib; d = open(sys.argv[1], "rb").read(); a, b = int(sys.argv[2]), int(sys.argv[3]); print("0x%08X" % zlib.crc32(d[a:b]))' "$@"; }
minor="$(od -An -tu1 -j7 -N1 "$out/7z-lzma2.7z" | tr -d ' ')"
[ "$minor" -ge 2 ] && [ "$minor" -le 4 ]
cat >"$out/7z-lzma2.expect" <<EXPECT
pattern 7z
sample 7z-lzma2.7z
format little hex
field signature = 37 7A BC AF 27 1C
field startHeaderCrc = $(crc32_of "$out/7z-lzma2.7z" 12 32)
field nextHeaderCrc = $(crc32_of "$out/7z-lzma2.7z" $((32 + next_offset)) $((32 + next_offset + next_size)))
format little dec
field versionMajor = 0
field versionMinor = $minor
field nextHeaderOffset = $next_offset
field nextHeaderSize = $next_size
EXPECT
