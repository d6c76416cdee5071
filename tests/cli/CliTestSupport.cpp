#include "CliTestSupport.h"

#include "cli/RunCli.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <iterator>
#include <random>

namespace tlm::test {

namespace {

class JsonReader {
public:
    explicit JsonReader(const std::string& source)
        : text(source)
    {
    }

    std::optional<JsonValue> ReadWhole()
    {
        std::optional<JsonValue> value = ReadValue();
        SkipBlanks();
        if (!value || at != text.size()) {
            return std::nullopt;
        }
        return value;
    }

private:
    void SkipBlanks()
    {
        while (at < text.size() && (text[at] == ' ' || text[at] == '\n' || text[at] == '\r' || text[at] == '\t')) {
            ++at;
        }
    }

    bool Take(char expected)
    {
        SkipBlanks();
        if (at < text.size() && text[at] == expected) {
            ++at;
            return true;
        }
        return false;
    }

    bool TakeWord(const std::string& word)
    {
        if (text.compare(at, word.size(), word) == 0) {
            at += word.size();
            return true;
        }
        return false;
    }

    static void AppendCodePoint(std::string& out, std::uint32_t point)
    {
        if (point < 0x80) {
            out.push_back(static_cast<char>(point));
        } else if (point < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (point >> 6)));
            out.push_back(static_cast<char>(0x80 | (point & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xE0 | (point >> 12)));
            out.push_back(static_cast<char>(0x80 | ((point >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (point & 0x3F)));
        }
    }

    std::optional<std::string> ReadString()
    {
        if (!Take('"')) {
            return std::nullopt;
        }
        std::string out;
        while (at < text.size()) {
            const char character = text[at++];
            if (character == '"') {
                return out;
            }
            if (static_cast<unsigned char>(character) < 0x20) {
                return std::nullopt;
            }
            if (character != '\\') {
                out.push_back(character);
                continue;
            }
            if (at >= text.size()) {
                return std::nullopt;
            }
            const char escape = text[at++];
            switch (escape) {
            case '"': out.push_back('"'); break;
            case '\\': out.push_back('\\'); break;
            case '/': out.push_back('/'); break;
            case 'n': out.push_back('\n'); break;
            case 'r': out.push_back('\r'); break;
            case 't': out.push_back('\t'); break;
            case 'b': out.push_back('\b'); break;
            case 'f': out.push_back('\f'); break;
            case 'u': {
                if (at + 4 > text.size()) {
                    return std::nullopt;
                }
                const std::uint32_t point = static_cast<std::uint32_t>(std::stoul(text.substr(at, 4), nullptr, 16));
                at += 4;
                AppendCodePoint(out, point);
                break;
            }
            default:
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

    std::optional<JsonValue> ReadValue()
    {
        SkipBlanks();
        if (at >= text.size()) {
            return std::nullopt;
        }
        JsonValue value;
        const char first = text[at];
        if (first == '{') {
            ++at;
            value.kind = JsonValue::Kind::Object;
            if (Take('}')) {
                return value;
            }
            do {
                std::optional<std::string> name = ReadString();
                if (!name || !Take(':')) {
                    return std::nullopt;
                }
                std::optional<JsonValue> member = ReadValue();
                if (!member) {
                    return std::nullopt;
                }
                value.members.emplace_back(std::move(*name), std::move(*member));
            } while (Take(','));
            return Take('}') ? std::optional<JsonValue>(std::move(value)) : std::nullopt;
        }
        if (first == '[') {
            ++at;
            value.kind = JsonValue::Kind::Array;
            if (Take(']')) {
                return value;
            }
            do {
                std::optional<JsonValue> item = ReadValue();
                if (!item) {
                    return std::nullopt;
                }
                value.items.push_back(std::move(*item));
            } while (Take(','));
            return Take(']') ? std::optional<JsonValue>(std::move(value)) : std::nullopt;
        }
        if (first == '"') {
            std::optional<std::string> string = ReadString();
            if (!string) {
                return std::nullopt;
            }
            value.kind = JsonValue::Kind::String;
            value.text = std::move(*string);
            return value;
        }
        if (first >= '0' && first <= '9') {
            value.kind = JsonValue::Kind::Number;
            while (at < text.size() && text[at] >= '0' && text[at] <= '9') {
                value.number = value.number * 10 + static_cast<std::uint64_t>(text[at++] - '0');
            }
            return value;
        }
        if (TakeWord("true") || TakeWord("false")) {
            value.kind = JsonValue::Kind::Bool;
            value.boolean = text[at - 1] == 'e' && text[at - 2] == 'u';
            return value;
        }
        if (TakeWord("null")) {
            return value;
        }
        return std::nullopt;
    }

    const std::string& text;
    std::size_t at = 0;
};

} // namespace

CliRun RunCliCaptured(const std::vector<std::string>& arguments, bool errorIsTerminal)
{
    CliRun run;
    CliStreams streams;
    streams.writeOut = [&run](std::string_view text) { run.out += text; };
    streams.writeError = [&run](std::string_view text) { run.err += text; };
    streams.errorIsTerminal = errorIsTerminal;
    run.exitCode = RunCli(arguments, streams);
    return run;
}

std::filesystem::path CliTemporaryFolder::WriteText(const std::string& name, const std::string& text) const
{
    return Write(name, std::vector<std::uint8_t>(text.begin(), text.end()));
}

std::vector<std::string> CliTemporaryFolder::FileNames() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(Path())) {
        names.push_back(PathText(entry.path().filename()));
    }
    return names;
}

std::string PathText(const std::filesystem::path& path)
{
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

std::vector<std::string> SplitLines(const std::string& text)
{
    std::vector<std::string> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        if (end == std::string::npos) {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

std::vector<std::uint8_t> RandomBytes(std::size_t count, std::uint32_t seed)
{
    std::mt19937 generator(seed);
    std::vector<std::uint8_t> bytes(count);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(generator());
    }
    return bytes;
}

const JsonValue& JsonValue::operator[](const std::string& name) const
{
    static const JsonValue none;
    for (const auto& member : members) {
        if (member.first == name) {
            return member.second;
        }
    }
    return none;
}

bool JsonValue::Has(const std::string& name) const
{
    for (const auto& member : members) {
        if (member.first == name) {
            return true;
        }
    }
    return false;
}

std::optional<JsonValue> ParseJson(const std::string& text)
{
    return JsonReader(text).ReadWhole();
}

} // namespace tlm::test
