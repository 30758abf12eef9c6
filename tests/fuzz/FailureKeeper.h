/* Keeps the input that ends the program, or takes too long, so that it can be tried again. */
#pragma once

#include <string>

/* While it lives, every signal with which a program dies, and the end of the time that an input has, writes
 * the input at hand into a file, says which, and ends the program with code 1. One at a time. */
class FailureKeeper {
public:
    explicit FailureKeeper(const std::string& file);
    FailureKeeper(const FailureKeeper&) = delete;
    FailureKeeper& operator=(const FailureKeeper&) = delete;
    ~FailureKeeper();

    /* Tells which input is tried from now on. */
    void Try(std::string input);

    /* Gives the inputs from now on as many seconds, all together; 0: any number. */
    static void GiveSeconds(unsigned seconds);
};
