# TGA: ImageMagick writes an uncompressed 32-bit image with alpha and an RLE-packed 24-bit one.
# Size comes from the command and identify; image types 2 (true-colour) and 10 (true-colour, RLE)
# follow from -compress. file reports the bits per pixel and the alpha bits; with rows stored
# bottom-up (identify reports the orientation BottomLeft) the alpha bits are the whole descriptor.
out="$1"

make_tga() {
  local name="$1" colour="$2" compress="$3" imageType="$4"
  convert -size 120x80 xc:"$colour" -compress "$compress" "$out/$name.tga"
  local width height orientation report bits alphaBits
  read -r width height orientation < <(identify -format '%w %h %[orientation]\n' "$out/$name.tga")
  [ "$orientation" = BottomLeft ] || { echo "orientation $orientation, expected BottomLeft" >&2; exit 1; }
  report="$(file -b "$out/$name.tga")"
  bits="$(sed -n "s/.* $width x $height x \([0-9]*\).*/\1/p" <<<"$report")"
  alphaBits="$(sed -n 's/.* \([0-9]*\)-bit alpha.*/\1/p' <<<"$report")"
  cat >"$out/$name.expect" <<EXPECT
pattern tga
sample $name.tga
format little dec
field idLength = 0
field colorMapType = 0
field imageType = $imageType
field colorMap.firstEntryIndex = 0
field colorMap.length = 0
field colorMap.entrySize = 0
field image.xOrigin = 0
field image.yOrigin = 0
field image.width = $width
field image.height = $height
field image.pixelDepth = $bits
field image.descriptor = ${alphaBits:-0}
EXPECT
}

make_tga tga-rgba-raw 'rgba(10,200,30,0.8)' None 2
make_tga tga-rgb-rle 'rgb(10,200,30)' RLE 10
