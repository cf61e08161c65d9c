#pragma once

#include "document/OSCProject.h"

#include <memory>

// A layout of controlCount controls spread over pageCount pages, every control
// type and named colour among them, with names and addresses of usual length.
std::unique_ptr<OSCProject> LargeLayout(int controlCount, int pageCount);

// One page of controlCount controls of the large layout, all selected, moved 4
// units right so that the selection can go left and right by arrow keys.
std::unique_ptr<OSCProject> SelectedPage(int controlCount);
