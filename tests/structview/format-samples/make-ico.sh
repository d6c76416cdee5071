# ICO: ImageMagick writes a three-size icon (256, 48 and 16 pixels, 32-bit RGBA). identify lists the
# sizes in the file's order; the first, 256 pixels, is stored as PNG and its size in bytes is what
# identify reports for it. The first image starts after the header and the three entries
# (6 + 3 * 16 bytes). The PNG there is read with png.tlpat at that offset.
out="$1"
convert -size 256x256 xc:'rgba(10,200,30,0.8)' -define icon:auto-resize=256,48,16 "$out/ico-three-sizes.ico"
mapfile -t frames < <(identify -format '%w %h %z %m %B\n' "$out/ico-three-sizes.ico")
[ "${#frames[@]}" = 3 ] || { echo "identify lists ${#frames[@]} images, expected 3" >&2; exit 1; }
read -r width height depth kind size <<<"${frames[0]}"
[ "$kind" = PNG ] || { echo "the first image is $kind, expected PNG" >&2; exit 1; }
firstOffset=$((6 + 3 * 16))
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
field first.bitCount = $((depth * 4))
field first.imageSize = $size
field first.imageOffset = $firstOffset
EXPECT
cat >"$out/ico-three-sizes-first-image.expect" <<EXPECT
pattern png
sample ico-three-sizes.ico
offset $firstOffset
format big hex
field signature = 89 50 4E 47 0D 0A 1A 0A
format big dec
field ihdr.width = $width
field ihdr.height = $height
field ihdr.bitDepth = $depth
EXPECT
