# Ogg: oggenc encodes a 0.3 s mono tone with a fixed stream serial number (which ogginfo reports
# back). Two pages are checked: the first, which begins the stream and carries only the Vorbis
# identification header, and the last, which ends it with the granule position at the total sample
# count that soxi reports. ogginfo prints no page offsets, sequence numbers or checksums, so the
# script walks the pages by the header layout (27 bytes, then the lacing values) and computes each
# page's CRC itself.
out="$1"
serial=12345678

sox -D -n -r 44100 -c 1 -b 16 tone.wav synth 0.3 sine 440
samples="$(soxi -s tone.wav)"
oggenc --quiet --serial "$serial" -q 2 -o "$out/ogg-vorbis.ogg" tone.wav
reported="$(ogginfo "$out/ogg-vorbis.ogg" | sed -n 's/.*serial: \([0-9a-f]*\)).*/\1/p' | head -n 1)"
[ "$((16#$reported))" = "$serial" ] || { echo "ogginfo reports serial $reported" >&2; exit 1; }

# Offset, page number and CRC of the first and the last page, one line each.
mapfile -t pages < <(python3 - "$out/ogg-vorbis.ogg" <<'PYTHON'
import sys

def ogg_crc(data):
    crc = 0
    for byte in data:
        crc ^= byte << 24
        for _ in range(8):
            crc = ((crc << 1) ^ 0x04C11DB7) if crc & 0x80000000 else crc << 1
            crc &= 0xFFFFFFFF
    return crc

data = open(sys.argv[1], "rb").read()
pages, offset = [], 0
while offset < len(data):
    count = data[offset + 26]
    length = 27 + count + sum(data[offset + 27:offset + 27 + count])
    page = bytearray(data[offset:offset + length])
    page[22:26] = b"\0\0\0\0"
    pages.append((offset, len(pages), ogg_crc(page), count))
    offset += length
for page in (pages[0], pages[-1]):
    print("%d %d 0x%08X %d" % page)
PYTHON
)

write_expect() {
  local name="$1" headerType="$2" granule="$3" offset sequence crc count
  read -r offset sequence crc count <<<"$4"
  cat >"$out/$name.expect" <<EXPECT
pattern ogg-page
sample ogg-vorbis.ogg
offset $offset
format little hex ascii
field capturePattern = "OggS"
format little hex
field checksum = $crc
format little dec
field version = 0
field headerType = $headerType
field granulePosition = $granule
field serialNumber = $serial
field sequenceNumber = $sequence
field segmentCount = $count
EXPECT
}

write_expect ogg-page-first 2 0 "${pages[0]}"
write_expect ogg-page-last 4 "$samples" "${pages[1]}"
