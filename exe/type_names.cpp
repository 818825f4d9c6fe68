#include "exe/type_names.h"

static const struct {
    DWORD type;
    const char *name;
} names[] = {
    {1, "CURSOR"},      {2, "BITMAP"},     {3, "ICON"},          {4, "MENU"},
    {5, "DIALOG"},      {6, "STRING"},     {7, "FONTDIR"},       {8, "FONT"},
    {9, "ACCELERATOR"}, {10, "RCDATA"},    {11, "MESSAGETABLE"}, {12, "GROUP_CURSOR"},
    {14, "GROUP_ICON"}, {15, "NAMETABLE"}, {16, "VERSION"},      {17, "DLGINCLUDE"},
    {19, "PLUGPLAY"},   {20, "VXD"},       {21, "ANICURSOR"},    {22, "ANIICON"},
    {23, "HTML"},       {24, "MANIFEST"},  {240, "DLGINIT"},     {241, "TOOLBAR"},
};

const char *StandardTypeName(DWORD type)
{
    for (const auto &row : names)
        if (row.type == type)
            return row.name;
    return nullptr;
}
