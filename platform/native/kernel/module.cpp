#include "platform/native/kernel/module.h"

#include <cstdlib>
#include <map>

#include "platform/native/handles.h"
#include "platform/native/kernel/code_page.h"
#include "platform/native/kernel/file_bytes.h"
#include "platform/native/kernel/module_image.h"
#include "platform/native/no_memory.h"
#include "platform/win32/kernel.h"

// A PE image made from the program's resource script.
extern "C" const uint8_t QuillmoorResources[];
extern "C" const uint8_t QuillmoorResourcesEnd[];

// Modules: the program's own resources, which are embedded in it, and PE files opened as modules.
namespace
{

struct Module {
    FileBytes owned; // nothing for the program itself
    ModuleImage image;
    // By file offset and size: a resource that is found again keeps its handle.
    std::map<std::pair<size_t, uint32_t>, HRSRC> found;
};

struct Resource {
    const uint8_t *bytes;
    uint32_t size;
};

} // namespace

static HandleTable<Module, HandleKind::Module> &Modules()
{
    static HandleTable<Module, HandleKind::Module> modules;
    return modules;
}

static HandleTable<Resource, HandleKind::Resource> &Resources()
{
    static HandleTable<Resource, HandleKind::Resource> resources;
    return resources;
}

static HMODULE ProgramModule()
{
    static const HMODULE program = [] {
        Module module{};
        const size_t size = static_cast<size_t>(QuillmoorResourcesEnd - QuillmoorResources);
        if (!ReadModuleImage(QuillmoorResources, size, &module.image))
            abort(); // the build made something else than an image
        return static_cast<HMODULE>(Modules().Add(std::move(module)));
    }();
    return program;
}

// The module of a handle; NULL means the program.
static Module *FindModule(HMODULE handle)
{
    return Modules().Find(handle ? handle : ProgramModule());
}

// A type or name argument: an integer or a text.
static ResourceKey KeyOf(LPCSTR name)
{
    if (IS_INTRESOURCE(name))
        return {true, static_cast<uint16_t>(reinterpret_cast<uintptr_t>(name)), {}};
    ResourceKey key{false, 0, {}};
    const CodePage &page = AnsiCodePage();
    for (const char *byte = name; *byte != 0; ++byte)
        key.text += page.units[static_cast<unsigned char>(*byte)];
    return key;
}

HMODULE WINAPI GetModuleHandleA(LPCSTR name)
{
    return name ? nullptr : ProgramModule();
}

static HMODULE OpenModule(LPCSTR path)
{
    Module module{};
    size_t size = 0;
    if (path)
        module.owned = ReadWholeFile(path, &size);
    if (!module.owned || !ReadModuleImage(module.owned.get(), size, &module.image))
        return nullptr;
    return static_cast<HMODULE>(Modules().Add(std::move(module)));
}

HMODULE WINAPI LoadLibraryA(LPCSTR path)
{
    return UnlessMemoryRunsOut<HMODULE>(nullptr, [=] { return OpenModule(path); });
}

BOOL WINAPI FreeLibrary(HMODULE handle)
{
    Module *module = Modules().Find(handle);
    if (!module)
        return FALSE;
    if (handle == ProgramModule())
        return TRUE;
    for (const auto &[place, resource] : module->found)
        Resources().Remove(resource);
    return Modules().Remove(handle);
}

static HRSRC FindInModule(HMODULE handle, LPCSTR name, LPCSTR type)
{
    Module *module = FindModule(handle);
    ResourcePlace place;
    if (!module || !FindImageResource(module->image, KeyOf(type), KeyOf(name), &place))
        return nullptr;
    HRSRC &resource = module->found[{place.fileOffset, place.size}];
    if (!resource)
        resource = static_cast<HRSRC>(
            Resources().Add(Resource{module->image.bytes + place.fileOffset, place.size}));
    return resource;
}

HRSRC WINAPI FindResourceA(HMODULE handle, LPCSTR name, LPCSTR type)
{
    return UnlessMemoryRunsOut<HRSRC>(nullptr, [=] { return FindInModule(handle, name, type); });
}

DWORD WINAPI SizeofResource(HMODULE, HRSRC handle)
{
    const Resource *resource = Resources().Find(handle);
    return resource ? resource->size : 0;
}

HGLOBAL WINAPI LoadResource(HMODULE, HRSRC handle)
{
    return Resources().Find(handle) ? static_cast<HGLOBAL>(handle) : nullptr;
}

LPVOID WINAPI LockResource(HGLOBAL handle)
{
    const Resource *resource = Resources().Find(handle);
    // Windows gives the bytes with no const as well; nobody writes there.
    return resource ? const_cast<uint8_t *>(resource->bytes) : nullptr;
}

ByteReader OpenResource(HMODULE module, LPCSTR name, LPCSTR type)
{
    const Resource *resource = Resources().Find(FindResourceA(module, name, type));
    return resource ? OpenBytes(resource->bytes, resource->size) : ByteReader{};
}

BOOL WINAPI FreeResource(HGLOBAL)
{
    return FALSE;
}
