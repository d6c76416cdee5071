# tar: GNU tar writes a POSIX ustar archive of one file with a set time, owner and group. The
# header's numbers are octal text filling the field but for its ending NUL; their values are what
# tar -tv reports (mode, ids, names, size, time). The checksum is not reported: it is computed here
# from the header's bytes, the checksum field counted as eight blanks. tar -tv says nothing of the
# device numbers of a plain file; they are checked against the bytes as dd reads them.
out="$1"
export TZ=UTC
printf 'hello, tar\n' >greeting.txt
chmod 640 greeting.txt
tar --format=ustar --mtime=@1700000000 --owner=tolmo:1234 --group=staff:50 -cf "$out/tar-ustar.tar" greeting.txt
read -r permissions ids size day clock name <<<"$(tar --numeric-owner --full-time -tvf "$out/tar-ustar.tar")"
read -r _ names _ <<<"$(tar --full-time -tvf "$out/tar-ustar.tar")"
[ "$permissions" = "-rw-r-----" ] && [ "$name" = greeting.txt ]
mode=640 # the permissions above as octal digits
mtime="$(date -d "$day $clock" +%s)"
checksum="$(python3 -c 'import sys; h = bytearray(open(sys.argv[1], "rb").read(512)); h[148:156] = b" " * 8; print("%06o" % sum(h))' "$out/tar-ustar.tar")"
device_major="$(dd if="$out/tar-ustar.tar" bs=1 skip=329 count=8 status=none | tr -d '\0')"
device_minor="$(dd if="$out/tar-ustar.tar" bs=1 skip=337 count=8 status=none | tr -d '\0')"
cat >"$out/tar-ustar.expect" <<EXPECT
pattern tar
sample tar-ustar.tar
format little hex ascii
field name = "$name"
field mode = "$(printf '%07d' "$mode")"
field uid = "$(printf '%07o' "${ids%/*}")"
field gid = "$(printf '%07o' "${ids#*/}")"
field size = "$(printf '%011o' "$size")"
field mtime = "$(printf '%011o' "$mtime")"
field checksum = "$checksum"
field linkName = ""
field magic = "ustar"
field version = "00"
field userName = "${names%/*}"
field groupName = "${names#*/}"
field deviceMajor = "$device_major"
field deviceMinor = "$device_minor"
field prefix = ""
format little hex
field typeFlag = 0x30
field unused = 00 00 00 00 00 00 00 00 00 00 00 00
EXPECT
