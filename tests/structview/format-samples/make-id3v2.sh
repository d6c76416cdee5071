# ID3v2: lame encodes a short tone to MP3 without a tag; id3v2 then puts a version 2.3 tag with a
# title and an artist in front of it (-2: no version 1 tag at the end). The tag's syncsafe size is
# the growth of the file less the 10-byte header, encoded 7 bits to a byte. id3v2 -l lists the
# frames in the file's order: the first frame's id comes from there, and its size from the text
# frame layout, one encoding byte before the Latin-1 title. The tag's version is what file reports.
out="$1"
title='Tolmo Tone'

sox -D -n -r 44100 -c 1 -b 16 tone.wav synth 0.3 sine 440
lame --quiet -b 64 --noreplaygain -t tone.wav "$out/id3v2-title.mp3"
before="$(stat -c %s "$out/id3v2-title.mp3")"
id3v2 -2 -t "$title" -a 'Sample Maker' "$out/id3v2-title.mp3"
after="$(stat -c %s "$out/id3v2-title.mp3")"
tagSize=$((after - before - 10))
firstFrame="$(id3v2 -l "$out/id3v2-title.mp3" | sed -n '/^id3v2 tag info/{n;s/^\([A-Z0-9]\{4\}\) .*/\1/p;}')"
[ "$firstFrame" = TIT2 ] || { echo "the first frame is '$firstFrame', expected TIT2" >&2; exit 1; }
IFS=. read -r _ major revision < <(file -b "$out/id3v2-title.mp3" | sed -n 's/.*ID3 version \([0-9.]*\).*/\1/p')
cat >"$out/id3v2-title.expect" <<EXPECT
pattern id3v2
sample id3v2-title.mp3
format big hex ascii
field tag.magic = "ID3"
field firstFrame.frameId = "$firstFrame"
format big hex
field tag.size = $(printf '0x%02X%02X%02X%02X' $((tagSize >> 21 & 127)) $((tagSize >> 14 & 127)) $((tagSize >> 7 & 127)) $((tagSize & 127)))
field firstFrame.flags = 0x0000
format big dec
field tag.versionMajor = $major
field tag.revision = $revision
field tag.flags = 0
field firstFrame.size = $((1 + ${#title}))
EXPECT
