#include "platform/native/comctl/image_list.h"

#include "platform/native/gdi/objects.h"
#include "platform/native/handles.h"

#include <algorithm>

namespace
{

struct ImageList {
    int width;
    int height;
    std::vector<uint32_t> pixels; // the pictures one after another
};

HandleTable<ImageList, HandleKind::ImageList> &Lists()
{
    static HandleTable<ImageList, HandleKind::ImageList> lists;
    return lists;
}

size_t PictureSize(const ImageList &list)
{
    return (size_t)list.width * (size_t)list.height;
}

int CountPictures(const ImageList &list)
{
    return (int)(list.pixels.size() / PictureSize(list));
}

} // namespace

HIMAGELIST WINAPI ImageList_Create(int width, int height, UINT, int, int)
{
    if (width <= 0 || height <= 0)
        return nullptr;
    return (HIMAGELIST)Lists().Add(ImageList{width, height, {}});
}

BOOL WINAPI ImageList_Destroy(HIMAGELIST handle)
{
    return Lists().Remove(handle);
}

int WINAPI ImageList_Add(HIMAGELIST handle, HBITMAP image, HBITMAP)
{
    ImageList *list = Lists().Find(handle);
    const Bitmap *bitmap = FindDrawing<Bitmap>(image);
    if (list == nullptr || bitmap == nullptr)
        return -1;
    const PixelSurface &from = bitmap->surface;
    const int first = CountPictures(*list);
    const int rows = std::min(list->height, from.height);
    for (int left = 0; left + list->width <= from.width; left += list->width) {
        const size_t start = list->pixels.size();
        list->pixels.resize(start + PictureSize(*list));
        for (int y = 0; y < rows; y++)
            std::copy_n(from.pixels + from.stride * (size_t)y + left, list->width,
                        list->pixels.begin() + (ptrdiff_t)start + (ptrdiff_t)y * list->width);
    }
    return first;
}

int WINAPI ImageList_GetImageCount(HIMAGELIST handle)
{
    const ImageList *list = Lists().Find(handle);
    return list == nullptr ? 0 : CountPictures(*list);
}

bool FindListPicture(HIMAGELIST handle, int index, ListPicture *picture)
{
    const ImageList *list = Lists().Find(handle);
    if (list == nullptr || index < 0 || index >= CountPictures(*list))
        return false;
    *picture = {list->width, list->height,
                list->pixels.data() + PictureSize(*list) * (size_t)index};
    return true;
}
