# MIDI: abc2midi turns two tunes in ABC notation into MIDI files: one voice (a format 0 file with
# one track) and two voices (format 1: a first track for tempo and meter, then one per voice).
# mftext, from the same package, reports format, track count and division, which must also match
# what was asked. Track lengths are not reported, so the script reads the first MTrk chunk's length
# by the chunk layout and checks that the chunks fill the file exactly.
out="$1"

cat >one-voice.abc <<'ABC'
X:1
T:One voice
M:3/4
L:1/4
Q:1/4=100
K:G
GAB|d2c|B3|
ABC
cat >two-voices.abc <<'ABC'
X:1
T:Two voices
M:4/4
L:1/8
Q:1/4=120
K:C
V:1
CDEF GABc|
V:2
C,2E,2 G,2C2|
ABC

make_midi() {
  local name="$1" format="$2" tracks="$3"
  abc2midi "$name.abc" -o "$out/midi-$name.mid" -silent
  local header reportedFormat reportedTracks division firstLength
  header="$(mftext "$out/midi-$name.mid" | sed -n 's/^Header format=\([0-9]*\) ntrks=\([0-9]*\) division=\([0-9]*\)$/\1 \2 \3/p')"
  read -r reportedFormat reportedTracks division <<<"$header"
  [ "$reportedFormat $reportedTracks" = "$format $tracks" ] \
    || { echo "$name: mftext reports format $reportedFormat with $reportedTracks tracks" >&2; exit 1; }
  firstLength="$(python3 - "$out/midi-$name.mid" "$tracks" <<'PYTHON'
import struct, sys
data = open(sys.argv[1], "rb").read()
offset, lengths = 14, []
while offset < len(data):
    kind, length = struct.unpack(">4sI", data[offset:offset + 8])
    assert kind == b"MTrk", kind
    lengths.append(length)
    offset += 8 + length
assert offset == len(data) and len(lengths) == int(sys.argv[2]), (offset, len(data), lengths)
print(lengths[0])
PYTHON
)"
  cat >"$out/midi-$name.expect" <<EXPECT
pattern midi
sample midi-$name.mid
format big hex ascii
field header.chunkType = "MThd"
field firstTrack.chunkType = "MTrk"
format big dec
field header.length = 6
field header.format = $reportedFormat
field header.trackCount = $reportedTracks
field header.division = $division
field firstTrack.length = $firstLength
EXPECT
}

make_midi one-voice 0 1
make_midi two-voices 1 3
