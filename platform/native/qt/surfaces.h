// Pixels of the quiet half made Qt's.
#pragma once

#include <QColor>
#include <QImage>
#include <QPixmap>

#include "platform/native/gdi/surface.h"
#include "platform/native/user/pictures.h"

// An image on a surface's own pixels, which must outlive it.
QImage ImageOf(const PixelSurface &surface);

QPixmap PixmapOf(const ImagePixels &picture);

// A colour of GetSysColor.
QColor SystemColor(int index);
