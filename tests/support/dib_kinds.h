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
