// How a page looks: on a screen by the reader's choice of light or dark, on paper black on white.
#pragma once

// A style sheet (CSS).
extern const char pageStyle[];
