/* The standard output and the standard error output of the device's programs, kept for the test. */
#pragma once

#include <cstdio>
#include <string>

class Console {
public:
    static Console& Current();

    /* The stream of that number: 1 output, 2 errors; null for others. It collects what is printed. */
    FILE* Stream(int number);

    void Clear();
    std::string Output();
    std::string Errors();

private:
    struct Collector {
        FILE* stream = nullptr;
        std::string text;
    };

    Console();

    Collector output_;
    Collector errors_;
};
