#include "files/Complaint.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

constexpr size_t mostComplaints = 1000;

}  // namespace

void Complain(Complaints& complaints, size_t line, std::string sentence) {
    if (complaints.size() < mostComplaints) complaints.push_back({line, std::move(sentence)});
}

void PrintComplaints(const std::string& file, const Complaints& complaints) {
    Complaints sorted = complaints;
    std::ranges::stable_sort(sorted, {}, &Complaint::line);
    for (const Complaint& complaint : sorted) {
        const std::string place = complaint.line == 0 ? file : file + ":" + std::to_string(complaint.line);
        std::fprintf(stderr, "%s: error: %s\n", place.c_str(), complaint.sentence.c_str());
    }
}

void PrintFailure(const std::exception& error) {
    std::fprintf(stderr, "orvande-translation: %s\n", error.what());
}
