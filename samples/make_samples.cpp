// Writes the executables that a new user opens: make_samples FOLDER writes heather.dll and
// curlew.vbx. make_samples --list prints what they hold, a line for each resource: file, type, name
// and the size in bytes that the file's format gives it.
#include "samples/sample_files.h"

#include <cstdio>
#include <cstring>

static int WriteSample(const char *folder, const char *name, const BuiltExecutable &built)
{
    std::string path = std::string(folder) + "/" + name;
    if (WriteBytes(path.c_str(), built.bytes))
        return 0;
    fprintf(stderr, "make_samples: cannot write %s\n", path.c_str());
    return 1;
}

static std::string IdText(const ResourceId &id)
{
    if (!id.isText)
        return std::to_string(id.number);
    std::string text(id.text.begin(), id.text.end());
    text.insert(text.begin(), '\'');
    text.push_back('\'');
    return text;
}

static void ListSample(const char *name, const ExecutableDescription &description, size_t unit)
{
    for (const ResourceDescription &resource : description.resources)
        printf("%s %s %s %zu\n", name, IdText(resource.type).c_str(), IdText(resource.name).c_str(),
               (resource.data.size() + unit - 1) / unit * unit);
}

int main(int count, char **arguments)
{
    ExecutableDescription heather = DescribeHeather();
    ExecutableDescription curlew = DescribeCurlew();
    if (count != 2) {
        fprintf(stderr, "usage: make_samples FOLDER | --list\n");
        return 2;
    }
    if (strcmp(arguments[1], "--list") == 0) {
        ListSample("heather.dll", heather, 1);
        ListSample("curlew.vbx", curlew, (size_t)1 << curlew.alignmentShift);
        return 0;
    }
    return WriteSample(arguments[1], "heather.dll", BuildPe(heather)) |
           WriteSample(arguments[1], "curlew.vbx", BuildNe(curlew));
}
