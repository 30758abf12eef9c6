/* What is wrong with a file, told as compilers do: FILE:LINE: error: SENTENCE. */
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

struct Complaint {
    size_t line = 0; /* counted from 1; 0: it concerns the whole file */
    std::string sentence;
};

using Complaints = std::vector<Complaint>;

/* Adds a complaint, unless there are a thousand: nobody reads more, and a hostile file could bring one with
 * every byte. */
void Complain(Complaints& complaints, size_t line, std::string sentence);

/* Prints each to the error output, in the order of their lines. */
void PrintComplaints(const std::string& file, const Complaints& complaints);

/* Prints the mistakes that keep a file from being written; or, when there are none, what it loses, each as a
 * warning: FILE:LINE: warning: SENTENCE. */
void PrintMistakesOrWarnings(const std::string& file, const Complaints& mistakes, const Complaints& warnings);

/* Prints what kept a command from its work. */
void PrintFailure(const std::exception& error);

/* What cannot be done at all: one sentence. The exit code is 2 then. */
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};
