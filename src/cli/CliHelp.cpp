#include "cli/CliHelp.h"

namespace tlm {

namespace {

constexpr std::string_view Overview =
    "Usage: tolmo-cli COMMAND FILE [OPTIONS]\n"
    "\n"
    "Tolmo's reading, searching, inspecting and saving, from the command line.\n"
    "\n"
    "Commands:\n"
    "  dump     the rows as the hex view shows them\n"
    "  find     find text or bytes, as the find dialog does\n"
    "  inspect  the twelve rows of the data inspector at an offset\n"
    "  struct   the struct view's rows for a .tlpat pattern at an offset\n"
    "  patch    overwrite, insert and delete bytes, then save\n"
    "\n"
    "Every command takes --json for a machine-readable form and --help for its own help.\n"
    "Offsets and counts are decimal, or hexadecimal after 0x.\n"
    "Encodings (any spelling of these names or aliases; the default is ASCII):\n"
    "  ASCII, UTF-8, UTF-16 LE, UTF-16 BE, Shift_JIS (cp932, sjis, windows-31j),\n"
    "  Windows-949 (cp949), EUC-KR, Big5, GBK (cp936), TIS-620 (cp874, iso-8859-11),\n"
    "  Windows-1258 (cp1258), ISCII (Devanagari) (iscii, iscii91-devanagari)\n"
    "\n"
    "Exit codes: 0 success, 1 not found, 2 bad usage or input.\n";

constexpr std::string_view DumpHelp =
    "Usage: tolmo-cli dump FILE [--offset N] [--length N] [--encoding NAME] [--json]\n"
    "\n"
    "Prints the rows of sixteen bytes as the hex view shows them: offset, hexadecimal cells and the\n"
    "text column in the chosen encoding, as UTF-8. Rows start at multiples of 16: --offset is rounded\n"
    "down to its row, and the last row shown is the one that holds the last byte of --length.\n"
    "--json gives {\"encoding\", \"rows\": [{\"offset\", \"offsetText\", \"hex\": [...], \"text\": [...]}]}.\n";

constexpr std::string_view FindHelp =
    "Usage: tolmo-cli find FILE (--text TEXT [--encoding NAME] | --hex \"4A 4B\")\n"
    "                      [--from N] [--backward] [--all] [--count] [--json]\n"
    "\n"
    "Finds the text, converted exactly into the encoding, or the hexadecimal bytes. Case counts.\n"
    "--from N     start at N, inclusive (default: the start, or the end with --backward)\n"
    "--backward   the last match that begins at or before the start\n"
    "--all        every match from the start on, overlapping ones included, one offset a line\n"
    "--count      only the number of matches\n"
    "Offsets are printed in decimal. Exit code 1 when nothing is found.\n"
    "--json gives {\"pattern\", \"from\", \"direction\", \"hits\": [...], \"count\"}.\n";

constexpr std::string_view InspectHelp =
    "Usage: tolmo-cli inspect FILE --offset N [--encoding NAME] [--json]\n"
    "\n"
    "Prints the data inspector's twelve rows for the bytes at N: binary, unsigned integers of 8 to\n"
    "64 bits in both byte orders, the character in UTF-8, UTF-16 LE and BE, and in the encoding.\n"
    "--json gives {\"offset\", \"encoding\", \"rows\": [{\"key\", \"label\", \"value\"}]}.\n";

constexpr std::string_view StructHelp =
    "Usage: tolmo-cli struct FILE --pattern FILE.tlpat [--offset N] [--dec] [--big-endian] [--ascii] [--json]\n"
    "\n"
    "Prints the struct view's rows (name, offset, size, value) for the pattern's entry struct at N.\n"
    "--dec          numbers in decimal instead of hexadecimal\n"
    "--big-endian   numbers read big-endian\n"
    "--ascii        arrays of one-byte characters as text\n"
    "A pattern that does not load gives the loader's error with its line and column, exit code 2.\n"
    "--json gives {\"offset\", \"rows\": [{\"name\", \"offset\", \"type\", \"value\", \"size\"}]}.\n";

constexpr std::string_view PatchHelp =
    "Usage: tolmo-cli patch FILE (--overwrite N HEX | --insert N HEX | --delete N COUNT)... [--json]\n"
    "\n"
    "Applies the edits in the order given, each at offsets as the edits before it left the file,\n"
    "then saves once: in place when no byte moves, otherwise through a temporary file beside it.\n"
    "Nothing is written when any edit is refused.\n"
    "--json gives {\"edits\", \"size\", \"viaTemporaryFile\", \"saved\"}.\n";

} // namespace

std::string_view CliOverviewHelp()
{
    return Overview;
}

std::optional<std::string_view> CliCommandHelp(std::string_view command)
{
    if (command == "dump") {
        return DumpHelp;
    }
    if (command == "find") {
        return FindHelp;
    }
    if (command == "inspect") {
        return InspectHelp;
    }
    if (command == "struct") {
        return StructHelp;
    }
    if (command == "patch") {
        return PatchHelp;
    }
    return std::nullopt;
}

} // namespace tlm
