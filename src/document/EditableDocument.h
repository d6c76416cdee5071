#pragma once

#include "document/DeletedOffsets.h"
#include "document/FileViewModel.h"
#include "document/IEditableDocument.h"
#include "document/InsertedRuns.h"
#include "document/ProgressCallback.h"

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace tlm {

// Where a view offset lands: a file byte, or a byte of the run inserted before file offset `offset`.
struct ResolvedPosition {
    bool inRun = false;
    std::uint64_t offset = 0;
    std::uint64_t indexInRun = 0;
    bool valid = false;
};

// A file shown with pending edits. The file itself is never changed until Save, and never copied:
// edits live in three containers keyed by original file offsets, and every access translates the
// offset the user sees (the view offset) into a file byte or an inserted byte.
class EditableDocument final : public IEditableDocument {
public:
    EditableDocument() = default;
    EditableDocument(const EditableDocument&) = delete;
    EditableDocument& operator=(const EditableDocument&) = delete;

    bool IsOpen() const override;
    // The edited length, so that every viewer sees what the user sees.
    std::uint64_t GetSize() const override;
    std::u16string GetPath() const override;
    ByteBlock Read(std::uint64_t offset, std::uint64_t count) const override;

    bool OverwriteByte(std::uint64_t offset, std::uint8_t value) override;
    bool InsertByte(std::uint64_t offset, std::uint8_t value) override;
    bool DeleteByte(std::uint64_t offset) override;
    bool IsModified() const override;
    std::uint64_t GetEditedSize() const override;

    // Drops the edits and the file. A file is opened with file.Open after this.
    void Close();
    // Writes the edits to the file: in place when no byte moves, otherwise through a temporary file
    // that replaces it. The file is opened again afterwards. On false the reason is in lastError.
    bool Save(const ProgressCallback& progress = {});
    const std::u16string& LastError() const { return lastError; }

    ResolvedPosition ResolvePosition(std::uint64_t viewOffset) const;
    std::uint64_t CountDeletedIn(std::uint64_t first, std::uint64_t last) const;
    std::uint64_t SkipDeleted(std::uint64_t first, std::uint64_t last, std::uint64_t n) const;
    // The byte shown at `viewOffset`, or nothing when it cannot be read.
    std::optional<std::uint8_t> ReadByteAt(std::uint64_t viewOffset) const;
    // True when Save would go through a temporary file.
    bool SavesViaTemporaryFile() const;

    FileViewModel file;
    InsertedRuns insertedRuns;
    DeletedOffsets deletedOffsets;
    std::unordered_map<std::uint64_t, std::uint8_t> overwrites;
    std::u16string lastError;

private:
    // File bytes copied into a read result: `length` bytes from file offset `fileOffset` at `outIndex`.
    struct FileSpan {
        std::uint64_t fileOffset = 0;
        std::size_t outIndex = 0;
        std::size_t length = 0;
    };

    // Appends up to `count` file bytes from `fileOffset`; gives false when fewer came.
    bool AppendFileBytes(std::uint64_t fileOffset, std::uint64_t count, std::vector<std::uint8_t>& out,
        std::vector<FileSpan>& spans) const;
    void ApplyOverwrites(const std::vector<FileSpan>& spans, std::vector<std::uint8_t>& out) const;
    void ReadPieces(std::uint64_t offset, std::uint64_t count, std::vector<std::uint8_t>& out) const;

    void ClearEdits();
    void FailWithSystemError(std::uint32_t error);
    bool Reopen(const std::u16string& path);
    bool SaveInPlace(const std::u16string& path, const ProgressCallback& progress);
    bool SaveViaTemporaryFile(const std::u16string& path, const ProgressCallback& progress);
    bool WriteEditedFile(FileHandle target, std::uint64_t total, const ProgressCallback& progress);
};

} // namespace tlm
