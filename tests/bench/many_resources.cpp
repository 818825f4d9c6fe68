#include "tests/bench/many_resources.h"

ExecutableDescription DescribeMany(int count)
{
    Picture picture = MakePicture(8, 8, 0xff336699);
    const struct {
        int type;
        Bytes data;
    } kinds[] = {{2, MakeDib(picture, 4)},
                 {3, MakeIconImage(picture, 4)},
                 {6, MakeStringBlock({u"one", u"two", u"three"})},
                 {10, Bytes(100, 0x41)}};
    ExecutableDescription description;
    for (int i = 0; i < count; i++)
        description.resources.push_back({kinds[i % 4].type, i / 4 + 1, kinds[i % 4].data});
    description.alignmentShift = 9; // reaches the 32 MiB that 64,000 blocks need
    return description;
}
