// Every kind of bitmap that the viewer draws.
#pragma once

#include "samples/builder/pictures.h"

inline const struct {
    int bits;
    DibForm form;
} dibKinds[] = {
    {1, DibForm::Plain},     {4, DibForm::Plain},      {8, DibForm::Plain},
    {16, DibForm::Plain},    {24, DibForm::Plain},     {32, DibForm::Plain},
    {1, DibForm::Core},      {4, DibForm::Core},       {8, DibForm::Core},
    {24, DibForm::Core},     {8, DibForm::TopDown},    {24, DibForm::TopDown},
    {32, DibForm::TopDown},  {16, DibForm::BitFields}, {32, DibForm::BitFields},
    {8, DibForm::RunLength}, {4, DibForm::RunLength},
};

// Those to be damaged: a picture of 3 x 2 and three colours in each kind.
inline std::vector<Bytes> DibsToDamage()
{
    Picture picture = MakePicture(3, 2, 0xFFFF0000);
    picture.At(1, 0) = 0xFF00FF00;
    picture.At(2, 1) = 0xFF0000FF;
    const std::vector<uint32_t> table = {0xFF0000, 0x00FF00, 0x0000FF};
    std::vector<Bytes> dibs;
    for (const auto &[bits, form] : dibKinds)
        dibs.push_back(MakeDib(picture, bits, form, bits > 8 ? std::vector<uint32_t>() : table,
                               form != DibForm::Core));
    return dibs;
}
