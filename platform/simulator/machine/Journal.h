#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/* Whether a function of that name is one that the journal and FailCall know. */
bool IsSimulatedFunction(std::string_view function);

/* The calls of one test. Its size stays bounded however many calls there are. */
class Journal {
public:
    static Journal& Current();

    void Add(std::string_view function, std::string line);

    /* The number of calls to a function. Valid for ever, back at 0 when the journal is cleared; calls that
     * get no line are counted here. */
    size_t& Counter(std::string_view function);

    /* The lines, those of the functions that `isWanted` names only. */
    std::vector<std::string> Lines(const std::function<bool(std::string_view)>& isWanted) const;

    size_t CallsTo(std::string_view function) const;

    void Clear();

private:
    struct Line {
        std::string function;
        std::string text;
        size_t times = 1;
    };

    static constexpr size_t mostLines = 10000;

    std::vector<Line> lines_;
    std::map<std::string, size_t, std::less<>> unlisted_;  // calls for which there was no room
    std::map<std::string, size_t, std::less<>> calls_;
};

}  // namespace simulator
