# JPEG/JFIF: ImageMagick writes two JPEGs with a density in dots per inch and in dots per centimetre.
# Sizes, units and densities are what identify reports; marker bytes, the segment length and the
# identifier are the format's constants. The JFIF version is the writing library's choice, which
# identify does not report; file does ("JFIF standard 1.01").
out="$1"

make_jpeg() {
  local name="$1" units="$2" density="$3" unitsCode="$4"
  convert -size 320x200 xc:'rgb(200,100,50)' -units "$units" -density "$density" "$out/$name.jpg"
  local xres yres unitsName
  read -r xres yres unitsName < <(identify -format '%x %y %U\n' "$out/$name.jpg")
  [ "$unitsName" = "$units" ] || { echo "identify reports units $unitsName, asked for $units" >&2; exit 1; }
  local major minor
  IFS=. read -r major minor < <(file -b "$out/$name.jpg" | sed -n 's/.*JFIF standard \([0-9]*\.[0-9]*\).*/\1/p')
  cat >"$out/$name.expect" <<EXPECT
pattern jpeg-jfif
sample $name.jpg
format big hex
field startOfImage = FF D8
field app0.marker = FF E0
format big dec
field app0.length = 16
field app0.versionMajor = $((10#$major))
field app0.versionMinor = $((10#$minor))
field app0.densityUnits = $unitsCode
field app0.xDensity = ${xres%.*}
field app0.yDensity = ${yres%.*}
field app0.thumbnailWidth = 0
field app0.thumbnailHeight = 0
format big hex ascii
field app0.identifier = "JFIF"
EXPECT
}

make_jpeg jpeg-jfif-dpi PixelsPerInch 72x96 1
make_jpeg jpeg-jfif-dpcm PixelsPerCentimeter 28x28 2
