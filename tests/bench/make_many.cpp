// make_many COUNT FILE: writes a PE file with COUNT resources.
#include "samples/builder/builder.h"

#include <cstdio>
#include <cstdlib>

int main(int count, char **arguments)
{
    if (count != 3) {
        fprintf(stderr, "usage: make_many COUNT FILE\n");
        return 2;
    }
    const Picture picture = MakePicture(8, 8, 0xff336699);
    const struct {
        int type;
        Bytes data;
    } kinds[] = {{2, MakeDib(picture, 4)},
                 {3, MakeIconImage(picture, 4)},
                 {6, MakeStringBlock({u"one", u"two", u"three"})},
                 {10, Bytes(100, 0x41)}};
    ExecutableDescription many;
    for (int i = 0; i < atoi(arguments[1]); i++)
        many.resources.push_back({kinds[i % 4].type, i / 4 + 1, kinds[i % 4].data});
    return WriteBytes(arguments[2], BuildPe(many).bytes) ? 0 : 1;
}
