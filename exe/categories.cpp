#include "exe/categories.h"

const char *CategoryLabel(DWORD category)
{
    for (const Category &row : categories)
        if (row.category == category)
            return row.label;
    return nullptr;
}
