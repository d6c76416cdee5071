# Windows PE: the MinGW-w64 cross compiler builds a small x64 console program, without a time
# stamp so that the file is the same on every run. One executable serves the three PE patterns:
# - pe-dos-header and pe-coff-header are checked against readpe -H (pev), which prints every field
#   of both headers but the DOS checksum and reserved words: those are read from the file with od;
# - pe32plus-optional-header is checked against objdump -p, which prints every field of it and the
#   sixteen data directories.
out="$1"
exe="$out/pe-mingw.exe"
cat >hello.c <<'C'
#include <stdio.h>
int main(void) { puts("Tolmo sample"); return 0; }
C
x86_64-w64-mingw32-gcc -O2 -s -Wl,--no-insert-timestamp -o "$exe" hello.c
readpe -H "$exe" >readpe.txt
x86_64-w64-mingw32-objdump -p "$exe" >objdump.txt
. "$(dirname "${BASH_SOURCE[0]}")/sample-bytes.sh"
hex_bytes "$exe" 0 64 >dos.txt
python3 - readpe.txt objdump.txt dos.txt "$out" <<'PY'
import os, re, sys
readpe, objdump = open(sys.argv[1]).read(), open(sys.argv[2]).read()
dos = open(sys.argv[3]).read().split()
out = sys.argv[4]
def section(text, title):
    start = text.index(title + "\n")
    rest = text[start + len(title) + 1:]
    end = re.search(r"^\S", rest, re.M)
    return rest[:end.start()] if end else rest
def pe_value(block, label):
    return int(re.search(r"^\s+" + re.escape(label) + r":\s+(\S+)", block, re.M).group(1), 0)
def objdump_value(label):
    return int(re.search(r"^" + re.escape(label) + r"\s+(\S+)", objdump, re.M).group(1), 16)
def raw(first, count):
    return " ".join(dos[first:first + count])
def write(name, lines):
    with open(os.path.join(out, name), "w") as handle:
        handle.write("\n".join(lines) + "\n")

header = section(readpe, "DOS Header")
lfanew = pe_value(header, "PE header offset")
write("pe-mingw-dos.expect", [
    "pattern pe-dos-header", "sample pe-mingw.exe", "format little hex ascii",
    'field magic = "%s"' % re.search(r"Magic number:\s+\S+ \((\w+)\)", header).group(1),
    "format little dec",
    "field lastPageBytes = %d" % pe_value(header, "Bytes in last page"),
    "field pageCount = %d" % pe_value(header, "Pages in file"),
    "field relocationCount = %d" % pe_value(header, "Relocations"),
    "field headerParagraphs = %d" % pe_value(header, "Size of header in paragraphs"),
    "field minExtraParagraphs = %d" % pe_value(header, "Minimum extra paragraphs"),
    "field maxExtraParagraphs = %d" % pe_value(header, "Maximum extra paragraphs"),
    "field initialSs = %d" % pe_value(header, "Initial (relative) SS value"),
    "field initialSp = %d" % pe_value(header, "Initial SP value"),
    "field initialIp = %d" % pe_value(header, "Initial IP value"),
    "field initialCs = %d" % pe_value(header, "Initial (relative) CS value"),
    "field relocationTableOffset = %d" % pe_value(header, "Address of relocation table"),
    "field overlayNumber = %d" % pe_value(header, "Overlay number"),
    "field oemId = %d" % pe_value(header, "OEM identifier"),
    "field oemInfo = %d" % pe_value(header, "OEM information"),
    "field peHeaderOffset = %d" % lfanew,
    "format little hex bytes",
    "field checksum = 0x%s%s" % (dos[19], dos[18]),
    "field reserved = " + raw(28, 8),
    "field reserved2 = " + raw(40, 16) + " ...",
])

