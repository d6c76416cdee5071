# WAV: sox writes plain 16-bit PCM, 32-bit IEEE float and 24-bit stereo PCM, which it stores in the
# extensible form. Channels, rate and bits are what soxi reports; the RIFF size is the file's size
# less 8. The format tag and the format chunk's size are the published ones for the form that file
# names: 1 and 16 bytes for plain PCM, 3 and 18 (with the cbSize field) for IEEE float, 0xFFFE and
# 40 for the extensible form. byteRate and blockAlign follow from the others by the layout.
out="$1"

make_wav() {
  local name="$1" form="$2" tag="$3" formatSize="$4"; shift 4
  sox -D -n "$@" "$out/$name.wav" synth 0.1 sine 440
  local report channels rate bits fileSize
  report="$(file -b "$out/$name.wav")"
  case "$form:$report" in
    "pcm:RIFF (little-endian) data, WAVE audio, Microsoft PCM,"* | "float:RIFF (little-endian) data, WAVE audio, IEEE Float,"*) ;;
    "extensible:RIFF (little-endian) data, WAVE audio, Microsoft PCM,"* | "extensible:RIFF (little-endian) data, WAVE audio, IEEE Float,"*)
      echo "$name: file reports '$report', expected the extensible form" >&2; exit 1 ;;
    "extensible:RIFF (little-endian) data, WAVE audio,"*) ;;
    *) echo "$name: file reports '$report'" >&2; exit 1 ;;
  esac
  channels="$(soxi -c "$out/$name.wav")"
  rate="$(soxi -r "$out/$name.wav")"
  bits="$(soxi -b "$out/$name.wav")"
  fileSize="$(stat -c %s "$out/$name.wav")"
  cat >"$out/$name.expect" <<EXPECT
pattern wav
sample $name.wav
format little hex ascii
field riff.chunkId = "RIFF"
field riff.format = "WAVE"
field format.chunkId = "fmt "
format little hex
field format.audioFormat = $(printf '0x%04X' "$tag")
format little dec
field riff.chunkSize = $((fileSize - 8))
field format.chunkSize = $formatSize
field format.channels = $channels
field format.sampleRate = $rate
field format.byteRate = $((rate * channels * bits / 8))
field format.blockAlign = $((channels * bits / 8))
field format.bitsPerSample = $bits
EXPECT
}

make_wav wav-pcm-16 pcm 1 16 -r 48000 -c 2 -b 16
make_wav wav-float-32 float 3 18 -r 44100 -c 1 -e floating-point -b 32
make_wav wav-extensible-24 extensible 0xFFFE 40 -r 48000 -c 2 -b 24
