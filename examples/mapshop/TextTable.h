/* A table of text with aligned columns. */
#pragma once

#include <limits>
#include <string>
#include <utility>
#include <vector>

struct TableColumn {
    /* A column as wide as its widest cell. */
    static constexpr size_t whole = std::numeric_limits<size_t>::max();

    std::wstring title;
    /* Cells wider than this are broken into several lines, at spaces where there are any; 1 or more. */
    size_t widest = whole;
    bool rightAligned = false;
};

class TextTable {
public:
    explicit TextTable(std::vector<TableColumn> wanted) : columns(std::move(wanted)) {}

    /* Adds a row with one cell a column. Control characters in a cell become spaces. */
    void AddRow(std::vector<std::wstring> cells);

    /* Gives the last column what the others leave of `lineWidth`, but at least `least` characters. */
    void FitLastColumn(size_t lineWidth, size_t least);

    /* The titles, a rule and the rows, without line feeds and without spaces at the ends of lines. */
    std::vector<std::wstring> Lines() const;

private:
    std::vector<size_t> Widths() const;

    std::vector<TableColumn> columns;
    std::vector<std::vector<std::wstring>> rows;
};
