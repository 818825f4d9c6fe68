// The kinds of resource that are kept: the one table of them. Each room that treats a kind (the
// drawing in viewer, the formats in export) has a table of its own that begins its rows with the
// kind's number, and asserts that no kind lacks a row; so a new kind is a row here and there.
#pragma once

#include "platform/win32.h"

// The numbers that Windows gives the kinds that are kept, in PE and NE files alike.
enum ResourceCategory : DWORD {
    CategoryBitmap = 2,  // RT_BITMAP: a device-independent bitmap
    CategoryIcon = 3,    // RT_ICON: one picture of an icon
    CategoryString = 6,  // RT_STRING: a block of a string table
    CategoryBinary = 10, // RT_RCDATA: bytes of any meaning
};

struct Category {
    ResourceCategory category;
    const char *label; // of its item in the tree, and of its folder of saved files
    const char *word;  // that quillmoor-cli knows it by
};

inline constexpr Category categories[] = {
    {CategoryBitmap, "BITMAP", "bitmap"},
    {CategoryIcon, "ICON", "icon"},
    {CategoryString, "STRING TABLE", "string"},
    {CategoryBinary, "BINARY DATA", "binary"},
};

// Whether each category has a row in a room's table, whose rows have a field `category`.
template <typename Row, size_t count> constexpr bool CoversCategories(const Row (&rows)[count])
{
    for (const Category &wanted : categories) {
        bool found = false;
        for (const Row &row : rows)
            found = found || row.category == wanted.category;
        if (!found)
            return false;
    }
    return true;
}

// The label of a category, or NULL when resources of that type number are not kept.
const char *CategoryLabel(DWORD category);
