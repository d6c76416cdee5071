#include "app/FontDialog.h"

#include <algorithm>
#include <cmath>

namespace tlm {

namespace {

char16_t FoldCase(char16_t character)
{
    if (character >= u'A' && character <= u'Z') {
        return static_cast<char16_t>(character - u'A' + u'a');
    }
    if (character >= 0xC0 && character <= 0xDE && character != 0xD7) {
        return static_cast<char16_t>(character + 0x20);
    }
    if (character >= 0xFF21 && character <= 0xFF3A) { // full-width Latin capitals
        return static_cast<char16_t>(character + 0x20);
    }
    return character;
}

bool EqualIgnoringCase(const std::u16string& left, const std::u16string& right)
{
    return left.size() == right.size()
        && std::equal(left.begin(), left.end(), right.begin(),
            [](char16_t a, char16_t b) { return FoldCase(a) == FoldCase(b); });
}

} // namespace

std::vector<std::u16string> FixedPitchFamilies(const std::vector<FontFamilyFace>& faces)
{
    std::vector<std::u16string> families;
    for (const FontFamilyFace& face : faces) {
        if (face.name.empty() || face.name.front() == u'@' || face.variablePitch) {
            continue;
        }
        const bool known = std::any_of(families.begin(), families.end(),
            [&](const std::u16string& taken) { return EqualIgnoringCase(taken, face.name); });
        if (!known) {
            families.push_back(face.name);
        }
    }
    std::sort(families.begin(), families.end());
    return families;
}

std::size_t InitialSizeIndex(float points)
{
    if (!std::isfinite(points)) {
        return 0;
    }
    const long rounded = std::lround(points);
    for (std::size_t index = 0; index < FontDialogSizes.size(); ++index) {
        if (FontDialogSizes[index] == rounded) {
            return index;
        }
    }
    return 0;
}

std::size_t InitialFamilyIndex(const std::vector<std::u16string>& families, const std::u16string& current)
{
    for (std::size_t index = 0; index < families.size(); ++index) {
        if (EqualIgnoringCase(families[index], current)) {
            return index;
        }
    }
    return 0;
}

FontDialogLayout LayOutFontDialog(std::int32_t clientWidth, std::int32_t clientHeight)
{
    FontDialogLayout layout;
    layout.familyBox = DialogRect{102, 12, std::max(clientWidth - 114, 260), 240};
    layout.okButton = DialogRect{clientWidth - 240, clientHeight - 38, 108, 26};
    layout.cancelButton = DialogRect{clientWidth - 120, clientHeight - 38, 108, 26};
    return layout;
}

bool FontDialog::Accept(std::optional<std::size_t> familyIndex, const std::u16string& sizeText, bool boldChecked,
    bool italicChecked)
{
    if (!familyIndex || *familyIndex >= families.size()) {
        return false;
    }
    int points = 0;
    for (const char16_t character : sizeText) {
        if (character < u'0' || character > u'9' || points > 1000) {
            break;
        }
        points = points * 10 + (character - u'0');
    }
    if (std::find(FontDialogSizes.begin(), FontDialogSizes.end(), points) == FontDialogSizes.end()) {
        // The size box offers nothing else; a text it did not give counts as its first size.
        points = FontDialogSizes.front();
    }
    family = families[*familyIndex];
    size = static_cast<float>(points);
    bold = boldChecked;
    italic = italicChecked;
    accepted = true;
    closed = true;
    return true;
}

void FontDialog::Cancel()
{
    closed = true;
}

} // namespace tlm
