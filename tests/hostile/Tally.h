/* How many cases a test has tried. */
#pragma once

#include <cstddef>
#include <cstdio>

class Tally {
public:
    explicit Tally(const char* whatIsTried) : what(whatIsTried) {}
    Tally(const Tally&) = delete;
    Tally& operator=(const Tally&) = delete;
    ~Tally() { std::printf("hostile: %s: %zu cases\n", what, cases); }

    void Add() { ++cases; }

private:
    const char* what;
    size_t cases = 0;
};
