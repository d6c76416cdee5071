# BMP: ImageMagick writes a 24-bit and a 16-colour bitmap with the 40-byte info header (BMP3) and a
# 32-bit one with alpha and the 124-byte version 5 header, whose first 40 bytes the pattern reads.
# The sizes, bits per pixel, image size, resolution, important colours, file size and pixel offset
# are what file reports (it leaves out a resolution or colour count of 0, and the image size of a
# version 5 file, which is then width * height * 4). The palette fills the gap between the headers
# and the pixels, 4 bytes per colour. file does not report the compression: the 32-bit file's
# bit-field masks (compression 3) are checked against the bytes as od reads them.
out="$1"

. "$(dirname "${BASH_SOURCE[0]}")/sample-bytes.sh"
report_field() { sed -n "s|.*$2.*|\1|p" <<<"$1"; }

write_expect() {
  local name="$1" headerSize="$2" compression="$3"
  local report width height bits imageSize xppm yppm important fileSize pixelOffset
  report="$(file -b "$out/$name.bmp")"
  case "$headerSize:$report" in
    "40:PC bitmap, Windows 3.x format,"* | "124:PC bitmap, Windows 98/2000 and newer format,"*) ;;
    *) echo "$name: file reports '$report', not a $headerSize-byte info header" >&2; exit 1 ;;
  esac
  width="$(report_field "$report" ', \([0-9]*\) x [0-9]* x [0-9]*')"
  height="$(report_field "$report" ', [0-9]* x \([0-9]*\) x [0-9]*')"
  bits="$(report_field "$report" ', [0-9]* x [0-9]* x \([0-9]*\)')"
  imageSize="$(report_field "$report" 'image size \([0-9]*\)')"
  xppm="$(report_field "$report" 'resolution \([0-9]*\) x [0-9]* px/m')"
  yppm="$(report_field "$report" 'resolution [0-9]* x \([0-9]*\) px/m')"
  important="$(report_field "$report" ', \([0-9]*\) important colors')"
  fileSize="$(report_field "$report" 'cbSize \([0-9]*\)')"
  pixelOffset="$(report_field "$report" 'bits offset \([0-9]*\)')"
  [ "$fileSize" = "$(stat -c %s "$out/$name.bmp")" ] || { echo "$name: cbSize is not the file size" >&2; exit 1; }
  cat >"$out/$name.expect" <<EXPECT
pattern bmp
sample $name.bmp
format little hex ascii
field file.signature = "BM"
format little dec
field file.fileSize = $fileSize
field file.reserved1 = 0
field file.reserved2 = 0
field file.pixelOffset = $pixelOffset
field info.headerSize = $headerSize
field info.width = $width
field info.height = $height
field info.planes = 1
field info.bitCount = $bits
field info.compression = $compression
field info.imageSize = ${imageSize:-$((width * height * 4))}
field info.xPixelsPerMeter = ${xppm:-0}
field info.yPixelsPerMeter = ${yppm:-0}
field info.colorsUsed = $(((pixelOffset - 14 - headerSize) / 4))
field info.colorsImportant = ${important:-0}
EXPECT
}

convert -size 40x30 xc:'rgb(1,2,3)' -type TrueColor -units PixelsPerCentimeter -density 40 "BMP3:$out/bmp-24-bit.bmp"
write_expect bmp-24-bit 40 0

convert -size 40x30 gradient:red-blue -type Palette -colors 16 "BMP3:$out/bmp-16-colours.bmp"
write_expect bmp-16-colours 40 0

convert -size 40x30 xc:'rgba(1,2,3,0.5)' "BMP:$out/bmp-v5-alpha.bmp"
compression="$(le32 "$out/bmp-v5-alpha.bmp" 30)"
[ "$compression" = 3 ] || { echo "bmp-v5-alpha: compression $compression, expected bit fields (3)" >&2; exit 1; }
write_expect bmp-v5-alpha 124 "$compression"
