// The visible half as a whole: makes the Qt application and fills the table.
#pragma once

// From here on windows are shown. argv as main got it; what Qt understands is taken out of it.
void AttachDisplay(int *argc, char **argv);

// Ends the Qt application; windows are to be destroyed before.
void DetachDisplay();
