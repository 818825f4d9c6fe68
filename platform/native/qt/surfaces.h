// Pixels and colours of the quiet half made Qt's.
#pragma once

#include <QColor>
#include <QImage>
#include <QPixmap>

#include "platform/native/gdi/surface.h"
#include "platform/native/user/pictures.h"

// An image on a surface's own pixels, which must outlive it; painting on it paints on them. It has
// the surface's ratio, so that painters count in logical pixels.
QImage ImageOf(const PixelSurface &surface);

// A copy of a picture that has pixels, a memory pixel for each.
QPixmap PixmapOf(const ImagePixels &picture);

// A colour of GetSysColor (COLOR_).
QColor SystemColor(int index);
