#pragma once

#include "app/DialogPlacement.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tlm {

// One family as the system's enumeration reports it.
struct FontFamilyFace {
    std::u16string name;
    bool variablePitch = false; // the pitch bit of its metrics is set: not fixed pitch
};

// The only sizes the dialog offers, in points.
inline constexpr std::array<int, 12> FontDialogSizes{8, 9, 10, 11, 12, 13, 14, 16, 18, 20, 24, 28};

// The families the dialog offers: named, not vertical ("@"), fixed pitch, each once without regard
// to case, sorted.
std::vector<std::u16string> FixedPitchFamilies(const std::vector<FontFamilyFace>& faces);

// The size shown at the start: the current size rounded to the nearest point when it is offered,
// else the first.
std::size_t InitialSizeIndex(float points);
// The family shown at the start: the current one without regard to case, else the first.
std::size_t InitialFamilyIndex(const std::vector<std::u16string>& families, const std::u16string& current);

// Where the controls that follow the dialog's client size go.
struct FontDialogLayout {
    DialogRect familyBox;
    DialogRect okButton;
    DialogRect cancelButton;

    friend bool operator==(const FontDialogLayout&, const FontDialogLayout&) = default;
};
FontDialogLayout LayOutFontDialog(std::int32_t clientWidth, std::int32_t clientHeight);

inline constexpr std::int32_t FontDialogWidth = 620;
inline constexpr std::int32_t FontDialogHeight = 320;
inline constexpr std::int32_t FontDialogMinimumWidth = 500;
inline constexpr std::int32_t FontDialogMinimumHeight = 220;

// The font dialog's state: its texts, the families, and what the user chose.
struct FontDialog {
    std::u16string title, familyLabel, sizeLabel, boldLabel, italicLabel, okLabel, cancelLabel;
    std::vector<std::u16string> families;
    std::u16string family;
    float size = 12.0f;
    bool bold = false;
    bool italic = false;
    bool accepted = false;
    bool closed = false;

    // OK with the family box's selection and the size box's text. Without a selection nothing
    // happens and the answer is false.
    bool Accept(std::optional<std::size_t> familyIndex, const std::u16string& sizeText, bool boldChecked,
        bool italicChecked);
    // Cancel and the close box.
    void Cancel();
};

} // namespace tlm
