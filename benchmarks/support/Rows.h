/* What is compared: rows, their sizes, and the contenders in each. A contender is a file of its own, which
 * enters itself into its row; the header of the row's folder says what is asked of it. */
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/* One contender's way of doing what its row asks for, made for one size. */
class Work {
public:
    Work() = default;
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    virtual ~Work() = default;

    /* The outcome in the form that all contenders of the row share. Not measured. */
    virtual std::string Outcome() = 0;

    /* The work that is measured. */
    virtual void Do() = 0;
};

/* What contenders compete in. */
struct Row {
    std::string_view name;
    std::string_view per;           /* what one figure is for: an entry, a text, a call */
    std::span<const size_t> sizes;  /* those that have an aim or stand in a table */
    std::span<const size_t> growth; /* those that are measured for a plot in addition */
    size_t items = 0;               /* how many of these a work does at a time; 0: its size */
};

/* Makes the work of a contender for a size. */
using WorkMaker = std::unique_ptr<Work> (*)(size_t size);

/* One contender in one row. */
struct Entrant {
    const Row* row;
    std::string_view contender;
    WorkMaker make;
};

/* The name of the contender that the others are compared with: the project's own. */
inline constexpr std::string_view ownName = "library";

/* Enters a contender for as long as the program runs. */
class Enter {
public:
    Enter(const Row& row, std::string_view contender, WorkMaker make);
};

template <class AnyWork>
std::unique_ptr<Work> MakeWork(size_t size) {
    return std::make_unique<AnyWork>(size);
}

/* All entrants, by row, the library's before the others, these by name. */
std::vector<Entrant> Entrants();

/* How many things the work of a row does at a time. */
inline size_t ItemsOf(const Row& row, size_t size) {
    return row.items > 0 ? row.items : size;
}

/* The folder for the files that contenders read and write. */
extern std::string workFolder;
