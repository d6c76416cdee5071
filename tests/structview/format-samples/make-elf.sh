# ELF: binutils assemble and link a 32-bit x86 program (as --32, ld -m elf_i386), and gcc builds a
# 64-bit one. Every header value is what readelf -h reports; readelf names the type and machine in
# words, which are turned back into the generic ABI's numbers here.
out="$1"
cat >exit.s <<'ASM'
.globl _start
.text
_start:
  movl $1, %eax
  xorl %ebx, %ebx
  int $0x80
ASM
as --32 -o "$out/elf32-i386.o" exit.s
ld -m elf_i386 -o "$out/elf32-i386" "$out/elf32-i386.o"
printf 'int main(void) { return 0; }\n' >main.c
gcc -O2 -o "$out/elf64-x86-64" main.c
for sample in elf32-i386.o elf32-i386 elf64-x86-64; do
  case "$sample" in elf32*) pattern=elf32 ;; *) pattern=elf64 ;; esac
  readelf -h "$out/$sample" | python3 -c '
import re, sys
pattern, sample = sys.argv[1], sys.argv[2]
report = sys.stdin.read()
def value(label):
    return re.search(r"^\s*" + re.escape(label) + r":\s+(.*?)\s*$", report, re.M).group(1)
def first_number(label):
    return int(value(label).split()[0], 0)
ident = [int(byte, 16) for byte in value("Magic").split()]
assert len(ident) == 16
types = {"REL": 1, "EXEC": 2, "DYN": 3, "CORE": 4}
machines = {"Intel 80386": 3, "Advanced Micro Devices X86-64": 0x3E}
hex_bytes = lambda data: " ".join("%02X" % b for b in data)
lines = ["pattern " + pattern, "sample " + sample, "format little hex",
         "field ident.magic = " + hex_bytes(ident[0:4]),
         "field ident.reserved = " + hex_bytes(ident[9:16]),
         "format little dec",
         "field ident.fileClass = %d" % ident[4], "field ident.data = %d" % ident[5],
         "field ident.version = %d" % ident[6], "field ident.osAbi = %d" % ident[7],
         "field ident.abiVersion = %d" % ident[8],
         "field type = %d" % types[value("Type").split()[0]],
         "field machine = %d" % machines[value("Machine")],
         "field version = %d" % int(value("Version").split()[0], 16),
         "field programHeaderOffset = %d" % first_number("Start of program headers"),
         "field sectionHeaderOffset = %d" % first_number("Start of section headers"),
         "field headerSize = %d" % first_number("Size of this header"),
         "field programHeaderSize = %d" % first_number("Size of program headers"),
         "field programHeaderCount = %d" % first_number("Number of program headers"),
         "field sectionHeaderSize = %d" % first_number("Size of section headers"),
         "field sectionHeaderCount = %d" % first_number("Number of section headers"),
         "field sectionNameIndex = %d" % first_number("Section header string table index"),
         "format little hex",
         "field entry = 0x%0*X" % (8 if pattern == "elf32" else 16, int(value("Entry point address"), 16)),
         "field flags = 0x%08X" % int(value("Flags").split(",")[0], 16)]
print("\n".join(lines))
' "$pattern" "$sample" >"$out/$sample.expect"
done
