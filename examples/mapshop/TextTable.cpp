#include "TextTable.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::wstring_view gap = L"  ";

bool IsLowSurrogate(wchar_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/* In characters: a surrogate pair is one. */
size_t WidthOfText(const std::wstring& text) {
    return text.size() - static_cast<size_t>(std::count_if(text.begin(), text.end(), IsLowSurrogate));
}

/* The index of the unit after the first `characters` characters. */
size_t IndexAfter(const std::wstring& text, size_t characters) {
    size_t index = 0;
    while (index < text.size() && (characters > 0 || IsLowSurrogate(text[index]))) {
        if (!IsLowSurrogate(text[index])) --characters;
        ++index;
    }
    return index;
}

std::vector<std::wstring> Wrapped(std::wstring text, size_t width) {
    std::vector<std::wstring> lines;
    while (WidthOfText(text) > width) {
        const size_t end = IndexAfter(text, width);
        const size_t space = text.rfind(L' ', end);
        const bool atSpace = space != std::wstring::npos && space > 0;
        lines.push_back(text.substr(0, atSpace ? space : end));
        text.erase(0, atSpace ? space + 1 : end);
    }
    lines.push_back(std::move(text));
    return lines;
}

std::wstring Padded(const std::wstring& text, size_t width, bool rightAligned) {
    const std::wstring spaces(width - WidthOfText(text), L' ');
    return rightAligned ? spaces + text : text + spaces;
}

void TrimEnd(std::wstring& line) {
    line.erase(line.find_last_not_of(L' ') + 1);
}

/* Appends the lines of one row; a cell of several lines makes as many. */
void AppendRow(std::vector<std::wstring>& lines, const std::vector<TableColumn>& columns,
               const std::vector<size_t>& widths, const std::vector<std::wstring>& cells) {
    std::vector<std::vector<std::wstring>> wrapped;
    size_t height = 0;
    for (size_t i = 0; i < cells.size(); ++i) {
        wrapped.push_back(Wrapped(cells[i], widths[i]));
        height = std::max(height, wrapped.back().size());
    }
    for (size_t y = 0; y < height; ++y) {
        std::wstring line;
        for (size_t i = 0; i < wrapped.size(); ++i) {
            if (i > 0) line += gap;
            line += Padded(y < wrapped[i].size() ? wrapped[i][y] : L"", widths[i], columns[i].rightAligned);
        }
        TrimEnd(line);
        lines.push_back(std::move(line));
    }
}

}  // namespace

void TextTable::AddRow(std::vector<std::wstring> cells) {
    for (std::wstring& cell : cells) {
        std::replace_if(
            cell.begin(), cell.end(), [](wchar_t unit) { return unit < 0x20 || unit == 0x7F; }, L' ');
    }
    rows.push_back(std::move(cells));
}

std::vector<size_t> TextTable::Widths() const {
    std::vector<size_t> widths;
    for (size_t i = 0; i < columns.size(); ++i) {
        size_t width = WidthOfText(columns[i].title);
        for (const auto& row : rows)
            width = std::max(width, WidthOfText(row[i]));
        widths.push_back(std::min(width, columns[i].widest));
    }
    return widths;
}

void TextTable::FitLastColumn(size_t lineWidth, size_t least) {
    size_t used = 0;
    const std::vector<size_t> widths = Widths();
    for (size_t i = 0; i + 1 < widths.size(); ++i)
        used += widths[i] + gap.size();
    columns.back().widest = std::max(least, lineWidth - std::min(lineWidth, used));
}

std::vector<std::wstring> TextTable::Lines() const {
    const std::vector<size_t> widths = Widths();
    std::vector<std::wstring> titles;
    std::vector<std::wstring> rules;
    for (size_t i = 0; i < columns.size(); ++i) {
        titles.push_back(columns[i].title);
        rules.emplace_back(widths[i], L'-');
    }
    std::vector<std::wstring> lines;
    AppendRow(lines, columns, widths, titles);
    AppendRow(lines, columns, widths, rules);
    for (const auto& row : rows)
        AppendRow(lines, columns, widths, row);
    return lines;
}
