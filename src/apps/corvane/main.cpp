// corvane: the windows.
#include "ui/app.h"

wxIMPLEMENT_APP(corvane::corvane_app);
