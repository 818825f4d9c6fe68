#include "platform/native/visible.h"

constinit VisibleHalf visible;
