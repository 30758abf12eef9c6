/* A dialog template as its bytes say, before any system has read it. */
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "Platform.h"

/* Positions and sizes are in dialog units. */
struct TemplateControl {
    DWORD style = 0;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    int id = 0;             /* 0xFFFF: none */
    WORD systemClass = 0;   /* 0x80 button, 0x81 edit, 0x82 static; 0: a named one */
    std::wstring className; /* of a named one */
    std::wstring text;
};

struct DialogTemplate {
    DWORD style = 0;
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    std::wstring menu;
    std::wstring caption;
    int fontSize = 0; /* in points; 0: the system's font */
    std::wstring font;
    std::vector<TemplateControl> controls;
};

/* Reads a template of the old form, DLGTEMPLATE, from a module's resources. Throws std::runtime_error when
 * there is none, or bytes are missing or left over. */
DialogTemplate ReadDialogTemplate(HMODULE module, WORD id);
