#pragma once

#include "encoding/TextEncoding.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tlm {

// What the status bar's one pane says, by the first rule that applies.
struct StatusTextInputs {
    bool overrideActive = false;
    std::u16string overrideText;
    bool saveActive = false;
    std::u16string saveText;
    bool searchActive = false;
    std::u16string searchText;
    bool fileOpen = false;
    std::uint64_t fileSize = 0;
    std::uint64_t caret = 0;
    TextEncoding encoding = TextEncoding::Ascii;
    bool editingEnabled = false;
    bool insertMode = false;
    bool modified = false;
    float zoom = 1.0f;
};

// The override text, else the save's, else the search's, else "status.no_file", else the open file's
// parts joined by two blanks: offset (0x and 8 upper-case digits, 16 from a 4 GiB file on), encoding,
// mode or read-only, "modified" when changed, zoom in percent. `translate` is the localizer's lookup.
std::u16string BuildStatusText(const StatusTextInputs& inputs,
                               const std::function<std::u16string(std::string_view key)>& translate);

} // namespace tlm
