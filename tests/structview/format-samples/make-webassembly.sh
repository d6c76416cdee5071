# WebAssembly: wat2wasm (wabt) assembles a small module with one function; the first section's id,
# size and count are what wasm-objdump -h reports of it. The module header is the format's fixed
# magic and version 1, which wasm-objdump also reports ("file format wasm 0x1").
out="$1"
cat >module.wat <<'WAT'
(module
  (func $add (export "add") (param i32 i32) (result i32)
    local.get 0
    local.get 1
    i32.add))
WAT
wat2wasm module.wat -o "$out/webassembly-wat2wasm.wasm"
wasm-objdump -h "$out/webassembly-wat2wasm.wasm" >report.txt
python3 - report.txt >"$out/webassembly-wat2wasm.expect" <<'PY'
import re, sys
report = open(sys.argv[1]).read()
version = int(re.search(r"file format wasm (0x[0-9a-fA-F]+)", report).group(1), 16)
name, start, size, count = re.search(r"^\s*(\w+) start=(0x[0-9a-f]+) end=0x[0-9a-f]+ \(size=(0x[0-9a-f]+)\) count: (\d+)",
                                     report, re.M).groups()
start, size, count = int(start, 16), int(size, 16), int(count)
# One byte of id and one of size before the contents: the size fits one LEB128 byte.
assert start == 10 and size < 0x80 and count < 0x80, (start, size, count)
ids = {"Custom": 0, "Type": 1, "Import": 2, "Function": 3, "Table": 4, "Memory": 5, "Global": 6, "Export": 7,
       "Start": 8, "Elem": 9, "Code": 10, "Data": 11, "DataCount": 12}
print("pattern webassembly")
print("sample webassembly-wat2wasm.wasm")
print("format little hex bytes")
print("field magic = 00 61 73 6D")
print("format little dec")
print("field version = %d" % version)
print("field sectionId = %d" % ids[name])
print("field sectionSize = %d" % size)
print("field sectionEntryCount = %d" % count)
PY
