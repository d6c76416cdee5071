#include "cli/PatchCommand.h"

#include "app/QueryText.h"
#include "cli/CliCommon.h"
#include "cli/CliOffset.h"
#include "cli/CliOutput.h"
#include "cli/CliTexts.h"
#include "cli/JsonWriter.h"
#include "cli/ProgressBar.h"
#include "document/EditableDocument.h"
#include "encoding/Utf8.h"

#include <array>

namespace tlm {

namespace {

constexpr std::string_view Command = "patch";

constexpr std::array<CliOptionRule, 4> Options{{
    {"--overwrite", 2, true},
    {"--insert", 2, true},
    {"--delete", 2, true},
    {"--json", 0, false},
}};

enum class PatchKind { Overwrite, Insert, Delete };

struct PatchEdit {
    PatchKind kind = PatchKind::Overwrite;
    std::string name;
    std::uint64_t offset = 0;
    std::vector<std::uint8_t> bytes; // overwrite and insert
    std::uint64_t count = 0;         // delete
};

std::optional<PatchEdit> ReadEdit(CliStreams& streams, const CliOption& option)
{
    PatchEdit edit;
    edit.name = option.name;
    edit.kind = option.name == "--insert" ? PatchKind::Insert
        : option.name == "--delete"       ? PatchKind::Delete
                                          : PatchKind::Overwrite;
    const std::optional<std::uint64_t> offset = ParseCliNumber(option.values[0]);
    if (!offset) {
        FailCli(streams, Command, option.name + " offset \"" + option.values[0] + "\" is not a number");
        return std::nullopt;
    }
    edit.offset = *offset;
    if (edit.kind == PatchKind::Delete) {
        const std::optional<std::uint64_t> count = ParseCliNumber(option.values[1]);
        if (!count || *count == 0) {
            FailCli(streams, Command, option.name + " count \"" + option.values[1] + "\" is not a number above 0");
            return std::nullopt;
        }
        edit.count = *count;
        return edit;
    }
    const std::optional<std::u16string> wide = Utf8ToUtf16(option.values[1]);
    std::optional<std::vector<std::uint8_t>> bytes = wide ? ParseHexQuery(TrimQuery(*wide)) : std::nullopt;
    if (!bytes) {
        FailCli(streams, Command, option.name + " \"" + option.values[1] + "\": " + std::string(SearchInvalidHexMessage));
        return std::nullopt;
    }
    edit.bytes = std::move(*bytes);
    return edit;
}

std::string EditText(const PatchEdit& edit)
{
    return edit.name + " " + std::to_string(edit.offset);
}

// Puts one edit on the overlay. False, with the message written, when it does not fit the file as the
// edits before it left it.
bool ApplyEdit(CliStreams& streams, EditableDocument& document, const PatchEdit& edit)
{
    const std::uint64_t size = document.GetEditedSize();
    const std::string sizeText = " (the file then holds " + std::to_string(size) + " bytes)";
    switch (edit.kind) {
    case PatchKind::Overwrite:
        if (edit.offset > size || edit.bytes.size() > size - edit.offset) {
            FailCli(streams, Command, EditText(edit) + " reaches past the end of the file" + sizeText);
            return false;
        }
        for (std::size_t index = 0; index < edit.bytes.size(); ++index) {
            if (!document.OverwriteByte(edit.offset + index, edit.bytes[index])) {
                FailCli(streams, Command, EditText(edit) + ": the byte at " + std::to_string(edit.offset + index) + " could not be changed");
                return false;
            }
        }
        return true;
    case PatchKind::Insert:
        if (edit.offset > size) {
            FailCli(streams, Command, EditText(edit) + " is past the end of the file" + sizeText);
            return false;
        }
        for (std::size_t index = 0; index < edit.bytes.size(); ++index) {
            if (!document.InsertByte(edit.offset + index, edit.bytes[index])) {
                FailCli(streams, Command, EditText(edit) + ": a byte could not be inserted at " + std::to_string(edit.offset + index));
                return false;
            }
        }
        return true;
    case PatchKind::Delete:
        if (edit.offset > size || edit.count > size - edit.offset) {
            FailCli(streams, Command, EditText(edit) + " " + std::to_string(edit.count) + " reaches past the end of the file" + sizeText);
            return false;
        }
        for (std::uint64_t done = 0; done < edit.count; ++done) {
            if (!document.DeleteByte(edit.offset)) {
                FailCli(streams, Command, EditText(edit) + ": the byte at " + std::to_string(edit.offset) + " could not be deleted");
                return false;
            }
        }
        return true;
    }
    return false;
}

} // namespace

int RunPatchCommand(std::span<const std::string> words, CliStreams& streams)
{
    const std::optional<CliArguments> arguments = ParseCommandWords(streams, Command, words, Options);
    if (!arguments) {
        return CliBadInput;
    }
    std::vector<PatchEdit> edits;
    for (const CliOption& option : arguments->options) {
        if (option.name == "--json") {
            continue;
        }
        std::optional<PatchEdit> edit = ReadEdit(streams, option);
        if (!edit) {
            return CliBadInput;
        }
        edits.push_back(std::move(*edit));
    }
    if (edits.empty()) {
        return FailCli(streams, Command, "no edit given (--overwrite N HEX, --insert N HEX or --delete N COUNT)");
    }
    const std::string& path = arguments->positionals.front();
    const std::optional<std::u16string> corePath = CorePath(path);
    EditableDocument document;
    if (!corePath || corePath->empty() || !document.file.Open(*corePath)) {
        return FailCli(streams, Command, std::string(OpenFailedMessage) + " (" + path + ")");
    }
    for (const PatchEdit& edit : edits) {
        if (!ApplyEdit(streams, document, edit)) {
            return CliBadInput;
        }
    }
    const bool viaTemporaryFile = document.SavesViaTemporaryFile();
    const std::uint64_t editedSize = document.GetEditedSize();
    ProgressBar bar(streams, viaTemporaryFile ? editedSize : 0);
    if (!document.Save([&bar](std::uint64_t done, std::uint64_t) { bar.Update(done); })) {
        bar.Finish();
        std::string message(SaveFailedMessage);
        if (!document.LastError().empty()) {
            message += ' ';
            message += ToUtf8(document.LastError());
        }
        return FailCli(streams, Command, message);
    }
    bar.Finish();
    if (arguments->Has("--json")) {
        JsonWriter json;
        json.BeginObject();
        json.Key("edits");
        json.Number(edits.size());
        json.Key("size");
        json.Number(editedSize);
        json.Key("viaTemporaryFile");
        json.Bool(viaTemporaryFile);
        json.Key("saved");
        json.Bool(true);
        json.EndObject();
        CliOutput output(streams);
        output.Append(json.TakeText() + "\n");
    }
    return CliSuccess;
}

} // namespace tlm
