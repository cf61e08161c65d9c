#pragma once

#include <time.h>

// Seconds of processor time this process has used: what a benchmark compares
// with its baseline, so that a busy machine slows both alike.
inline double ProcessorSeconds()
{
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}
