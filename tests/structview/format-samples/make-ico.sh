# ICO: ImageMagick writes a three-size icon (256, 48 and 16 pixels, 32-bit RGBA). identify lists the
# sizes in the file's order. The first, 256 pixels, is stored as PNG, and its size in bytes is what
# identify reports for it; it is read with png.tlpat at its offset as well. The smaller two are
# stored as bitmaps: a 40-byte BITMAPINFOHEADER, the 32-bit colour rows and the 1-bit mask rows
# (each padded to 4 bytes), so their sizes follow from identify's width and height by that layout.
# The first image starts after the header and the three entries (6 + 3 * 16 bytes), each next one
# where the one before it ends. ico.tlpat reads the header with entry 0, ico-entry.tlpat entries 1
# and 2 at 6 + 16 * N.
out="$1"
icon="$out/ico-three-sizes.ico"
convert -size 256x256 xc:'rgba(10,200,30,0.8)' -define icon:auto-resize=256,48,16 "$icon"
mapfile -t frames < <(identify -format '%w %h %z %m %B\n' "$icon")
[ "${#frames[@]}" = 3 ] || { echo "identify lists ${#frames[@]} images, expected 3" >&2; exit 1; }

offset=$((6 + ${#frames[@]} * 16))
for index in 0 1 2; do
  read -r width height depth kind size <<<"${frames[$index]}"
  bitCount=$((depth * 4))
  if [ "$index" = 0 ]; then
    [ "$kind" = PNG ] || { echo "image 0 is $kind, expected PNG" >&2; exit 1; }
    firstOffset="$offset" firstWidth="$width" firstHeight="$height" firstDepth="$depth"
    cat >"$out/ico-three-sizes.expect" <<EXPECT
pattern ico
sample ico-three-sizes.ico
format little dec
field dir.reserved = 0
field dir.type = 1
field dir.imageCount = ${#frames[@]}
field first.width = $((width % 256))
field first.height = $((height % 256))
field first.colorCount = 0
field first.reserved = 0
field first.planes = 1
field first.bitCount = $bitCount
field first.imageSize = $size
field first.imageOffset = $offset
EXPECT
  else
    [ "$kind" = ICO ] || { echo "image $index is $kind, expected a bitmap (ICO)" >&2; exit 1; }
    size=$((40 + height * width * bitCount / 8 + height * ((width + 31) / 32 * 4)))
    cat >"$out/ico-three-sizes-entry-$index.expect" <<EXPECT
pattern ico-entry
sample ico-three-sizes.ico
offset $((6 + 16 * index))
format little dec
field width = $((width % 256))
field height = $((height % 256))
field colorCount = 0
field reserved = 0
field planes = 1
field bitCount = $bitCount
field imageSize = $size
field imageOffset = $offset
EXPECT
  fi
  offset=$((offset + size))
done
[ "$offset" = "$(stat -c %s "$icon")" ] || { echo "the images do not end where the file does" >&2; exit 1; }

cat >"$out/ico-three-sizes-first-image.expect" <<EXPECT
pattern png
sample ico-three-sizes.ico
offset $firstOffset
format big hex
field signature = 89 50 4E 47 0D 0A 1A 0A
format big dec
field ihdr.width = $firstWidth
field ihdr.height = $firstHeight
field ihdr.bitDepth = $firstDepth
EXPECT
