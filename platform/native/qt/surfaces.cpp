#include "platform/native/qt/surfaces.h"

#include "platform/win32/gdi.h"

QImage ImageOf(const PixelSurface &surface)
{
    QImage image(reinterpret_cast<uchar *>(surface.pixels), MemoryEdge(surface, surface.width),
                 MemoryEdge(surface, surface.height), static_cast<qsizetype>(surface.stride * 4),
                 QImage::Format_RGB32);
    image.setDevicePixelRatio(surface.ratio);
    return image;
}

QPixmap PixmapOf(const ImagePixels &picture)
{
    const QImage image(reinterpret_cast<const uchar *>(picture.pixels.data()), picture.width,
                       picture.height, picture.width * 4, QImage::Format_ARGB32);
    return QPixmap::fromImage(image.copy());
}

QColor SystemColor(int index)
{
    const COLORREF color = GetSysColor(index);
    return QColor(static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                  static_cast<int>(color >> 16 & 0xFF));
}
