# PNG: ImageMagick writes a 640x480 RGBA image; the IHDR values are what identify reports of it.
out="$1"
convert -size 640x480 xc:'rgba(10,20,30,0.5)' -define png:color-type=6 -define png:bit-depth=8 "$out/png-640x480.png"
read -r width height depth < <(identify -format '%w %h %z\n' "$out/png-640x480.png")
crc="$(python3 -c 'import sys,zlib; d=open(sys.argv[1],"rb").read(); print("0x%08X" % zlib.crc32(d[12:29]))' "$out/png-640x480.png")"
cat >"$out/png-640x480.expect" <<EXPECT
pattern png
sample png-640x480.png
format big dec
field signature = 89 50 4E 47 0D 0A 1A 0A
field ihdr.length = 13
field ihdr.width = $width
field ihdr.height = $height
field ihdr.bitDepth = $depth
field ihdr.colorType = 6
field ihdr.compression = 0
field ihdr.filter = 0
field ihdr.interlace = 0
format big hex ascii
field ihdr.type = "IHDR"
field ihdr.crc = $crc
EXPECT
