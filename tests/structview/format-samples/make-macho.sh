# Mach-O: clang compiles a C function into 64-bit Mach-O objects for x86-64 and ARM64 macOS. The
# header values are what llvm-readobj --file-headers reports in numbers; the first load command's
# type and size are what llvm-objdump --macho --private-headers reports, its type name turned back
# into the number that Mach-O gives it.
out="$1"
printf 'int answer(void) { return 42; }\n' >answer.c
for arch in x86_64 arm64; do
  sample="macho64-$arch.o"
  clang -target "$arch-apple-macos11" -c -o "$out/$sample" answer.c
  llvm-readobj --file-headers "$out/$sample" >header.txt
  llvm-objdump --macho --private-headers "$out/$sample" >commands.txt
  python3 - "$sample" header.txt commands.txt >"$out/macho64-$arch.expect" <<'PY'
import re, sys
sample, header, commands = sys.argv[1], open(sys.argv[2]).read(), open(sys.argv[3]).read()
def number(label):
    return int(re.search(r"^\s*" + label + r":.*?\((0x[0-9A-Fa-f]+)\)", header, re.M).group(1), 16)
def plain(label):
    return int(re.search(r"^\s*" + label + r":\s*(\S+)", header, re.M).group(1), 0)
first = commands.split("Load command 0", 1)[1]
command_name = re.search(r"^\s*cmd (\S+)", first, re.M).group(1)
command_size = int(re.search(r"^\s*cmdsize (\d+)", first, re.M).group(1))
command_ids = {"LC_SEGMENT_64": 0x19, "LC_SYMTAB": 0x2, "LC_BUILD_VERSION": 0x32}
lines = ["pattern macho64", "sample " + sample, "format little hex",
         "field header.magic = 0x%08X" % number("Magic"),
         "field header.cpuType = 0x%08X" % number("CpuType"),
         "field header.cpuSubtype = 0x%08X" % number("CpuSubType"),
         "field header.fileType = 0x%08X" % number("FileType"),
         "field header.flags = 0x%08X" % int(re.search(r"^\s*Flags \[ \((0x[0-9A-Fa-f]+)\)", header, re.M).group(1), 16),
         "field header.reserved = 0x%08X" % plain("Reserved"),
         "field firstCommand.cmd = 0x%08X" % command_ids[command_name],
         "format little dec",
         "field header.loadCommandCount = %d" % plain("NumOfLoadCommands"),
         "field header.loadCommandsSize = %d" % plain("SizeOfLoadCommands"),
         "field firstCommand.cmdSize = %d" % command_size]
print("\n".join(lines))
PY
done
