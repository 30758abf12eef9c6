#pragma once

#include "Platform.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/* A control as a template describes it. Places are in dialog units. */
struct TemplateControl {
    DWORD style = 0;
    DWORD extendedStyle = 0;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    int id = 0;
    std::u16string className;
    std::u16string text;
};

struct DialogTemplate {
    DWORD style = 0;
    DWORD extendedStyle = 0;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool hasOwnClass = false;
    std::u16string caption;
    std::vector<TemplateControl> controls;
};

/* Both kinds of compiled dialog templates. Nothing when the bytes end before the template does. */
std::optional<DialogTemplate> ParseDialogTemplate(std::string_view bytes);

}  // namespace simulator
