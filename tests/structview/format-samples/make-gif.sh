# GIF: ImageMagick writes a one-colour image (a 2-entry colour table) and a 48-colour gradient
# (a 64-entry table). Version and size are what file reports, the table size is identify's
# "Colormap entries". The flags byte is put together from those by the layout: table present
# (0x80), colour resolution less 1 (bits 4-6), sorted (0x08, not written), log2(entries) - 1 (bits
# 0-2). The colour resolution and the background colour's index are not reported by either tool
# and are read from the bytes with od; ImageMagick gives no pixel aspect ratio (0).
out="$1"

. "$(dirname "${BASH_SOURCE[0]}")/sample-bytes.sh"

make_gif() {
  local name="$1"; shift
  convert "$@" "$out/$name.gif"
  local report version width height entries resolutionBits log
  report="$(file -b "$out/$name.gif")"
  read -r version width height < <(sed -n 's/^GIF image data, version \([0-9a-z]*\), \([0-9]*\) x \([0-9]*\)$/\1 \2 \3/p' <<<"$report")
  entries="$(identify -verbose "$out/$name.gif" | sed -n 's/^ *Colormap entries: \([0-9]*\)$/\1/p')"
  resolutionBits=$(($(u8 "$out/$name.gif" 10) & 0x70))
  log=0
  while [ $((2 << log)) -lt "$entries" ]; do log=$((log + 1)); done
  [ $((2 << log)) = "$entries" ] || { echo "$name: $entries colour table entries is no power of 2" >&2; exit 1; }
  cat >"$out/$name.expect" <<EXPECT
pattern gif
sample $name.gif
format little hex ascii
field signature = "GIF"
field version = "$version"
format little hex
field screen.flags = $(printf '0x%02X' $((0x80 | resolutionBits | log)))
format little dec
field screen.width = $width
field screen.height = $height
field screen.backgroundColorIndex = $(u8 "$out/$name.gif" 11)
field screen.pixelAspectRatio = 0
EXPECT
}

make_gif gif-one-colour -size 40x30 xc:'rgb(1,2,3)'
make_gif gif-gradient -size 64x48 gradient:red-blue -colors 48
