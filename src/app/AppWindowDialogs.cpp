#include "app/AppWindow.h"

#include "app/CallIfSet.h"

namespace tlm {

void AppWindow::ShowFontDialog()
{
    if (!platform.runFontDialog) {
        return;
    }
    FontDialog dialog;
    dialog.title = Tr("dialog.font.title");
    dialog.familyLabel = Tr("dialog.font.family");
    dialog.sizeLabel = Tr("dialog.font.size");
    dialog.boldLabel = Tr("dialog.font.bold");
    dialog.italicLabel = Tr("dialog.font.italic");
    dialog.okLabel = Tr("dialog.common.ok");
    dialog.cancelLabel = Tr("dialog.common.cancel");
    dialog.families = FixedPitchFamilies(platform.fontFamilies ? platform.fontFamilies() : std::vector<FontFamilyFace>{});
    const HexViewFont& font = hexView.Font();
    dialog.family = font.family;
    dialog.size = hexView.Metrics().baseFontSize * 72.0f / 96.0f;
    dialog.bold = font.bold;
    dialog.italic = font.italic;
    if (dialog.families.empty()) {
        CallIfSet(platform.messageBox, Tr("error.font_not_monospace"), Tr("app.title"), MessageBoxKind::Stop);
        return;
    }
    platform.runFontDialog(dialog);
    if (!dialog.accepted) {
        return;
    }
    hexView.SetFont(dialog.family, dialog.size, dialog.bold, dialog.italic);
    settings.fontFamily = dialog.family;
    settings.fontSize = dialog.size;
    settings.fontBold = dialog.bold;
    settings.fontItalic = dialog.italic;
    SaveSettings();
    RefreshStatusBar();
}

void AppWindow::ShowAboutDialog()
{
    if (!platform.runAboutDialog) {
        return;
    }
    AboutDialog dialog = MakeAboutDialog(Tr("dialog.about.title"), Tr("about.version_label"),
        Tr("about.homepage_label"), Tr("about.license_heading"), Tr("dialog.common.close"));
    platform.runAboutDialog(dialog);
}

} // namespace tlm
