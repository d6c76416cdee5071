#pragma once

#include "app/DialogPlacement.h"

#include <cstdint>
#include <string>

namespace tlm {

inline constexpr std::int32_t AboutDialogWidth = 520;
inline constexpr std::int32_t AboutDialogHeight = 460;
// The colour of the home page link, red, green, blue.
inline constexpr std::uint8_t AboutLinkRed = 0, AboutLinkGreen = 102, AboutLinkBlue = 204;

// The about dialog's texts; the window shows them and opens the address when it is clicked.
struct AboutDialog {
    std::u16string title;
    std::u16string productLine;
    std::u16string versionLine;
    std::u16string copyrightLine;
    std::u16string homepageLabel;
    std::u16string homepageAddress;
    std::u16string licenseHeading;
    std::u16string notice;
    std::u16string closeLabel;
    bool closed = false;
};

// The texts for a version label, licence heading and close label in the user's language.
AboutDialog MakeAboutDialog(std::u16string title, std::u16string versionLabel, std::u16string homepageLabel,
    std::u16string licenseHeading, std::u16string closeLabel);

// The Close button: at least 96 wide and wide enough for its label with room around it; its right
// edge stays at 508, so a long label widens it leftward.
DialogRect AboutCloseButton(std::int32_t labelWidth);

} // namespace tlm
