// make_many COUNT FILE: writes a PE file with COUNT resources.
#include "tests/bench/many_resources.h"

#include <cstdio>
#include <cstdlib>

int main(int count, char **arguments)
{
    if (count != 3) {
        fprintf(stderr, "usage: make_many COUNT FILE\n");
        return 2;
    }
    return WriteBytes(arguments[2], BuildPe(DescribeMany(atoi(arguments[1]))).bytes) ? 0 : 1;
}
