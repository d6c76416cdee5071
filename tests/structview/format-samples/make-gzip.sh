# gzip: gzip compresses a text file once keeping its name and time (-9, so the extra flags say
# "slowest") and once without them (-1 -n, "fastest", no name, time 0). gzip -lv reports the
# trailer's CRC and size; the stored time is the one touch gave the input, and the stored name is
# the one gzip -lN reports. The operating system byte is 3 because gzip runs on Unix here.
out="$1"
export TZ=UTC
seq 1 2000 >numbers.txt
touch -d @1700000000 numbers.txt
gzip -9 -c numbers.txt >"$out/gzip-named.gz"
gzip -1 -n -c numbers.txt >"$out/gzip-nameless.gz"

# gzip -lv: method crc date time compressed uncompressed ratio name
report() { gzip -lv "$1" | awk 'NR == 2 { print $2, $7 }'; }
stored_name="$(gzip -lN "$out/gzip-named.gz" | awk 'NR == 2 { print $4 }')"
[ "$stored_name" = "$out/numbers.txt" ]
mtime="$(stat -c %Y numbers.txt)"

read -r crc size <<<"$(report "$out/gzip-named.gz")"
cat >"$out/gzip-named.expect" <<EXPECT
pattern gzip
sample gzip-named.gz
format little dec
field id1 = 31
field id2 = 139
field compressionMethod = 8
field flags = 8
field modificationTime = $mtime
field extraFlags = 2
field operatingSystem = 3
format little hex ascii
field optionalFields = "$(basename "$stored_name")"
EXPECT
cat >"$out/gzip-trailer-named.expect" <<EXPECT
pattern gzip-trailer
sample gzip-named.gz
offset $(($(stat -c %s "$out/gzip-named.gz") - 8))
format little hex
field crc32 = 0x${crc^^}
format little dec
field uncompressedSize = $size
EXPECT

read -r crc size <<<"$(report "$out/gzip-nameless.gz")"
cat >"$out/gzip-nameless.expect" <<EXPECT
pattern gzip
sample gzip-nameless.gz
format little hex
field id1 = 0x1F
field id2 = 0x8B
field compressionMethod = 0x08
field flags = 0x00
field modificationTime = 0x00000000
field extraFlags = 0x04
field operatingSystem = 0x03
EXPECT
cat >"$out/gzip-trailer-nameless.expect" <<EXPECT
pattern gzip-trailer
sample gzip-nameless.gz
offset $(($(stat -c %s "$out/gzip-nameless.gz") - 8))
format little hex
field crc32 = 0x${crc^^}
format little dec
field uncompressedSize = $size
EXPECT
