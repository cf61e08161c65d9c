#include "LargeLayout.h"

#include "document/ControlTables.h"
#include "document/TextField.h"

#include <string>

std::unique_ptr<OSCProject> LargeLayout(int controlCount, int pageCount)
{
    auto project = std::make_unique<OSCProject>();
    project->pages.clear();
    const int perPage = controlCount / pageCount;
    for (int p = 0; p < pageCount; ++p) {
        auto page = std::make_unique<OSCPage>();
        CopyTextField(page->name, "Page " + std::to_string(p + 1));
        for (int i = 0; i < perPage; ++i) {
            const int n = p * perPage + i;
            auto control = std::make_unique<OSCControl>();
            CopyTextField(control->name, "Control " + std::to_string(n));
            CopyTextField(control->command,
                          "/TRVX/ID" + std::to_string(n % 16) + "/SetVal/Ctl" + std::to_string(n));
            control->deviceId = static_cast<std::int16_t>(n % 16);
            control->controlNumber = static_cast<std::int16_t>(n);
            control->x = static_cast<std::int16_t>(n % 700);
            control->y = static_cast<std::int16_t>(kTitleBandHeight + n % 600);
            control->width = static_cast<std::int16_t>(30 + n % 50);
            control->height = static_cast<std::int16_t>(30 + n % 70);
            control->type = static_cast<std::uint8_t>(n % kControlTypeCount);
            control->color = static_cast<std::uint8_t>(n % kNamedColorCount);
            page->controls.push_back(std::move(control));
        }
        project->pages.push_back(std::move(page));
    }
    return project;
}

std::unique_ptr<OSCProject> SelectedPage(int controlCount)
{
    auto project = LargeLayout(controlCount, 1);
    for (const auto& control : project->CurrentPage()->controls) {
        control->x = static_cast<std::int16_t>(control->x + 4);
        control->selected = 1;
    }
    return project;
}
