# DDS: ImageMagick writes an uncompressed 32-bit texture without mipmaps and a DXT1 texture with its
# full mipmap chain. Sizes come from the command and identify; flags, masks and capabilities are the
# published constants for those two kinds (uncompressed: caps, height, width, pitch, pixel format;
# DXT1: caps, height, width, pixel format, mipmap count, linear size). The pitch is width * 4, the
# DXT1 linear size width * height / 2, and the chain has floor(log2(max(width, height))) + 1 levels.
# ImageMagick writes its name into reserved1; identify does not report it, so that value is
# checked against the bytes as od reads them.
out="$1"

. "$(dirname "${BASH_SOURCE[0]}")/sample-bytes.sh"

size_of() { identify -format '%w %h\n' "$1" | head -n 1; }

levels() {
  local side=$(($1 > $2 ? $1 : $2)) count=1
  while [ "$side" -gt 1 ]; do side=$((side / 2)); count=$((count + 1)); done
  echo "$count"
}

write_expect() {
  local name="$1"; shift
  cat >"$out/$name.expect" <<EXPECT
pattern dds
sample $name.dds
format little hex ascii
field magic = "DDS "
field header.reserved1 = $(hex_bytes "$out/$name.dds" 32 16) ...
format little dec
field header.size = 124
field header.height = $height
field header.width = $width
field header.depth = 0
field pixelFormat.size = 32
field caps.caps2 = 0
field caps.caps3 = 0
field caps.caps4 = 0
field caps.reserved2 = 0
EXPECT
  printf '%s\n' "$@" >>"$out/$name.expect"
}

convert -size 64x32 xc:'rgba(10,200,30,0.8)' -define dds:compression=none -define dds:mipmaps=0 "$out/dds-rgba.dds"
read -r width height < <(size_of "$out/dds-rgba.dds")
write_expect dds-rgba \
  "field header.pitchOrLinearSize = $((width * 4))" \
  'field header.mipMapCount = 1' \
  'field pixelFormat.rgbBitCount = 32' \
  'format little hex' \
  'field header.flags = 0x0000100F' \
  'field pixelFormat.flags = 0x00000041' \
  'field pixelFormat.fourCC = 00 00 00 00' \
  'field pixelFormat.redBitMask = 0x00FF0000' \
  'field pixelFormat.greenBitMask = 0x0000FF00' \
  'field pixelFormat.blueBitMask = 0x000000FF' \
  'field pixelFormat.alphaBitMask = 0xFF000000' \
  'field caps.caps = 0x00001000'

convert -size 64x32 xc:'rgb(10,200,30)' -define dds:compression=dxt1 "$out/dds-dxt1.dds"
read -r width height < <(size_of "$out/dds-dxt1.dds")
write_expect dds-dxt1 \
  "field header.pitchOrLinearSize = $((width * height / 2))" \
  "field header.mipMapCount = $(levels "$width" "$height")" \
  'field pixelFormat.rgbBitCount = 0' \
  'format little hex ascii' \
  'field pixelFormat.fourCC = "DXT1"' \
  'format little hex' \
  'field header.flags = 0x000A1007' \
  'field pixelFormat.flags = 0x00000004' \
  'field pixelFormat.redBitMask = 0x00000000' \
  'field pixelFormat.greenBitMask = 0x00000000' \
  'field pixelFormat.blueBitMask = 0x00000000' \
  'field pixelFormat.alphaBitMask = 0x00000000' \
  'field caps.caps = 0x00401008'
