#include "app/AboutDialog.h"

#include "settings/AppSettings.h"

#include <algorithm>
#include <utility>

namespace tlm {

namespace {

constexpr std::u16string_view Notice =
    u"Tolmo is freeware. You may use it at no charge, at home and at work, and give unchanged copies "
    u"of it to others, as long as you ask nothing for them. It comes as it is, without any warranty: "
    u"whoever uses it does so at their own risk, and its authors answer for no loss of data or other "
    u"damage that follows from its use.\r\n\r\n"
    u"Tolmo ist Freeware. Sie d\u00FCrfen es kostenlos zu Hause und bei der Arbeit verwenden und "
    u"unver\u00E4nderte Kopien weitergeben, sofern Sie daf\u00FCr nichts verlangen. Es wird ohne jede "
    u"Gew\u00E4hrleistung so bereitgestellt, wie es ist: Die Nutzung geschieht auf eigene Gefahr, und "
    u"die Autoren haften nicht f\u00FCr Datenverlust oder andere Sch\u00E4den, die aus der Nutzung "
    u"entstehen.";

} // namespace

AboutDialog MakeAboutDialog(std::u16string title, std::u16string versionLabel, std::u16string homepageLabel,
    std::u16string licenseHeading, std::u16string closeLabel)
{
    AboutDialog dialog;
    dialog.title = std::move(title);
    dialog.productLine = u"Binary Editor Tolmo";
    dialog.versionLine = std::move(versionLabel) + u" " + std::u16string(SettingsVersion);
    dialog.copyrightLine = u"Copyright \u00A9 2026 the Tolmo authors";
    dialog.homepageLabel = std::move(homepageLabel);
    dialog.homepageAddress = u"https://tolmo.example.org/";
    dialog.licenseHeading = std::move(licenseHeading);
    dialog.notice = std::u16string(Notice);
    dialog.closeLabel = std::move(closeLabel);
    return dialog;
}

DialogRect AboutCloseButton(std::int32_t labelWidth)
{
    const std::int32_t width = std::max(96, labelWidth + 36);
    return DialogRect{508 - width, 406, width, 28};
}

} // namespace tlm
