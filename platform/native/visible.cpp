#include "platform/native/visible.h"

VisibleHalf visible;
