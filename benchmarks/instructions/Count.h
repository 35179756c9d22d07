#pragma once

#include <valgrind/callgrind.h>

/// How often each path runs before it is counted: connections are made, function-local statics are
/// set and tables have grown by then.
constexpr int warmUps = 10;

/// Runs `path` with the numbers from 0, first unobserved and then `repetitions` times under
/// callgrind, which writes one profile of all threads under that name. `settle` returns when no
/// thread has anything left to do for the runs so far.
template <class Path, class Settle>
void count(const char *name, int repetitions, Path path, Settle settle)
{
    for (int i = 0; i < warmUps; ++i)
        path(i);
    settle();
    CALLGRIND_START_INSTRUMENTATION;
    for (int i = 0; i < repetitions; ++i)
        path(warmUps + i);
    settle();
    CALLGRIND_STOP_INSTRUMENTATION;
    CALLGRIND_DUMP_STATS_AT(name);
}

template <class Path>
void count(const char *name, int repetitions, Path path)
{
    count(name, repetitions, path, [] {});
}
