#pragma once

#include "host/ModuleExport.h"

#include <QFont>

// The module's one shared font, face "Arial", 12 pixels high, weight 500: the
// canvas writes labels and the test-mode banner with it, the editor its page
// list. Made when the module starts and destroyed when it stops; null between.
VORNOSC_EXPORT extern QFont* ArialFont;
void CreateArialFont();
void DestroyArialFont();

// A font asked for by height as window toolkits do: a positive height is the
// whole cell (ascent plus descent), a negative one the character height.
QFont MakeFont(const char* face, int height, int weight);
