# FLAC: the flac encoder writes a 44.1 kHz stereo 16-bit file (with more metadata blocks after
# STREAMINFO), sox a 22.05 kHz mono 24-bit one whose other blocks metaflac then removes, so that
# STREAMINFO is the last block. Every value is what metaflac --list reports of STREAMINFO; the
# packed 64-bit field and the three-byte sizes are put together from those values by the layout.
out="$1"

field_of() { sed -n "/^METADATA block #0\$/,/^METADATA block #1\$/s/^  $2: \([^ ]*\).*/\1/p" <<<"$1"; }
bytes3() { printf '%02X %02X %02X' $(($1 >> 16 & 255)) $(($1 >> 8 & 255)) $(($1 & 255)); }
spaced() { sed 's/../& /g; s/ $//' <<<"$1" | tr a-f A-F; }

write_expect() {
  local name="$1" report
  report="$(metaflac --list "$out/$name.flac")"
  [ "$(field_of "$report" type)" = 0 ] || { echo "$name: the first block is not STREAMINFO" >&2; exit 1; }
  local last rate channels bits total
  last="$(field_of "$report" 'is last')"
  rate="$(field_of "$report" sample_rate)"
  channels="$(field_of "$report" channels)"
  bits="$(field_of "$report" bits-per-sample)"
  total="$(field_of "$report" 'total samples')"
  cat >"$out/$name.expect" <<EXPECT
pattern flac
sample $name.flac
format big hex ascii
field magic = "fLaC"
format big hex
field blockHeader.typeAndLast = $([ "$last" = true ] && echo 0x80 || echo 0x00)
field blockHeader.length = $(bytes3 "$(field_of "$report" length)")
field streamInfo.minFrameSize = $(bytes3 "$(field_of "$report" 'minimum framesize')")
field streamInfo.maxFrameSize = $(bytes3 "$(field_of "$report" 'maximum framesize')")
field streamInfo.formatBits = $(printf '0x%05X%02X%09X' "$rate" $(((channels - 1) * 32 + bits - 1)) "$total")
field streamInfo.md5 = $(spaced "$(field_of "$report" 'MD5 signature')")
format big dec
field streamInfo.minBlockSize = $(field_of "$report" 'minimum blocksize')
field streamInfo.maxBlockSize = $(field_of "$report" 'maximum blocksize')
EXPECT
}

sox -D -n -r 44100 -c 2 -b 16 tone.wav synth 0.5 sine 440
flac --silent --force --no-seektable -o "$out/flac-stereo-16.flac" tone.wav
write_expect flac-stereo-16

sox -D -n -r 22050 -c 1 -b 24 "$out/flac-mono-24.flac" synth 0.25 sine 300
metaflac --remove-all --dont-use-padding "$out/flac-mono-24.flac"
write_expect flac-mono-24
grep -q '^field blockHeader.typeAndLast = 0x80$' "$out/flac-mono-24.expect" \
  || { echo "flac-mono-24: STREAMINFO should be the only block" >&2; exit 1; }
