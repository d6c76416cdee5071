# Reading a sample's own bytes, for the fields that no tool reports. Sourced by the make-*.sh scripts.

# hex_bytes FILE OFFSET COUNT: the bytes as the struct view writes a byte array, "0D 0A 1A".
hex_bytes() { od -An -tx1 -v -j "$2" -N "$3" "$1" | tr -s ' \n' ' ' | sed 's/^ //; s/ $//' | tr a-f A-F; }

# u8 FILE OFFSET and le32 FILE OFFSET: one unsigned number, in decimal.
u8() { od -An -tu1 -j "$2" -N1 "$1" | tr -d ' '; }
le32() { od -An -tu4 --endian=little -j "$2" -N4 "$1" | tr -d ' '; }