coff = section(readpe, "COFF/File header")
optional = section(readpe, "Optional/Image header")
write("pe-mingw-coff.expect", [
    "pattern pe-coff-header", "sample pe-mingw.exe", "offset %d" % lfanew, "format little hex ascii",
    'field signature = "PE"',
    "field machine = 0x%04X" % pe_value(coff, "Machine"),
    "field characteristics = 0x%04X" % pe_value(coff, "Characteristics"),
    "field optionalHeaderMagic = 0x%04X" % pe_value(optional, "Magic number"),
    "format little dec",
    "field sectionCount = %d" % pe_value(coff, "Number of sections"),
    "field timeDateStamp = %d" % pe_value(coff, "Date/time stamp"),
    "field symbolTableOffset = %d" % pe_value(coff, "Symbol Table offset"),
    "field symbolCount = %d" % pe_value(coff, "Number of symbols"),
    "field optionalHeaderSize = %d" % pe_value(coff, "Size of optional header"),
    "field majorLinkerVersion = %d" % pe_value(optional, "Linker major version"),
    "field minorLinkerVersion = %d" % pe_value(optional, "Linker minor version"),
])

lines = ["pattern pe32plus-optional-header", "sample pe-mingw.exe", "offset %d" % (lfanew + 24), "format little dec"]
for name, label in (("majorLinkerVersion", "MajorLinkerVersion"), ("minorLinkerVersion", "MinorLinkerVersion"),
                    ("majorOperatingSystemVersion", "MajorOSystemVersion"), ("minorOperatingSystemVersion", "MinorOSystemVersion"),
                    ("majorImageVersion", "MajorImageVersion"), ("minorImageVersion", "MinorImageVersion"),
                    ("majorSubsystemVersion", "MajorSubsystemVersion"), ("minorSubsystemVersion", "MinorSubsystemVersion")):
    lines.append("field %s = %d" % (name, int(re.search(r"^" + label + r"\s+(\d+)", objdump, re.M).group(1))))
lines.append("format little hex")
for name, label, digits in (("magic", "Magic", 4), ("sizeOfCode", "SizeOfCode", 8),
                            ("sizeOfInitializedData", "SizeOfInitializedData", 8),
                            ("sizeOfUninitializedData", "SizeOfUninitializedData", 8),
                            ("addressOfEntryPoint", "AddressOfEntryPoint", 8), ("baseOfCode", "BaseOfCode", 8),
                            ("imageBase", "ImageBase", 16), ("sectionAlignment", "SectionAlignment", 8),
                            ("fileAlignment", "FileAlignment", 8), ("win32VersionValue", "Win32Version", 8),
                            ("sizeOfImage", "SizeOfImage", 8), ("sizeOfHeaders", "SizeOfHeaders", 8),
                            ("checkSum", "CheckSum", 8), ("subsystem", "Subsystem", 4),
                            ("dllCharacteristics", "DllCharacteristics", 4),
                            ("sizeOfStackReserve", "SizeOfStackReserve", 16), ("sizeOfStackCommit", "SizeOfStackCommit", 16),
                            ("sizeOfHeapReserve", "SizeOfHeapReserve", 16), ("sizeOfHeapCommit", "SizeOfHeapCommit", 16),
                            ("loaderFlags", "LoaderFlags", 8), ("numberOfRvaAndSizes", "NumberOfRvaAndSizes", 8)):
    lines.append("field %s = 0x%0*X" % (name, digits, objdump_value(label)))
directories = ("exportTable", "importTable", "resourceTable", "exceptionTable", "certificateTable",
               "baseRelocationTable", "debug", "architecture", "globalPtr", "tlsTable", "loadConfigTable",
               "boundImport", "importAddressTable", "delayImportDescriptor", "clrRuntimeHeader", "reserved")
for index, address, size in re.findall(r"^Entry ([0-9a-f]) ([0-9a-f]+) ([0-9a-f]+) ", objdump, re.M):
    name = directories[int(index, 16)]
    lines.append("field %s.virtualAddress = 0x%08X" % (name, int(address, 16)))
    lines.append("field %s.size = 0x%08X" % (name, int(size, 16)))
assert len(re.findall(r"^Entry ", objdump, re.M)) == 16
write("pe-mingw-optional.expect", lines)
PY
