#include "cli/JsonWriter.h"

#include <utility>

namespace tlm {

namespace {

void AppendEscaped(std::string& text, std::string_view utf8)
{
    constexpr char Digits[] = "0123456789abcdef";
    text.push_back('"');
    for (const char character : utf8) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\') {
            text.push_back('\\');
            text.push_back(character);
        } else if (character == '\n') {
            text += "\\n";
        } else if (character == '\r') {
            text += "\\r";
        } else if (character == '\t') {
            text += "\\t";
        } else if (byte < 0x20) {
            text += "\\u00";
            text.push_back(Digits[byte >> 4]);
            text.push_back(Digits[byte & 0xF]);
        } else {
            text.push_back(character);
        }
    }
    text.push_back('"');
}

} // namespace

void JsonWriter::BeforeValue()
{
    if (afterKey) {
        afterKey = false;
        return;
    }
    if (!firstInLevel.empty()) {
        if (!firstInLevel.back()) {
            text.push_back(',');
        }
        firstInLevel.back() = false;
    }
}

void JsonWriter::BeginObject()
{
    BeforeValue();
    text.push_back('{');
    firstInLevel.push_back(true);
}

void JsonWriter::EndObject()
{
    text.push_back('}');
    firstInLevel.pop_back();
}

void JsonWriter::BeginArray()
{
    BeforeValue();
    text.push_back('[');
    firstInLevel.push_back(true);
}

void JsonWriter::EndArray()
{
    text.push_back(']');
    firstInLevel.pop_back();
}

void JsonWriter::Key(std::string_view name)
{
    BeforeValue();
    AppendEscaped(text, name);
    text.push_back(':');
    afterKey = true;
}

void JsonWriter::String(std::string_view utf8)
{
    BeforeValue();
    AppendEscaped(text, utf8);
}

void JsonWriter::Number(std::uint64_t value)
{
    BeforeValue();
    text += std::to_string(value);
}

void JsonWriter::Bool(bool value)
{
    BeforeValue();
    text += value ? "true" : "false";
}

std::string JsonWriter::TakeText()
{
    return std::exchange(text, {});
}

} // namespace tlm
