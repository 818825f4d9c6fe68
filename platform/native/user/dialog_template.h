// Dialog templates: the DIALOG and DIALOGEX resources (Microsoft's DLGTEMPLATE and DLGTEMPLATEEX),
// read into records.
#pragma once

#include <string>
#include <vector>

#include "platform/win32/types.h"

// Sizes and places are in dialog units: a quarter of the font's mean width, an eighth of its
// height. Texts are in the ANSI code page.
struct ControlTemplate {
    DWORD style;
    int x, y, width, height; // in the dialog's client area
    int id;
    std::string className;
    std::string text; // "#5" for resource number 5
};

struct DialogTemplate {
    DWORD style;
    int x, y;          // of the outer corner, in the owner's client area
    int width, height; // of the client area
    std::string caption;
    int fontHeight; // points; 0 when the template names no font
    std::string fontFace;
    std::vector<ControlTemplate> controls;
};

// Reads a template of `size` bytes. Returns false, with the record half filled, when it ends early,
// is none, or asks for more than anybody would look at: over 255 controls, 64 KiB of texts or a
// font of 255 points.
bool ReadDialogTemplate(const void *bytes, size_t size, DialogTemplate *dialog);
