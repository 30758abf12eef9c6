/* How many cases a test has tried. */
#pragma once

#include <cstddef>
#include <cstdio>

class Tally {
public:
    explicit Tally(const char* whatIsTried) : what(whatIsTried) {}
    Tally(const Tally&) = delete;
    Tally& operator=(const Tally&) = delete;
    ~Tally() {
        std::printf("hostile: %s: %zu cases\n", what, cases);
        ofAll += cases;
    }

    void Add() { ++cases; }

    /* Of all tests that have ended. */
    inline static size_t ofAll = 0;

private:
    const char* what;
    size_t cases = 0;
};
