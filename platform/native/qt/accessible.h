// What screen readers are told of the widgets beyond what Qt tells of its own.
#pragma once

// From here on, for as long as the Qt application lives, windows, the controls that are painted
// here and their texts have a role and a name.
void InstallAccessibles();
