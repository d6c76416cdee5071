#include "cli/CliCommon.h"

#include "cli/CliEncoding.h"
#include "cli/CliOffset.h"
#include "cli/CliTexts.h"
#include "document/FileViewModel.h"
#include "encoding/Utf8.h"

namespace tlm {

int FailCli(CliStreams& streams, std::string_view command, std::string_view message)
{
    if (streams.writeError) {
        std::string line = "tolmo-cli";
        if (!command.empty()) {
            line += ' ';
            line += command;
        }
        line += ": ";
        line += message;
        line += '\n';
        streams.writeError(line);
    }
    return CliBadInput;
}

std::optional<CliArguments> ParseCommandWords(CliStreams& streams, std::string_view command,
    std::span<const std::string> words, std::span<const CliOptionRule> rules)
{
    std::string error;
    std::optional<CliArguments> arguments = ParseCliArguments(words, rules, error);
    if (!arguments) {
        FailCli(streams, command, error);
        return std::nullopt;
    }
    if (arguments->positionals.empty()) {
        FailCli(streams, command, "FILE is missing");
        return std::nullopt;
    }
    if (arguments->positionals.size() > 1) {
        FailCli(streams, command, "unexpected argument \"" + arguments->positionals[1] + "\"");
        return std::nullopt;
    }
    return arguments;
}

bool ReadNumberOption(CliStreams& streams, std::string_view command, const CliArguments& arguments,
    std::string_view name, std::uint64_t fallback, std::uint64_t& value)
{
    const std::optional<std::string> text = arguments.Value(name);
    if (!text) {
        value = fallback;
        return true;
    }
    const std::optional<std::uint64_t> number = ParseCliNumber(*text);
    if (!number) {
        FailCli(streams, command, std::string(name) + " \"" + *text + "\" is not a number (decimal, or hexadecimal after 0x)");
        return false;
    }
    value = *number;
    return true;
}

bool ReadEncodingOption(CliStreams& streams, std::string_view command, const CliArguments& arguments,
    TextEncoding& encoding)
{
    const std::optional<std::string> name = arguments.Value("--encoding");
    if (!name) {
        encoding = TextEncoding::Ascii;
        return true;
    }
    const std::optional<TextEncoding> found = ParseCliEncoding(*name);
    if (!found) {
        FailCli(streams, command, "unknown encoding \"" + *name + "\" (see tolmo-cli --help)");
        return false;
    }
    encoding = *found;
    return true;
}

std::optional<std::u16string> CorePath(std::string_view utf8)
{
    return Utf8ToUtf16(utf8);
}

bool OpenCliFile(CliStreams& streams, std::string_view command, const std::string& path, FileViewModel& file)
{
    const std::optional<std::u16string> corePath = CorePath(path);
    if (!corePath || corePath->empty() || !file.Open(*corePath)) {
        FailCli(streams, command, std::string(OpenFailedMessage) + " (" + path + ")");
        return false;
    }
    return true;
}

void AppendUtf8(std::string& out, std::u16string_view text)
{
    for (std::size_t index = 0; index < text.size(); ++index) {
        std::uint32_t unit = text[index];
        if (unit < 0x80) {
            out.push_back(static_cast<char>(unit));
            continue;
        }
        if (unit >= 0xD800 && unit <= 0xDBFF && index + 1 < text.size() && text[index + 1] >= 0xDC00
            && text[index + 1] <= 0xDFFF) {
            unit = 0x10000 + ((unit - 0xD800) << 10) + (text[index + 1] - 0xDC00u);
            ++index;
        } else if (unit >= 0xD800 && unit <= 0xDFFF) {
            unit = 0xFFFD;
        }
        if (unit < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (unit >> 6)));
        } else if (unit < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (unit >> 12)));
            out.push_back(static_cast<char>(0x80 | ((unit >> 6) & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (unit >> 18)));
            out.push_back(static_cast<char>(0x80 | ((unit >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((unit >> 6) & 0x3F)));
        }
        out.push_back(static_cast<char>(0x80 | (unit & 0x3F)));
    }
}

std::string ToUtf8(std::u16string_view text)
{
    std::string out;
    AppendUtf8(out, text);
    return out;
}

std::string HexBytesText(std::span<const std::uint8_t> bytes)
{
    constexpr char Digits[] = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        if (!text.empty()) {
            text.push_back(' ');
        }
        text.push_back(Digits[byte >> 4]);
        text.push_back(Digits[byte & 0xF]);
    }
    return text;
}

} // namespace tlm
