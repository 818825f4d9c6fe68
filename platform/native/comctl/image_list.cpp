#include "platform/native/comctl/image_list.h"

#include <algorithm>
#include <vector>

#include "platform/native/gdi/objects.h"
#include "platform/native/handles.h"
#include "platform/native/no_memory.h"

namespace
{

struct ImageList {
    int width;
    int height;
    std::vector<uint32_t> pixels; // the pictures one after another
};

} // namespace

static HandleTable<ImageList, HandleKind::ImageList> &Lists()
{
    static HandleTable<ImageList, HandleKind::ImageList> lists;
    return lists;
}

static size_t PictureSize(const ImageList &list)
{
    return static_cast<size_t>(list.width) * static_cast<size_t>(list.height);
}

static int CountPictures(const ImageList &list)
{
    return static_cast<int>(list.pixels.size() / PictureSize(list));
}

HIMAGELIST WINAPI ImageList_Create(int width, int height, UINT, int, int)
{
    if (width <= 0 || height <= 0)
        return nullptr;
    return static_cast<HIMAGELIST>(Lists().Add(ImageList{width, height, {}}));
}

BOOL WINAPI ImageList_Destroy(HIMAGELIST handle)
{
    return Lists().Remove(handle);
}

int WINAPI ImageList_Add(HIMAGELIST handle, HBITMAP image, HBITMAP)
{
    ImageList *list = Lists().Find(handle);
    const Bitmap *bitmap = FindDrawing<Bitmap>(image);
    if (!list || !bitmap)
        return -1;
    const PixelSurface &from = bitmap->surface;
    const int first = CountPictures(*list);
    const int rows = std::min(list->height, from.height);
    for (int left = 0; left + list->width <= from.width; left += list->width) {
        const size_t start = list->pixels.size();
        if (!DoesMemorySuffice([&] { list->pixels.resize(start + PictureSize(*list)); })) {
            list->pixels.resize(static_cast<size_t>(first) * PictureSize(*list));
            return -1;
        }
        for (int y = 0; y < rows; ++y)
            std::copy_n(from.pixels + from.stride * static_cast<size_t>(y) + left, list->width,
                        list->pixels.begin() + static_cast<ptrdiff_t>(start) +
                            static_cast<ptrdiff_t>(y) * list->width);
    }
    return first;
}

int WINAPI ImageList_GetImageCount(HIMAGELIST handle)
{
    const ImageList *list = Lists().Find(handle);
    return list ? CountPictures(*list) : 0;
}

bool FindListPicture(HIMAGELIST handle, int index, ListPicture *picture)
{
    const ImageList *list = Lists().Find(handle);
    if (!list || index < 0 || index >= CountPictures(*list))
        return false;
    *picture = {list->width, list->height,
                list->pixels.data() + PictureSize(*list) * static_cast<size_t>(index)};
    return true;
}
