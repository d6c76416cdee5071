#pragma once

#include "TemporaryFolder.h"
#include "cli/CliStreams.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tlm::test {

// What one run of the program gave.
struct CliRun {
    int exitCode = -1;
    std::string out;
    std::string err;
};

// Runs the commands in this process with both streams captured.
CliRun RunCliCaptured(const std::vector<std::string>& arguments, bool errorIsTerminal = false);

// A folder of its own for one test, removed with everything in it afterwards.
class CliTemporaryFolder : public TemporaryFolder {
public:
    std::filesystem::path WriteText(const std::string& name, const std::string& text) const;
    // Names of the files in the folder.
    std::vector<std::string> FileNames() const;
};

std::string PathText(const std::filesystem::path& path);
std::vector<std::string> SplitLines(const std::string& text);
std::vector<std::uint8_t> RandomBytes(std::size_t count, std::uint32_t seed);

// A small JSON reader, enough to read the program's output back.
struct JsonValue {
    enum class Kind { Null, Bool, Number, String, Array, Object } kind = Kind::Null;
    bool boolean = false;
    std::uint64_t number = 0;
    std::string text;
    std::vector<JsonValue> items;
    std::vector<std::pair<std::string, JsonValue>> members;

    // The member of that name; a null value when there is none.
    const JsonValue& operator[](const std::string& name) const;
    bool Has(const std::string& name) const;
};

// The one JSON value in `text`, with only blanks around it; nothing when it is not valid JSON.
std::optional<JsonValue> ParseJson(const std::string& text);

} // namespace tlm::test
