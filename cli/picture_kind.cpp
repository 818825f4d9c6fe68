#include "cli/picture_kind.h"

#include "exe/type_names.h"

bool IsPicture(const SurveyedResource &resource, PictureKind *kind)
{
    const DWORD type = resource.type.isText ? 0 : resource.type.number;
    *kind = type == TYPE_ICON ? PictureIcon : type == TYPE_CURSOR ? PictureCursor : PictureBitmap;
    return type == TYPE_BITMAP || type == TYPE_ICON || type == TYPE_CURSOR;
}
