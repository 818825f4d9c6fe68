// The program's own pictures: what lies in resources/ and in the host module.
#pragma once

#include "samples/builder/pictures.h"

// The folder that stands before an item of the tree, 16 x 14 pixels on white.
Picture DrawFolder(bool isOpen);

// The program's icon: a quill over the moor. size is both edges in pixels.
Picture DrawProgramIcon(int size);

// The pointer over the split between tree and pane, 32 x 32 pixels, hot spot in (15, 15): two
// upright bars, and an arrowhead to each side.
Picture DrawSplitCursor();

// The strip down the left edge of the About box: 58 x 226 dialog units of 8-point MS Sans Serif,
// 87 x 367 pixels.
Picture DrawAboutStrip();

// What stands beside the text of a message, 32 x 32 pixels: the letter i on a round ground.
Picture DrawMessageIcon();
