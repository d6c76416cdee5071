#pragma once

#include "cli/CliArguments.h"
#include "cli/CliStreams.h"
#include "encoding/TextEncoding.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tlm {

class FileViewModel;

// Writes "tolmo-cli COMMAND: MESSAGE" as one line on standard error and gives the exit code for bad
// usage or input.
int FailCli(CliStreams& streams, std::string_view command, std::string_view message);

// The command's words parsed against its options, with exactly one plain argument, the file. On
// failure the message is written and nothing is returned.
std::optional<CliArguments> ParseCommandWords(CliStreams& streams, std::string_view command,
    std::span<const std::string> words, std::span<const CliOptionRule> rules);

// Reads a numeric option; `fallback` when it is absent. False, with the message written, when present
// but not a number.
bool ReadNumberOption(CliStreams& streams, std::string_view command, const CliArguments& arguments,
    std::string_view name, std::uint64_t fallback, std::uint64_t& value);

// Reads --encoding; ASCII when it is absent.
bool ReadEncodingOption(CliStreams& streams, std::string_view command, const CliArguments& arguments,
    TextEncoding& encoding);

// A UTF-8 path as the core's UTF-16 path; nothing when the bytes are not UTF-8.
std::optional<std::u16string> CorePath(std::string_view utf8);

// Opens FILE for reading; false, with the message written, when it cannot be opened.
bool OpenCliFile(CliStreams& streams, std::string_view command, const std::string& path, FileViewModel& file);

// Appends UTF-16 text as UTF-8; a lone surrogate becomes U+FFFD.
void AppendUtf8(std::string& out, std::u16string_view text);
std::string ToUtf8(std::u16string_view text);

// Upper-case hexadecimal bytes with one blank between them: "4A 4B".
std::string HexBytesText(std::span<const std::uint8_t> bytes);

} // namespace tlm
