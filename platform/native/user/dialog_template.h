// Dialog templates: the DIALOG and DIALOGEX resources (Microsoft's DLGTEMPLATE and DLGTEMPLATEEX),
// read into records.
#pragma once

#include <string>
#include <vector>

#include "platform/win32/user.h"

struct ControlTemplate {
    DWORD style;
    int x, y, width, height; // dialog units
    int id;
    std::string className;
    std::string text; // "#5" for resource number 5
};

struct DialogTemplate {
    DWORD style;
    int x, y, width, height; // dialog units
    std::string caption;
    int fontHeight; // points; 0 when the template names no font
    std::string fontFace;
    std::vector<ControlTemplate> controls;
};

// Reads a template of `size` bytes. Returns false when it ends early or is none.
bool ReadDialogTemplate(const void *bytes, size_t size, DialogTemplate *dialog);
