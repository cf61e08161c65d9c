#pragma once

// Marks what the editor module shows its host. The module is built with every
// other symbol hidden, so a host sees exactly these names.
#define VORNOSC_EXPORT __attribute__((visibility("default")))
