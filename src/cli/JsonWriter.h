#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tlm {

// Writes one JSON value into a growing text, commas and escapes included. The caller may take the
// text away in pieces (TakeText) while a long array is still open, so output streams.
class JsonWriter {
public:
    void BeginObject();
    void EndObject();
    void BeginArray();
    void EndArray();
    void Key(std::string_view name);
    void String(std::string_view utf8);
    void Number(std::uint64_t value);
    void Bool(bool value);

    std::size_t Size() const { return text.size(); }
    // What was written since the last call.
    std::string TakeText();

private:
    void BeforeValue();

    std::string text;
    std::vector<bool> firstInLevel;
    bool afterKey = false;
};

} // namespace tlm
