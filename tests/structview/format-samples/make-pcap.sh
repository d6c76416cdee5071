# pcap and pcapng: text2pcap turns a hex dump of two ARP packets with their timestamps into capture
# files; capinfos reports the link type, snap length, timestamps and packet sizes. The pcapng
# section's total length is not reported by any tool: it is read with od and must match the copy
# that closes the block, as the format demands. text2pcap writes in the byte order of the machine it
# runs on, little-endian on x86.
out="$1"
cat >arp.txt <<'DUMP'
2023-11-14 22:13:20.250000
000000 ff ff ff ff ff ff 02 00 00 00 00 01 08 06 00 01
000010 08 00 06 04 00 01 02 00 00 00 00 01 c0 a8 00 01
000020 00 00 00 00 00 00 c0 a8 00 02
2023-11-14 22:13:21.500000
000000 02 00 00 00 00 01 02 00 00 00 00 02 08 06 00 01
000010 08 00 06 04 00 02 02 00 00 00 00 02 c0 a8 00 02
000020 02 00 00 00 00 01 c0 a8 00 01
DUMP
export TZ=UTC
text2pcap -q -F pcap -t '%Y-%m-%d %H:%M:%S.%f' -l 1 -m 65535 arp.txt "$out/pcap-arp.pcap"
text2pcap -q -F pcapng -t '%Y-%m-%d %H:%M:%S.%f' -l 1 arp.txt "$out/pcapng-arp.pcapng"

info="$(capinfos "$out/pcap-arp.pcap")"
grep -q 'microseconds' <<<"$info" # so the magic is the microsecond one
link_type="$(sed -n 's/.*Encapsulation = .*(\([0-9]*\) - .*/\1/p' <<<"$info")"
snap_length="$(sed -n 's/^Packet size limit: *file hdr: \([0-9]*\) bytes/\1/p' <<<"$info")"
packet_count="$(capinfos -M -c "$out/pcap-arp.pcap" | sed -n 's/^Number of packets: *//p')"
[ "$packet_count" = 2 ]
# Both packets have the same length, so the average is each one's length.
packet_size="$(capinfos -M -z "$out/pcap-arp.pcap" | sed -n 's/^Average packet size: *\([0-9]*\)\.00 bytes/\1/p')"
read -r first_seconds first_fraction <<<"$(capinfos -M -S -a "$out/pcap-arp.pcap" | sed -n 's/^First packet time: *\([0-9]*\)\.\([0-9]*\)/\1 \2/p')"
read -r last_seconds last_fraction <<<"$(capinfos -M -S -e "$out/pcap-arp.pcap" | sed -n 's/^Last packet time: *\([0-9]*\)\.\([0-9]*\)/\1 \2/p')"
cat >"$out/pcap-arp.expect" <<EXPECT
pattern pcap
sample pcap-arp.pcap
format little hex
field file.magic = 0xA1B2C3D4
format little dec
field file.versionMajor = 2
field file.versionMinor = 4
field file.timeZoneOffset = 0
field file.timestampAccuracy = 0
field file.snapLength = $snap_length
field file.linkType = $link_type
field firstRecord.timestampSeconds = $first_seconds
field firstRecord.timestampFraction = $((10#$first_fraction))
field firstRecord.includedLength = $packet_size
field firstRecord.originalLength = $packet_size
EXPECT
cat >"$out/pcap-record-arp.expect" <<EXPECT
pattern pcap-record
sample pcap-arp.pcap
offset $((24 + 16 + packet_size))
format little dec
field timestampSeconds = $last_seconds
field timestampFraction = $((10#$last_fraction))
field includedLength = $packet_size
field originalLength = $packet_size
format little hex
field packetData = 02 00 00 00 00 01 02 00 00 00 00 02 08 06 00 01 ...
EXPECT

ng="$out/pcapng-arp.pcapng"
capinfos "$ng" | grep -q 'pcapng'
block_length="$(od -An -tu4 --endian=little -j4 -N4 "$ng" | tr -d ' ')"
closing_copy="$(od -An -tu4 --endian=little -j$((block_length - 4)) -N4 "$ng" | tr -d ' ')"
[ "$block_length" = "$closing_copy" ]
cat >"$out/pcapng-section-header-arp.expect" <<EXPECT
pattern pcapng-section-header
sample pcapng-arp.pcapng
format little hex
field blockType = 0x0A0D0D0A
field byteOrderMagic = 0x1A2B3C4D
field sectionLength = 0xFFFFFFFFFFFFFFFF
format little dec
field blockTotalLength = $block_length
field versionMajor = 1
field versionMinor = 0
format big hex
field byteOrderMagic = 0x4D3C2B1A
EXPECT
