#include "platform/native/user/menus.h"
#include "tests/fuzz/fuzz.h"

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const HMODULE module = OpenModuleOf({{4, 1, Bytes(data, data + size)}});
    Check(module != nullptr);
    const HMENU menu = LoadMenuResource(module, MAKEINTRESOURCEA(1));
    EnableMenuItem(menu, 100, MF_GRAYED);
    DestroyMenu(menu);
    FreeLibrary(module);
    return 0;
}
