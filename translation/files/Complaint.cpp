#include "files/Complaint.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

constexpr size_t mostComplaints = 1000;

void Print(const std::string& file, const char* kind, Complaints complaints) {
    std::ranges::stable_sort(complaints, {}, &Complaint::line);
    for (const Complaint& complaint : complaints) {
        const std::string place = complaint.line == 0 ? file : file + ":" + std::to_string(complaint.line);
        std::fprintf(stderr, "%s: %s: %s\n", place.c_str(), kind, complaint.sentence.c_str());
    }
}

}  // namespace

void Complain(Complaints& complaints, size_t line, std::string sentence) {
    if (complaints.size() < mostComplaints) complaints.push_back({line, std::move(sentence)});
}

void PrintComplaints(const std::string& file, const Complaints& complaints) {
    Print(file, "error", complaints);
}

void PrintMistakesOrWarnings(const std::string& file, const Complaints& mistakes,
                             const Complaints& warnings) {
    if (mistakes.empty()) return Print(file, "warning", warnings);
    PrintComplaints(file, mistakes);
}

void PrintFailure(const std::exception& error) {
    std::fprintf(stderr, "orvande-translation: %s\n", error.what());
}
