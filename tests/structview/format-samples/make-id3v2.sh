# ID3v2: lame encodes a short tone to MP3 without a tag. id3v2 puts a version 2.3 tag with a title
# and an artist in front of one copy (-2: no version 1 tag at the end); eyeD3 puts a version 2.4 tag
# with a 149-character title in front of another, so that the frame's syncsafe size differs from a
# plain number. The tag's syncsafe size is the growth of the file less the 10-byte header, encoded
# 7 bits to a byte. The tag's version is what file reports. The first frame's id is the first one
# that id3v2 -l or eyeD3 -v lists. Its size: eyeD3 -v reports it with the 10-byte frame header;
# id3v2 does not, so there it follows from the text frame layout, one encoding byte before the
# Latin-1 title.
out="$1"

syncsafe() { printf '0x%02X%02X%02X%02X' $(($1 >> 21 & 127)) $(($1 >> 14 & 127)) $(($1 >> 7 & 127)) $(($1 & 127)); }

sox -D -n -r 44100 -c 1 -b 16 tone.wav synth 0.3 sine 440
lame --quiet -b 64 --noreplaygain -t tone.wav untagged.mp3
untaggedSize="$(stat -c %s untagged.mp3)"

write_expect() {
  local name="$1" frameId="$2" frameSize="$3" tagSize major revision
  tagSize=$(($(stat -c %s "$out/$name.mp3") - untaggedSize - 10))
  IFS=. read -r _ major revision < <(file -b "$out/$name.mp3" | sed -n 's/.*ID3 version \([0-9.]*\).*/\1/p')
  cat >"$out/$name.expect" <<EXPECT
pattern id3v2
sample $name.mp3
format big hex ascii
field tag.magic = "ID3"
field firstFrame.frameId = "$frameId"
format big hex
field tag.size = $(syncsafe "$tagSize")
field firstFrame.size = $([ "$major" = 4 ] && syncsafe "$frameSize" || printf '0x%08X' "$frameSize")
field firstFrame.flags = 0x0000
format big dec
field tag.versionMajor = $major
field tag.revision = $revision
field tag.flags = 0
EXPECT
}

title='Tolmo Tone'
cp untagged.mp3 "$out/id3v2-v23.mp3"
id3v2 -2 -t "$title" -a 'Sample Maker' "$out/id3v2-v23.mp3"
firstFrame="$(id3v2 -l "$out/id3v2-v23.mp3" | sed -n '/^id3v2 tag info/{n;s/^\([A-Z0-9]\{4\}\) .*/\1/p;}')"
write_expect id3v2-v23 "$firstFrame" $((1 + ${#title}))

longTitle="$(printf 'Tolmo %.0s' $(seq 25))"
cp untagged.mp3 "$out/id3v2-v24.mp3"
eyeD3 --quiet --no-config --to-v2.4 -t "${longTitle% }" "$out/id3v2-v24.mp3" >/dev/null
read -r firstFrame frameBytes < <(eyeD3 --no-color --no-config -v "$out/id3v2-v24.mp3" | sed -n 's/^\([A-Z0-9]\{4\}\) (\([0-9]*\) bytes)$/\1 \2/p' | head -n 1)
write_expect id3v2-v24 "$firstFrame" $((frameBytes - 10))

grep -q '^field tag.versionMajor = 3$' "$out/id3v2-v23.expect" || { echo "id3v2 wrote no version 2.3 tag" >&2; exit 1; }
grep -q '^field tag.versionMajor = 4$' "$out/id3v2-v24.expect" || { echo "eyeD3 wrote no version 2.4 tag" >&2; exit 1; }
