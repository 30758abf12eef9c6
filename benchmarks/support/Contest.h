/* The contenders of one row at one size, ready to be measured. */
#pragma once

#include "support/Rows.h"

/* One of them. */
struct Contestant {
    std::string_view name;
    std::unique_ptr<Work> work;
};

class Contest {
public:
    /* Makes the work of every contender and looks at its outcome. Throws std::runtime_error when there is no
     * such row, or when two contenders do not come to the same outcome: a wrong answer is not measured. */
    Contest(std::string_view row, size_t size, const std::string& folder);

    std::vector<Contestant> contestants;
    size_t items = 0; /* how many things a work does at a time */
    std::string per;  /* what such a thing is */
};

/* All rows, by name. */
std::vector<const Row*> Rows();
