#include "files/TableComment.h"

#include <string>
#include <utility>

namespace {

constexpr WideStringView marks = u".:,+|^@~";

/* A field that a spreadsheet has put in double quotes. */
WideString WithoutEnclosingQuotes(WideStringView field) {
    WideString plain;
    field.remove_prefix(1);
    for (size_t at = 0; at < field.size(); ++at) {
        if (field[at] == u'"' && ++at == field.size()) break;
        plain += field[at];
    }
    return plain;
}

/* Whether a backslash before `next` would be taken for the beginning of an escape. */
bool BeginsEscape(WCHAR next) {
    return next == u't' || next == u'\t' || next == u'\\';
}

}  // namespace

TableComment ReadTableComment(WideStringView line) {
    line = line.substr(0, line.find(u'\t'));
    WideString comment = line.starts_with(u'"') ? WithoutEnclosingQuotes(line) : WideString(line);
    std::erase(comment, u'\r');
    comment.erase(0, 1);
    TableComment read;
    if (!comment.empty() && marks.find(comment.front()) != WideStringView::npos) {
        read.mark = static_cast<CommentMark>(comment.front());
        comment.erase(0, 1);
    }
    if (comment.starts_with(u' ')) comment.erase(0, 1);
    read.rest = std::move(comment);
    return read;
}

WideString EscapedNote(WideStringView note) {
    WideString escaped;
    for (size_t at = 0; at < note.size(); ++at) {
        const bool isEscape = note[at] == u'\\' && at + 1 < note.size() && BeginsEscape(note[at + 1]);
        if (note[at] == u'\t')
            escaped.append(u"\\t");
        else
            escaped.append(isEscape ? 2 : 1, note[at]);
    }
    return escaped;
}

WideString UnescapedNote(WideStringView rest) {
    WideString note;
    for (size_t at = 0; at < rest.size(); ++at) {
        const WideStringView pair = rest.substr(at, 2);
        const bool isEscape = pair == u"\\t" || pair == u"\\\\";
        note += !isEscape ? rest[at] : pair[1] == u't' ? u'\t' : u'\\';
        if (isEscape) ++at;
    }
    return note;
}

WideStringView ScreenOfPlace(WideStringView place) {
    const size_t colon = place.find(u':');
    return colon == WideStringView::npos ? WideStringView() : place.substr(0, colon);
}
