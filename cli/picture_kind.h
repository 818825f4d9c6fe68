// Which resources are pictures.
#pragma once

#include "content/picture_info.h"
#include "exe/surveyed.h"

// Whether a resource is a bitmap, an icon's image or a cursor's by its type, and which.
bool IsPicture(const SurveyedResource &resource, PictureKind *kind);
