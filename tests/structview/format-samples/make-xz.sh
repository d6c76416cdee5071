# xz: xz compresses a text file with a chosen integrity check, and xz --robot -lvv reports the
# check and where the one block lies. The index follows the block and the footer follows the
# index, so the footer's backward size comes from those figures. The two CRCs are checksums that
# no tool prints: they are computed here from the file's bytes.
out="$1"
seq 1 3000 >numbers.txt
crc32_of() { python3 -c 'import sys, zlib; d = open(sys.argv[1], "rb").read(); a, b = int(sys.argv[2]), int(sys.argv[3]); print("0x%08X" % zlib.crc32(d[a:b]))' "$@"; }
for check in sha256 crc32; do
  sample="xz-$check.xz"
  xz -c --check="$check" numbers.txt >"$out/$sample"
  listing="$(xz --robot -lvv "$out/$sample")"
  [ "$(grep -c '^block' <<<"$listing")" = 1 ]
  case "$(awk -F'\t' '$1 == "stream" { print $9 }' <<<"$listing")" in
    None) check_id=0 ;; CRC32) check_id=1 ;; CRC64) check_id=4 ;; SHA-256) check_id=10 ;;
  esac
  # block: stream, block in stream, block, compressed offset, uncompressed offset, total size, ...
  read -r block_offset block_size <<<"$(awk -F'\t' '$1 == "block" { print $5, $7 }' <<<"$listing")"
  file_size="$(awk -F'\t' '$1 == "file" { print $4 }' <<<"$listing")"
  [ "$file_size" = "$(stat -c %s "$out/$sample")" ]
  footer=$((file_size - 12))
  index_size=$((footer - block_offset - block_size))
  cat >"$out/xz-$check.expect" <<EXPECT
pattern xz
sample $sample
format little hex
field magic = FD 37 7A 58 5A 00
field flagsReserved = 0x00
field flagsCrc32 = $(crc32_of "$out/$sample" 6 8)
format little dec
field checkType = $check_id
EXPECT
  cat >"$out/xz-stream-footer-$check.expect" <<EXPECT
pattern xz-stream-footer
sample $sample
offset $footer
format little hex
field crc32 = $(crc32_of "$out/$sample" $((footer + 4)) $((footer + 10)))
field flagsReserved = 0x00
format little dec
field backwardSize = $((index_size / 4 - 1))
field checkType = $check_id
format little hex ascii
field magic = "YZ"
EXPECT
done
