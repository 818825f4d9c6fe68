// The size up to which pictures are taken.
#pragma once

// A picture of more pixels is neither decoded nor drawn.
#define MOST_PICTURE_PIXELS 64000000u
