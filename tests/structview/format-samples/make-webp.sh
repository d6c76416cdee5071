# WebP: cwebp writes a lossy, a lossless and (from an image with alpha) an extended file. webpinfo
# reports the RIFF size and each chunk's type and length; its length counts the 8-byte chunk header
# and the padding byte of an odd-sized chunk, the chunk's own size field neither. So the size field
# is read from the bytes with od and must round up to what webpinfo reports.
out="$1"

. "$(dirname "${BASH_SOURCE[0]}")/sample-bytes.sh"

make_webp() {
  local name="$1" source="$2"; shift 2
  convert -size 100x60 "$source" "$name-source.png"
  cwebp -quiet "$@" "$name-source.png" -o "$out/$name.webp"
  local report riffSize chunkType chunkOffset chunkLength
  report="$(webpinfo "$out/$name.webp")"
  riffSize="$(sed -n 's/^ *File size: *\([0-9]*\)$/\1/p' <<<"$report")"
  read -r chunkType chunkOffset chunkLength < <(sed -n 's/^Chunk \(....\) at offset *\([0-9]*\), length *\([0-9]*\)$/\1 \2 \3/p' <<<"$report" | head -n 1)
  [ "$chunkOffset" = 12 ] || { echo "first chunk at $chunkOffset, expected 12" >&2; exit 1; }
  # webpinfo drops the trailing blank of "VP8 " when it splits the line above; the chunk id has four.
  chunkType="$(printf '%-4s' "$chunkType")"
  local chunkSize
  chunkSize="$(le32 "$out/$name.webp" 16)"
  [ $(((chunkSize + 1) / 2 * 2)) = $((chunkLength - 8)) ] \
    || { echo "$name: size field $chunkSize does not match webpinfo's length $chunkLength" >&2; exit 1; }
  cat >"$out/$name.expect" <<EXPECT
pattern webp
sample $name.webp
format little hex ascii
field riff.chunkId = "RIFF"
field riff.format = "WEBP"
field first.chunkId = "$chunkType"
format little dec
field riff.chunkSize = $((riffSize - 8))
field first.chunkSize = $chunkSize
EXPECT
}

make_webp webp-lossy 'xc:rgb(10,200,30)' -q 80
make_webp webp-lossless 'xc:rgb(10,200,30)' -lossless
make_webp webp-extended 'xc:rgba(10,200,30,0.5)' -q 80
for kind in 'webp-lossy:VP8 ' 'webp-lossless:VP8L' 'webp-extended:VP8X'; do
  grep -qF "field first.chunkId = \"${kind#*:}\"" "$out/${kind%%:*}.expect" \
    || { echo "${kind%%:*}: webpinfo names another first chunk" >&2; exit 1; }
done
