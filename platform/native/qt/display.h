// The visible half as a whole: makes the Qt application and fills the table.
#pragma once

// From here on windows are shown. argv as main got it, argc its length: what Qt understands is
// taken out of both, which must live until DetachDisplay. With no display Qt ends the program.
void AttachDisplay(int *argc, char **argv);

// Takes the display away and ends the Qt application; windows are to be destroyed before.
void DetachDisplay();
